#include "PluginDescriptor.h"

#include <simdjson.h>

#include <limits>
#include <string>
#include <string_view>

namespace
{
bool EqualsIgnoreCase(std::string_view Lhs, std::string_view Rhs)
{
    if (Lhs.size() != Rhs.size())
    {
        return false;
    }
    for (SIZE_T Index = 0; Index < Lhs.size(); ++Index)
    {
        if (ToUpperAscii(static_cast<TCHAR>(static_cast<unsigned char>(Lhs[Index]))) !=
            ToUpperAscii(static_cast<TCHAR>(static_cast<unsigned char>(Rhs[Index]))))
        {
            return false;
        }
    }
    return true;
}

FString TypeError(std::string_view Key, const TCHAR* Expected)
{
    return FString::Printf(TEXT("\"%s\" is not %s"), *FString::FromUTF8(Key), Expected);
}

bool ReadInt32(std::string_view Key, simdjson::dom::element Value, int32& Out, FString& OutFailReason)
{
    int64 Number = 0;
    if (Value.get_int64().get(Number) || Number < std::numeric_limits<int32>::min() ||
        Number > std::numeric_limits<int32>::max())
    {
        OutFailReason = TypeError(Key, TEXT("a 32-bit integer"));
        return false;
    }
    Out = static_cast<int32>(Number);
    return true;
}

bool ReadString(std::string_view Key, simdjson::dom::element Value, FString& Out, FString& OutFailReason)
{
    std::string_view Text;
    if (Value.get_string().get(Text))
    {
        OutFailReason = TypeError(Key, TEXT("a string"));
        return false;
    }
    Out = FString::FromUTF8(Text);
    return true;
}

bool ReadField(std::string_view Key, simdjson::dom::element Value, FPluginDescriptor& Out,
               FString& OutFailReason)
{
    struct FIntField
    {
        const char* Key;
        int32 FPluginDescriptor::*Member;
    };
    struct FStringField
    {
        const char* Key;
        FString FPluginDescriptor::*Member;
    };
    static constexpr FIntField IntFields[] = {
        {"FileVersion", &FPluginDescriptor::FileVersion},
        {"Version", &FPluginDescriptor::Version},
    };
    static constexpr FStringField StringFields[] = {
        {"VersionName", &FPluginDescriptor::VersionName}, {"FriendlyName", &FPluginDescriptor::FriendlyName},
        {"Description", &FPluginDescriptor::Description}, {"Category", &FPluginDescriptor::Category},
        {"CreatedBy", &FPluginDescriptor::CreatedBy},
    };
    for (const FIntField& Field : IntFields)
    {
        if (EqualsIgnoreCase(Key, Field.Key))
        {
            return ReadInt32(Key, Value, Out.*Field.Member, OutFailReason);
        }
    }
    for (const FStringField& Field : StringFields)
    {
        if (EqualsIgnoreCase(Key, Field.Key))
        {
            return ReadString(Key, Value, Out.*Field.Member, OutFailReason);
        }
    }
    return true;
}

// Later duplicates of a key replace earlier ones, as in the host's JSON objects.
bool ReadDescriptor(const char* Bytes, SIZE_T Length, FPluginDescriptor& Out, FString& OutFailReason)
{
    constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
    if (std::string_view(Bytes, Length).starts_with(ByteOrderMark))
    {
        Bytes += ByteOrderMark.size();
        Length -= ByteOrderMark.size();
    }
    simdjson::dom::parser Parser;
    simdjson::dom::element Root;
    if (const simdjson::error_code Error = Parser.parse(Bytes, Length).get(Root))
    {
        OutFailReason = FString::FromUTF8(simdjson::error_message(Error));
        return false;
    }
    simdjson::dom::object Object;
    if (Root.get_object().get(Object))
    {
        OutFailReason = TEXT("the top level is not an object");
        return false;
    }
    FPluginDescriptor Result;
    for (const simdjson::dom::key_value_pair Field : Object)
    {
        if (!ReadField(Field.key, Field.value, Result, OutFailReason))
        {
            return false;
        }
    }
    Out = std::move(Result);
    return true;
}
} // namespace

bool FPluginDescriptor::Load(const FString& FileName, FString& OutFailReason)
{
    simdjson::padded_string Bytes;
    if (simdjson::padded_string::load(FileName.ToUTF8()).get(Bytes))
    {
        OutFailReason = TEXT("the file cannot be read");
        return false;
    }
    return ReadDescriptor(Bytes.data(), Bytes.size(), *this, OutFailReason);
}

bool FPluginDescriptor::Read(const FString& Text, FString& OutFailReason)
{
    const std::string Bytes = Text.ToUTF8();
    return ReadDescriptor(Bytes.data(), Bytes.size(), *this, OutFailReason);
}
