#include "HAL/PlatformTime.h"
#include "HttpModule.h"
#include "HttpTestServers.h"
#include "Loopback.h"
#include "Misc/ConfigCacheIni.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <unistd.h>

namespace
{
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
    TSharedRef<IHttpRequest> Request = MakeRequest(Server.URL("/answer"));
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
    const double Started = FPlatformTime::Seconds();
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
    // Timed when the answer arrived, long before the tick that delivered it.
    EXPECT_LT(Request->GetElapsedTime(), FPlatformTime::Seconds() - Started - 0.1);
}

TEST_F(HttpManager, CancelledRequestCompletesAtTheNextTickWithoutResponse)
{
    TSharedRef<IHttpRequest> Request = MakeRequest(Server.URL("/held"));
    Request->CancelRequest();
    EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::NotStarted) << "nothing to cancel yet";
    const std::shared_ptr<FCompletion> Result = BindCompletion(Request);
    ASSERT_TRUE(Request->ProcessRequest());
    Request->CancelRequest();
    EXPECT_FALSE(Result->bCompleted);
    Manager.Tick(0.0f);
    EXPECT_TRUE(Result->bCompleted && !Result->bSucceeded && !Result->Response);
    EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
}

TEST_F(HttpManager, RequestKeepsRunningAfterItsOwnerIsGoneAndCallsNoOne)
{
    auto Owner = std::make_shared<int>(0);
    auto Calls = std::make_shared<int>(0);
    TWeakPtr<IHttpRequest> Weak;
    {
        TSharedRef<IHttpRequest> Request = MakeRequest(Server.URL("/held"));
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
    TSharedRef<IHttpRequest> Quick = MakeRequest(Server.URL("/answer"));
    const std::shared_ptr<FCompletion> QuickResult = BindCompletion(Quick);
    ASSERT_TRUE(Quick->ProcessRequest());
    Manager.Flush(EHttpFlushReason::FullFlush);
    EXPECT_TRUE(QuickResult->bCompleted && QuickResult->bSucceeded);

    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), 0.1, GEngineIni);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), 0.2, GEngineIni);
    Manager.UpdateConfigs();
    TSharedRef<IHttpRequest> Held = MakeRequest(Server.URL("/held"));
    const std::shared_ptr<FCompletion> HeldResult = BindCompletion(Held);
    ASSERT_TRUE(Held->ProcessRequest());
    Manager.Flush(EHttpFlushReason::Shutdown);
    EXPECT_TRUE(HeldResult->bCompleted && !HeldResult->bSucceeded && !HeldResult->Response);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), 2.0, GEngineIni);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), 4.0, GEngineIni);
    Manager.UpdateConfigs();
}

TEST(HttpModule, ProcessExitsWhileARequestIsInFlight)
{
    // A fresh process for the child: a forked one would lack the worker thread.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // Connections complete in the kernel's backlog but are never accepted or answered.
    int Port = 0;
    const int Listener = BindLoopback(SOCK_STREAM, Port);
    ASSERT_EQ(listen(Listener, 4), 0);
    const FString URL = LocalURL(Port, "/");
    EXPECT_EXIT(
        {
            TSharedRef<IHttpRequest> Request = MakeRequest(URL);
            Request->ProcessRequest();
            TickUntil([] { return false; }, 0.2);
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "");
    close(Listener);
}

TEST(HttpModule, LoadsLibcurlWithTheFirstRequestNotWithTheProgram)
{
    // A fresh process for the child, in which no earlier test has sent a request.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            const auto IsLoaded = [] { return dlopen("libcurl.so.4", RTLD_LAZY | RTLD_NOLOAD) != nullptr; };
            const bool bLoadedBefore = IsLoaded();
            MakeRequest(LocalURL(1, "/"))->ProcessRequest();
            std::exit(!bLoadedBefore && IsLoaded() ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "");
}
