#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(String, SanitizeFloatTrimsToTheMinimumFractionalDigits)
{
    EXPECT_EQ(FString::SanitizeFloat(0.0).GetStd(), u"0.0");
    EXPECT_EQ(FString::SanitizeFloat(0.25).GetStd(), u"0.25");
    EXPECT_EQ(FString::SanitizeFloat(2.0).GetStd(), u"2.0");
    EXPECT_EQ(FString::SanitizeFloat(-5.5).GetStd(), u"-5.5");
    EXPECT_EQ(FString::SanitizeFloat(2.0, 0).GetStd(), u"2");
    EXPECT_EQ(FString::SanitizeFloat(2.5, 3).GetStd(), u"2.500");
    // Six places, rounded on the exact binary value: 0.1f is 0.100000001490116...
    EXPECT_EQ(FString::SanitizeFloat(static_cast<double>(0.1f)).GetStd(), u"0.1");
    EXPECT_EQ(FString::SanitizeFloat(1.0000005).GetStd(), u"1.000001");
    EXPECT_EQ(FString::SanitizeFloat(0.0000004).GetStd(), u"0.0");
    EXPECT_EQ(FString::SanitizeFloat(1e20).GetStd(), u"100000000000000000000.0");
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
