#pragma once

#include "CadrelBlendShape.h"
#include "CadrelBlendShapeType.h"
#include "CoreMinimal.h"
#include "LipsyncAnswer.h"

#include <functional>
#include <string>
#include <vector>

class FHostLogCapture;

// How every request of a batch is made.
struct FLipsyncBatch
{
    FCadrelZELRequest Request;
    EBlendShapeType ServerType = EBlendShapeType::VIRETHIO;
    EAnswerFormat Format = EAnswerFormat::Cloud;
    FString Token;
    int32 Jobs = 1;
    // A request without an answer after this long is given up.
    double TimeoutSeconds = 120.0;
};

struct FLipsyncResult
{
    bool bSucceeded = false;
    FCadrelZELResponse Animation;
    // One line naming the URL, without the file's name.
    std::string Error;
    // From sending to the answer.
    double Seconds = 0.0;
};

// Where a batch stands, for a progress line.
struct FBatchProgress
{
    int32 Done = 0;
    int32 Total = 0;
    int64 BytesSent = 0;
    int64 BytesToSend = 0;
};

// Sends one lipsync request per audio file, at most Jobs at a time, each through a
// dispatcher of its own, and ticks the host's HTTP manager on the calling thread
// until every file has its answer or its error.
class FLipsyncJobs
{
public:
    using FOnFinished = std::function<void(int32 Index, FLipsyncResult&& Result)>;
    using FOnProgress = std::function<void(const FBatchProgress& Progress)>;

    FLipsyncJobs(FLipsyncBatch InBatch, const FHostLogCapture& InLog);

    // Audio[i] stays alive until Run returns; OnFinished is called once per file.
    void Run(const std::vector<const TArray<uint8>*>& Audio, const FOnFinished& OnFinished,
             const FOnProgress& OnProgress);

private:
    struct FJob
    {
        TSharedPtr<FCadrelBlendShape> Dispatcher;
        TSharedPtr<IHttpRequest> HostRequest;
        double StartTime = 0.0;
        int64 BytesSent = 0;
        int64 BytesToSend = 0;
        bool bRunning = false;
    };

    void Start(int32 Index, const TArray<uint8>& Audio);
    void Finish(int32 Index, FLipsyncResult&& Result);
    // Requests that ended without a response, and requests past the time-out.
    void FailSilentAndLate(double Now);
    FBatchProgress MeasureProgress() const;

    FLipsyncBatch Batch;
    const FHostLogCapture& Log;
    std::vector<FJob> Jobs;
    // Indices of the jobs in flight: a batch of many thousand files is looked
    // through a few at a time, not whole on every tick.
    std::vector<int32> Running;
    int32 Done = 0;
    int64 BytesOfFinished = 0;
    // The audio of the files not sent yet, so that the total is known from the start.
    int64 BytesNotStarted = 0;
    const FOnFinished* OnFinishedCall = nullptr;
};
