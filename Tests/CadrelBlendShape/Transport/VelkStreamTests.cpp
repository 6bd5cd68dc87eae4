#include "CadrelVelkStream.h"
#include "HttpModule.h"
#include "LogCapture.h"
#include "TransportTestServers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <tuple>

namespace
{
struct FEnded
{
    std::vector<std::tuple<int32, int32, std::string>> Calls;
};

FCadrelVelkStreamQueueElement MakeElement(int32 MainIndex, int32 Index, const TArray<uint8>& Audio,
                                          FEnded& Ended)
{
    FCadrelZELRequestParam Param;
    Param.MainIndex = MainIndex;
    Param.Index = Index;
    Param.bStream = true;
    Param.LinkServerType = EBlendShapeType::AUDIO2FACE;
    FCadrelVelkStreamQueueElement Element(FCadrelZELRequest(), Param, Audio);
    Element.EndPlayDelegate.BindLambda([&Ended](int32 Main, int32 Each, const FString& Text)
                                       { Ended.Calls.emplace_back(Main, Each, Text.ToUTF8()); });
    return Element;
}

TArray<uint8> WavHeader(int32 ByteRate, int32 DataSize)
{
    TArray<uint8> Wav = MakeWav(8000, 0.0);
    std::memcpy(Wav.GetData() + 28, &ByteRate, 4);
    std::memcpy(Wav.GetData() + 40, &DataSize, 4);
    return Wav;
}
} // namespace

TEST(TransportVelkStream, SendsEachChunkThenWaitsHalfItsDurationPlusTheInterval)
{
    FLipsyncTestServer Server;
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    FLogCapture Log;
    FEnded Ended;
    const TSharedRef<FCadrelVelkStream> Stream = MakeShared<FCadrelVelkStream>();
    int32 Answers = 0;
    Stream->OnZELRequestComplete.BindLambda([&](FHttpRequestPtr, FHttpResponsePtr, bool) { ++Answers; });
    Stream->TickQueue(0.5f);
    EXPECT_TRUE(Log.Lines.IsEmpty());

    Stream->AddVelkStreamRequest(MakeElement(9, 0, MakeWav(16000, 2.0), Ended));
    Stream->AddVelkStreamRequest(MakeElement(9, 1, MakeWav(16000, 2.0), Ended));
    Stream->TickQueue(5.0f);
    ASSERT_TRUE(Stream->Queue[0].bExecute);
    EXPECT_FLOAT_EQ(Stream->Queue[0].CurrentDelayTime, 1.3f);
    EXPECT_EQ(Log.Lines.Num(), 1);
    EXPECT_EQ(Log.Lines[0].ToUTF8(), "Delay=1.300000");

    // Zero and negative steps never end a positive wait.
    Stream->TickQueue(0.0f);
    Stream->TickQueue(-1.0f);
    Stream->SetTimeInterval(1.0f);
    Stream->TickQueue(0.5f);
    Stream->TickQueue(0.5f);
    EXPECT_TRUE(Ended.Calls.empty());
    Stream->TickQueue(1.5f);
    ASSERT_EQ(Ended.Calls.size(), 1u);
    EXPECT_EQ(Ended.Calls[0], std::make_tuple(9, 0, std::string()));
    EXPECT_EQ(Log.Lines.Last().ToUTF8(), "VelkEndPlay.");
    ASSERT_EQ(Stream->Queue.Num(), 1);
    EXPECT_FALSE(Stream->Queue[0].bExecute);

    // The next chunk goes out on the following tick, with the interval set meanwhile.
    Stream->TickQueue(0.5f);
    EXPECT_FLOAT_EQ(Stream->Queue[0].CurrentDelayTime, 2.0f);
    ASSERT_TRUE(TickUntil([&] { return Answers == 2; }));
    const std::vector<FReceivedRequest> Received = Server.Received();
    ASSERT_EQ(Received.size(), 2u);
    for (const FReceivedRequest& Each : Received)
    {
        EXPECT_EQ(Each.Path, "/live/api/v1/zel_stream");
        EXPECT_EQ(Each.Headers.find("bStream")->second, "1");
        EXPECT_EQ(Each.Headers.find("ZELMainIndex")->second, "9");
    }

    Stream->ClearQueue();
    EXPECT_EQ(Stream->Queue.Num(), 0);
    EXPECT_EQ(Ended.Calls.size(), 1u);
}

