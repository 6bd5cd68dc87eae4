#include "LipsyncRequest.h"

#include "TextChecks.h"

#include <optional>

namespace
{
std::optional<std::string> Header(const httplib::Headers& Headers, const char* Name)
{
    // A repeated header is ambiguous, so it counts as a fault.
    if (Headers.count(Name) != 1)
    {
        return std::nullopt;
    }
    return Headers.find(Name)->second;
}

std::optional<FRequestError> CheckHeaders(const httplib::Headers& Headers, FLipsyncRequest& Out)
{
    const auto Guid = Header(Headers, "ZELGuid");
    if (!Guid || !IsHexDigits(*Guid, 32))
    {
        return MakeError(400, "ZELGuid", "ZELGuid must be one header of 32 hexadecimal digits");
    }
    Out.Guid = *Guid;
    const auto Index = Header(Headers, "ZELIndex");
    if (!Index || !ParseInt32(*Index, Out.Index))
    {
        return MakeError(400, "ZELIndex", "ZELIndex must be one decimal 32-bit integer");
    }
    const auto MainIndex = Header(Headers, "ZELMainIndex");
    if (!MainIndex || !ParseInt32(*MainIndex, Out.MainIndex))
    {
        return MakeError(400, "ZELMainIndex", "ZELMainIndex must be one decimal 32-bit integer");
    }
    const auto RequestType = Header(Headers, "RequestType");
    if (!RequestType || (*RequestType != "AUDIO2FACE" && *RequestType != "VIRETHIO"))
    {
        return MakeError(400, "RequestType", "RequestType must be AUDIO2FACE or VIRETHIO");
    }
    const auto Stream = Header(Headers, "bStream");
    if (!Stream || (*Stream != "0" && *Stream != "1"))
    {
        return MakeError(400, "bStream", "bStream must be 0 or 1");
    }
    Out.bStream = *Stream == "1";
    return std::nullopt;
}

std::variant<const FFormPart*, FRequestError> FindPart(const FForm& Form, const std::string& Name)
{
    const FFormPart* Found = nullptr;
    for (const FFormPart& Part : Form)
    {
        if (Part.Name == Name)
        {
            if (Found)
            {
                return MakeError(400, Name, "the form has more than one part \"" + Name + "\"");
            }
            Found = &Part;
        }
    }
    if (!Found)
    {
        return MakeError(400, Name, "the form has no part \"" + Name + "\"");
    }
    return Found;
}

std::optional<FRequestError> CheckAudioSize(const httplib::Headers& Headers, const FFormPart& Audio)
{
    const auto Size = Header(Headers, "AudioSize");
    // Decimal without sign or leading zeros, as the module writes it.
    if (!Size || std::to_string(Audio.Content.size()) != *Size)
    {
        return MakeError(400, "AudioSize",
                         "AudioSize must be the audio part's size, " + std::to_string(Audio.Content.size()));
    }
    return std::nullopt;
}
} // namespace

TOrError<FLipsyncRequest> ParseLipsyncRequest(const httplib::Headers& Headers, const FForm& Form)
{
    FLipsyncRequest Request;
    if (auto Error = CheckHeaders(Headers, Request))
    {
        return *Error;
    }
    auto Json = FindPart(Form, "json");
    auto Audio = FindPart(Form, "audio");
    for (auto* Part : {&Json, &Audio})
    {
        if (auto* Error = std::get_if<FRequestError>(Part))
        {
            return *Error;
        }
    }
    auto Document = ParseRequestDocument(std::get<const FFormPart*>(Json)->Content);
    if (auto* Error = std::get_if<FRequestError>(&Document))
    {
        return *Error;
    }
    Request.Document = std::get<FRequestDocument>(std::move(Document));
    const FFormPart& AudioPart = *std::get<const FFormPart*>(Audio);
    if (auto Error = CheckAudioSize(Headers, AudioPart))
    {
        return *Error;
    }
    auto Wav = ReadWav(AudioPart.Content);
    if (auto* Error = std::get_if<FRequestError>(&Wav))
    {
        return *Error;
    }
    Request.Audio = std::get<FAudio>(std::move(Wav));
    return Request;
}
