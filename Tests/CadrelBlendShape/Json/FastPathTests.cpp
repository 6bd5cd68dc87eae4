#include "LogCapture.h"
#include "ReadPaths.h"
#include "RecordText.h"

#include <cstdlib>

// The fast readers must leave exactly the records of the general path, on texts
// chosen where an on-demand walk could part from the host's parser and accessors.
namespace
{
std::string Nested(int32 Depth, const std::string& Inner)
{
    return std::string(static_cast<SIZE_T>(Depth), '[') + Inner +
           std::string(static_cast<SIZE_T>(Depth), ']');
}

FCadrelZELResponse Filled()
{
    FCadrelZELResponse Response;
    Response.Version = TEXT("before");
    Response.Frames.AddDefaulted();
    return Response;
}

template <typename InputType> void ExpectSameRecords(const InputType& Input, const std::string& What)
{
    FCadrelZELResponse Fast = Filled();
    FCadrelZELResponse General = Filled();
    CadrelJson::StringToZELResponse(Input, Fast);
    CadrelJson::StringToZELResponse_Internal(Input, General);
    EXPECT_EQ(CadrelRecordText::Of(Fast), CadrelRecordText::Of(General)) << What;

    FCadrelAudio2FaceBlendShapeInfo FastExport;
    FCadrelAudio2FaceBlendShapeInfo GeneralExport;
    CadrelJson::StringToAudio2FaceResponse(Input, FastExport);
    CadrelJson::StringToAudio2FaceResponse_Internal(Input, GeneralExport);
    EXPECT_EQ(CadrelRecordText::Of(FastExport), CadrelRecordText::Of(GeneralExport)) << What;
}

// Bytes with room behind them are parsed where they lie, so what that room holds
// must change nothing: it is filled with what would continue a string, a number or
// a container.
TArray<uint8> BytesWithRoom(const std::string& Json)
{
    std::string Room;
    while (Room.size() < 128)
    {
        Room += "\"1e[{\\";
    }
    TArray<uint8> Padded = Bytes(Json + Room);
    Padded.SetNum(static_cast<int32>(Json.size()));
    return Padded;
}

void ExpectSameRecords(const std::string& Json)
{
    ExpectSameRecords(Bytes(Json), Json.substr(0, 80));
    ExpectSameRecords(BytesWithRoom(Json), Json.substr(0, 80));
    ExpectSameRecords(FString::FromUTF8(Json), Json.substr(0, 80));
}

FString ReadVersion(const std::string& Json)
{
    FCadrelZELResponse Response = Filled();
    CadrelJson::StringToZELResponse(Bytes(Json), Response);
    return Response.Version;
}
} // namespace

TEST(FastPath, NumbersConvertAsTheHostTreeConvertsThem)
{
    ExpectSameRecords(R"({"frames":[{"blendshapes":[-0,-0.0,1e-400,-1e-400,0.1e1,1E+2,)"
                      R"(9223372036854775807,9223372036854775808,18446744073709551615,-9223372036854775808,)"
                      R"(9007199254740993,4.9e-324,1.7976931348623157e308,0.0000000000000000000000000,)"
                      R"("-0","1e400","0x1"," 1","1 ","","1.5e3","+1","01"]}],)"
                      R"("exportFps":"29.97","weightMat":[[-0,"-0.0",1e-400]],"fps":-0.9,)"
                      R"("blendShapesNames":[-0,-0.0,1e21,1e-7,123456789012,true,null,[1],{"a":1}]})");

    // More than 19 significant digits take the parser's slow path, whose value must not get lost.
    const std::string Json =
        R"({"frames":[{"blendshapes":[1.1111111111111111111111111111,1.111111111111111111,)"
        R"(-0.000000000000000000000000000012345678901234567890]}],)"
        R"("blendShapesNames":[2.2222222222222222222222222]})";
    ExpectSameRecords(Json);
    FCadrelZELResponse Response;
    CadrelJson::StringToZELResponse(Bytes(Json), Response);
    ASSERT_EQ(Response.Frames.Num(), 1);
    EXPECT_EQ(Response.Frames[0].Blendshapes,
              (TArray<double>{1.1111111111111112, 1.1111111111111112, -1.234567890123456789e-29}));
    EXPECT_EQ(Response.BlendShapesNames[0].GetStd(), u"2.2222222222222223");
}

