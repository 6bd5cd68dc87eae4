#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(Guid, FormatsAndParsesEveryTextForm)
{
    const FGuid Guid(0x5A0E8C1F, 0x2B3D4E6F, 0x8091A2B3, 0xC4D5E6F7);
    EXPECT_EQ(Guid.ToString(EGuidFormats::Digits).GetStd(), u"5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7");
    FString Appended(TEXT("id="));
    Guid.AppendString(Appended, EGuidFormats::Digits);
    EXPECT_EQ(Appended.GetStd(), u"id=5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7");

    for (const EGuidFormats Format :
         {EGuidFormats::Digits, EGuidFormats::DigitsWithHyphens, EGuidFormats::DigitsWithHyphensInBraces,
          EGuidFormats::DigitsWithHyphensInParentheses, EGuidFormats::DigitsLower,
          EGuidFormats::DigitsWithHyphensLower})
    {
        FGuid Parsed;
        EXPECT_TRUE(FGuid::Parse(Guid.ToString(Format), Parsed)) << Guid.ToString(Format).ToUTF8();
        EXPECT_EQ(Parsed, Guid);
    }
    EXPECT_EQ(Guid.ToString(EGuidFormats::DigitsWithHyphensInBraces).GetStd(),
              u"{5A0E8C1F-2B3D-4E6F-8091-A2B3C4D5E6F7}");
}

TEST(Guid, GarbageFailsAndInvalidates)
{
    for (const TCHAR* Text :
         {TEXT(""), TEXT("not a guid"), TEXT("5A0E8C1F2B3D4E6F8091A2B3C4D5E6FG"),
          TEXT("5A0E8C1F-2B3D-4E6F-8091-A2B3C4D5E6F"), TEXT("{5A0E8C1F-2B3D-4E6F-8091-A2B3C4D5E6F7)"),
          TEXT("5A0E8C1F2B3D-4E6F-8091-A2B3C4D5E6F7")})
    {
        FGuid Parsed(1, 2, 3, 4);
        EXPECT_FALSE(FGuid::Parse(Text, Parsed)) << FString(Text).ToUTF8();
        EXPECT_FALSE(Parsed.IsValid());
    }
}
