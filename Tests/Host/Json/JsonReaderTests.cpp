#include "Serialization/JsonSerializer.h"

#include <gtest/gtest.h>

#include <string>

// That the writer's text reads back is the round trip of the module's request and of the
// animation file, both written with the host's writer. Truncated and unterminated
// documents are the conformance corpus's n_structure_unclosed_* and n_string_unterminated
// files; a 50 MB string goes through this parser in FastPath.HugeStringIsReadWhole.
// Refused documents leaving the output as it was, and numbers at the edges of a double,
// are the module readers' tests on their GeneralText path (RefusedTexts..., and
// FastPath.NumbersConvertAsTheHostTreeConvertsThem, which holds this parser to simdjson).
namespace
{
bool DeserializeText(const FString& Text, TSharedPtr<FJsonValue>& OutValue)
{
    return FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Text), OutValue);
}

bool DeserializeUtf8(std::string_view Utf8, TSharedPtr<FJsonValue>& OutValue)
{
    return FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Utf8), OutValue);
}
} // namespace

TEST(JsonReader, TextSurvivesBothReadersWhole)
{
    // NUL, a character beyond the BMP, and raw non-ASCII text in keys and values.
    const std::string Utf8 = "{\"cl\xc3\xa9\":\"a\\u0000b\",\"s\":\"\\ud83d\\ude00\xe2\x82\xac\"}";
    TSharedPtr<FJsonValue> FromBytes;
    TSharedPtr<FJsonValue> FromText;
    ASSERT_TRUE(DeserializeUtf8(Utf8, FromBytes));
    ASSERT_TRUE(DeserializeText(FString::FromUTF8(Utf8), FromText));
    for (const TSharedPtr<FJsonValue>& Value : {FromBytes, FromText})
    {
        const TSharedPtr<FJsonObject>& Object = Value->AsObject();
        ASSERT_TRUE(Object);
        EXPECT_EQ(Object->GetStringField(TEXT("CL\u00e9")).GetStd(), std::u16string(u"a\0b", 3));
        EXPECT_EQ(Object->GetStringField(TEXT("s")).GetStd(), u"\U0001F600\u20AC");
    }
    TArray<uint8> Bytes;
    Bytes.Append(reinterpret_cast<const uint8*>(Utf8.data()), static_cast<int32>(Utf8.size()));
    TSharedPtr<FJsonObject> FromArray;
    EXPECT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Bytes), FromArray));
}

TEST(JsonReader, SurrogatesAndBadBytesDoNotCrash)
{
    // A lone surrogate in host text becomes U+FFFD on the way to UTF-8.
    TSharedPtr<FJsonValue> Value;
    const TCHAR LoneHigh[] = {u'[', u'"', 0xD800, u'"', u',', u'"', 0xDC00, u'x', u'"', u']', 0};
    ASSERT_TRUE(DeserializeText(FString(LoneHigh), Value));
    EXPECT_EQ(Value->AsArray()[0]->AsString().GetStd(), u"\uFFFD");
    EXPECT_EQ(Value->AsArray()[1]->AsString().GetStd(), u"\uFFFDx");
    const TCHAR TrailingHigh[] = {u'[', u'1', u']', 0xD800, 0};
    EXPECT_FALSE(DeserializeText(FString(TrailingHigh), Value));

    // An escaped lone surrogate names no character; the parser refuses it.
    EXPECT_FALSE(DeserializeText(TEXT(R"(["\ud800"])"), Value));
    EXPECT_FALSE(DeserializeText(TEXT(R"(["\udc00\ud800"])"), Value));
    EXPECT_FALSE(DeserializeUtf8("[\"\xed\xa0\x80\"]", Value));
    EXPECT_FALSE(DeserializeUtf8("[\"\xff\"]", Value));
    EXPECT_FALSE(DeserializeUtf8(std::string_view("[\"\xe2\x82", 4), Value));
}
