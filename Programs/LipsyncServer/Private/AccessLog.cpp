#include "AccessLog.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

namespace
{
using FClock = std::chrono::steady_clock;
thread_local std::optional<FClock::time_point> RequestStart;

// Paths come from the client; keep a line one line.
std::string Printable(const std::string& Text)
{
    std::string Out = Text.substr(0, 200);
    for (char& Character : Out)
    {
        const auto Code = static_cast<unsigned char>(Character);
        Character = (Code < 0x20 || Code == 0x7F) ? '?' : Character;
    }
    return Out;
}
} // namespace

void AccessLog::MarkStart()
{
    RequestStart = FClock::now();
}

void AccessLog::Write(const httplib::Request& Request, const httplib::Response& Response)
{
    // Requests refused before routing (a malformed request line) have no start.
    const double Milliseconds =
        RequestStart ? std::chrono::duration<double, std::milli>(FClock::now() - *RequestStart).count() : 0.0;
    RequestStart.reset();
    // One fprintf per line, so lines of concurrent requests do not interleave.
    std::fprintf(stderr, "%s %s %d %zu bytes %.1f ms\n", Printable(Request.method).c_str(),
                 Printable(Request.path).c_str(), Response.status, Response.body.size(), Milliseconds);
}
