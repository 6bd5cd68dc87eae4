#include "ServerFixture.h"

#include <functional>

namespace
{
// What a refused request looks like on the wire, before a case changes it.
struct FWireRequest
{
    std::string Path = "/dh/api/v2/zel";
    httplib::Headers Headers;
    std::string ContentType = ModuleContentType;
    std::string Json = RequestDocument();
    std::string Audio = MakeWav({.Seconds = 0.25});
    // Set to send a body other than the module's.
    std::string Body;
};

struct FRefusalCase
{
    const char* Name;
    std::function<void(FWireRequest&)> Change;
    int Status;
    const char* Field;
};

void Replace(std::string& Text, const std::string& From, const std::string& To)
{
    const std::size_t At = Text.find(From);
    ASSERT_NE(At, std::string::npos) << From;
    Text.replace(At, From.size(), To);
}

void SetHeader(FWireRequest& Request, const std::string& Name, const std::string& Value)
{
    Request.Headers.erase(Name);
    Request.Headers.emplace(Name, Value);
}

const FRefusalCase Cases[] = {
    // The form.
    {"NotMultipart", [](auto& R) { R.ContentType = "application/json"; }, 400, "Content-Type"},
    {"NoJsonPart", [](auto& R) { Replace(R.Body, "name=\"json\"", "name=\"meta\""); }, 400, "json"},
    {"NoAudioPart", [](auto& R) { Replace(R.Body, "name=\"audio\"", "name=\"sound\""); }, 400, "audio"},
    {"UnterminatedForm", [](auto& R) { Replace(R.Body, "--ZELBoundary--\r\n", ""); }, 400, "body"},
    // Headers.
    {"ShortGuid", [](auto& R) { SetHeader(R, "ZELGuid", "0123456789ABCDEF"); }, 400, "ZELGuid"},
    {"GuidNotHex", [](auto& R) { SetHeader(R, "ZELGuid", std::string(32, 'G')); }, 400, "ZELGuid"},
    {"NoGuid", [](auto& R) { R.Headers.erase("ZELGuid"); }, 400, "ZELGuid"},
    {"IndexNotNumber", [](auto& R) { SetHeader(R, "ZELIndex", "1x"); }, 400, "ZELIndex"},
    {"NoMainIndex", [](auto& R) { R.Headers.erase("ZELMainIndex"); }, 400, "ZELMainIndex"},
    {"UnknownRequestType", [](auto& R) { SetHeader(R, "RequestType", "OTHER"); }, 400, "RequestType"},
    {"StreamFlagNotBit", [](auto& R) { SetHeader(R, "bStream", "true"); }, 400, "bStream"},
    {"AudioSizeTooSmall", [](auto& R) { SetHeader(R, "AudioSize", std::to_string(R.Audio.size() - 1)); }, 400,
     "AudioSize"},
    {"AudioSizeLeadingZero", [](auto& R) { SetHeader(R, "AudioSize", "0" + std::to_string(R.Audio.size())); },
     400, "AudioSize"},
    // The request document.
    {"DocumentNotJson", [](auto& R) { R.Json = "{\"data\":"; }, 400, "json"},
    {"UnknownRigType", [](auto& R) { Replace(R.Json, "\"vireth\"", "\"robot\""); }, 400,
     "data.attributes.zel.rigType"},
    {"UnknownEmotion", [](auto& R) { Replace(R.Json, "\"calm\"", "\"bored\""); }, 400,
     "data.attributes.zel.explicitEmotion"},
    {"UnknownEyeMode",
     [](auto& R) { Replace(R.Json, "{\"eyeMovementMode\":\"none\"}", "{\"eyeMovementMode\":\"auto\"}"); },
     400, "data.attributes.zel.eyeMovementParameters.eyeMovementMode"},
    {"UnknownNeckMode",
     [](auto& R) { Replace(R.Json, "{\"neckMovementMode\":\"none\"}", "{\"neckMovementMode\":1}"); }, 400,
     "data.attributes.zel.neckMovementParameters.neckMovementMode"},
    {"IdNotGuid", [](auto& R) { Replace(R.Json, "\"id\":\"", "\"id\":\"XY"); }, 400, "data.id"},
    {"EditorNotBoolean", [](auto& R) { Replace(R.Json, "\"editor\":true", "\"editor\":\"true\""); }, 400,
     "meta.editor"},
    {"PrevSizeNotNumber", [](auto& R) { Replace(R.Json, "\"prev_size\":\"0\"", "\"prev_size\":\"none\""); },
     400, "meta.prev_size"},
    {"NoMeta", [](auto& R) { Replace(R.Json, "\"meta\"", "\"meat\""); }, 400, "meta"},
    // The audio. Sizes that claim more than the file holds are WavReader's test, which
    // cuts a file at every length.
    {"AudioNotRiff", [](auto& R) { R.Audio = "ID3 this is not a wave file"; }, 415, "audio"},
    {"ThreeChannels", [](auto& R) { R.Audio = MakeWav({.Channels = 3, .Seconds = 0.1}); }, 415, "audio"},
    {"NotPcm", [](auto& R) { R.Audio[20] = 2; }, 415, "audio"},
};

class FRefusalTest : public FServerFixture, public ::testing::WithParamInterface<FRefusalCase>
{
};

std::string ErrorField(const std::string& Field)
{
    return "\"field\":\"" + Field + "\"";
}
} // namespace

