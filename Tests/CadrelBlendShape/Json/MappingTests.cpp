#include "CadrelJson.h"
#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

#include <gtest/gtest.h>

TEST(Mappings, NamesRoundTripIgnoringCaseAndUnknownNamesGive255)
{
    for (const EBlendShapeType Type : {EBlendShapeType::AUDIO2FACE, EBlendShapeType::VIRETHIO})
    {
        EXPECT_EQ(CadrelJson::GetType(CadrelJson::GetType(Type)), Type);
    }
    EXPECT_EQ(CadrelJson::GetType(EBlendShapeType::AUDIO2FACE).GetStd(), u"AUDIO2FACE");
    EXPECT_EQ(CadrelJson::GetType(EBlendShapeType::VIRETHIO).GetStd(), u"VIRETHIO");
    EXPECT_EQ(CadrelJson::GetType(TEXT("audio2face")), EBlendShapeType::AUDIO2FACE);
    for (const TCHAR* Unknown :
         {TEXT(""), TEXT("EBlendShapeType::AUDIO2FACE"), TEXT("AUDIO2FACE "), TEXT("CUSTOM")})
    {
        EXPECT_EQ(static_cast<uint8>(CadrelJson::GetType(Unknown)), 255) << FString(Unknown).ToUTF8();
    }

    EXPECT_EQ(CadrelJson::GetRigType(TEXT("vireth")), ECadrelRigType::VIRETH);
    EXPECT_EQ(CadrelJson::GetRigType(TEXT("CUSTOM")), ECadrelRigType::CUSTOM);
    EXPECT_EQ(static_cast<uint8>(CadrelJson::GetRigType(TEXT("VIRETHIO"))), 255);

    EXPECT_EQ(CadrelJson::GetExplicitEmotion(TEXT("SUPPLICATION")), ECadrelExplicitEmotion::CEE_Supplication);
    EXPECT_EQ(static_cast<uint8>(CadrelJson::GetExplicitEmotion(TEXT("CEE_Calm"))), 255);
}

TEST(Mappings, EndpointsFollowTheSettingsAndTheEngineConfigurationAtEveryCall)
{
    UCadrelSetting* Settings = GetMutableDefault<UCadrelSetting>();
    ASSERT_NE(Settings, nullptr);
    const FString Saved = Settings->A2FURL;
    const std::pair<const TCHAR*, const char16_t*> A2FCases[] = {
        {TEXT("http://127.0.0.1:9011"), u"http://127.0.0.1:9011/bs/api/v1/zel"},
        {TEXT("http://127.0.0.1:9011/"), u"http://127.0.0.1:9011/bs/api/v1/zel"},
        {TEXT("http://h:1/base"), u"http://h:1/base/bs/api/v1/zel"},
        {TEXT(""), u"bs/api/v1/zel"},
    };
    for (const auto& [A2FURL, Expected] : A2FCases)
    {
        Settings->A2FURL = A2FURL;
        EXPECT_EQ(CadrelJson::GetBlendShapeURL(EBlendShapeType::AUDIO2FACE).GetStd(), Expected);
    }
    Settings->A2FURL = TEXT("http://127.0.0.1:9011");
    EXPECT_EQ(CadrelJson::GetStreamURL(EBlendShapeType::AUDIO2FACE).GetStd(),
              u"http://127.0.0.1:9011/live/api/v1/zel_stream");
    Settings->A2FURL = Saved;

    FString Cloud = CadrelJson::GetBlendShapeURL(EBlendShapeType::VIRETHIO);
    EXPECT_TRUE(Cloud.StartsWith(TEXT("https://"), ESearchCase::CaseSensitive));
    EXPECT_TRUE(Cloud.EndsWith(TEXT("/dh/api/v2/zel"), ESearchCase::CaseSensitive));
    GConfig->SetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), TEXT("http://127.0.0.1:8080/"), GEngineIni);
    EXPECT_EQ(CadrelJson::GetBlendShapeURL(EBlendShapeType::VIRETHIO).GetStd(),
              u"http://127.0.0.1:8080/dh/api/v2/zel");
    EXPECT_EQ(CadrelJson::GetStreamURL(EBlendShapeType::VIRETHIO).GetStd(),
              u"http://127.0.0.1:8080/dh/api/v1/zel_stream");
    GConfig->SetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), TEXT(""), GEngineIni);
    EXPECT_EQ(CadrelJson::GetBlendShapeURL(EBlendShapeType::VIRETHIO).GetStd(), Cloud.GetStd());

    const EBlendShapeType Unknown = CadrelJson::GetType(TEXT("nothing"));
    EXPECT_TRUE(CadrelJson::GetBlendShapeURL(Unknown).IsEmpty());
    EXPECT_TRUE(CadrelJson::GetStreamURL(Unknown).IsEmpty());
}
