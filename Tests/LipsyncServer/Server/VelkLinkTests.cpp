#include "FaceEngine.h"
#include "ServerFixture.h"
#include "ServerProcess.h"
#include "TestProject.h"
#include "VelkReceiver.h"
#include "WavReader.h"

#include <cmath>
#include <set>

namespace
{
constexpr int StreamId = 7;
constexpr double ChunkSeconds = 0.4;

// The demo's real speech at its own 22,050 Hz, so that the link resamples it.
const FAudio& Speech()
{
    static const FAudio Spoken = []
    {
        auto Read = ReadWav(FTestProject::Read(CADREL_DEMO_SPEECH));
        auto* Decoded = std::get_if<FAudio>(&Read);
        return Decoded ? std::move(*Decoded) : FAudio{};
    }();
    return Spoken;
}

// The speech cut into WAV files of ChunkSeconds, the last one shorter.
std::vector<std::string> SpeechChunks()
{
    const FAudio& Audio = Speech();
    const auto Step = std::size_t(ChunkSeconds * Audio.SampleRate);
    std::vector<std::string> Chunks;
    for (std::size_t Start = 0; Start < Audio.Samples.size(); Start += Step)
    {
        const auto First = Audio.Samples.begin() + std::ptrdiff_t(Start);
        const auto Last =
            Audio.Samples.begin() + std::ptrdiff_t(std::min(Start + Step, Audio.Samples.size()));
        Chunks.push_back(
            MakeWav({.SampleRate = Audio.SampleRate, .Samples = std::vector<float>(First, Last)}));
    }
    return Chunks;
}

// Streams the speech as one stream, through both stream endpoints in turn, each
// request naming Elsewhere as its live receiver in headers the server must not
// follow. The answers in order.
std::vector<std::string> StreamSpeech(httplib::Client& Client, const FVelkReceiver* Elsewhere = nullptr)
{
    std::vector<std::string> Answers;
    const std::vector<std::string> Chunks = SpeechChunks();
    for (std::size_t Index = 0; Index < Chunks.size(); ++Index)
    {
        httplib::Headers Headers = ModuleHeaders(Chunks[Index].size(), int(Index), StreamId, true);
        if (Elsewhere)
        {
            Headers.emplace("VelkHost", "127.0.0.1");
            Headers.emplace("VelkPort", std::to_string(Elsewhere->VelkPort()));
            Headers.emplace("AudioPort", std::to_string(Elsewhere->AudioPort()));
        }
        const char* Path = Index % 2 ? "/dh/api/v1/zel_stream" : "/live/api/v1/zel_stream";
        const auto Result =
            Client.Post(Path, Headers, ModuleBody(RequestDocument(), Chunks[Index]), ModuleContentType);
        EXPECT_TRUE(Result && Result->status == 200) << "chunk " << Index;
        Answers.push_back(Result ? Result->body : std::string());
    }
    return Answers;
}

int FramesIn(const std::vector<std::string>& Answers)
{
    int Frames = 0;
    for (std::size_t Index = 0; Index < Answers.size(); ++Index)
    {
        Frames += Index % 2 ? ReadCloudAnswer(Answers[Index]).Frames.Num()
                            : ReadAudio2FaceExport(Answers[Index]).NumFrames;
    }
    return Frames;
}

void ExpectVmcFrame(const std::string& Datagram, int Number)
{
    const std::vector<FOscMessage> Bundle = ReadOscBundle(Datagram);
    ASSERT_EQ(Bundle.size(), 1u + LipsyncEngine::NumBlendShapes + 3u + 1u) << "frame " << Number;
    const FOscMessage& Header = Bundle.front();
    EXPECT_EQ(Header.Path + Header.Types, "/Cadrel/Frameiid");
    EXPECT_EQ(Header.Numbers, (std::vector<double>{StreamId, double(Number), Number / 60.0}));
    std::set<std::string> Shapes;
    for (std::size_t Index = 1; Index <= LipsyncEngine::NumBlendShapes; ++Index)
    {
        const FOscMessage& Value = Bundle[Index];
        ASSERT_EQ(Value.Path + Value.Types, "/VMC/Ext/Blend/Valsf");
        Shapes.insert(Value.Texts[0]);
        EXPECT_TRUE(Value.Numbers[0] >= 0.0 && Value.Numbers[0] <= 1.0) << Value.Texts[0];
    }
    const auto& Names = LipsyncEngine::BlendShapeNames();
    EXPECT_EQ(Shapes, std::set<std::string>(Names.begin(), Names.end()));
    const char* Bones[] = {"Head", "LeftEye", "RightEye"};
    for (int Bone = 0; Bone < 3; ++Bone)
    {
        const FOscMessage& Pose = Bundle[LipsyncEngine::NumBlendShapes + 1 + std::size_t(Bone)];
        ASSERT_EQ(Pose.Path + Pose.Types, "/VMC/Ext/Bone/Possfffffff");
        EXPECT_EQ(Pose.Texts[0], Bones[Bone]);
        double Norm = 0.0;
        for (std::size_t Component = 3; Component < 7; ++Component)
        {
            Norm += Pose.Numbers[Component] * Pose.Numbers[Component];
        }
        EXPECT_EQ(std::vector<double>(Pose.Numbers.begin(), Pose.Numbers.begin() + 3),
                  std::vector<double>(3, 0.0));
        EXPECT_NEAR(Norm, 1.0, 1e-4) << "a rotation quaternion has unit length";
    }
    EXPECT_EQ(Bundle.back().Path + Bundle.back().Types, "/VMC/Ext/Blend/Apply");
}

// The audio messages in order; their samples must follow each other on the stream's clock.
std::int64_t ExpectContiguousAudio(const std::vector<std::string>& Datagrams)
{
    std::int64_t Next = 0;
    double Energy = 0.0;
    for (const std::string& Datagram : Datagrams)
    {
        EXPECT_LE(Datagram.size(), 1200u);
        const FOscMessage Audio = ReadOscMessage(Datagram);
        EXPECT_EQ(Audio.Path + Audio.Types, "/Cadrel/Audioihib");
        if (Audio.Numbers.size() != 3 || Audio.Texts.size() != 1)
        {
            return -1;
        }
        EXPECT_EQ(Audio.Numbers, (std::vector<double>{StreamId, double(Next), 16000}));
        const std::string& Pcm = Audio.Texts[0];
        EXPECT_TRUE(Pcm.size() % 2 == 0 && Pcm.size() <= 1024) << Pcm.size();
        for (std::size_t Byte = 0; Byte + 1 < Pcm.size(); Byte += 2)
        {
            const auto Sample = std::int16_t(std::uint8_t(Pcm[Byte]) | (std::uint8_t(Pcm[Byte + 1]) << 8));
            Energy += double(Sample) * Sample;
        }
        Next += std::int64_t(Pcm.size() / 2);
    }
    EXPECT_GT(Energy / double(std::max<std::int64_t>(Next, 1)), 1e4) << "the speech is heard, not silence";
    return Next;
}

FLipsyncServerOptions LinkedTo(const FVelkReceiver& Receiver)
{
    FLipsyncServerOptions Options;
    Options.VelkPort = Receiver.VelkPort();
    Options.AudioPort = Receiver.AudioPort();
    return Options;
}
} // namespace