TEST_P(FRefusalTest, AnswersStatusAndNamesTheField)
{
    const FRefusalCase& Case = GetParam();
    FWireRequest Request;
    Request.Headers = ModuleHeaders(Request.Audio.size());
    Request.Body = ModuleBody(Request.Json, Request.Audio);
    const std::string OriginalJson = Request.Json;
    const std::string OriginalAudio = Request.Audio;
    Case.Change(Request);
    if (Request.Json != OriginalJson || Request.Audio != OriginalAudio)
    {
        Request.Body = ModuleBody(Request.Json, Request.Audio);
        if (Request.Audio.size() != OriginalAudio.size() && Case.Field != std::string("AudioSize"))
        {
            SetHeader(Request, "AudioSize", std::to_string(Request.Audio.size()));
        }
    }
    const auto Result =
        Client->Post(Request.Path.c_str(), Request.Headers, Request.Body, Request.ContentType);
    ASSERT_TRUE(Result);
    EXPECT_EQ(Result->status, Case.Status) << Result->body;
    EXPECT_EQ(Result->get_header_value("Content-Type"), "application/json");
    EXPECT_NE(Result->body.find(ErrorField(Case.Field)), std::string::npos) << Result->body;
    // The connection stays usable after a refusal.
    const auto Health = Client->Get("/healthz");
    ASSERT_TRUE(Health);
    EXPECT_EQ(Health->status, 200);
}

INSTANTIATE_TEST_SUITE_P(Request, FRefusalTest, ::testing::ValuesIn(Cases),
                         [](const auto& Info) { return std::string(Info.param.Name); });

TEST_F(FServerFixture, TokenIsRequiredWhenSet)
{
    FLipsyncServerOptions Options;
    Options.Token = "secret-token";
    StartServer(Options);
    const std::string Audio = MakeWav({.Seconds = 0.25});
    const std::string Body = ModuleBody(RequestDocument(), Audio);
    for (const char* Token : {"", "Bearer secret-token", "secret-tokenX"})
    {
        httplib::Headers Headers = ModuleHeaders(Audio.size());
        if (*Token)
        {
            Headers.emplace("Authorization", Token);
        }
        const auto Result = Client->Post("/dh/api/v2/zel", Headers, Body, ModuleContentType);
        ASSERT_TRUE(Result);
        EXPECT_EQ(Result->status, 401) << Token;
        EXPECT_NE(Result->body.find(ErrorField("Authorization")), std::string::npos);
    }
    httplib::Headers Headers = ModuleHeaders(Audio.size());
    Headers.emplace("Authorization", "secret-token");
    const auto Result = Client->Post("/dh/api/v2/zel", Headers, Body, ModuleContentType);
    ASSERT_TRUE(Result);
    EXPECT_EQ(Result->status, 200);
}

TEST_F(FServerFixture, BodyOverTheLimitIsAnsweredWith413)
{
    const std::string Audio = MakeWav({.Seconds = 20.0});
    const std::string Body = ModuleBody(RequestDocument(), Audio);
    // Far enough over the limit that the client is still writing when the server
    // has read the limit: the answer must not be lost to a reset connection.
    FLipsyncServerOptions Options;
    Options.MaxBody = Body.size() / 2;
    StartServer(Options);
    const auto Announced =
        Client->Post("/dh/api/v2/zel", ModuleHeaders(Audio.size()), Body, ModuleContentType);
    ASSERT_TRUE(Announced);
    EXPECT_EQ(Announced->status, 413);
    EXPECT_NE(Announced->body.find(ErrorField("body")), std::string::npos);

    // Sent in chunks, without a length up front.
    httplib::Client Chunked(Server->BaseUrl());
    const auto Streamed = Chunked.Post(
        "/dh/api/v2/zel", ModuleHeaders(Audio.size()),
        [&Body](std::size_t Offset, httplib::DataSink& Sink)
        {
            const std::size_t Size = std::min<std::size_t>(8192, Body.size() - Offset);
            Sink.write(Body.data() + Offset, Size);
            if (Offset + Size == Body.size())
            {
                Sink.done();
            }
            return true;
        },
        ModuleContentType);
    ASSERT_TRUE(Streamed) << httplib::to_string(Streamed.error());
    EXPECT_EQ(Streamed->status, 413);
    EXPECT_NE(Streamed->body.find(ErrorField("body")), std::string::npos);
}
