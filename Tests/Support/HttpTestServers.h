#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"

#include <httplib.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// "SCHEME://127.0.0.1:PORT" followed by Path.
FString LocalURL(int Port, const char* Path = "", const char* Scheme = "http");

// A cpp-httplib server (plain or TLS) listening on 127.0.0.1 for the length of a test.
class FTestServer
{
public:
    explicit FTestServer(std::unique_ptr<httplib::Server> InServer = std::make_unique<httplib::Server>());
    ~FTestServer();
    httplib::Server* operator->() { return Server.get(); }
    // Starts listening; handlers must be set before.
    void Start();
    FString URL(const char* Path, const char* Scheme = "http") const { return LocalURL(Port, Path, Scheme); }

private:
    std::unique_ptr<httplib::Server> Server;
    int Port = 0;
    std::thread Thread;
};

// Accepts connections one at a time, keeps the bytes of each request's head and body
// as they arrived, and answers each with a fixed reply before closing.
class FRawServer
{
public:
    explicit FRawServer(std::string InReply);
    ~FRawServer();
    FString URL(const char* Path) const { return LocalURL(Port, Path); }
    std::vector<std::string> Received();

private:
    void Serve();

    std::string Reply;
    int Listener = -1;
    int Port = 0;
    std::atomic<bool> bStopping{false};
    std::mutex Mutex;
    std::vector<std::string> Requests;
    std::thread Thread;
};

// Holds a handler's answer back until the test lets it go; open it before the
// server stops, which waits for its handlers.
class FGate
{
public:
    void Open();
    void Wait();

private:
    std::mutex Mutex;
    std::condition_variable Opened;
    bool bOpen = false;
};

// A request made by the module, not started.
TSharedRef<IHttpRequest> MakeRequest(const FString& URL, const TCHAR* Verb = TEXT("GET"));

// What a request's completion delivered.
struct FCompletion
{
    bool bCompleted = false;
    bool bSucceeded = false;
    FHttpResponsePtr Response;
};

// Records the request's completion in the object returned.
std::shared_ptr<FCompletion> BindCompletion(const TSharedRef<IHttpRequest>& Request);
// Ticks on this thread until the started request completes or the time runs out.
FCompletion AwaitCompletion(const TSharedRef<IHttpRequest>& Request, double Seconds = 20.0);
// Starts the request, then awaits it.
FCompletion RunRequest(const TSharedRef<IHttpRequest>& Request, double Seconds = 20.0);
// Ticks until Done() holds or the time runs out.
bool TickUntil(const std::function<bool()>& Done, double Seconds = 20.0);
