#include "CadrelJson.h"

#include <gtest/gtest.h>

TEST(VelkReaders, InfoOverwritesEveryFieldAndTruncates)
{
    FCadrelVelkInfo Info;
    CadrelJson::StringToVelkInfo(
        TEXT(R"({"VelkHost":"10.0.0.2","velkport":-5.9,"AudioPort":"902","TimeLength":2.7,"x":1})"), Info);
    EXPECT_EQ(Info.VelkHost.GetStd(), u"10.0.0.2");
    EXPECT_EQ(Info.VelkPort, -5);
    EXPECT_EQ(Info.AudioPort, 902);
    EXPECT_EQ(Info.AudioTime, 2.0f);

    CadrelJson::StringToVelkInfo(TEXT(R"({"TimeLength":1e12})"), Info);
    EXPECT_TRUE(Info.VelkHost.IsEmpty());
    EXPECT_EQ(Info.VelkPort, 0);
    EXPECT_EQ(Info.AudioTime, static_cast<float>(INT32_MAX));

    FCadrelVelkInfo Untouched;
    for (const TCHAR* Json : {TEXT(""), TEXT("[{\"VelkPort\":1}]"), TEXT("\"x\""), TEXT("{\"VelkPort\":1")})
    {
        CadrelJson::StringToVelkInfo(Json, Untouched);
    }
    EXPECT_EQ(Untouched.VelkHost.GetStd(), u"127.0.0.1");
    EXPECT_EQ(Untouched.VelkPort, -1);
    EXPECT_EQ(Untouched.AudioPort, -1);
}

TEST(VelkReaders, TokenIsTakenOnlyFromAStringFormUnderToken)
{
    FString Token = TEXT("old");
    for (const TCHAR* Json : {TEXT(""), TEXT("{}"), TEXT("{\"token\":null}"), TEXT("{\"token\":{}}"),
                              TEXT("[{\"token\":\"x\"}]")})
    {
        CadrelJson::StringToToken(Json, Token);
    }
    EXPECT_EQ(Token.GetStd(), u"old");
    CadrelJson::StringToToken(TEXT("{\"TOKEN\":\" a b \"}"), Token);
    EXPECT_EQ(Token.GetStd(), u" a b ");
    CadrelJson::StringToToken(TEXT("{\"token\":\"\"}"), Token);
    EXPECT_TRUE(Token.IsEmpty());
}
