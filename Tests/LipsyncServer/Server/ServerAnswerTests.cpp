#include "ServerFixture.h"
#include "ServerProcess.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <future>
#include <memory>
#include <optional>
#include <regex>
#include <thread>
#include <vector>

namespace
{
FCadrelZELRequest RequestWithMovement(bool bEyes, bool bNeck)
{
    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.EyeMovementParameters.bEyeMovementMode = bEyes;
    Request.Data.Attributes.Zel.NeckMovementParameters.bNeckMovementMode = bNeck;
    return Request;
}

double MaxAbsBone(const FCadrelZELResponse& Response, int Bone)
{
    double Max = 0.0;
    for (int32 Frame = 0; Frame < Response.Frames.Num(); ++Frame)
    {
        const FVector& Value = Response.Frames[Frame].Bones[Bone].BoneValue;
        Max = std::max({Max, std::abs(Value.X), std::abs(Value.Y), std::abs(Value.Z)});
    }
    return Max;
}
} // namespace

TEST_F(FServerFixture, CloudAnswerReadsBackWithTheModuleReaderAndBonesMoveOnlyWhenAsked)
{
    for (const bool bMovement : {true, false})
    {
        SCOPED_TRACE(bMovement ? "movement" : "still");
        const auto Result =
            Send("/dh/api/v2/zel", MakeWav({.Seconds = 3.0}), RequestWithMovement(bMovement, bMovement));
        ASSERT_TRUE(Result);
        ASSERT_EQ(Result->status, 200) << Result->body;
        const FCadrelZELResponse Answer = ReadCloudAnswer(Result->body);
        EXPECT_EQ(Answer.FPS, 60);
        EXPECT_EQ(Answer.Frames.Num(), 180);
        ASSERT_EQ(Answer.BlendShapesNames.Num(), 52);
        ASSERT_EQ(Answer.BonesNames.Num(), 3) << "bones keep their place when still";
        EXPECT_NE(Answer.BonesNames[0].ToUTF8().find("eye"), std::string::npos);
        EXPECT_NE(Answer.BonesNames[1].ToUTF8().find("eye"), std::string::npos);
        const int JawOpen = Answer.BlendShapesNames.Find(FString(TEXT("jawOpen")));
        ASSERT_GE(JawOpen, 0);
        double MaxJaw = 0.0;
        for (int32 Frame = 0; Frame < Answer.Frames.Num(); ++Frame)
        {
            ASSERT_EQ(Answer.Frames[Frame].Blendshapes.Num(), 52);
            ASSERT_EQ(Answer.Frames[Frame].Bones.Num(), 3);
            MaxJaw = std::max(MaxJaw, Answer.Frames[Frame].Blendshapes[JawOpen]);
        }
        EXPECT_GT(MaxJaw, 0.05) << "speech should open the jaw";
        // The eyes move within 3 seconds; the neck only with movement too.
        EXPECT_EQ(MaxAbsBone(Answer, 0) > 0.0, bMovement);
        EXPECT_EQ(MaxAbsBone(Answer, 1) > 0.0, bMovement);
        if (!bMovement)
        {
            EXPECT_EQ(MaxAbsBone(Answer, 2), 0.0);
        }
    }
}

TEST_F(FServerFixture, StreamAnswersCarryTheirFormatAndVelkKeys)
{
    const std::string Chunk = MakeWav({.Seconds = 0.5});
    const auto Live = Send("/live/api/v1/zel_stream", Chunk, {}, 0, 1);
    const auto Cloud = Send("/dh/api/v1/zel_stream", Chunk, {}, 0, 2);
    ASSERT_TRUE(Live && Cloud);
    const FCadrelAudio2FaceBlendShapeInfo Export = ReadAudio2FaceExport(Live->body);
    EXPECT_EQ(Export.NumFrames, 30);
    EXPECT_EQ(Export.NumFrames, Export.WeightMat.Num());
    EXPECT_EQ(Export.NumPoses, Export.FacsNames.Num());
    EXPECT_EQ(ReadCloudAnswer(Cloud->body).Frames.Num(), 30);
    for (const std::string& Body : {Live->body, Cloud->body})
    {
        const FCadrelVelkInfo Velk = ReadVelkInfo(Body);
        EXPECT_EQ(Velk.VelkHost.ToUTF8(), "127.0.0.1");
        EXPECT_EQ(Velk.VelkPort, 9012);
        EXPECT_EQ(Velk.AudioPort, 9013);
        EXPECT_EQ(Velk.AudioTime, 500.0f);
    }
}

TEST_F(FServerFixture, EmotionChangesTheAnimation)
{
    const std::string Audio = MakeWav({.Seconds = 1.0});
    FCadrelZELRequest Angry;
    Angry.Data.Attributes.Zel.ExplicitEmotion = ECadrelExplicitEmotion::CEE_Angry;
    FCadrelZELRequest Happy;
    Happy.Data.Attributes.Zel.ExplicitEmotion = ECadrelExplicitEmotion::CEE_Happy;
    const auto AngryResult = Send("/dh/api/v2/zel", Audio, Angry);
    const auto HappyResult = Send("/dh/api/v2/zel", Audio, Happy);
    ASSERT_TRUE(AngryResult && HappyResult);
    EXPECT_EQ(AngryResult->status, 200);
    EXPECT_NE(AngryResult->body, HappyResult->body);
}

// Weights of all frames of the answers, in order.
static std::vector<double> Weights(std::initializer_list<const httplib::Result*> Results)
{
    std::vector<double> All;
    for (const httplib::Result* Result : Results)
    {
        const FCadrelAudio2FaceBlendShapeInfo Export = ReadAudio2FaceExport((*Result)->body);
        for (int32 Row = 0; Row < Export.WeightMat.Num(); ++Row)
        {
            for (int32 Column = 0; Column < Export.WeightMat[Row].Weight.Num(); ++Column)
            {
                All.push_back(Export.WeightMat[Row].Weight[Column]);
            }
        }
    }
    return All;
}

