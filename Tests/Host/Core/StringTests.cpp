#include "CoreMinimal.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

TEST(String, SanitizeFloatTrimsToTheMinimumFractionalDigits)
{
    // Six places, rounded on the exact binary value: 0.1f is 0.100000001490116...
    const std::tuple<double, int32, std::u16string> Cases[] = {
        {0.0, 1, u"0.0"},       {0.25, 1, u"0.25"},
        {2.0, 1, u"2.0"},       {-5.5, 1, u"-5.5"},
        {2.0, 0, u"2"},         {2.5, 3, u"2.500"},
        {0.1f, 1, u"0.1"},      {1.0000005, 1, u"1.000001"},
        {0.0000004, 1, u"0.0"}, {1e20, 1, u"100000000000000000000.0"}};
    for (const auto& [Value, Digits, Expected] : Cases)
    {
        EXPECT_EQ(FString::SanitizeFloat(Value, Digits).GetStd(), Expected) << Value;
    }
}

TEST(String, ComparisonAndHashIgnoreCaseUnlessAsked)
{
    const FString Lower(TEXT("frames"));
    const FString Mixed(TEXT("Frames"));
    EXPECT_TRUE(Lower == Mixed);
    EXPECT_FALSE(Lower.Equals(Mixed, ESearchCase::CaseSensitive));
    EXPECT_EQ(GetTypeHash(Lower), GetTypeHash(Mixed));
    EXPECT_TRUE(Mixed.StartsWith(TEXT("FRA")));
    EXPECT_EQ(Mixed.Find(TEXT("MES")), 3);
    EXPECT_EQ(FString(TEXT("AbC-Z")).ToLower().GetStd(), u"abc-z");
}

TEST(String, EditingOperations)
{
    FString Path(TEXT("http://127.0.0.1:9011"));
    Path.PathAppend(TEXT("bs/api/v1/zel"), 13);
    EXPECT_EQ(Path.GetStd(), u"http://127.0.0.1:9011/bs/api/v1/zel");
    FString Slashed(TEXT("dir/"));
    Slashed.PathAppend(FString(TEXT("file")));
    EXPECT_EQ(Slashed.GetStd(), u"dir/file");
    FString Empty;
    Empty.PathAppend(FString(TEXT("file")));
    EXPECT_EQ(Empty.GetStd(), u"file");

    FString Name(TEXT("EBlendShapeType::AUDIO2FACE"));
    Name.RemoveAt(0, 17);
    EXPECT_EQ(Name.GetStd(), u"AUDIO2FACE");

    FString Number;
    Number.AppendInt(-2147483647 - 1);
    EXPECT_EQ(Number.GetStd(), u"-2147483648");
    EXPECT_EQ(FString(TEXT("abc")).Mid(1, 100).GetStd(), u"bc");
    EXPECT_EQ(FString(TEXT("abc")).Mid(-5, 2).GetStd(), u"ab");
}

TEST(String, PrintfTakesWideStringsAndNumbers)
{
    const FString Text =
        FString::Printf(TEXT("%s=%d %.2f %5.1f%% %c %u"), TEXT("Delay"), -3, 0.125, 2.25, u'x', 7u);
    EXPECT_EQ(Text.GetStd(), u"Delay=-3 0.12   2.2% x 7");
    EXPECT_EQ(FString::Printf(TEXT("%lld"), static_cast<long long>(9007199254740993LL)).GetStd(),
              u"9007199254740993");
}

TEST(String, Utf8RoundTripAndBrokenInput)
{
    const FString Text(u"gr\u00FC\u00DF \u4E2D \U0001F600");
    EXPECT_EQ(FString::FromUTF8(Text.ToUTF8()), Text);
    EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Text)), Text.ToUTF8());

    const char16_t LoneHigh[] = {u'a', 0xD800, u'b', 0};
    const char16_t LoneLow[] = {0xDC00, 0};
    const char16_t Truncated[] = {u'a', 0xD83D, 0};
    EXPECT_EQ(FString(LoneHigh).ToUTF8(), "a\xEF\xBF\xBD"
                                          "b");
    EXPECT_EQ(FString(LoneLow).ToUTF8(), "\xEF\xBF\xBD");
    EXPECT_EQ(FString(Truncated).ToUTF8(), "a\xEF\xBF\xBD");

    EXPECT_EQ(FString::FromUTF8("a\xC3").GetStd(), u"a\uFFFD");
    EXPECT_EQ(FString::FromUTF8(std::string_view("n\0l", 3)).Len(), 3);
}
