#include "Dom/JsonObject.h"
#include "LogCapture.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
TSharedPtr<FJsonObject> ParseObject(const TCHAR* Text)
{
    TSharedPtr<FJsonObject> Object;
    EXPECT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Text), Object,
                                             FJsonSerializer::EFlags::None));
    return Object;
}
} // namespace

TEST(JsonObject, KeysIgnoreLetterCaseAndLaterDuplicatesWin)
{
    const TSharedPtr<FJsonObject> Object =
        ParseObject(TEXT(R"({"Frames":[1,2],"fps":30,"FPS":60,"b":true,"frames":[3]})"));
    ASSERT_TRUE(Object);
    EXPECT_TRUE(Object->HasField(TEXT("FRAMES")));
    ASSERT_EQ(Object->GetArrayField(TEXT("frames")).Num(), 1);
    EXPECT_EQ(Object->GetArrayField(TEXT("frames"))[0]->AsNumber(), 3.0);
    EXPECT_EQ(Object->GetNumberField(TEXT("Fps")), 60.0);
    // A replaced key keeps the place of its first appearance.
    ASSERT_EQ(Object->Values.Num(), 3);
    TArray<FString> Keys;
    for (const auto& Pair : Object->Values)
    {
        Keys.Add(Pair.Key);
    }
    EXPECT_EQ(Keys, (TArray<FString>{TEXT("Frames"), TEXT("fps"), TEXT("b")}));
}

TEST(JsonObject, AbsentAndWrongTypedKeysGiveFallbacksQuietly)
{
    const TSharedPtr<FJsonObject> Object =
        ParseObject(TEXT(R"({"a":[1],"o":{"k":1},"n":0.25,"i":12,"t":true,"z":null,"big":1e300})"));
    ASSERT_TRUE(Object);
    FLogCapture Log;
    EXPECT_FALSE(Object->HasField(TEXT("absent")));
    EXPECT_TRUE(Object->HasField(TEXT("z")));
    for (const TCHAR* Key : {TEXT("absent"), TEXT("z")})
    {
        EXPECT_TRUE(Object->GetStringField(Key).IsEmpty());
        EXPECT_EQ(Object->GetNumberField(Key), 0.0);
        EXPECT_EQ(Object->GetIntegerField(Key), 0);
        EXPECT_FALSE(Object->GetBoolField(Key));
        EXPECT_TRUE(Object->GetArrayField(Key).IsEmpty());
        EXPECT_FALSE(Object->GetObjectField(Key).IsValid());
    }
    EXPECT_FALSE(Object->GetObjectField(TEXT("a")).IsValid());
    EXPECT_TRUE(Object->GetArrayField(TEXT("o")).IsEmpty());
    EXPECT_EQ(Object->GetNumberField(TEXT("t")), 0.0);
    EXPECT_FALSE(Object->GetBoolField(TEXT("i")));
    EXPECT_TRUE(Object->GetStringField(TEXT("a")).IsEmpty());
    EXPECT_TRUE(Object->GetStringField(TEXT("o")).IsEmpty());

    FString Token(TEXT("kept"));
    double Number = 7.0;
    EXPECT_FALSE(Object->TryGetStringField(TEXT("absent"), Token));
    EXPECT_FALSE(Object->TryGetStringField(TEXT("z"), Token));
    EXPECT_FALSE(Object->TryGetNumberField(TEXT("o"), Number));
    EXPECT_EQ(Token, TEXT("kept"));
    EXPECT_EQ(Number, 7.0);
    EXPECT_TRUE(Log.Lines.IsEmpty());

    // Numbers and booleans have a string form; numbers the shortest that reads back.
    EXPECT_EQ(Object->GetStringField(TEXT("n")).GetStd(), u"0.25");
    EXPECT_EQ(Object->GetStringField(TEXT("i")).GetStd(), u"12");
    EXPECT_EQ(Object->GetStringField(TEXT("t")).GetStd(), u"true");
    EXPECT_EQ(Object->GetStringField(TEXT("big")).GetStd(), u"1e+300");
    EXPECT_EQ(Object->GetObjectField(TEXT("o"))->GetNumberField(TEXT("K")), 1.0);
}

