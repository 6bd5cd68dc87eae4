#include "CadrelBlendShape.h"
#include "CadrelJson.h"
#include "HttpModule.h"
#include "ModuleBody.h"
#include "TransportTestServers.h"

#include <gtest/gtest.h>

#include <set>

namespace
{
std::string ToStd(const TArray<uint8>& Bytes)
{
    return std::string(reinterpret_cast<const char*>(Bytes.GetData()), static_cast<size_t>(Bytes.Num()));
}

// The header lines of a raw request whose names are in Names, in wire order.
std::vector<std::string> HeaderLines(const std::string& Head, const std::set<std::string>& Names)
{
    std::vector<std::string> Lines;
    for (size_t Start = Head.find("\r\n") + 2, End; (End = Head.find("\r\n", Start)) > Start; Start = End + 2)
    {
        const std::string Line = Head.substr(Start, End - Start);
        if (Names.count(Line.substr(0, Line.find(':'))))
        {
            Lines.push_back(Line);
        }
    }
    return Lines;
}

// The completions a dispatcher reports: their success flags and statuses.
struct FCompletions
{
    int32 Count = 0;
    std::vector<std::pair<bool, int32>> Outcomes;

    void Watch(FCadrelBlendShape& Dispatcher)
    {
        Dispatcher.OnZELRequestComplete.BindLambda(
            [this](FHttpRequestPtr, FHttpResponsePtr Response, bool bInSucceeded)
            {
                ++Count;
                Outcomes.emplace_back(bInSucceeded, Response->GetResponseCode());
            });
    }
};

FCadrelZELRequestParam MakeParam(EBlendShapeType Type, const FString& Token = FString())
{
    FCadrelZELRequestParam Param;
    FGuid::Parse(TEXT("5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7"), Param.ID);
    Param.MainIndex = 7;
    Param.Token = Token;
    Param.LinkServerType = Type;
    return Param;
}

FCadrelIORequestMeta ReceivedMeta(const FReceivedRequest& Received)
{
    FCadrelZELRequest Request;
    CadrelJson::StringToZELRequest(FString::FromUTF8(Received.Parts.find("json")->second.content), Request);
    return Request.Meta;
}
} // namespace

TEST(TransportDispatcher, SendsTheExactHeadersAndBodyToBothServerKinds)
{
    const std::set<std::string> Ours = {"Authorization", "Content-Type", "Accept-Encoding",
                                        "ZELGuid",       "ZELIndex",     "ZELMainIndex",
                                        "RequestType",   "bStream",      "AudioSize"};
    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.Engine = FString::FromUTF8("moteur é✓");
    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    for (const EBlendShapeType Type : {EBlendShapeType::AUDIO2FACE, EBlendShapeType::VIRETHIO})
    {
        for (const FString& Token : {FString(), FString(TEXT("tok:en/+=="))})
        {
            // Without a token the audio is a WAV; with one, an empty part that still goes out.
            const TArray<uint8> Audio = Token.IsEmpty() ? MakeWav(16000, 0.05) : TArray<uint8>();
            FRawServer Server(JsonReply(FLipsyncTestServer::DefaultAnswer("/dh/api/v2/zel")));
            FLipsyncTestServer::FEndpointGuard Endpoints(Server.URL(""));
            const TSharedRef<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
            ASSERT_TRUE(Dispatcher->ZELRequest(Request, MakeParam(Type, Token), Audio));

            ASSERT_TRUE(TickUntil([&] { return Server.Received().size() == 1; }));
            const auto [Head, Body] = SplitRawRequest(Server.Received()[0]);
            const bool bA2F = Type == EBlendShapeType::AUDIO2FACE;
            EXPECT_EQ(Head.substr(0, Head.find("\r\n")),
                      bA2F ? "POST /bs/api/v1/zel HTTP/1.1" : "POST /dh/api/v2/zel HTTP/1.1");
            std::vector<std::string> Expected = {"Content-Type: multipart/form-data; boundary=ZELBoundary",
                                                 "Accept-Encoding: utf-8",
                                                 "ZELGuid: 5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7",
                                                 "ZELIndex: -1",
                                                 "ZELMainIndex: 7",
                                                 bA2F ? "RequestType: AUDIO2FACE" : "RequestType: VIRETHIO",
                                                 "bStream: 0",
                                                 "AudioSize: " + std::to_string(Audio.Num())};
            if (!Token.IsEmpty())
            {
                Expected.insert(Expected.begin(), "Authorization: tok:en/+==");
            }
            EXPECT_EQ(HeaderLines(Head, Ours), Expected);
            EXPECT_EQ(Body, ModuleBody(Json.ToUTF8(), ToStd(Audio)));
        }
    }
}

