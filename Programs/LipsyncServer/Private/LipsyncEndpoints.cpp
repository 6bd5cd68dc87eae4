#include "LipsyncEndpoints.h"

#include <cmath>

namespace
{
constexpr const char* JsonType = "application/json";
} // namespace

void Refuse(httplib::Response& Response, const FRequestError& Error)
{
    Response.status = Error.Status;
    Response.set_content(ErrorToJson(Error), JsonType);
}

FLipsyncEndpoints::FLipsyncEndpoints(const FLipsyncServerOptions& InOptions)
    : Options(InOptions), Streams(InOptions.MaxStreams, std::chrono::seconds(InOptions.StreamIdleSeconds))
{
    if (Options.bVelk)
    {
        Link = std::make_unique<FVelkLink>(Options.VelkHost, Options.VelkPort, Options.AudioPort);
    }
}

FLipsyncEndpoints::~FLipsyncEndpoints() = default;

void FLipsyncEndpoints::Register(httplib::Server& Server)
{
    static constexpr FEndpoint Endpoints[] = {
        {"/bs/api/v1/zel", EFormat::Audio2Face, false},
        {"/dh/api/v2/zel", EFormat::Cloud, false},
        {"/live/api/v1/zel_stream", EFormat::Audio2Face, true},
        {"/dh/api/v1/zel_stream", EFormat::Cloud, true},
    };
    for (const FEndpoint& Endpoint : Endpoints)
    {
        Server.Post(Endpoint.Path,
                    [this, &Endpoint](const httplib::Request& Request, httplib::Response& Response,
                                      const httplib::ContentReader& Reader)
                    { Serve(Endpoint, Request, Response, Reader); });
    }
    Server.Get("/healthz", [](const httplib::Request&, httplib::Response& Response)
               { Response.set_content("{\"status\":\"ok\"}", JsonType); });
}

void FLipsyncEndpoints::Serve(const FEndpoint& Endpoint, const httplib::Request& Request,
                              httplib::Response& Response, const httplib::ContentReader& Reader)
{
    if (!Options.Token.empty() && (Request.get_header_value_count("Authorization") != 1 ||
                                   Request.get_header_value("Authorization") != Options.Token))
    {
        DiscardBody(Request, Reader, Options.MaxBody);
        return Refuse(Response,
                      MakeError(401, "Authorization", "the request lacks the server's access token"));
    }
    auto Form = ReadForm(Request, Response, Reader, Options.MaxBody);
    if (auto* Error = std::get_if<FRequestError>(&Form))
    {
        return Refuse(Response, *Error);
    }
    auto Parsed = ParseLipsyncRequest(Request.headers, std::get<FForm>(Form));
    if (auto* Error = std::get_if<FRequestError>(&Parsed))
    {
        return Refuse(Response, *Error);
    }
    const FLipsyncRequest& Lipsync = std::get<FLipsyncRequest>(Parsed);
    if (Lipsync.Audio.Seconds() > Options.MaxAudioSeconds)
    {
        return Refuse(Response,
                      MakeError(413, "audio",
                                "the audio is longer than " +
                                    std::to_string(std::lround(Options.MaxAudioSeconds)) + " seconds"));
    }
    const std::vector<LipsyncEngine::FFaceFrame> Frames = Animate(Endpoint, Lipsync);
    Response.status = 200;
    Response.body = WriteAnswer(Endpoint, Lipsync, Frames);
    Response.set_header("Content-Type", JsonType);
}

std::vector<LipsyncEngine::FFaceFrame> FLipsyncEndpoints::Animate(const FEndpoint& Endpoint,
                                                                  const FLipsyncRequest& Request)
{
    LipsyncEngine::FAnimationOptions Animation;
    Animation.Emotion = Request.Document.Emotion;
    Animation.bEyeMovement = Request.Document.bEyeMovement;
    Animation.bNeckMovement = Request.Document.bNeckMovement;
    Animation.Fps = Options.Fps;
    const FAudio& Audio = Request.Audio;
    if (!Endpoint.bStream)
    {
        LipsyncEngine::FFaceEngine Engine(Animation);
        return Engine.Animate(Audio.Samples, Audio.SampleRate);
    }
    FStreamClock Clock;
    FStreamStates::FEngine Engine = Streams.Take(Request.MainIndex, Request.Index, Animation, Clock);
    std::vector<LipsyncEngine::FFaceFrame> Frames = Engine->Animate(Audio.Samples, Audio.SampleRate);
    const FStreamClock Start = Clock;
    Clock.Frames += std::int64_t(Frames.size());
    Clock.Seconds += Audio.Seconds();
    Streams.Keep(Request.MainIndex, Request.Index, std::move(Engine), Clock);
    if (Link)
    {
        Link->Send(FVelkChunk{Request.MainIndex, Start.Frames, Options.Fps, Frames, Audio.Samples,
                              Audio.SampleRate, Start.Seconds});
    }
    return Frames;
}

std::string FLipsyncEndpoints::WriteAnswer(const FEndpoint& Endpoint, const FLipsyncRequest& Request,
                                           FFrames Frames) const
{
    std::optional<FVelkInfo> Velk;
    if (Endpoint.bStream)
    {
        Velk = FVelkInfo{Options.VelkHost, Options.VelkPort, Options.AudioPort,
                         std::llround(Request.Audio.Seconds() * 1000.0)};
    }
    if (Endpoint.Format == EFormat::Audio2Face)
    {
        return WriteAudio2FaceExport(Frames, Options.Fps, "audio.wav", Velk);
    }
    return WriteCloudAnswer(Frames, Options.Fps, Request.Document.Platform, Velk);
}