TEST(JsonObject, StringsHoldingOneJsonNumberReadAsThatNumber)
{
    const TSharedPtr<FJsonObject> Object = ParseObject(
        TEXT(R"({"prev_size":"12","latency":"0.25","neg":"-1.5E3","zero":"-0","tiny":"1e-400"})"));
    ASSERT_TRUE(Object);
    EXPECT_EQ(Object->GetNumberField(TEXT("prev_size")), 12.0);
    EXPECT_EQ(Object->GetNumberField(TEXT("latency")), 0.25);
    EXPECT_EQ(Object->GetNumberField(TEXT("neg")), -1500.0);
    EXPECT_EQ(Object->GetNumberField(TEXT("zero")), 0.0);
    EXPECT_EQ(Object->GetNumberField(TEXT("tiny")), 0.0);
    EXPECT_EQ(Object->GetIntegerField(TEXT("prev_size")), 12);

    const TCHAR* NotNumbers[] = {TEXT(""),    TEXT(" 12"), TEXT("12 "),  TEXT("+12"),         TEXT("012"),
                                 TEXT("1."),  TEXT(".5"),  TEXT("0x10"), TEXT("12a"),         TEXT("1e400"),
                                 TEXT("NaN"), TEXT("-"),   TEXT("1 2"),  TEXT("Infinity"),    TEXT("\"1\""),
                                 TEXT("[1]"), TEXT("1,2"), TEXT("1\n"),  TEXT("\uFF11\uFF12")};
    for (const TCHAR* Text : NotNumbers)
    {
        const FJsonValueString Value{FString(Text)};
        double Number = 7.0;
        EXPECT_FALSE(Value.TryGetNumber(Number)) << FString(Text).ToUTF8();
        EXPECT_EQ(Number, 7.0);
        EXPECT_EQ(Value.AsNumber(), 0.0);
    }
}

TEST(JsonObject, IntegerConversionsTruncateAndSaturate)
{
    FJsonObject Object;
    Object.SetNumberField(TEXT("a"), 12.9);
    Object.SetNumberField(TEXT("b"), -5.9);
    Object.SetNumberField(TEXT("c"), 1e12);
    Object.SetNumberField(TEXT("d"), -1e300);
    Object.SetNumberField(TEXT("e"), std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(Object.GetIntegerField(TEXT("a")), 12);
    EXPECT_EQ(Object.GetIntegerField(TEXT("b")), -5);
    EXPECT_EQ(Object.GetIntegerField(TEXT("c")), std::numeric_limits<int32>::max());
    EXPECT_EQ(Object.GetIntegerField(TEXT("d")), std::numeric_limits<int32>::min());
    EXPECT_EQ(Object.GetIntegerField(TEXT("e")), 0);
    int64 Wide = 0;
    EXPECT_TRUE(Object.TryGetNumberField(TEXT("c"), Wide));
    EXPECT_EQ(Wide, 1000000000000);
    EXPECT_TRUE(Object.TryGetNumberField(TEXT("d"), Wide));
    EXPECT_EQ(Wide, std::numeric_limits<int64>::min());
    // NaN has no JSON text.
    EXPECT_TRUE(Object.GetStringField(TEXT("e")).IsEmpty());
}

TEST(JsonObject, WrittenNumbersReadBackAsTheSameDouble)
{
    // Whole numbers past 64 bits must not come out as bare digits, which no reader
    // takes as a double.
    for (const double Value : {0.1, -0.0, 5e-324, 1e300, -0x1p63, 0x1p64, 7.477080264543605e20, 123456789.0})
    {
        FString Text;
        const auto Writer = TJsonWriterFactory<>::Create(&Text);
        Writer->WriteObjectStart();
        Writer->WriteValue(TEXT("n"), Value);
        Writer->WriteObjectEnd();
        ASSERT_TRUE(Writer->Close());
        double Read = 0.0;
        ASSERT_TRUE(ParseObject(*Text)->TryGetNumberField(TEXT("n"), Read)) << TCHAR_TO_UTF8(*Text);
        EXPECT_EQ(Read, Value) << TCHAR_TO_UTF8(*Text);
    }
}

TEST(JsonObject, SettersReplaceAndRemoveIgnoreCase)
{
    FJsonObject Object;
    Object.SetStringField(TEXT("Token"), TEXT("abc"));
    Object.SetNumberField(TEXT("TOKEN"), 2.0);
    EXPECT_EQ(Object.Values.Num(), 1);
    EXPECT_EQ(Object.GetStringField(TEXT("token")).GetStd(), u"2");
    Object.RemoveField(TEXT("tOKEN"));
    EXPECT_FALSE(Object.HasField(TEXT("token")));

    // An object value holding no object is not an object.
    Object.SetObjectField(TEXT("child"), nullptr);
    const TSharedPtr<FJsonObject>* Found = nullptr;
    EXPECT_FALSE(Object.TryGetObjectField(TEXT("child"), Found));
    EXPECT_EQ(Found, nullptr);
}
