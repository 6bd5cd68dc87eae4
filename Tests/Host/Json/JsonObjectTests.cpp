#include "Dom/JsonObject.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

#include <gtest/gtest.h>

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