TEST(FastPath, StringsReadAsTheHostTreeReadsThem)
{
    ExpectSameRecords(R"({"version":"\u00e9\ud83d\ude00\/\b\f\n\r\t\"\\","platform":"a\u0000b",)"
                      R"("bonesNames":["\udc00","\u0041","caf\u00c3\u00a9"],"trackPath":"\udbff\udfff"})");
    ExpectSameRecords(R"({"fr\u0061mes":[{"blendshapes":[1]}],"\u0046PS":2})");
    // Host text with lone surrogates, which become U+FFFD on the way to UTF-8.
    ExpectSameRecords(FString(std::u16string(u"{\"version\":\"a\xD800z\",\"fps\":\"\xDC00\"}")),
                      "surrogates");
    // Invalid UTF-8 bytes are refused, while host text made from them was repaired before.
    const std::string Invalid = "{\"version\":\"\xC3\x28\",\"fps\":3}";
    ExpectSameRecords(Invalid);
    EXPECT_EQ(ReadVersion(Invalid).GetStd(), u"before");
}

TEST(FastPath, NestingLimitIsTheHostParsersToTheLevel)
{
    // The host's parser allows 1023 containers holding something, one inside the other.
    const std::pair<std::string, bool> Cases[] = {
        {R"({"version":"v","x":)" + Nested(1023, "") + "}", true},
        {R"({"version":"v","x":)" + Nested(1024, "") + "}", false},
        {R"({"version":"v","x":)" + Nested(1022, "1") + "}", true},
        {R"({"version":"v","x":)" + Nested(1023, "1") + "}", false},
        {R"({"version":"v","x":)" + Nested(1021, R"({"a":{}})") + "}", true},
        {R"({"version":"v","x":)" + Nested(1022, R"({"a":{}})") + "}", false},
        {R"({"version":"v","frames":)" + Nested(1023, "") + "}", true},
        {R"({"version":"v","frames":)" + Nested(1024, "") + "}", false},
        {R"({"version":"v","frames":)" + Nested(100000, "") + "}", false},
    };
    for (const auto& [Json, bAccepted] : Cases)
    {
        ExpectSameRecords(Json);
        EXPECT_EQ(ReadVersion(Json).GetStd(), bAccepted ? u"v" : u"before") << Json.size();
    }
}

TEST(FastPath, HugeStringIsReadWhole)
{
    const std::string Json =
        R"({"x":")" + std::string(50 << 20, 'a') + R"(","version":")" + std::string(1 << 20, 'b') + R"("})";
    ExpectSameRecords(Bytes(Json), "50 MB string");
    EXPECT_EQ(ReadVersion(Json).Len(), 1 << 20);
}

TEST(FastPath, ShortEulIsReportedOncePerRunWhicheverPathReadIt)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // A fresh process, so that no earlier test has used up the one report; it exits
    // with the number of reports.
    EXPECT_EXIT(
        {
            FLogCapture Reports;
            const std::string Json = R"({"frames":[{"bones":[{"eul":[1,2]}]}]})";
            FCadrelZELResponse Response;
            CadrelJson::StringToZELResponse(Bytes(Json), Response);
            CadrelJson::StringToZELResponse_Internal(Bytes(Json), Response);
            CadrelJson::StringToZELResponse(Bytes(Json), Response);
            std::exit(Response.Frames.Num() == 3 ? Reports.CountContaining(TEXT("Num >= 3")) : -1);
        },
        testing::ExitedWithCode(1), "");
}