TEST_F(FServerFixture, StreamChunksContinueByMainIndexAndUnknownStreamsStartFromRest)
{
    const std::string Whole = MakeWav({.Seconds = 1.0});
    const std::string First = MakeWav({.Seconds = 0.5});
    // The second half of the tone, as its own file.
    std::string Second = First;
    const std::size_t Header = First.size() - 16000;
    Second.replace(Header, 16000, Whole.substr(Header + 16000, 16000));

    const auto WholeResult = Send("/bs/api/v1/zel", Whole);
    const auto FirstChunk = Send("/live/api/v1/zel_stream", First, {}, 0, 41);
    const auto SecondChunk = Send("/live/api/v1/zel_stream", Second, {}, 1, 41);
    const auto Alone = Send("/bs/api/v1/zel", Second);
    const auto Unknown = Send("/live/api/v1/zel_stream", Second, {}, 1, 42);
    const auto Repeated = Send("/live/api/v1/zel_stream", Second, {}, 1, 41);
    ASSERT_TRUE(WholeResult && FirstChunk && SecondChunk && Alone && Unknown && Repeated);

    const std::vector<double> Expected = Weights({&WholeResult});
    const std::vector<double> Streamed = Weights({&FirstChunk, &SecondChunk});
    ASSERT_EQ(Streamed.size(), Expected.size());
    for (std::size_t Index = 0; Index < Expected.size(); ++Index)
    {
        ASSERT_NEAR(Streamed[Index], Expected[Index], 2e-4) << "weight " << Index;
    }
    EXPECT_EQ(Weights({&Unknown}), Weights({&Alone}));
    EXPECT_EQ(Weights({&Repeated}), Weights({&Alone})) << "a chunk that is not later starts from rest";
}

namespace
{
// Clients that each made one request and keep their connection open, idle.
std::vector<std::unique_ptr<httplib::Client>> IdleClients(const std::string& BaseUrl, int Count)
{
    std::vector<std::unique_ptr<httplib::Client>> Clients;
    for (int Index = 0; Index < Count; ++Index)
    {
        Clients.push_back(std::make_unique<httplib::Client>(BaseUrl));
        Clients.back()->set_keep_alive(true);
        const auto Result = Clients.back()->Get("/healthz");
        EXPECT_TRUE(Result && Result->status == 200 && Result->body == "{\"status\":\"ok\"}");
    }
    return Clients;
}

double SecondsSince(std::chrono::steady_clock::time_point Start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
}

// Far below the five seconds an idle connection is kept, far above what stopping
// takes even in a sanitizer build on a busy machine.
constexpr double StopBoundSeconds = 2.5;
} // namespace

TEST(ServerProgram, PrintsItsBaseUrlFirstAndStopsAtOnceOnSigtermWithIdleConnections)
{
    FServerProcess Process(CADREL_SERVER_PROGRAM, {"--port", "0", "--quiet"});
    ASSERT_TRUE(std::regex_match(Process.BaseUrl(), std::regex(R"(http://127\.0\.0\.1:[0-9]+)")))
        << Process.BaseUrl();
    const auto Clients = IdleClients(Process.BaseUrl(), 3);
    const auto Start = std::chrono::steady_clock::now();
    const int Status = Process.Stop();
    EXPECT_LT(SecondsSince(Start), StopBoundSeconds);
    EXPECT_TRUE(WIFEXITED(Status) && WEXITSTATUS(Status) == 0) << Status;
}

TEST_F(FServerFixture, StopLetsARequestInFlightFinishAndClosesIdleConnections)
{
    const auto Idle = IdleClients(Server->BaseUrl(), 3);
    const std::string Audio = MakeWav({.Seconds = 3.0});
    const std::string Body = ModuleBody(RequestDocument(), Audio);
    // The request goes on a connection the server has already answered once, since
    // Stop refuses connections it has not yet accepted; and it holds its second half
    // back until Stop has come, so that it is in flight then whatever the build's speed.
    Client->set_keep_alive(true);
    ASSERT_TRUE(Client->Get("/healthz"));
    std::promise<void> HalfSent;
    std::promise<void> Stopped;
    const std::shared_future<void> StoppedSignal = Stopped.get_future().share();
    std::optional<httplib::Result> Result;
    std::chrono::steady_clock::time_point Answered;
    std::thread Sender(
        [&]
        {
            bool bHeld = false;
            Result.emplace(Client->Post(
                "/dh/api/v2/zel", ModuleHeaders(Audio.size()), Body.size(),
                [&](std::size_t Offset, std::size_t Length, httplib::DataSink& Sink)
                {
                    if (!bHeld && Offset >= Body.size() / 2)
                    {
                        bHeld = true;
                        HalfSent.set_value();
                        StoppedSignal.wait();
                    }
                    return Sink.write(Body.data() + Offset, std::min<std::size_t>(Length, 16384));
                },
                ModuleContentType));
            Answered = std::chrono::steady_clock::now();
        });
    ASSERT_EQ(HalfSent.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
    Server->Stop();
    Stopped.set_value();
    Server->Wait();
    Sender.join();
    EXPECT_LT(SecondsSince(Answered), StopBoundSeconds) << "Wait outlived the answer by the keep-alive";
    ASSERT_TRUE(Result && *Result) << httplib::to_string(Result->error());
    EXPECT_EQ((*Result)->status, 200);
    EXPECT_EQ(ReadCloudAnswer((*Result)->body).Frames.Num(), 180);
}
