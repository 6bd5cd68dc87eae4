#include "JsonTreeBuilder.h"

#include <memory>
#include <string>

namespace
{
// Moving the new node's pointer into the base type's pointer spares the atomic
// count round trip that a converting copy would cost for every node.
template <typename ValueType, typename... ArgTypes> TSharedPtr<FJsonValue> MakeValue(ArgTypes&&... Args)
{
    return TSharedPtr<FJsonValue>(
        std::shared_ptr<FJsonValue>(std::make_shared<ValueType>(std::forward<ArgTypes>(Args)...)));
}

// The parser stores element counts saturated at 0xFFFFFF, so the count is only a
// hint for very large containers, and always within int32.
int32 ReserveCount(size_t Count)
{
    return static_cast<int32>(Count);
}
} // namespace

TSharedPtr<FJsonValue> FJsonTreeBuilder::BuildValue(simdjson::dom::element Element)
{
    using simdjson::dom::element_type;
    switch (Element.type())
    {
    case element_type::OBJECT:
        return MakeValue<FJsonValueObject>(BuildObject(Element.get_object().value_unsafe()));
    case element_type::ARRAY:
        return BuildArray(Element.get_array().value_unsafe());
    case element_type::STRING:
        return MakeValue<FJsonValueString>(ToFString(Element.get_string().value_unsafe()));
    case element_type::INT64:
    case element_type::UINT64:
    case element_type::DOUBLE:
        return MakeValue<FJsonValueNumber>(Element.get_double().value_unsafe());
    case element_type::BOOL:
        return MakeValue<FJsonValueBoolean>(Element.get_bool().value_unsafe());
    case element_type::NULL_VALUE:
        break;
    }
    return MakeValue<FJsonValueNull>();
}

TSharedPtr<FJsonObject> FJsonTreeBuilder::BuildObject(simdjson::dom::object Object)
{
    std::shared_ptr<FJsonObject> Result = std::make_shared<FJsonObject>();
    Result->Values.Reserve(ReserveCount(Object.size()));
    for (const simdjson::dom::key_value_pair Field : Object)
    {
        Result->Values.Add(ToFString(Field.key), BuildValue(Field.value));
    }
    return TSharedPtr<FJsonObject>(std::move(Result));
}

TSharedPtr<FJsonValue> FJsonTreeBuilder::BuildArray(simdjson::dom::array Array)
{
    TArray<TSharedPtr<FJsonValue>> Items;
    Items.Reserve(ReserveCount(Array.size()));
    for (const simdjson::dom::element Item : Array)
    {
        Items.Add(BuildValue(Item));
    }
    return MakeValue<FJsonValueArray>(std::move(Items));
}

FString FJsonTreeBuilder::ToFString(std::string_view Utf8)
{
    // Nearly every key and value is ASCII: widen it in one pass and fall back to the
    // full conversion only when a byte beyond ASCII turns up.
    std::u16string Units(Utf8.size(), u'\0');
    unsigned char Seen = 0;
    for (size_t Index = 0; Index < Utf8.size(); ++Index)
    {
        const unsigned char Byte = static_cast<unsigned char>(Utf8[Index]);
        Seen |= Byte;
        Units[Index] = Byte;
    }
    if ((Seen & 0x80) != 0)
    {
        return FString::FromUTF8(Utf8);
    }
    return FString(std::move(Units));
}
