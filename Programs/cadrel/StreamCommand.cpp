#include "StreamCommand.h"

#include "CadrelVelkStream.h"
#include "HostLogCapture.h"
#include "HttpModule.h"
#include "RequestWatch.h"
#include "StreamChunkLog.h"
#include "WavChunks.h"
#include "WavFile.h"

#include <chrono>
#include <thread>

namespace
{
// The queue waits tenths of a second and answers take milliseconds; ticking every
// millisecond keeps both on time. The round trips come from the host's own clock.
constexpr auto TickWait = std::chrono::milliseconds(1);

FCadrelVelkStreamQueueElement MakeChunkElement(const FCadrelZELRequest& Request, const FLipsyncTarget& Server,
                                               int32 StreamId, int32 Index, const TArray<uint8>& Chunk)
{
    FCadrelZELRequestParam Param;
    Param.ID = FGuid::NewGuid();
    Param.Index = Index;
    Param.MainIndex = StreamId;
    Param.Token = Server.GetToken();
    Param.LinkServerType = Server.GetServerType();
    Param.bStream = true;
    return FCadrelVelkStreamQueueElement(Request, Param, Chunk);
}

// Streams of one server are told apart by this number; a fresh one per run keeps
// a restarted stream from continuing the state of an earlier one.
int32 NewStreamId()
{
    const FGuid Guid = FGuid::NewGuid();
    return static_cast<int32>(Guid.A & 0x7fffffffu);
}
} // namespace

FStreamCommand::FStreamCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand("stream",
                                    "Stream a WAV file to a lipsync server chunk by chunk, in real time.");
    Command->add_option("file", File, "WAV file to stream")->required();
    Command->add_option("--chunk-ms", ChunkMs, "Milliseconds of audio per chunk")
        ->check(CLI::Range(20, 60000))
        ->capture_default_str();
    AddTargetOptions(*Command, Target);
    AddAnimationOptions(*Command, Animation);
    Command->add_option("--timeout", TimeoutSeconds, "Seconds to wait for one chunk's answer")
        ->check(CLI::Range(0.001, 86400.0))
        ->capture_default_str();
    Command->add_flag("--host-log", bHostLog, "Show the host's log lines as they happen");
}

int FStreamCommand::Run() const
{
    FHostLogCapture Log(bHostLog);
    std::string Error;
    FWavFile Wav;
    FLipsyncTarget Server;
    if (!ReadWavFile(File, Wav, Error) || !Server.Start(Target, Error))
    {
        Log.PrintError("cadrel: " + Error);
        return 1;
    }
    const std::vector<TArray<uint8>> Chunks = CutWavIntoChunks(Wav, ChunkMs);
    if (Chunks.empty())
    {
        Log.PrintError("cadrel: " + File + ": no audio to stream");
        return 1;
    }
    FCadrelZELRequest Request;
    ApplyAnimationOptions(Animation, Request);

    // Declared first so that it outlives the stream whose delegate reaches it.
    FStreamChunkLog Chunk(File, Server.GetAnswerFormat(), ChunkMs, Log);
    const TSharedPtr<FCadrelVelkStream> Stream = MakeShared<FCadrelVelkStream>();
    Stream->OnZELRequestComplete.BindLambda([&Chunk](FHttpRequestPtr HttpRequest, FHttpResponsePtr Response,
                                                     bool) { Chunk.OnAnswer(*HttpRequest, *Response); });
    const int32 StreamId = NewStreamId();
    for (int32 Index = 0; Index < static_cast<int32>(Chunks.size()); ++Index)
    {
        Stream->AddVelkStreamRequest(MakeChunkElement(Request, Server, StreamId, Index, Chunks[Index]));
    }

    double LastTick = FPlatformTime::Seconds();
    while ((Stream->Queue.Num() > 0 || Chunk.IsWaiting()) && !Chunk.HasFailed())
    {
        const double Now = FPlatformTime::Seconds();
        const float DeltaTime = static_cast<float>(Now - LastTick);
        LastTick = Now;
        const int32 Head = Stream->Queue.Num() > 0 ? Stream->Queue[0].Param.Index : -1;
        const TSharedPtr<IHttpRequest> Sent = CatchRequest([&] { Stream->TickQueue(DeltaTime); });
        if (Sent.IsValid())
        {
            Chunk.OnSent(Head, Sent);
        }
        FHttpModule::Get().GetHttpManager().Tick(DeltaTime);
        Chunk.CheckWaiting(TimeoutSeconds);
        std::this_thread::sleep_for(TickWait);
    }
    Stream->ClearQueue();
    return Chunk.Finish() ? 0 : 1;
}
