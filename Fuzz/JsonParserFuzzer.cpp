#include "Serialization/JsonSerializer.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace
{
// Touches every value through the accessors the codec's readers use, so that a
// tree that parsed but is malformed inside shows up as a sanitizer report.
void Walk(const TSharedPtr<FJsonValue>& Value)
{
    Value->AsNumber();
    Value->AsString();
    for (const TSharedPtr<FJsonValue>& Item : Value->AsArray())
    {
        Walk(Item);
    }
    if (const TSharedPtr<FJsonObject>& Object = Value->AsObject())
    {
        for (const auto& Field : Object->Values)
        {
            Object->GetNumberField(Field.Key);
            Walk(Field.Value);
        }
    }
}

template <typename CharType> void DeserializeBothWays(const TSharedRef<TJsonReader<CharType>>& Reader)
{
    TSharedPtr<FJsonValue> Value;
    if (FJsonSerializer::Deserialize(Reader, Value))
    {
        Walk(Value);
    }
    TSharedPtr<FJsonObject> Object;
    if (FJsonSerializer::Deserialize(Reader, Object))
    {
        Object->GetArrayField(TEXT("frames"));
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    const std::string_view Bytes(reinterpret_cast<const char*>(Data), Size);
    DeserializeBothWays(TJsonReaderFactory<UTF8CHAR>::Create(Bytes));
    DeserializeBothWays(TJsonReaderFactory<>::Create(FString::FromUTF8(Bytes)));
    // The same bytes read as UTF-16 units reach the lone-surrogate handling.
    std::u16string Units(Size / sizeof(char16_t), u'\0');
    std::memcpy(Units.data(), Data, Units.size() * sizeof(char16_t));
    DeserializeBothWays(TJsonReaderFactory<>::Create(FString(std::move(Units))));
    return 0;
}