TEST(TransportDispatcher, EachRequestCarriesTheMeasurementsOfThePreviousExchange)
{
    FLipsyncTestServer Server;
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    const std::string Answers[] = {std::string(100, ' ') + "{}", "{}", std::string(5000, ' ') + "{}", "{}"};
    int32 Served = 0;
    Server.SetAnswer(
        [&](const httplib::Request&, httplib::Response& Response)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(Served == 0 ? 60 : 0));
            Response.status = Served == 2 ? 500 : 200;
            Response.set_content(Answers[Served++], "application/json");
        });
    const TSharedRef<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
    FCompletions Completions;
    Completions.Watch(*Dispatcher);

    FCadrelZELRequest Request;
    Request.Meta.PrevType = TEXT("custom");
    for (int32 Exchange = 0; Exchange < 4; ++Exchange)
    {
        ASSERT_TRUE(
            Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::VIRETHIO), MakeWav(8000, 0.01)));
        ASSERT_TRUE(TickUntil([&] { return Completions.Count == Exchange + 1; }));
        const FCadrelIORequestMeta Sent = ReceivedMeta(Server.Received().back());
        EXPECT_EQ(Sent.PrevSize, Request.Meta.PrevSize);
        EXPECT_EQ(Sent.PrevAudioLength, Request.Meta.PrevAudioLength);
        EXPECT_EQ(Sent.PrevType.ToUTF8(), "custom");
        Dispatcher->SetPrevAnimLength(40 + Exchange);
    }
    // The first request knows nothing; later ones carry the previous answer's size,
    // the caller's animation length and the time the previous exchange took.
    const std::vector<FReceivedRequest> Received = Server.Received();
    EXPECT_EQ(ReceivedMeta(Received[0]).PrevSize, 0);
    EXPECT_EQ(ReceivedMeta(Received[0]).Latency, 0.0f);
    EXPECT_EQ(ReceivedMeta(Received[1]).PrevSize, 102);
    EXPECT_GE(ReceivedMeta(Received[1]).Latency, 0.06f);
    EXPECT_LT(ReceivedMeta(Received[1]).Latency, 5.0f);
    EXPECT_EQ(ReceivedMeta(Received[1]).PrevAudioLength, 40);
    EXPECT_EQ(ReceivedMeta(Received[2]).PrevSize, 2);
    EXPECT_LT(ReceivedMeta(Received[2]).Latency, ReceivedMeta(Received[1]).Latency);
    // An error status is an ordinary answer: it fires, and it is measured.
    EXPECT_EQ(Completions.Outcomes[2], std::make_pair(true, 500));
    EXPECT_EQ(ReceivedMeta(Received[3]).PrevSize, 5002);
    EXPECT_EQ(ReceivedMeta(Received[3]).PrevAudioLength, 42);
}

