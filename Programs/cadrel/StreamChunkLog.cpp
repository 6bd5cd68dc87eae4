#include "StreamChunkLog.h"

#include "HostLogCapture.h"
#include "RequestWatch.h"

#include <algorithm>
#include <cstdio>

namespace
{
// Eight levels of a block, from empty to full.
constexpr const char* Levels[] = {"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr int32 LevelCount = 8;

std::string JawMeter(const FCadrelZELResponse& Animation)
{
    const int32 Column = Animation.BlendShapesNames.Find(FString(TEXT("jawOpen")));
    if (Column == INDEX_NONE)
    {
        return "(no jawOpen in the answer)";
    }
    std::string Meter;
    for (const FCadrelFaceFrames& Frame : Animation.Frames)
    {
        const double Weight = Column < Frame.Blendshapes.Num() ? Frame.Blendshapes[Column] : 0.0;
        // NaN and out-of-range weights land on the nearest end.
        const double Clamped = Weight > 0.0 ? std::min(Weight, 1.0) : 0.0;
        Meter += Levels[std::min(LevelCount - 1, static_cast<int32>(Clamped * LevelCount))];
    }
    return Meter;
}

std::string Milliseconds(double Seconds)
{
    char Text[32];
    std::snprintf(Text, sizeof(Text), "%.1f ms", Seconds * 1000.0);
    return Text;
}
} // namespace

FStreamChunkLog::FStreamChunkLog(std::string InFile, EAnswerFormat InFormat, int InChunkMs,
                                 const FHostLogCapture& InLog)
    : File(std::move(InFile)), Format(InFormat), ChunkMs(InChunkMs), Log(InLog)
{
}

void FStreamChunkLog::OnSent(int32 ChunkIndex, const TSharedPtr<IHttpRequest>& Request)
{
    Waiting.push_back(FSent{ChunkIndex, Request, FPlatformTime::Seconds()});
}

void FStreamChunkLog::OnAnswer(const IHttpRequest& Request, const IHttpResponse& Response)
{
    const auto Sent =
        std::find_if(Waiting.begin(), Waiting.end(),
                     [&Request](const FSent& Entry) { return Entry.Request.Get() == &Request; });
    if (Sent == Waiting.end())
    {
        return;
    }
    const FSent Entry = *Sent;
    Waiting.erase(Sent);
    // The host times the exchange from its start to the moment the answer arrived
    // on its worker, which the tick that delivers it can follow by a tick or more.
    const double RoundTrip = Request.GetElapsedTime();
    FCadrelZELResponse Animation;
    std::string Error;
    if (!ReadAnswer(Response, Format, Animation, Error))
    {
        return Fail(Entry.ChunkIndex, Error);
    }
    RoundTrips.push_back(RoundTrip);
    Frames += Animation.Frames.Num();
    char Head[96];
    std::snprintf(Head, sizeof(Head), "chunk %3d  %7.2f s  %3d frames  %8s  ", Entry.ChunkIndex,
                  Entry.ChunkIndex * ChunkMs / 1000.0, Animation.Frames.Num(),
                  Milliseconds(RoundTrip).c_str());
    std::printf("%s%s\n", Head, JawMeter(Animation).c_str());
    std::fflush(stdout);
}

void FStreamChunkLog::CheckWaiting(double TimeoutSeconds)
{
    const double Now = FPlatformTime::Seconds();
    for (const FSent& Entry : Waiting)
    {
        if (IsFailedRequest(Entry.Request))
        {
            return Fail(Entry.ChunkIndex, DescribeNoAnswer(*Entry.Request, Log));
        }
        if (Now - Entry.SentAt > TimeoutSeconds)
        {
            Entry.Request->CancelRequest();
            return Fail(Entry.ChunkIndex, DescribeTimeout(*Entry.Request, TimeoutSeconds));
        }
    }
}

void FStreamChunkLog::Fail(int32 ChunkIndex, const std::string& Reason)
{
    if (!bFailed)
    {
        Log.PrintError("cadrel: " + File + ": chunk " + std::to_string(ChunkIndex) + ": " + Reason);
    }
    bFailed = true;
}

bool FStreamChunkLog::Finish() const
{
    if (bFailed || RoundTrips.empty())
    {
        return false;
    }
    std::vector<double> Sorted = RoundTrips;
    std::sort(Sorted.begin(), Sorted.end());
    std::printf("%zu chunks, %lld frames; round trip median %s, max %s\n", Sorted.size(),
                static_cast<long long>(Frames), Milliseconds(Sorted[Sorted.size() / 2]).c_str(),
                Milliseconds(Sorted.back()).c_str());
    return true;
}
