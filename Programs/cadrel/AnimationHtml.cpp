#include "AnimationHtml.h"

#include "AnimationJson.h"
#include "CadrelWeb.h"
#include "MarkupText.h"
#include "MemorySoundFile.h"

#include <map>

namespace
{
// JSON never needs a bare '<' outside a string, and inside one \u003c reads back the
// same, so no "</script" or "<!--" in the data can reach the HTML parser.
std::string EscapeJsonForScript(const std::string& Json)
{
    std::string Out;
    Out.reserve(Json.size());
    for (const char Character : Json)
    {
        Out += Character == '<' ? std::string("\\u003c") : std::string(1, Character);
    }
    return Out;
}

TArray<uint8> EncodeWav(std::span<const float> Mono, int SampleRate)
{
    SF_INFO Info{};
    Info.samplerate = SampleRate;
    Info.channels = 1;
    Info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    FMemorySoundFile Sound;
    if (!Sound.OpenForWriting(Info))
    {
        return {};
    }
    // Samples past full scale are clipped, not wrapped.
    sf_command(Sound.Get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    sf_writef_float(Sound.Get(), Mono.data(), sf_count_t(Mono.size()));
    return Sound.Finish();
}

// Base64 with padding, written out here: OpenSSL's would cost every run of the
// program a millisecond to load the library.
std::string Base64(const TArray<uint8>& Bytes)
{
    static constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const uint8* const In = Bytes.GetData();
    const SIZE_T Count = static_cast<SIZE_T>(Bytes.Num());
    std::string Out;
    Out.reserve(4 * ((Count + 2) / 3));
    SIZE_T Index = 0;
    for (; Index + 3 <= Count; Index += 3)
    {
        const uint32 Group = uint32(In[Index]) << 16 | uint32(In[Index + 1]) << 8 | In[Index + 2];
        const char Quad[] = {Alphabet[Group >> 18], Alphabet[Group >> 12 & 63], Alphabet[Group >> 6 & 63],
                             Alphabet[Group & 63]};
        Out.append(Quad, 4);
    }
    if (Index < Count)
    {
        const bool bTwo = Index + 1 < Count;
        const uint32 Group = uint32(In[Index]) << 16 | (bTwo ? uint32(In[Index + 1]) << 8 : 0);
        const char Quad[] = {Alphabet[Group >> 18], Alphabet[Group >> 12 & 63],
                             bTwo ? Alphabet[Group >> 6 & 63] : '=', '='};
        Out.append(Quad, 4);
    }
    return Out;
}

std::string EmbeddedAudio(std::span<const float> Mono, int SampleRate)
{
    if (Mono.empty() || SampleRate <= 0)
    {
        return {};
    }
    return Base64(EncodeWav(Mono, SampleRate));
}

// Puts each @NAME@ of the template in its place in one pass over the template, so a
// value that happens to hold a marker stays as it is.
std::string Fill(std::string_view Template, const std::map<std::string, std::string, std::less<>>& Values)
{
    std::string Out;
    std::size_t Position = 0;
    while (Position < Template.size())
    {
        const std::size_t Open = Template.find('@', Position);
        const std::size_t Close = Open == std::string_view::npos ? Open : Template.find('@', Open + 1);
        if (Close == std::string_view::npos)
        {
            break;
        }
        const auto Value = Values.find(Template.substr(Open + 1, Close - Open - 1));
        if (Value == Values.end())
        {
            Out += Template.substr(Position, Close - Position);
            Position = Close;
            continue;
        }
        Out += Template.substr(Position, Open - Position);
        Out += Value->second;
        Position = Close + 1;
    }
    Out += Template.substr(std::min(Position, Template.size()));
    return Out;
}
} // namespace

std::string AnimationToHtml(const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                            const std::string& Title)
{
    return Fill(CadrelWeb::Asset("player.html"),
                {{"TITLE", EscapeMarkup(Title)},
                 {"ANIMATION", EscapeJsonForScript(AnimationToJson(Animation))},
                 {"AUDIO", EmbeddedAudio(Mono, SampleRate)},
                 {"FACE", std::string(CadrelWeb::Asset("face.js"))},
                 {"PLAYER", std::string(CadrelWeb::Asset("player.js"))}});
}
