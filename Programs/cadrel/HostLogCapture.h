#pragma once

#include "CoreMinimal.h"

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

    // The first line logged at Warning or worse; empty when there was none.
    const FString& GetFirstProblem() const { return FirstProblem; }

private:
    int SavedStandardError = -1;
    bool bCapturing = true;
    FString FirstProblem;
};
