#pragma once

#include "CoreMinimal.h"
#include "CurlTransfer.h"
#include "HttpEventQueue.h"
#include "HttpTransport.h"

#include <curl/curl.h>

#include <memory>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <vector>

// The one thread that runs libcurl: a multi handle, whose connection cache every
// request shares, driven by curl_multi_poll. Other threads only queue work and wake
// it with curl_multi_wakeup.
class FHttpWorker final : public IHttpTransport
{
public:
    explicit FHttpWorker(FHttpEventQueue& InEvents);
    // Stops the thread and drops whatever is still running, without completions.
    ~FHttpWorker() override;
    FHttpWorker(const FHttpWorker&) = delete;
    FHttpWorker& operator=(const FHttpWorker&) = delete;

    void Start(FHttpTransferSpec&& Spec) override;
    void Cancel(uint64 RequestId) override;

private:
    void Run();
    // False once the worker is asked to stop.
    bool TakeCommands();
    void AddTransfer(std::unique_ptr<FCurlTransfer> Transfer);
    void RemoveTransfer(uint64 RequestId);
    void FinishDoneTransfers();

    FHttpEventQueue& Events;
    CURLM* Multi = nullptr;

    std::mutex Mutex;
    std::vector<FHttpTransferSpec> Starts;
    std::vector<uint64> Cancels;
    bool bStopping = false;

    // Touched by the worker thread only.
    std::unordered_map<uint64, std::unique_ptr<FCurlTransfer>> Running;

    std::thread Thread;
};