TEST(TransportDispatcher, ExchangesWithoutAnAnswerFireNothingAndMeasureNothing)
{
    FLipsyncTestServer Server;
    Server.SetAnswer(
        [](const httplib::Request& Request, httplib::Response& Response)
        {
            if (Request.path == "/bs/api/v1/zel")
            {
                // Promises a long answer, then hangs up after a little of it.
                Response.set_content_provider(100000, "application/json",
                                              [](size_t, size_t, httplib::DataSink& Sink)
                                              {
                                                  Sink.write("{\"frames\":[", 11);
                                                  return false;
                                              });
                return;
            }
            Response.set_content("{}", "application/json");
        });
    const TSharedRef<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
    FCompletions Completions;
    Completions.Watch(*Dispatcher);
    FCadrelZELRequest Request;
    {
        FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
        ASSERT_TRUE(
            Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::VIRETHIO), MakeWav(8000, 0.01)));
        ASSERT_TRUE(TickUntil([&] { return Completions.Count == 1; }));
        ASSERT_TRUE(
            Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::AUDIO2FACE), MakeWav(8000, 0.01)));
        FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::FullFlush);
    }
    for (const TCHAR* Unreachable :
         {TEXT("http://127.0.0.1:1"), TEXT("ftp://127.0.0.1:21"), TEXT("127.0.0.1")})
    {
        FLipsyncTestServer::FEndpointGuard Endpoints(Unreachable);
        Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::AUDIO2FACE), MakeWav(8000, 0.01));
        FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::FullFlush);
    }
    EXPECT_EQ(Completions.Count, 1);

    // A token that would break the header block is refused before anything is sent.
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    EXPECT_FALSE(Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::VIRETHIO, TEXT("x\r\nEvil: 1")),
                                        MakeWav(8000, 0.01)));
    ASSERT_TRUE(Dispatcher->ZELRequest(Request, MakeParam(EBlendShapeType::VIRETHIO), MakeWav(8000, 0.01)));
    ASSERT_TRUE(TickUntil([&] { return Completions.Count == 2; }));
    EXPECT_EQ(Server.Received().size(), 3u);
    EXPECT_EQ(ReceivedMeta(Server.Received().back()).PrevSize, 2);
}

TEST(TransportDispatcher, AGoneDispatcherHearsNothingWhileItsRequestsRunToTheirEnd)
{
    FLipsyncTestServer Server;
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    Server.SetAnswer(
        [](const httplib::Request&, httplib::Response& Response)
        { std::this_thread::sleep_for(std::chrono::milliseconds(100)), Response.set_content("{}", ""); });
    int32 Fired = 0;
    {
        TSharedPtr<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
        Dispatcher->OnZELRequestComplete.BindLambda([&](FHttpRequestPtr, FHttpResponsePtr, bool)
                                                    { ++Fired; });
        Dispatcher->OnZELRequestProgress.BindLambda([&](FHttpRequestPtr, int32, int32) { ++Fired; });
        ASSERT_TRUE(Dispatcher->ZELRequest(FCadrelZELRequest(), MakeParam(EBlendShapeType::VIRETHIO),
                                           MakeWav(8000, 1)));
    }
    // One that lets itself go inside its own completion is not used afterwards.
    TSharedPtr<FCadrelBlendShape> SelfReleasing = MakeShared<FCadrelBlendShape>();
    SelfReleasing->OnZELRequestComplete.BindLambda([&](FHttpRequestPtr, FHttpResponsePtr, bool)
                                                   { SelfReleasing.Reset(); });
    ASSERT_TRUE(SelfReleasing->ZELRequest(FCadrelZELRequest(), MakeParam(EBlendShapeType::VIRETHIO),
                                          MakeWav(8000, 1)));
    FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::FullFlush);
    EXPECT_EQ(Fired, 0);
    EXPECT_FALSE(SelfReleasing.IsValid());
    EXPECT_EQ(Server.Received().size(), 2u);
}

TEST(TransportDispatcher, SixtyFourRequestsInFlightEachCompleteWithTheirOwnRequest)
{
    FLipsyncTestServer Server;
    FLipsyncTestServer::FEndpointGuard Endpoints(Server.BaseURL());
    const TSharedRef<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
    std::set<IHttpRequest*> Completed;
    Dispatcher->OnZELRequestComplete.BindLambda(
        [&](FHttpRequestPtr HttpRequest, FHttpResponsePtr, bool bOk)
        { bOk ? (void)Completed.insert(HttpRequest.Get()) : void(); });
    const TArray<uint8> Audio = MakeWav(16000, 0.5);
    for (int32 Index = 0; Index < 64; ++Index)
    {
        FCadrelZELRequestParam Param = MakeParam(EBlendShapeType::AUDIO2FACE);
        Param.Index = Index;
        ASSERT_TRUE(Dispatcher->ZELRequest(FCadrelZELRequest(), Param, Audio));
    }
    EXPECT_TRUE(TickUntil([&] { return Completed.size() == 64; }, 30.0));
    std::set<std::string> Indices;
    for (const FReceivedRequest& Each : Server.Received())
    {
        Indices.insert(Each.Headers.find("ZELIndex")->second);
    }
    EXPECT_EQ(Indices.size(), 64u);
}
