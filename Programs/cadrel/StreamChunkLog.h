#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "LipsyncAnswer.h"

#include <string>
#include <vector>

class FHostLogCapture;

// Follows a stream's chunks from sending to answer: prints each chunk's animation
// as a line of jawOpen levels when it arrives, notices chunks that get no answer,
// and sums up the round-trip times at the end.
class FStreamChunkLog
{
public:
    FStreamChunkLog(std::string InFile, EAnswerFormat InFormat, int InChunkMs, const FHostLogCapture& InLog);

    void OnSent(int32 ChunkIndex, const TSharedPtr<IHttpRequest>& Request);
    void OnAnswer(const IHttpRequest& Request, const IHttpResponse& Response);
    // Fails chunks whose request ended without a response or ran past the time-out.
    void CheckWaiting(double TimeoutSeconds);

    bool IsWaiting() const { return !Waiting.empty(); }
    bool HasFailed() const { return bFailed; }
    // Prints the summary, or nothing after a failure; whether every chunk was answered.
    bool Finish() const;

private:
    struct FSent
    {
        int32 ChunkIndex = 0;
        TSharedPtr<IHttpRequest> Request;
        double SentAt = 0.0;
    };

    void Fail(int32 ChunkIndex, const std::string& Reason);

    std::string File;
    EAnswerFormat Format;
    int ChunkMs;
    const FHostLogCapture& Log;
    std::vector<FSent> Waiting;
    std::vector<double> RoundTrips;
    int64 Frames = 0;
    bool bFailed = false;
};
