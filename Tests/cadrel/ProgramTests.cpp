#include "CadrelJson.h"
#include "CadrelRun.h"
#include "HttpTestServers.h"
#include "LipsyncServer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

// The cadrel program as a user runs it: in an empty folder, on real WAV files,
// against real servers on 127.0.0.1.
class FProgramTest : public FCadrelProjectTest
{
protected:
    void SetUp() override
    {
        Speech = FTestProject::Read(CADREL_DEMO_SPEECH);
        ASSERT_GT(Speech.size(), 44u);
        FTestProject::Write(Project.Root / "speech.wav", Speech);
    }

    // Everything in the project folder but the inputs the test put there.
    std::set<std::string> LeftBehind(const std::set<std::string>& Inputs = {"speech.wav"}) const
    {
        std::set<std::string> Found;
        for (const auto& Entry : std::filesystem::recursive_directory_iterator(Project.Root))
        {
            const std::string Name = std::filesystem::relative(Entry.path(), Project.Root).string();
            if (!Inputs.count(Name))
            {
                Found.insert(Name);
            }
        }
        return Found;
    }

    static FCadrelZELResponse ReadBack(const std::filesystem::path& Json)
    {
        FCadrelZELResponse Animation;
        CadrelJson::StringToZELResponse(FString::FromUTF8(FTestProject::Read(Json)), Animation);
        return Animation;
    }

    std::string Speech;
};

TEST_F(FProgramTest, LipsyncWritesEachFormatFromEitherServerKindAndNothingElse)
{
    for (const char* Server : {"cloud", "a2f"})
    {
        const FCadrelRun Run = Cadrel(std::string("lipsync speech.wav --out out --eyes --server ") + Server);
        ASSERT_EQ(Run.ExitCode, 0) << Run.Error;
        EXPECT_NE(Run.Out.find("speech.wav: "), std::string::npos) << Run.Out;
        EXPECT_EQ(LeftBehind(), (std::set<std::string>{"out", "out/speech.json", "out/speech.csv",
                                                       "out/speech.svg", "out/speech.html"}))
            << "the user's settings file must not appear";

        const FCadrelZELResponse Animation = ReadBack(Project.Root / "out/speech.json");
        EXPECT_EQ(Animation.FPS, 60) << Server;
        // About five seconds of speech at 60 frames a second.
        EXPECT_NEAR(Animation.Frames.Num(), 310, 10) << Server;
        EXPECT_TRUE(Animation.BlendShapesNames.Contains(FString(TEXT("jawOpen"))));
        const std::string Csv = FTestProject::Read(Project.Root / "out/speech.csv");
        EXPECT_EQ(std::count(Csv.begin(), Csv.end(), '\n'), Animation.Frames.Num() + 1);
        EXPECT_EQ(Csv.rfind("frame,time,", 0), 0u);
        std::filesystem::remove_all(Project.Root / "out");
    }
}

// Which faults a WAV file can have, and how each is named, is the WAV reader's test;
// here a missing, a directory and a cut file each cost one line and write nothing.
TEST_F(FProgramTest, BadWavFilesCostOneLineEachAndTheGoodOnesStillRun)
{
    FTestProject::Write(Project.Root / "cut.wav", Speech.substr(0, Speech.size() / 2));
    std::filesystem::create_directory(Project.Root / "folder.wav");
    for (const std::string Name : {"missing.wav", "folder.wav", "cut.wav"})
    {
        const FCadrelRun Run = Cadrel("lipsync " + Name + " --out out");
        EXPECT_TRUE(Run.IsOneLineFailure()) << Name << ": " << Run.Error;
        EXPECT_EQ(Run.Error.rfind("cadrel: " + Name + ": ", 0), 0u) << Run.Error;
        EXPECT_EQ(LeftBehind({"speech.wav", "folder.wav", "cut.wav"}), (std::set<std::string>{"out"}))
            << Name;
    }

    const FCadrelRun Mixed = Cadrel("lipsync cut.wav speech.wav --out out --jobs 2");
    EXPECT_TRUE(Mixed.IsOneLineFailure()) << Mixed.Error;
    EXPECT_TRUE(std::filesystem::exists(Project.Root / "out/speech.json"));
}

TEST_F(FProgramTest, ServerProblemsCostOneLineAndWriteNothing)
{
    FLipsyncServerOptions Options;
    Options.Port = 0;
    Options.Token = "secret";
    Options.bQuiet = true;
    FLipsyncServer Guarded(Options);
    std::string StartError;
    ASSERT_TRUE(Guarded.Start(StartError)) << StartError;
    FTestServer NotJson;
    NotJson->Post("/dh/api/v2/zel", [](const httplib::Request&, httplib::Response& Response)
                  { Response.set_content("<html>busy</html>", "text/html"); });
    NotJson.Start();
    FGate Answer;
    FTestServer Mute;
    Mute->Post("/dh/api/v2/zel", [&Answer](const httplib::Request&, httplib::Response&) { Answer.Wait(); });
    Mute.Start();
    // Nothing listens on port 1 here.
    const std::string Down = "http://127.0.0.1:1";

    const std::pair<std::string, std::string> Cases[] = {
        {"--url " + Down, "no answer from " + Down},
        {"--url ftp://127.0.0.1/", "--url ftp://127.0.0.1/"},
        {"--url " + Guarded.BaseUrl(), "answered 401"},
        {"--url " + NotJson.URL("").ToUTF8(), "which is not a lipsync answer"},
        {"--url " + Mute.URL("").ToUTF8() + " --timeout 0.5", "within 0.5 s"},
    };
    for (const auto& [Arguments, Expected] : Cases)
    {
        const FCadrelRun Run = Cadrel("lipsync speech.wav --out out " + Arguments);
        EXPECT_TRUE(Run.IsOneLineFailure()) << Arguments << ": " << Run.Error;
        EXPECT_NE(Run.Error.find(Expected), std::string::npos) << Run.Error;
        EXPECT_EQ(LeftBehind(), (std::set<std::string>{"out"})) << Arguments;
    }
    EXPECT_EQ(Cadrel("lipsync speech.wav --out out --token secret --url " + Guarded.BaseUrl()).ExitCode, 0);

    const FCadrelRun Taken = Cadrel("serve --port " + std::to_string(Guarded.Port()));
    EXPECT_TRUE(Taken.IsOneLineFailure()) << Taken.Error;
    EXPECT_NE(Taken.Error.find("in use"), std::string::npos) << Taken.Error;
    Answer.Open();
}

