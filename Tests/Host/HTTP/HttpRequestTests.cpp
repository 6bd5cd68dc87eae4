#include "HttpModule.h"
#include "HttpTestServers.h"

#include <gtest/gtest.h>

namespace
{
const char* const NoContent = "HTTP/1.1 204 No Content\r\nContent-Length: 0\r\n\r\n";
} // namespace

TEST(HttpRequest, HeadersGoOutInTheOrderFirstSetWithTheirNamesAsGiven)
{
    FRawServer Server(NoContent);
    TSharedRef<IHttpRequest> Request = MakeRequest(Server.URL("/order"), TEXT("POST"));
    Request->SetHeader(TEXT("Zeta-First"), TEXT("1"));
    Request->SetHeader(TEXT("content-TYPE"), TEXT("text/plain"));
    Request->SetHeader(TEXT("X-Empty"), TEXT(""));
    Request->SetHeader(TEXT("alpha"), TEXT("2"));
    Request->SetHeader(TEXT("ZETA-FIRST"), TEXT("3"));
    Request->SetContentAsString(TEXT("h\u00e9"));
    ASSERT_TRUE(RunRequest(Request).bSucceeded);

    const std::string Wire = Server.Received().at(0);
    const size_t Zeta = Wire.find("\r\nZeta-First: 3\r\n");
    const size_t Type = Wire.find("\r\ncontent-TYPE: text/plain\r\n");
    const size_t Empty = Wire.find("\r\nX-Empty:\r\n");
    const size_t Alpha = Wire.find("\r\nalpha: 2\r\n");
    EXPECT_TRUE(Zeta < Type && Type < Empty && Empty < Alpha && Alpha != std::string::npos) << Wire;
    EXPECT_EQ(Wire.find("Expect"), std::string::npos) << Wire;
    EXPECT_NE(Wire.find("\r\nContent-Length: 3\r\n"), std::string::npos) << Wire;
    EXPECT_TRUE(Wire.ends_with("\r\n\r\nh\xc3\xa9")) << Wire;
}

TEST(HttpRequest, LineBreaksInHeadersOrVerbAreRefusedAndNothingIsSent)
{
    FRawServer Server(NoContent);
    const std::pair<const TCHAR*, const TCHAR*> Headers[] = {
        {TEXT("X-A\r\nX-Injected"), TEXT("1")},
        {TEXT("X-A"), TEXT("1\r\nX-Injected: 2")},
        {TEXT("X-A"), TEXT("1\nX-Injected: 2")},
        {TEXT("X-A"), TEXT("1\r")},
    };
    for (const auto& [Name, Value] : Headers)
    {
        TSharedRef<IHttpRequest> Request = MakeRequest(Server.URL("/"));
        Request->SetHeader(Name, Value);
        EXPECT_FALSE(Request->ProcessRequest()) << FString(Value).ToUTF8();
        EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::NotStarted);
    }
    EXPECT_FALSE(MakeRequest(Server.URL("/"), TEXT("GET / HTTP/1.1\r\nX-Injected: 1\r\n"))->ProcessRequest());

    TSharedRef<IHttpRequest> Fine = MakeRequest(Server.URL("/fine"));
    ASSERT_TRUE(RunRequest(Fine).bSucceeded);
    EXPECT_FALSE(Fine->ProcessRequest()) << "a second start";
    ASSERT_EQ(Server.Received().size(), 1u);
    EXPECT_TRUE(Server.Received()[0].starts_with("GET /fine HTTP/1.1\r\n"));
}

TEST(HttpRequest, RequestsThatGetNoAnswerFailWithoutResponse)
{
    FRawServer CutOff("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nonly a part");
    FGate Gate;
    FTestServer Slow;
    Slow->Get("/slow",
              [&Gate](const httplib::Request&, httplib::Response& Response)
              {
                  Gate.Wait();
                  Response.set_content("late", "text/plain");
              });
    Slow.Start();

    TSharedRef<IHttpRequest> TimedOut = MakeRequest(Slow.URL("/slow"));
    TimedOut->SetTimeout(0.2f);
    // Nothing listens on port 1 here.
    const FString Refused = TEXT("http://127.0.0.1:1/");
    const TSharedRef<IHttpRequest> Requests[] = {
        MakeRequest(Refused),
        MakeRequest(CutOff.URL("/")),
        TimedOut,
        MakeRequest(TEXT("ftp://127.0.0.1/file")),
        MakeRequest(TEXT("127.0.0.1/no-scheme")),
        MakeRequest(TEXT("")),
    };
    for (const TSharedRef<IHttpRequest>& Request : Requests)
    {
        bool bCompletedInside = false;
        Request->OnProcessRequestComplete().BindLambda(
            [&bCompletedInside](FHttpRequestPtr, FHttpResponsePtr, bool) { bCompletedInside = true; });
        EXPECT_TRUE(Request->ProcessRequest()) << Request->GetURL().ToUTF8();
        EXPECT_FALSE(bCompletedInside) << "completion must wait for a tick";
        const FCompletion Result = AwaitCompletion(Request);
        EXPECT_TRUE(Result.bCompleted && !Result.bSucceeded && !Result.Response)
            << Request->GetURL().ToUTF8();
        EXPECT_EQ(Request->GetStatus(), EHttpRequestStatus::Failed);
    }

    // Without a time-out of its own, the module-wide one at the start holds.
    const double ModuleTimeout = FHttpModule::Get().GetHttpTimeout();
    FHttpModule::Get().SetHttpTimeout(0.2);
    TSharedRef<IHttpRequest> ModuleTimedOut = MakeRequest(Slow.URL("/slow"));
    EXPECT_TRUE(ModuleTimedOut->ProcessRequest());
    FHttpModule::Get().SetHttpTimeout(ModuleTimeout);
    EXPECT_FALSE(AwaitCompletion(ModuleTimedOut).bSucceeded);
    Gate.Open();
}
