#include "HostLogCapture.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

FHostLogCapture::FHostLogCapture(bool bEchoToTerminal)
{
    GLog->AddOutputDevice(this);
    if (bEchoToTerminal)
    {
        return;
    }
    // The host echoes every line to standard error itself; sending that to
    // /dev/null for a while is the only way to keep it quiet.
    std::fflush(stderr);
    const int Null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (Null < 0)
    {
        return;
    }
    SavedStandardError = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    if (SavedStandardError >= 0 && ::dup2(Null, STDERR_FILENO) < 0)
    {
        ::close(SavedStandardError);
        SavedStandardError = -1;
    }
    ::close(Null);
}

FHostLogCapture::~FHostLogCapture()
{
    Stop();
}

void FHostLogCapture::Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName&)
{
    if (Verbosity <= ELogVerbosity::Warning && FirstProblem.IsEmpty())
    {
        FirstProblem = Text;
    }
}

void FHostLogCapture::Stop()
{
    if (!bCapturing)
    {
        return;
    }
    bCapturing = false;
    GLog->RemoveOutputDevice(this);
    if (SavedStandardError >= 0)
    {
        std::fflush(stderr);
        ::dup2(SavedStandardError, STDERR_FILENO);
        ::close(SavedStandardError);
        SavedStandardError = -1;
    }
}