TEST_F(FProgramTest, ConvertReadsAnExportAndPagesCarrySoundOnlyWhenNamed)
{
    FTestProject::Write(
        Project.Root / "take.json",
        R"({"exportFps":30,"facsNames":["jawOpen","mouthClose"],"weightMat":[[0.5,0],[0.25,1]]})");
    const FCadrelRun Converted = Cadrel("convert take.json --format json,csv");
    ASSERT_EQ(Converted.ExitCode, 0) << Converted.Error;
    const FCadrelZELResponse Animation = ReadBack(Project.Root / "take.json");
    EXPECT_EQ(Animation.FPS, 30);
    ASSERT_EQ(Animation.Frames.Num(), 2);
    EXPECT_EQ(Animation.Frames[1].Blendshapes, (TArray<double>{0.25, 1.0}));
    EXPECT_FALSE(std::filesystem::exists(Project.Root / "take.svg"));

    // The page carries sound only when the user names it.
    FTestProject::Write(Project.Root / "line.json",
                        R"({"exportFps":30,"facsNames":["jawOpen"],"weightMat":[[0.5]]})");
    const FCadrelRun Paged = Cadrel("convert line.json --format html --out page --audio speech.wav");
    ASSERT_EQ(Paged.ExitCode, 0) << Paged.Error;
    const std::string Page = FTestProject::Read(Project.Root / "page/line.html");
    EXPECT_NE(Page.find("id=\"cadrel-audio\">UklGR"), std::string::npos) << "no base64 WAV";
    EXPECT_TRUE(
        Cadrel("convert line.json --format html --out silent --audio missing.wav").IsOneLineFailure());
    EXPECT_FALSE(std::filesystem::exists(Project.Root / "silent"));

    FTestProject::Write(Project.Root / "broken.json", "{\"exportFps\":");
    EXPECT_TRUE(Cadrel("convert broken.json").IsOneLineFailure());
    EXPECT_FALSE(std::filesystem::exists(Project.Root / "broken.csv"));
}

// Which formats are converted, and how, is the WAV reader's test; here one goes through both commands.
TEST_F(FProgramTest, SoundOfOtherFormatsIsAnimatedAndStreamedLikeTheWavItCameFrom)
{
    const std::string Flac = "sox '" + (Project.Root / "speech.wav").string() + "' '" +
                             (Project.Root / "take.flac").string() + "'";
    ASSERT_EQ(std::system(Flac.c_str()), 0) << Flac;
    const FCadrelRun Streamed = Cadrel("stream take.flac --chunk-ms 1000");
    ASSERT_EQ(Streamed.ExitCode, 0) << Streamed.Error;
    // Five seconds and a little more in one-second chunks, each with its line, then the summary.
    EXPECT_EQ(std::count(Streamed.Out.begin(), Streamed.Out.end(), '\n'), 7) << Streamed.Out;
    EXPECT_NE(Streamed.Out.find("6 chunks"), std::string::npos) << Streamed.Out;
    EXPECT_EQ(LeftBehind({"speech.wav", "take.flac"}), std::set<std::string>{});

    const FCadrelRun Run = Cadrel("lipsync take.flac --out out --format json");
    ASSERT_EQ(Run.ExitCode, 0) << Run.Error;
    EXPECT_NEAR(ReadBack(Project.Root / "out/take.json").Frames.Num(), 310, 2);
}

// libcurl, cpp-httplib with OpenSSL, and liblo cost every start of the program
// milliseconds; only the commands that send requests or run servers load them.
TEST(Program, StartsWithoutTheNetworkLibraries)
{
    std::string Listing;
    if (FILE* const Loader = ::popen("LD_TRACE_LOADED_OBJECTS=1 '" CADREL_PROGRAM "'", "r"))
    {
        char Chunk[4096];
        for (std::size_t Got; (Got = std::fread(Chunk, 1, sizeof(Chunk), Loader)) > 0;)
        {
            Listing.append(Chunk, Got);
        }
        ::pclose(Loader);
    }
    ASSERT_NE(Listing.find("libCadrelBlendShape"), std::string::npos) << Listing;
    for (const char* Library : {"libcurl", "libcpp-httplib", "libssl", "libcrypto", "liblo"})
    {
        EXPECT_EQ(Listing.find(Library), std::string::npos) << Library;
    }
}
