#include "CadrelHTTP.h"
#include "TransportTestServers.h"

#include <gtest/gtest.h>

using namespace CadrelHTTP;

namespace
{
struct FEvents
{
    int32 Completions = 0;
    int32 Progress = 0;
    int32 Headers = 0;

    FHTTPDelegate MakeDelegate()
    {
        FHTTPDelegate Delegate;
        Delegate.CompleteDelegate.BindLambda([this](FHttpRequestPtr, FHttpResponsePtr, bool)
                                             { ++Completions; });
        Delegate.ProgressDelegate.BindLambda([this](FHttpRequestPtr, int32, int32) { ++Progress; });
        Delegate.HeaderReceivedDelegate.BindLambda([this](FHttpRequestPtr, const FString&, const FString&)
                                                   { ++Headers; });
        return Delegate;
    }
};

std::string RequestLine(const std::pair<std::string, std::string>& Request)
{
    return Request.first.substr(0, Request.first.find("\r\n"));
}
} // namespace

TEST(TransportHttpObject, SendsVerbsBodiesAndHeadersAsGiven)
{
    FRawServer Server(JsonReply("{}"));
    const FString URL = Server.URL("/x");
    FEvents Events;
    const TSharedPtr<FHTTP> Http = FHTTP::CreateHTTPObject(Events.MakeDelegate());
    TMap<FString, FString> Headers;
    Headers.Add(TEXT("X-One"), TEXT("1"));
    Headers.Add(TEXT("x-one"), TEXT("2"));
    const TArray<uint8> Bytes(reinterpret_cast<const uint8*>("bytes"), 5);

    EXPECT_TRUE(Http->Request(URL, TEXT("text"), Headers, EHTTPVerbType::PUT));
    EXPECT_TRUE(Http->Request(URL, Bytes, Headers, EHTTPVerbType::DELETE));
    EXPECT_TRUE(Http->Request(URL, TEXT(""), TMap<FString, FString>(), EHTTPVerbType::GET));
    EXPECT_TRUE(Http->Request(URL, Bytes, Headers, static_cast<EHTTPVerbType>(4)));
    ASSERT_TRUE(TickUntil([&] { return Events.Completions == 4; }));

    std::multiset<std::string> Lines;
    for (const std::string& Raw : Server.Received())
    {
        const std::pair<std::string, std::string> Each = SplitRawRequest(Raw);
        Lines.insert(RequestLine(Each) + " " + Each.second);
        // Names that differ only in case are one map key: one header, the later value. The
        // GET has neither headers nor a body, and so no Content-Length either.
        const bool bGet = RequestLine(Each).rfind("GET", 0) == 0;
        EXPECT_EQ(Each.first.find("X-One: 2\r\n") != std::string::npos, !bGet) << Each.first;
        EXPECT_EQ(Each.first.find("Content-Length") != std::string::npos, !bGet) << Each.first;
        EXPECT_EQ(Each.first.find("X-One: 1"), std::string::npos);
    }
    EXPECT_EQ(Lines, (std::multiset<std::string>{"PUT /x HTTP/1.1 text", "DELETE /x HTTP/1.1 bytes",
                                                 "GET /x HTTP/1.1 ", "POST /x HTTP/1.1 bytes"}));
    EXPECT_GE(Events.Headers, 4 * 3);
    EXPECT_GE(Events.Progress, 1);
}
