#include "ProgressLine.h"

#include "HostLogCapture.h"

#include <cstdio>
#include <unistd.h>

namespace
{
// Ten redraws a second read as smooth and cost nothing.
constexpr double RedrawSeconds = 0.1;

std::string Megabytes(int64 Bytes)
{
    char Text[32];
    std::snprintf(Text, sizeof(Text), "%.1f", static_cast<double>(Bytes) / 1.0e6);
    return Text;
}
} // namespace

FProgressLine::FProgressLine(const FHostLogCapture& InLog)
    : Log(InLog), bTerminal(::isatty(STDOUT_FILENO) == 1)
{
}

void FProgressLine::Update(const FBatchProgress& Progress)
{
    const double Now = FPlatformTime::Seconds();
    if (!bTerminal || Now - LastDraw < RedrawSeconds)
    {
        return;
    }
    LastDraw = Now;
    std::string Line =
        "\r\033[K" + std::to_string(Progress.Done) + "/" + std::to_string(Progress.Total) + " files done";
    if (Progress.BytesToSend > 0 && Progress.Done < Progress.Total)
    {
        Line +=
            ", uploaded " + Megabytes(Progress.BytesSent) + " of " + Megabytes(Progress.BytesToSend) + " MB";
    }
    std::fputs(Line.c_str(), stdout);
    std::fflush(stdout);
    bShown = true;
}

void FProgressLine::PrintResult(const std::string& Line)
{
    Clear();
    std::printf("%s\n", Line.c_str());
    std::fflush(stdout);
}

void FProgressLine::PrintError(const std::string& Line)
{
    Clear();
    Log.PrintError(Line);
}

void FProgressLine::Clear()
{
    if (bShown)
    {
        std::fputs("\r\033[K", stdout);
        std::fflush(stdout);
        bShown = false;
        LastDraw = 0.0;
    }
}
