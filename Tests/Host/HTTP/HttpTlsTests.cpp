#include "HttpModule.h"
#include "HttpTestServers.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace
{
// A certificate authority made for one test run with the openssl command, and a
// certificate for 127.0.0.1 that it signed.
struct FTestAuthority
{
    explicit FTestAuthority(const std::string& Name)
        : Dir(std::filesystem::temp_directory_path() / ("orvane-tls-" + Name + std::to_string(getpid())))
    {
        std::filesystem::create_directories(Dir);
        const std::string NewKey = " -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 1";
        const std::string MakeCA = "openssl req -x509" + NewKey + " -keyout '" + (Dir / "ca.key").string() +
                                   "' -out '" + CAFile.string() + "' -subj '/CN=Orvane Test CA " + Name + "'";
        const std::string MakeServer = "openssl req -x509" + NewKey + " -CA '" + CAFile.string() +
                                       "' -CAkey '" + (Dir / "ca.key").string() + "' -keyout '" +
                                       KeyFile.string() + "' -out '" + CertFile.string() +
                                       "' -subj /CN=127.0.0.1 -addext subjectAltName=IP:127.0.0.1"
                                       " -addext basicConstraints=CA:FALSE";
        bMade = std::system((MakeCA + " 2>/dev/null && " + MakeServer + " 2>/dev/null").c_str()) == 0;
    }
    ~FTestAuthority() { std::filesystem::remove_all(Dir); }

    std::filesystem::path Dir;
    std::filesystem::path CAFile = Dir / "ca.pem";
    std::filesystem::path CertFile = Dir / "server.pem";
    std::filesystem::path KeyFile = Dir / "server.key";
    bool bMade = false;
};

bool Fetch(const FString& URL)
{
    const FCompletion Result = RunRequest(MakeRequest(URL));
    return Result.bSucceeded && Result.Response && Result.Response->GetContentAsString() == TEXT("secret");
}
} // namespace

TEST(HttpTls, ServerIsTrustedOnlyOnceItsAuthorityIsNamed)
{
    const FTestAuthority Authority("trusted");
    const FTestAuthority Stranger("stranger");
    ASSERT_TRUE(Authority.bMade && Stranger.bMade) << "the openssl command made no certificates";
    FTestServer Server(
        std::make_unique<httplib::SSLServer>(Authority.CertFile.c_str(), Authority.KeyFile.c_str()));
    Server->Get("/", [](const httplib::Request&, httplib::Response& Response)
                { Response.set_content("secret", "text/plain"); });
    Server.Start();
    const FString URL = Server.URL("/", "https");

    ::unsetenv("CURL_CA_BUNDLE");
    ::unsetenv("SSL_CERT_FILE");
    EXPECT_FALSE(Fetch(URL)) << "verification is on by default";

    ::setenv("SSL_CERT_FILE", Authority.CAFile.c_str(), 1);
    EXPECT_TRUE(Fetch(URL));

    // CURL_CA_BUNDLE comes first, as for curl's own tools.
    ::setenv("CURL_CA_BUNDLE", Stranger.CAFile.c_str(), 1);
    EXPECT_FALSE(Fetch(URL));
    ::setenv("CURL_CA_BUNDLE", Authority.CAFile.c_str(), 1);
    EXPECT_TRUE(Fetch(URL));
    ::unsetenv("CURL_CA_BUNDLE");
    ::unsetenv("SSL_CERT_FILE");
}
