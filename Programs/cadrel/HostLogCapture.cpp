#include "HostLogCapture.h"

#include <cerrno>
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

void FHostLogCapture::Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName& Category)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    if (Verbosity <= ELogVerbosity::Warning && FirstProblem.IsEmpty())
    {
        FirstProblem = Text;
    }
    // The HTTP module says "Request to URL failed: reason" when a request ends
    // without success; the reason is what a user needs to hear.
    static const FString Prefix = TEXT("Request to ");
    static const FString Failed = TEXT(" failed: ");
    const FString Line(Text);
    const int32 FailedAt = Line.Find(Failed);
    if (Category == FName(TEXT("LogHttp")) && Line.StartsWith(Prefix) && FailedAt > Prefix.Len())
    {
        RequestFailures.Add(Line.Mid(Prefix.Len(), FailedAt - Prefix.Len()),
                            Line.Mid(FailedAt + Failed.Len()));
    }
}

FString FHostLogCapture::GetRequestFailure(const FString& URL) const
{
    std::lock_guard<std::mutex> Lock(Mutex);
    const FString* Reason = RequestFailures.Find(URL);
    return Reason ? *Reason : FString();
}

void FHostLogCapture::PrintError(const std::string& Line) const
{
    const std::string Text = Line + "\n";
    const int Fd = SavedStandardError >= 0 ? SavedStandardError : STDERR_FILENO;
    std::fflush(stderr);
    for (std::size_t Done = 0; Done < Text.size();)
    {
        const ssize_t Written = ::write(Fd, Text.data() + Done, Text.size() - Done);
        if (Written < 0 && errno == EINTR)
        {
            continue;
        }
        if (Written <= 0)
        {
            return;
        }
        Done += static_cast<std::size_t>(Written);
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
