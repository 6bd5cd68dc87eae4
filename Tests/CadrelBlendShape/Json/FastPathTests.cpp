#include "LogCapture.h"
#include "ReadPaths.h"
#include "RecordText.h"

#include <cstdlib>
#include <vector>

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
// must change nothing: it is filled with what would continue a string, a number,
// a container, or a list of numbers up to the end of the allocation.
TArray<uint8> BytesWithRoom(const std::string& Json, const std::string& Pattern)
{
    std::string Room;
    while (Room.size() < 128)
    {
        Room += Pattern;
    }
    TArray<uint8> Padded = Bytes(Json + Room);
    Padded.SetNum(static_cast<int32>(Json.size()));
    return Padded;
}

void ExpectSameRecords(const std::string& Json)
{
    ExpectSameRecords(Bytes(Json), Json.substr(0, 80));
    ExpectSameRecords(BytesWithRoom(Json, "\"1e[{\\"), Json.substr(0, 80));
    ExpectSameRecords(BytesWithRoom(Json, "0.5,"), Json.substr(0, 80));
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

// Arrays of short plain numbers are read straight from the text; whatever falls
// outside that shape, by a digit, a byte or the end of the text, must read the
// same through the general path.
TEST(FastPath, PlainNumberArraysReadAsTheHostTreeReadsThem)
{
    // Lists read straight from the text: fifteen digits in every split, values that
    // a multiplication by the reciprocal would round wrong, layouts changing from
    // one number to the next, and whitespace.
    std::vector<std::string> Rows = {
        "0.12345678901234,12345678.1234567,1234567.12345678,1.00000000000000,0.00000000000001",
        "0.1,0.2,0.3,0.7,2.675,1.0000000000001,99999999,0.99999999999999,12345678",
        "0.5,12.25,-3.125,0.000001,1234567.5,7,-0,-0.0,0,0.0,-7,10,100,0.123456",
        " 0.5 ,\n1.25\t,\r-2.5 ",
        "1",
    };
    // Numbers and shapes the direct reading leaves to the general path, which must
    // then read the whole list afresh, wherever in it they stand.
    const char* const Others[] = {
        "0.1234567890123456",
        "0.12345678901234567",
        "123456789",
        "123456789012345",
        "12345678.12345678",
        "12345678.1234567890123456",
        "1.5e3",
        "1e3",
        "2E-2",
        "01",
        "-01",
        "00",
        "1.",
        "-",
        "-.5",
        ".5",
        "+1",
        "0x1",
        "1 2",
        "1,,2",
        "1.2.3",
        "-0-",
        "1-2",
        "\"0.5\"",
        "true",
        "null",
        "[1]",
        "{}",
        "",
        "0.5]",
    };
    for (const char* Other : Others)
    {
        Rows.push_back(std::string("0.25,0.5,") + Other);
        Rows.push_back(Other + std::string(",0.25,0.5"));
    }
    for (const std::string& Row : Rows)
    {
        // The same list once as the only thing in the text, once followed by more.
        const std::string Frame = R"({"blendshapes":[)" + Row + R"(],"bones":[{"eul":[)" + Row + "]}]}";
        ExpectSameRecords(R"({"frames":[)" + Frame + R"(],"weightMat":[[)" + Row + "]]}");
        ExpectSameRecords(R"({"weightMat":[[)" + Row + R"(],[)" + Row + R"(]],"frames":[)" + Frame + "," +
                          Frame + R"(],"version":"padding past the last list of numbers"})");
    }
    // A text cut inside a list is refused, however the bytes after it continue.
    ExpectSameRecords(R"({"version":"v","weightMat":[[0.125,0.25,0.5,0.75,0.875,1.0,0.1,0.2,0.3,0.4,)");
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
