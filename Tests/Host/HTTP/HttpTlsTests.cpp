#include "HttpModule.h"
#include "HttpTestServers.h"

#include <gtest/gtest.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <cstdlib>
#include <filesystem>

namespace
{
using FKey = std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)>;
using FCert = std::unique_ptr<X509, decltype(&X509_free)>;

void AddExtension(X509* Cert, X509* Issuer, int Nid, const char* Value)
{
    X509V3_CTX Context;
    X509V3_set_ctx(&Context, Issuer, Cert, nullptr, nullptr, 0);
    X509_EXTENSION* Extension = X509V3_EXT_conf_nid(nullptr, &Context, Nid, Value);
    X509_add_ext(Cert, Extension, -1);
    X509_EXTENSION_free(Extension);
}

// A certificate for Key named Name, signed by the issuer, or by itself without one.
FCert MakeCertificate(const char* Name, EVP_PKEY* Key, X509* Issuer, EVP_PKEY* IssuerKey, long Serial)
{
    FCert Cert(X509_new(), X509_free);
    X509_set_version(Cert.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(Cert.get()), Serial);
    X509_gmtime_adj(X509_getm_notBefore(Cert.get()), -3600);
    X509_gmtime_adj(X509_getm_notAfter(Cert.get()), 86400);
    X509_set_pubkey(Cert.get(), Key);
    X509_NAME_add_entry_by_txt(X509_get_subject_name(Cert.get()), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(Name), -1, -1, 0);
    X509* Signer = Issuer ? Issuer : Cert.get();
    X509_set_issuer_name(Cert.get(), X509_get_subject_name(Signer));
    if (Issuer)
    {
        AddExtension(Cert.get(), Signer, NID_subject_alt_name, "IP:127.0.0.1");
    }
    else
    {
        AddExtension(Cert.get(), Signer, NID_basic_constraints, "critical,CA:TRUE");
        AddExtension(Cert.get(), Signer, NID_key_usage, "critical,keyCertSign,cRLSign");
    }
    X509_sign(Cert.get(), IssuerKey ? IssuerKey : Key, EVP_sha256());
    return Cert;
}

template <typename WriterType> void WritePem(const std::filesystem::path& Path, WriterType Write)
{
    FILE* File = std::fopen(Path.c_str(), "w");
    ASSERT_NE(File, nullptr);
    Write(File);
    std::fclose(File);
}

// A certificate authority made for one test run, and a server certificate it signed.
struct FTestAuthority
{
    explicit FTestAuthority(const std::string& Tag)
        : Dir(std::filesystem::temp_directory_path() / ("orvane-tls-" + Tag + std::to_string(getpid())))
    {
        std::filesystem::create_directories(Dir);
        FKey CAKey(EVP_EC_gen("P-256"), EVP_PKEY_free);
        FKey ServerKey(EVP_EC_gen("P-256"), EVP_PKEY_free);
        const FCert CA = MakeCertificate(("Orvane Test CA " + Tag).c_str(), CAKey.get(), nullptr, nullptr, 1);
        const FCert Server = MakeCertificate("127.0.0.1", ServerKey.get(), CA.get(), CAKey.get(), 2);
        WritePem(CAFile, [&](FILE* File) { PEM_write_X509(File, CA.get()); });
        WritePem(ServerCertFile, [&](FILE* File) { PEM_write_X509(File, Server.get()); });
        WritePem(ServerKeyFile, [&](FILE* File)
                 { PEM_write_PrivateKey(File, ServerKey.get(), nullptr, nullptr, 0, nullptr, nullptr); });
    }
    ~FTestAuthority() { std::filesystem::remove_all(Dir); }

    std::filesystem::path Dir =
        std::filesystem::temp_directory_path() / ("orvane-tls-" + std::to_string(getpid()));
    bool bMade = std::filesystem::create_directories(Dir);
    std::filesystem::path CAFile = Dir / "ca.pem";
    std::filesystem::path ServerCertFile = Dir / "server.pem";
    std::filesystem::path ServerKeyFile = Dir / "server-key.pem";
};

bool Fetch(const FString& URL)
{
    TSharedRef<IHttpRequest> Request = FHttpModule::Get().CreateRequest();
    Request->SetURL(URL);
    const FCompletion Result = RunRequest(Request);
    return Result.bSucceeded && Result.Response && Result.Response->GetContentAsString() == TEXT("secret");
}
} // namespace

TEST(HttpTls, ServerIsTrustedOnlyOnceItsAuthorityIsNamed)
{
    const FTestAuthority Authority("trusted");
    const FTestAuthority Stranger("stranger");
    FTestServer Server(std::make_unique<httplib::SSLServer>(Authority.ServerCertFile.c_str(),
                                                            Authority.ServerKeyFile.c_str()));
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
