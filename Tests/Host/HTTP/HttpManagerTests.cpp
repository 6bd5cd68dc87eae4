#include "HttpModule.h"
#include "HttpTestServers.h"
#include "Misc/ConfigCacheIni.h"

#include <gtest/gtest.h>

#include <condition_variable>

namespace
{
// A handler that holds its answer back until the test lets it go.
class FGate
{
public:
    ~FGate() { Open(); }
    void Open()
    {
        {
            std::lock_guard<std::mutex> Lock(Mutex);
            bOpen = true;
        }
        Opened.notify_all();
    }
    void Wait()
    {
        std::unique_lock<std::mutex> Lock(Mutex);
        Opened.wait_for(Lock, std::chrono::seconds(10), [this] { return bOpen; });
    }

private:
    std::mutex Mutex;
    std::condition_variable Opened;
    bool bOpen = false;
};

TSharedRef<IHttpRequest> MakeGet(const FString& URL)
{
    TSharedRef<IHttpRequest> Request = FHttpModule::Get().CreateRequest();
    Request->SetURL(URL);
    return Request;
}

class HttpManager : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Server->Get("/answer",
                    [](const httplib::Request&, httplib::Response& Response)
                    {
                        Response.set_header("X-First", " one ");
                        Response.set_header("X-Second", "two");
                        Response.set_content(std::string(1 << 20, 'b'), "application/octet-stream");
                    });
        Server->Get("/held",
                    [this](const httplib::Request&, httplib::Response& Response)
                    {
                        Gate.Wait();
                        Response.set_content("released", "text/plain");
                    });
        Server.Start();
    }
    // The server's stop waits for the held handler.
    void TearDown() override { Gate.Open(); }

    FGate Gate;
    FTestServer Server;
    FHttpManager& Manager = FHttpModule::Get().GetHttpManager();
};
} // namespace

TEST_F(HttpManager, CallbacksComeOnlyFromTickOnTheTickingThreadWithCompletionLast)
{
    TSharedRef<IHttpRequest> Request = MakeGet(Server.URL("/answer"));
    std::vector<std::string> Calls;
    std::vector<std::thread::id> Threads;
    Request->OnRequestProgress().BindLambda([&](FHttpRequestPtr, int32, int32 Received)
                                            { Calls.push_back("progress " + std::to_string(Received)); });
    Request->OnHeaderReceived().BindLambda(
        [&](FHttpRequestPtr, const FString& Name, const FString& Value)
        {
            Calls.push_back(Name.ToUTF8() + "=" + Value.ToUTF8());
            Threads.push_back(std::this_thread::get_id());
        });
    Request->OnProcessRequestComplete().BindLambda(
        [&](FHttpRequestPtr, FHttpResponsePtr, bool bSucceeded)
        {
            Calls.push_back(bSucceeded ? "complete" : "failed");
            Threads.push_back(std::this_thread::get_id());
        });
    ASSERT_TRUE(Request->ProcessRequest());
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    EXPECT_TRUE(Calls.empty()) << "nothing may arrive outside Tick";

    std::thread::id TickingThread;
    std::thread(
        [&]
        {
            TickingThread = std::this_thread::get_id();
            TickUntil([&] { return !Calls.empty() && Calls.back() == "complete"; });
        })
        .join();

    ASSERT_FALSE(Calls.empty());
    EXPECT_EQ(Calls.back(), "complete");
    const auto First = std::find(Calls.begin(), Calls.end(), "X-First=one");
    EXPECT_LT(First, std::find(Calls.begin(), Calls.end(), "X-Second=two"));
    EXPECT_NE(std::find(Calls.begin(), Calls.end(), "progress 1048576"), Calls.end());
    EXPECT_EQ(std::count(Threads.begin(), Threads.end(), TickingThread), static_cast<long>(Threads.size()));
}

TEST_F(HttpManager, CancelledRequestCompletesAtTheNextTickWithoutResponse)
{
    TSharedRef<IHttpRequest> Request = MakeGet(Server.URL("/held"));
    Request->CancelRequest();
    EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::NotStarted);
    FCompletion Result;
    Request->OnProcessRequestComplete().BindLambda(
        [&Result](FHttpRequestPtr, FHttpResponsePtr Response, bool bOk) {
            Result = FCompletion{true, bOk, Response};
        });
    ASSERT_TRUE(Request->ProcessRequest());
    Request->CancelRequest();
    EXPECT_FALSE(Result.bCompleted);
    Manager.Tick(0.0f);
    EXPECT_TRUE(Result.bCompleted && !Result.bSucceeded && !Result.Response);
    EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
}

TEST_F(HttpManager, RequestKeepsRunningAfterItsOwnerIsGoneAndCallsNoOne)
{
    auto Owner = std::make_shared<int>(0);
    auto Calls = std::make_shared<int>(0);
    TWeakPtr<IHttpRequest> Weak;
    {
        TSharedRef<IHttpRequest> Request = MakeGet(Server.URL("/held"));
        Weak = Request;
        const TSharedPtr<int> Shared(Owner);
        Request->OnProcessRequestComplete().BindWeakLambda(
            Shared, [Calls](FHttpRequestPtr, FHttpResponsePtr, bool) { ++*Calls; });
        Request->OnHeaderReceived().BindWeakLambda(
            Shared, [Calls](FHttpRequestPtr, const FString&, const FString&) { ++*Calls; });
        ASSERT_TRUE(Request->ProcessRequest());
    }
    ASSERT_TRUE(Weak.IsValid()) << "the manager keeps a running request";
    Owner.reset();
    Gate.Open();
    Manager.Flush(EHttpFlushReason::Default);
    EXPECT_FALSE(Weak.IsValid()) << "released once completed";
    EXPECT_EQ(*Calls, 0);
}

TEST_F(HttpManager, FlushEndsRequestsOrCancelsThemAtTheHardLimit)
{
    const FCompletion Quick = [&]
    {
        auto Result = std::make_shared<FCompletion>();
        TSharedRef<IHttpRequest> Request = MakeGet(Server.URL("/answer"));
        Request->OnProcessRequestComplete().BindLambda(
            [Result](FHttpRequestPtr, FHttpResponsePtr Response, bool bOk) {
                *Result = FCompletion{true, bOk, Response};
            });
        Request->ProcessRequest();
        Manager.Flush(EHttpFlushReason::FullFlush);
        return *Result;
    }();
    EXPECT_TRUE(Quick.bCompleted && Quick.bSucceeded);

    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), 0.1, GEngineIni);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), 0.2, GEngineIni);
    Manager.UpdateConfigs();
    TSharedRef<IHttpRequest> Held = MakeGet(Server.URL("/held"));
    const FCompletion Result = [&]
    {
        auto Captured = std::make_shared<FCompletion>();
        Held->OnProcessRequestComplete().BindLambda(
            [Captured](FHttpRequestPtr, FHttpResponsePtr Response, bool bOk) {
                *Captured = FCompletion{true, bOk, Response};
            });
        Held->ProcessRequest();
        Manager.Flush(EHttpFlushReason::Shutdown);
        return *Captured;
    }();
    EXPECT_TRUE(Result.bCompleted && !Result.bSucceeded && !Result.Response);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), 2.0, GEngineIni);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), 4.0, GEngineIni);
    Manager.UpdateConfigs();
}
