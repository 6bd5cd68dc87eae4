#pragma once

#include "CoreMinimal.h"

#include <mutex>
#include <string>

// Keeps the host's log lines off the terminal while a command works, so that a
// command that fails can say why in one line of its own. The first warning or
// error the host logged is kept as the reason to give.
class FHostLogCapture : public FOutputDevice
{
public:
    // With bEchoToTerminal the host's lines still reach standard error as they happen.
    explicit FHostLogCapture(bool bEchoToTerminal);
    ~FHostLogCapture() override;
    FHostLogCapture(const FHostLogCapture&) = delete;
    FHostLogCapture& operator=(const FHostLogCapture&) = delete;

    void Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName& Category) override;

    // Gives standard error back; call before printing the command's own message.
    void Stop();

    // Writes one line of the command's own to the real standard error, capturing or not.
    void PrintError(const std::string& Line) const;

    // Why the HTTP module last saw a request to URL end without success, in its own
    // words ("Couldn't connect to server"); empty when it said nothing about URL.
    FString GetRequestFailure(const FString& URL) const;

    // The first line logged at Warning or worse; empty when there was none.
    const FString& GetFirstProblem() const { return FirstProblem; }

private:
    int SavedStandardError = -1;
    bool bCapturing = true;
    FString FirstProblem;
    TMap<FString, FString> RequestFailures;
    mutable std::mutex Mutex;
};