class FVelkLinkTest : public FServerFixture
{
protected:
    void SetUp() override { ASSERT_FALSE(Speech().Samples.empty()) << "the demo speech did not read"; }
};

TEST_F(FVelkLinkTest, EveryFrameArrivesAsAVmcBundleAndTheAudioAddsUpOnTheStreamClock)
{
    FVelkReceiver Receiver;
    FVelkReceiver Elsewhere;
    StartServer(LinkedTo(Receiver));
    const std::vector<std::string> Answers = StreamSpeech(*Client, &Elsewhere);
    const int Frames = FramesIn(Answers);
    Receiver.WaitFor(std::size_t(Frames), 1, 300, 20000);

    const std::vector<std::string> Bundles = Receiver.VelkDatagrams();
    ASSERT_EQ(int(Bundles.size()), Frames);
    for (int Number = 0; Number < Frames; ++Number)
    {
        ExpectVmcFrame(Bundles[std::size_t(Number)], Number);
    }
    const FAudio& Audio = Speech();
    EXPECT_EQ(ExpectContiguousAudio(Receiver.AudioDatagrams()),
              std::llround(double(Audio.Samples.size()) / Audio.SampleRate * 16000.0));
    EXPECT_TRUE(Elsewhere.VelkDatagrams().empty() && Elsewhere.AudioDatagrams().empty())
        << "a request does not choose where the server sends";
}

TEST_F(FVelkLinkTest, AReceiverThatIsDownChangesNoAnswer)
{
    FLipsyncServerOptions Options;
    {
        const FVelkReceiver Gone;
        Options = LinkedTo(Gone);
    }
    StartServer(Options);
    const std::vector<std::string> Linked = StreamSpeech(*Client);
    Options.bVelk = false;
    StartServer(Options);
    EXPECT_EQ(Linked, StreamSpeech(*Client));
}

TEST(VelkLinkProgram, FlagsChooseTheReceiverAndNoVelkSendsNothing)
{
    for (const bool bLink : {true, false})
    {
        FVelkReceiver Receiver;
        std::vector<std::string> Arguments = {"--port",
                                              "0",
                                              "--quiet",
                                              "--velk-host",
                                              "127.0.0.1",
                                              "--velk-port",
                                              std::to_string(Receiver.VelkPort()),
                                              "--audio-port",
                                              std::to_string(Receiver.AudioPort())};
        if (!bLink)
        {
            Arguments.push_back("--no-velk");
        }
        FServerProcess Process(CADREL_SERVER_PROGRAM, Arguments);
        httplib::Client Client(Process.BaseUrl());
        const std::string Chunk = MakeWav({.Seconds = 0.5});
        const auto Result = Client.Post("/live/api/v1/zel_stream", ModuleHeaders(Chunk.size(), 0, 3, true),
                                        ModuleBody(RequestDocument(), Chunk), ModuleContentType);
        ASSERT_TRUE(Result && Result->status == 200);
        const FCadrelVelkInfo Velk = ReadVelkInfo(Result->body);
        EXPECT_EQ(Velk.VelkPort, Receiver.VelkPort());
        EXPECT_EQ(Velk.AudioPort, Receiver.AudioPort());
        Receiver.WaitFor(bLink ? 30 : 0, bLink ? 16 : 0, 300, 20000);
        EXPECT_EQ(Receiver.VelkDatagrams().size(), bLink ? 30u : 0u);
        EXPECT_EQ(Receiver.AudioDatagrams().size(), bLink ? 16u : 0u) << "8,000 samples in messages of 512";
    }
}