TEST(TransportVelkStream, HostileElementsNeverStallOrCrashTheQueue)
{
    FLipsyncTestServer Server;
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    FEnded Ended;
    const TSharedRef<FCadrelVelkStream> Stream = MakeShared<FCadrelVelkStream>();

    // Headers with no usable byte rate (zero or negative), or too short to hold one, end at once.
    Stream->AddVelkStreamRequest(MakeElement(1, 0, WavHeader(0, 1000), Ended));
    Stream->AddVelkStreamRequest(MakeElement(1, 1, WavHeader(-8, 1000), Ended));
    TArray<uint8> Short = MakeWav(8000, 0.0);
    Short.SetNum(10);
    Stream->AddVelkStreamRequest(MakeElement(1, 2, Short, Ended));
    // Already marked sent: counted down, never sent.
    FCadrelVelkStreamQueueElement Sent = MakeElement(1, 3, MakeWav(8000, 0.1), Ended);
    Sent.bExecute = true;
    Sent.CurrentDelayTime = 0.1f;
    Stream->AddVelkStreamRequest(Sent);
    Stream->SetTimeInterval(0.0f);
    for (int32 Tick = 0; Tick < 6; ++Tick)
    {
        Stream->TickQueue(std::numeric_limits<float>::quiet_NaN());
        Stream->TickQueue(0.1f);
    }
    EXPECT_EQ(Ended.Calls.size(), 4u);
    EXPECT_EQ(Stream->Queue.Num(), 0);
    FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::FullFlush);
    EXPECT_EQ(Server.Received().size(), 3u);

    // A head without audio holds everything behind it until the queue is cleared.
    Stream->AddVelkStreamRequest(MakeElement(2, 0, TArray<uint8>(), Ended));
    Stream->AddVelkStreamRequest(MakeElement(2, 1, MakeWav(8000, 0.1), Ended));
    for (int32 Tick = 0; Tick < 4; ++Tick)
    {
        Stream->TickQueue(1.0f);
    }
    EXPECT_FALSE(Stream->Queue[1].bExecute);
    Stream->ClearQueue();
    EXPECT_EQ(Ended.Calls.size(), 4u);
}

TEST(TransportVelkStream, EndPlayCallbacksMayChangeTheQueueOrReleaseTheStream)
{
    FLipsyncTestServer::FEndpointGuard Unreachable(TEXT("http://127.0.0.1:1"));
    FEnded Ended;
    TSharedPtr<FCadrelVelkStream> Stream = MakeShared<FCadrelVelkStream>();
    Stream->SetTimeInterval(0.0f);
    FCadrelVelkStreamQueueElement Appending = MakeElement(3, 0, WavHeader(0, 0), Ended);
    Appending.EndPlayDelegate.BindLambda(
        [&](int32, int32, const FString&)
        { Stream->AddVelkStreamRequest(MakeElement(3, 1, WavHeader(0, 0), Ended)); });
    FCadrelVelkStreamQueueElement Clearing = MakeElement(3, 2, WavHeader(0, 0), Ended);
    Clearing.EndPlayDelegate.BindLambda([&](int32, int32, const FString&) { Stream->ClearQueue(); });
    Stream->AddVelkStreamRequest(Appending);
    Stream->TickQueue(0.0f);
    Stream->TickQueue(0.0f);
    ASSERT_EQ(Stream->Queue.Num(), 1);
    EXPECT_EQ(Stream->Queue[0].Param.Index, 1);

    Stream->ClearQueue();
    Stream->AddVelkStreamRequest(Clearing);
    Stream->AddVelkStreamRequest(MakeElement(3, 3, WavHeader(0, 0), Ended));
    Stream->TickQueue(0.0f);
    Stream->TickQueue(0.0f);
    EXPECT_EQ(Stream->Queue.Num(), 0);

    FCadrelVelkStreamQueueElement Releasing = MakeElement(3, 4, WavHeader(0, 0), Ended);
    Releasing.EndPlayDelegate.BindLambda([&](int32, int32, const FString&) { Stream.Reset(); });
    Stream->AddVelkStreamRequest(Releasing);
    Stream->TickQueue(0.0f);
    Stream->TickQueue(0.0f);
    EXPECT_FALSE(Stream.IsValid());
    FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::FullFlush);
}
