#include "BenchmarkRequests.h"
#include "ServerProcess.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

// Load from a second process: the server binary runs as a child, 64 clients post
// at once (each a kept-alive connection sending stream chunks of its own stream and
// whole files), twice. It must make no errors, and its resident memory after the
// second round must stay within 1.5 times that after the first. Exit code 1 when
// either fails.
namespace
{
constexpr int Clients = 64;
constexpr int RequestsPerClient = 8;

struct FRound
{
    int Errors = 0;
    double Seconds = 0.0;
};

FRound RunRound(const std::string& BaseUrl, const std::string& Chunk, const std::string& File, int Round)
{
    std::atomic<int> Errors{0};
    const auto Start = std::chrono::steady_clock::now();
    std::vector<std::thread> Threads;
    for (int ClientIndex = 0; ClientIndex < Clients; ++ClientIndex)
    {
        Threads.emplace_back(
            [&, ClientIndex]
            {
                httplib::Client Client(BaseUrl);
                Client.set_read_timeout(120, 0);
                for (int Request = 0; Request < RequestsPerClient; ++Request)
                {
                    const bool bFile = Request % 4 == 3;
                    const auto Result = bFile
                                            ? BenchmarkRequests::Post(Client, "/dh/api/v2/zel", File)
                                            : BenchmarkRequests::Post(Client, "/dh/api/v1/zel_stream", Chunk,
                                                                      Request, Round * Clients + ClientIndex);
                    if (!Result || Result->status != 200)
                    {
                        ++Errors;
                        std::fprintf(stderr, "request failed: %s\n",
                                     Result ? std::to_string(Result->status).c_str()
                                            : httplib::to_string(Result.error()).c_str());
                    }
                }
            });
    }
    for (std::thread& Thread : Threads)
    {
        Thread.join();
    }
    return {Errors.load(), std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count()};
}
} // namespace

int main()
{
    FServerProcess Server(CADREL_SERVER_PROGRAM, {"--port", "0", "--quiet"});
    if (Server.BaseUrl().empty())
    {
        std::fprintf(stderr, "ServerLoad: the server did not start\n");
        return 1;
    }
    const std::string Chunk = BenchmarkRequests::SpeechWav(0.5);
    const std::string File = BenchmarkRequests::SpeechWav(5.0);
    const long Idle = Server.ResidentKilobytes();
    const FRound First = RunRound(Server.BaseUrl(), Chunk, File, 0);
    const long AfterFirst = Server.ResidentKilobytes();
    const FRound Second = RunRound(Server.BaseUrl(), Chunk, File, 1);
    const long AfterSecond = Server.ResidentKilobytes();
    const double Growth = AfterFirst > 0 ? double(AfterSecond) / double(AfterFirst) : 0.0;
    const int Requests = Clients * RequestsPerClient;
    std::printf("clients %d, requests per round %d\n", Clients, Requests);
    std::printf("round 1: %d errors, %.2f s, %.1f requests/s\n", First.Errors, First.Seconds,
                Requests / First.Seconds);
    std::printf("round 2: %d errors, %.2f s, %.1f requests/s\n", Second.Errors, Second.Seconds,
                Requests / Second.Seconds);
    std::printf("RSS idle %ld kB, after round 1 %ld kB, after round 2 %ld kB: x%.3f (limit x1.5)\n", Idle,
                AfterFirst, AfterSecond, Growth);
    const bool bPass = First.Errors == 0 && Second.Errors == 0 && Growth > 0.0 && Growth <= 1.5;
    std::printf("%s\n", bPass ? "PASS" : "FAIL");
    return bPass ? 0 : 1;
}
