#include "RequestDocument.h"

#include "TextChecks.h"

#include <simdjson.h>

namespace
{
using simdjson::dom::element;
using simdjson::dom::object;

// Reads fields of one document; the first fault is kept and every later read fails.
class FFieldReader
{
public:
    bool Object(object Parent, const std::string& Path, std::string_view Key, object& Out)
    {
        return Find(Parent, Path, Key).get_object().get(Out) == simdjson::SUCCESS ||
               Fail(Path, Key, "must be an object");
    }

    bool String(object Parent, const std::string& Path, std::string_view Key, std::string_view& Out)
    {
        return Find(Parent, Path, Key).get_string().get(Out) == simdjson::SUCCESS ||
               Fail(Path, Key, "must be a string");
    }

    bool Bool(object Parent, const std::string& Path, std::string_view Key)
    {
        bool Value = false;
        return Find(Parent, Path, Key).get_bool().get(Value) == simdjson::SUCCESS ||
               Fail(Path, Key, "must be true or false");
    }

    bool Integer(object Parent, const std::string& Path, std::string_view Key)
    {
        std::int64_t Value = 0;
        return Find(Parent, Path, Key).get_int64().get(Value) == simdjson::SUCCESS ||
               Fail(Path, Key, "must be an integer");
    }

    bool Check(bool bGood, const std::string& Path, std::string_view Key, const char* Message)
    {
        return bGood || Fail(Path, Key, Message);
    }

    bool Fail(const std::string& Path, std::string_view Key, const char* Message)
    {
        if (!bFailed)
        {
            const std::string Field = Path.empty() ? std::string(Key) : Path + "." + std::string(Key);
            Error = MakeError(400, Field, Field + " " + Message);
            bFailed = true;
        }
        return false;
    }

    FRequestError Error;

private:
    simdjson::simdjson_result<element> Find(object Parent, const std::string& Path, std::string_view Key)
    {
        if (bFailed)
        {
            return simdjson::NO_SUCH_FIELD;
        }
        auto Found = Parent.at_key(Key);
        if (Found.error() == simdjson::NO_SUCH_FIELD)
        {
            Fail(Path, Key, "is missing");
        }
        return Found;
    }

    bool bFailed = false;
};

bool ParseMovement(FFieldReader& Reader, object Zel, std::string_view Parameters, std::string_view ModeKey,
                   bool& bOutMocap)
{
    const std::string ZelPath = "data.attributes.zel";
    object Movement;
    std::string_view Mode;
    if (!Reader.Object(Zel, ZelPath, Parameters, Movement))
    {
        return false;
    }
    const std::string Path = ZelPath + "." + std::string(Parameters);
    if (!Reader.String(Movement, Path, ModeKey, Mode))
    {
        return false;
    }
    bOutMocap = EqualsNoCase(Mode, "mocap");
    return Reader.Check(bOutMocap || EqualsNoCase(Mode, "none"), Path, ModeKey,
                        "must be \"mocap\" or \"none\"");
}

bool ParseZel(FFieldReader& Reader, object Zel, FRequestDocument& Out)
{
    const std::string Path = "data.attributes.zel";
    std::string_view Platform, RigVersion, RigType, Engine, AnswerFormat, Emotion;
    const bool bRead =
        Reader.String(Zel, Path, "platform", Platform) &&
        Reader.String(Zel, Path, "rigVersion", RigVersion) && Reader.String(Zel, Path, "rigType", RigType) &&
        Reader.Check(EqualsNoCase(RigType, "vireth") || EqualsNoCase(RigType, "custom"), Path, "rigType",
                     "must be \"vireth\" or \"custom\"") &&
        Reader.String(Zel, Path, "engine", Engine) &&
        Reader.String(Zel, Path, "answerFormat", AnswerFormat) &&
        Reader.String(Zel, Path, "explicitEmotion", Emotion) &&
        Reader.Check(LipsyncEngine::ParseEmotion(Emotion, Out.Emotion), Path, "explicitEmotion",
                     "names no emotion") &&
        ParseMovement(Reader, Zel, "eyeMovementParameters", "eyeMovementMode", Out.bEyeMovement) &&
        ParseMovement(Reader, Zel, "neckMovementParameters", "neckMovementMode", Out.bNeckMovement);
    Out.Platform = Platform;
    Out.bCustomRig = EqualsNoCase(RigType, "custom");
    return bRead;
}

bool ParseData(FFieldReader& Reader, object Root, FRequestDocument& Out)
{
    object Data, Attributes, Zel;
    std::string_view Id, Type;
    const bool bRead = Reader.Object(Root, "", "data", Data) && Reader.String(Data, "data", "id", Id) &&
                       Reader.Check(IsHexDigits(Id, 32), "data", "id", "must be 32 hexadecimal digits") &&
                       Reader.String(Data, "data", "type", Type) &&
                       Reader.Object(Data, "data", "attributes", Attributes) &&
                       Reader.Object(Attributes, "data.attributes", "zel", Zel) && ParseZel(Reader, Zel, Out);
    Out.Id = Id;
    return bRead;
}

bool ParseMeta(FFieldReader& Reader, object Root)
{
    object Meta;
    std::string_view Text, PrevSize, Latency;
    return Reader.Object(Root, "", "meta", Meta) && Reader.String(Meta, "meta", "platform", Text) &&
           Reader.String(Meta, "meta", "platform_version", Text) && Reader.Bool(Meta, "meta", "editor") &&
           Reader.String(Meta, "meta", "plugin_version", Text) && Reader.String(Meta, "meta", "OS", Text) &&
           Reader.String(Meta, "meta", "local", Text) && Reader.String(Meta, "meta", "prev_type", Text) &&
           Reader.String(Meta, "meta", "prev_size", PrevSize) &&
           Reader.Check(IsDecimalInteger(PrevSize), "meta", "prev_size", "must hold a decimal integer") &&
           Reader.String(Meta, "meta", "latency", Latency) &&
           Reader.Check(IsDecimalNumber(Latency), "meta", "latency", "must hold a decimal number") &&
           Reader.Integer(Meta, "meta", "prev_audio_length");
}
} // namespace

TOrError<FRequestDocument> ParseRequestDocument(std::string_view Json)
{
    // One parser per thread keeps its buffers between requests.
    thread_local simdjson::dom::parser Parser;
    element Root;
    if (Parser.parse(Json.data(), Json.size()).get(Root) != simdjson::SUCCESS)
    {
        return MakeError(400, "json", "the request document is not valid JSON");
    }
    object RootObject;
    if (Root.get_object().get(RootObject) != simdjson::SUCCESS)
    {
        return MakeError(400, "json", "the request document must be a JSON object");
    }
    FFieldReader Reader;
    FRequestDocument Document;
    if (!ParseData(Reader, RootObject, Document) || !ParseMeta(Reader, RootObject))
    {
        return Reader.Error;
    }
    return Document;
}
