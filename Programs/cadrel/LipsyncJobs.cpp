#include "LipsyncJobs.h"

#include "HostLogCapture.h"
#include "HttpModule.h"
#include "RequestWatch.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace
{
// Long enough not to spin a core, short enough to add nothing a user could notice.
constexpr auto IdleWait = std::chrono::milliseconds(1);

} // namespace

FLipsyncJobs::FLipsyncJobs(FLipsyncBatch InBatch, const FHostLogCapture& InLog)
    : Batch(std::move(InBatch)), Log(InLog)
{
}

void FLipsyncJobs::Run(const std::vector<const TArray<uint8>*>& Audio, const FOnFinished& OnFinished,
                       const FOnProgress& OnProgress)
{
    Jobs.assign(Audio.size(), FJob());
    OnFinishedCall = &OnFinished;
    Running.clear();
    Done = 0;
    BytesOfFinished = 0;
    BytesNotStarted = 0;
    for (const TArray<uint8>* Bytes : Audio)
    {
        BytesNotStarted += Bytes->Num();
    }
    const int32 Total = static_cast<int32>(Audio.size());
    int32 Next = 0;
    double LastTick = FPlatformTime::Seconds();
    while (Done < Total)
    {
        while (static_cast<int32>(Running.size()) < Batch.Jobs && Next < Total)
        {
            Start(Next, *Audio[Next]);
            ++Next;
        }
        const double Now = FPlatformTime::Seconds();
        const int32 DoneBefore = Done;
        FHttpModule::Get().GetHttpManager().Tick(static_cast<float>(Now - LastTick));
        LastTick = Now;
        FailSilentAndLate(FPlatformTime::Seconds());
        OnProgress(MeasureProgress());
        if (Done == DoneBefore)
        {
            std::this_thread::sleep_for(IdleWait);
        }
    }
    OnFinishedCall = nullptr;
}

void FLipsyncJobs::Start(int32 Index, const TArray<uint8>& Audio)
{
    FJob& Job = Jobs[Index];
    BytesNotStarted -= Audio.Num();
    Job.Dispatcher = MakeShared<FCadrelBlendShape>();
    Job.Dispatcher->OnZELRequestComplete.BindLambda(
        [this, Index](FHttpRequestPtr, FHttpResponsePtr Response, bool bSucceeded)
        {
            FLipsyncResult Result;
            Result.Seconds = FPlatformTime::Seconds() - Jobs[Index].StartTime;
            Result.bSucceeded = ReadAnswer(*Response, Batch.Format, Result.Animation, Result.Error);
            if (!bSucceeded && Result.bSucceeded)
            {
                // An answer that parsed but did not arrive whole is not to be trusted.
                Result.bSucceeded = false;
                Result.Error = DescribeNoAnswer(*Jobs[Index].HostRequest, Log);
            }
            Finish(Index, std::move(Result));
        });
    Job.Dispatcher->OnZELRequestProgress.BindLambda([this, Index](FHttpRequestPtr, int32 Sent, int32)
                                                    { Jobs[Index].BytesSent = Sent; });

    FCadrelZELRequest Request = Batch.Request;
    FCadrelZELRequestParam Param;
    Param.ID = FGuid::NewGuid();
    Param.Index = Index;
    Param.MainIndex = 0;
    Param.Token = Batch.Token;
    Param.LinkServerType = Batch.ServerType;
    bool bAccepted = false;
    Job.StartTime = FPlatformTime::Seconds();
    Job.HostRequest = CatchRequest([&] { bAccepted = Job.Dispatcher->ZELRequest(Request, Param, Audio); });
    Job.bRunning = true;
    Running.push_back(Index);
    if (!bAccepted || !Job.HostRequest.IsValid())
    {
        const FString Problem = Log.GetFirstProblem();
        Finish(Index, FLipsyncResult{false,
                                     {},
                                     "the HTTP module refused the request" +
                                         (Problem.IsEmpty() ? "" : ": " + Problem.ToUTF8())});
        return;
    }
    Job.BytesToSend = Job.HostRequest->GetContent().Num();
}

void FLipsyncJobs::Finish(int32 Index, FLipsyncResult&& Result)
{
    FJob& Job = Jobs[Index];
    if (!Job.bRunning)
    {
        return;
    }
    Job.bRunning = false;
    BytesOfFinished += Job.BytesToSend;
    // Any callback still due for this request is dropped with its dispatcher.
    Job.Dispatcher.Reset();
    Job.HostRequest.Reset();
    Running.erase(std::find(Running.begin(), Running.end(), Index));
    ++Done;
    (*OnFinishedCall)(Index, std::move(Result));
}

void FLipsyncJobs::FailSilentAndLate(double Now)
{
    // Finishing a job takes it out of Running, so walk a copy.
    const std::vector<int32> Current = Running;
    for (const int32 Index : Current)
    {
        FJob& Job = Jobs[Index];
        if (IsFailedRequest(Job.HostRequest))
        {
            Finish(Index, FLipsyncResult{false, {}, DescribeNoAnswer(*Job.HostRequest, Log)});
        }
        else if (Now - Job.StartTime > Batch.TimeoutSeconds)
        {
            Job.HostRequest->CancelRequest();
            Finish(Index, FLipsyncResult{false, {}, DescribeTimeout(*Job.HostRequest, Batch.TimeoutSeconds)});
        }
    }
}

FBatchProgress FLipsyncJobs::MeasureProgress() const
{
    FBatchProgress Progress;
    Progress.Total = static_cast<int32>(Jobs.size());
    Progress.Done = Done;
    Progress.BytesSent = BytesOfFinished;
    Progress.BytesToSend = BytesOfFinished + BytesNotStarted;
    for (const int32 Index : Running)
    {
        Progress.BytesSent += Jobs[Index].BytesSent;
        Progress.BytesToSend += Jobs[Index].BytesToSend;
    }
    return Progress;
}
