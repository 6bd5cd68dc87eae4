#include "JSON/FastJsonWalk.h"

#include "Dom/JsonValue.h"
#include "JSON/FastJsonListStep.h"

namespace
{
using namespace CadrelJson::FastJson;

error_code SkipArray(ondemand::value Value, int32 Level)
{
    return ForEachElement(Value, Level,
                          [](ondemand::value Element, int32 ElementLevel)
                          { return SkipValue(Element, ElementLevel); });
}

error_code SkipObject(ondemand::value Value, int32 Level)
{
    bool bObject = false;
    return ForObject(Value, Level, bObject,
                     [](std::string_view, ondemand::value Member, int32 MemberLevel)
                     { return SkipValue(Member, MemberLevel); });
}

// The parser reports "nul" or "nulls" as a value that is not null rather than as
// an error; the host's parser refuses both.
error_code SkipNull(ondemand::value Value)
{
    bool bNull = false;
    SIMDJSON_TRY(Value.is_null().get(bNull));
    return bNull ? simdjson::SUCCESS : simdjson::N_ATOM_ERROR;
}

// Strings are widened the way the host's tree widens them, so both give the same text.
FString ToFString(std::string_view Utf8)
{
    return FString::FromUTF8(Utf8);
}
} // namespace

bool CadrelJson::FastJson::IsKey(std::string_view Key, std::string_view LowerCaseName)
{
    if (Key.size() != LowerCaseName.size())
    {
        return false;
    }
    for (SIZE_T Index = 0; Index < Key.size(); ++Index)
    {
        const char Char = Key[Index];
        const char Folded = (Char >= 'A' && Char <= 'Z') ? static_cast<char>(Char + ('a' - 'A')) : Char;
        if (Folded != LowerCaseName[Index])
        {
            return false;
        }
    }
    return true;
}

error_code CadrelJson::FastJson::SkipValue(ondemand::value Value, int32 Level)
{
    ondemand::json_type Type;
    SIMDJSON_TRY(Value.type().get(Type));
    return SkipValue(Value, Type, Level);
}

error_code CadrelJson::FastJson::SkipValue(ondemand::value Value, ondemand::json_type Type, int32 Level)
{
    switch (Type)
    {
    case ondemand::json_type::array:
        return SkipArray(Value, Level);
    case ondemand::json_type::object:
        return SkipObject(Value, Level);
    case ondemand::json_type::number:
        return Value.get_number().error();
    case ondemand::json_type::string:
        return Value.get_string().error();
    case ondemand::json_type::boolean:
        return Value.get_bool().error();
    case ondemand::json_type::null:
        return SkipNull(Value);
    }
    return simdjson::TAPE_ERROR;
}

error_code CadrelJson::FastJson::ReadString(ondemand::value Value, int32 Level, FString& OutText)
{
    ondemand::json_type Type;
    SIMDJSON_TRY(Value.type().get(Type));
    switch (Type)
    {
    case ondemand::json_type::string:
    {
        std::string_view Text;
        SIMDJSON_TRY(Value.get_string().get(Text));
        OutText = ToFString(Text);
        return simdjson::SUCCESS;
    }
    case ondemand::json_type::number:
    {
        // The host's own number value prints the text, so both paths agree digit for digit.
        double Number = 0.0;
        SIMDJSON_TRY(GetNumber(Value, Number));
        OutText = FJsonValueNumber(Number).AsString();
        return simdjson::SUCCESS;
    }
    case ondemand::json_type::boolean:
    {
        bool bValue = false;
        SIMDJSON_TRY(Value.get_bool().get(bValue));
        OutText = FJsonValueBoolean(bValue).AsString();
        return simdjson::SUCCESS;
    }
    default:
        OutText.Empty();
        return SkipValue(Value, Type, Level);
    }
}

double CadrelJson::FastJson::RecoverLongNumber(ondemand::value Value)
{
    // Only a number whose digits, with its decimal point, run to 20 characters or
    // more takes the path that drops the value; a shorter token is a true zero.
    constexpr SIZE_T ShortestDroppedToken = 20;
    const std::string_view Token = Value.raw_json_token();
    if (Token.size() < ShortestDroppedToken)
    {
        return 0.0;
    }
    // The host's parser computes such a number with this very function, so both
    // paths agree to the last bit.
    return simdjson::internal::from_chars(Token.data());
}

error_code CadrelJson::FastJson::ReadNonNumberAsNumber(ondemand::value Value, ondemand::json_type Type,
                                                       int32 Level, double& OutNumber)
{
    OutNumber = 0.0;
    if (Type != ondemand::json_type::string)
    {
        return SkipValue(Value, Type, Level);
    }
    std::string_view Text;
    SIMDJSON_TRY(Value.get_string().get(Text));
    // Rare in answers, so the host's own string value decides what counts as a number.
    OutNumber = FJsonValueString(ToFString(Text)).AsNumber();
    return simdjson::SUCCESS;
}

error_code CadrelJson::FastJson::ReadPlainNumbers(ondemand::value Value, int32 Level,
                                                  FPlainNumberReader& Numbers,
                                                  std::vector<double>& OutNumbers, bool& bOutRead)
{
    bOutRead = false;
    const char* const Open = Value.raw_json_token().data();
    // A non-empty array as deep as the host's limit is the general walk's to refuse.
    if (Level >= MaxLevel || *Open != '[')
    {
        return simdjson::SUCCESS;
    }
    const SIZE_T Before = OutNumbers.size();
    const char* const Close = Numbers.ReadArray(Open, OutNumbers);
    if (Close == nullptr)
    {
        OutNumbers.resize(Before);
        return simdjson::SUCCESS;
    }
    if (StepOverPlainList(Value, Open, Close - 1, OutNumbers.size() - Before))
    {
        bOutRead = true;
        return simdjson::SUCCESS;
    }
    // The parser steps over the array's tokens, and must stop where the text did:
    // at the same ']', followed only by whitespace up to the next token.
    ondemand::array Array;
    std::string_view Raw;
    SIMDJSON_TRY(Value.get_array().get(Array));
    SIMDJSON_TRY(Array.raw_json().get(Raw));
    const SIZE_T Read = static_cast<SIZE_T>(Close - Open);
    if (Raw.data() != Open || Raw.size() < Read ||
        (Raw.size() > Read && Raw.find_first_not_of(" \t\n\r", Read) != std::string_view::npos))
    {
        return simdjson::TAPE_ERROR;
    }
    bOutRead = true;
    return simdjson::SUCCESS;
}
