#include "CadrelJson.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
// FString compares without regard to case, so documents are compared as UTF-8 bytes.
std::string Write(const FCadrelZELRequest& Request)
{
    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    return Json.ToUTF8();
}

class FCultureOverride
{
public:
    explicit FCultureOverride(const FString& Name)
        : Previous(FInternationalization::Get().GetCurrentCulture()->GetName())
    {
        FInternationalization::Get().SetCurrentCulture(Name);
    }
    ~FCultureOverride() { FInternationalization::Get().SetCurrentCulture(Previous); }

private:
    FString Previous;
};

std::string ZelText(ECadrelExplicitEmotion Emotion, ECadrelRigType RigType)
{
    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.ExplicitEmotion = Emotion;
    Request.Data.Attributes.Zel.RigType = RigType;
    return Write(Request);
}
} // namespace

TEST(RequestWriter, DefaultRequestIsTheServersDocumentAndReplacesOldText)
{
    const FCultureOverride NoCulture(TEXT(""));
    FCadrelZELRequest Request;
    Request.Data.ID = FGuid(0x5A0E8C1F, 0x2B3D4E6F, 0x8091A2B3, 0xC4D5E6F7);
    FString Json = TEXT("left over");
    CadrelJson::ZELRequestToString(Request, Json);
    EXPECT_EQ(
        Json.ToUTF8(),
        R"({"data":{"id":"5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7","type":"cadrel","attributes":{"zel":{)"
        R"("platform":"orvane","rigVersion":"shapes_2.0","rigType":"vireth","engine":"latest",)"
        R"("answerFormat":"json-anim","explicitEmotion":"calm","eyeMovementParameters":{"eyeMovementMode":)"
        R"("none"},"neckMovementParameters":{"neckMovementMode":"none"}}}},"meta":{"platform":"orvane",)"
        R"("platform_version":"5.1","editor":true,"plugin_version":"1.5.7","OS":"Windows","local":"zh-CN",)"
        R"("prev_type":"zel","prev_size":"0","latency":"0.0","prev_audio_length":0}})");
}

TEST(RequestWriter, MetaNumbersKeepTheirMixedForms)
{
    FCadrelZELRequest Request;
    Request.Meta.PrevSize = -5;
    Request.Meta.PrevAudioLength = -5;
    Request.Meta.Latency = 0.25f;
    Request.Meta.bEditor = false;
    const std::string Json = Write(Request);
    EXPECT_NE(Json.find(R"("editor":false,)"), std::string::npos);
    EXPECT_NE(Json.find(R"("prev_size":"-5","latency":"0.25","prev_audio_length":-5}})"), std::string::npos);

    Request.Meta.Latency = 2.0f;
    Request.Meta.PrevSize = 2147483647;
    EXPECT_NE(Write(Request).find(R"("prev_size":"2147483647","latency":"2.0")"), std::string::npos);
    // 0.1f widens to 0.100000001..., which six places round back to 0.1.
    Request.Meta.Latency = 0.1f;
    EXPECT_NE(Write(Request).find(R"("latency":"0.1")"), std::string::npos);
}

TEST(RequestWriter, StringsAreEscapedAndEmptyOnesKeptWithTheirKeys)
{
    FCadrelZELRequest Request;
    Request.Data.Type = FString(u"q\"b\\n\nt\tc\x01/\u00e9\U0001F600");
    Request.Meta.OS.Empty();
    const std::string Json = Write(Request);
    EXPECT_NE(Json.find("\"type\":\"q\\\"b\\\\n\\nt\\tc\\u0001/\u00e9\U0001F600\","), std::string::npos)
        << Json;
    EXPECT_NE(Json.find(R"("OS":"",)"), std::string::npos);
}

TEST(RequestWriter, EmotionsRigTypesAndMovementModesHaveTheServersNames)
{
    const char* const Names[] = {"angry",   "calm",          "curious",    "disgust", "doubt",
                                 "dreamy",  "embarrassment", "fear",       "flirt",   "happy",
                                 "playful", "positive",      "resentment", "shame",   "sorrow",
                                 "strict",  "supplication",  "surprise",   "wrath"};
    for (int Value = 0; Value < 19; ++Value)
    {
        const std::string Json = ZelText(static_cast<ECadrelExplicitEmotion>(Value), ECadrelRigType::VIRETH);
        EXPECT_NE(Json.find(std::string(R"("explicitEmotion":")") + Names[Value] + "\""), std::string::npos)
            << Value;
        // And the reader takes each name back to its enumerator.
        FCadrelZELRequest Read;
        CadrelJson::StringToZELRequest(FString::FromUTF8(Json), Read);
        EXPECT_EQ(static_cast<int>(Read.Data.Attributes.Zel.ExplicitEmotion), Value);
    }
    EXPECT_NE(ZelText(static_cast<ECadrelExplicitEmotion>(19), ECadrelRigType::VIRETH)
                  .find(R"("explicitEmotion":"")"),
              std::string::npos);

    EXPECT_NE(ZelText(ECadrelExplicitEmotion::CEE_Calm, ECadrelRigType::CUSTOM).find(R"("rigType":"custom")"),
              std::string::npos);
    EXPECT_NE(ZelText(ECadrelExplicitEmotion::CEE_Calm, static_cast<ECadrelRigType>(7))
                  .find(R"("rigType":"custom")"),
              std::string::npos);

    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.EyeMovementParameters.bEyeMovementMode = true;
    Request.Data.Attributes.Zel.NeckMovementParameters.bNeckMovementMode = true;
    EXPECT_NE(Write(Request).find(
                  R"({"eyeMovementMode":"mocap"},"neckMovementParameters":{"neckMovementMode":"mocap"})"),
              std::string::npos);
}
