#include "LipsyncRequest.h"
#include "MultipartForm.h"

#include <httplib.h>

#include <algorithm>
#include <cstring>
#include <string>

// The server's request checks on hostile requests: header lines and body come from
// the input (split at the first blank line), and cpp-httplib's own request and
// multipart readers run on them as they do for a socket, through an in-memory
// stream.
namespace
{
class FMemoryStream : public httplib::Stream
{
public:
    explicit FMemoryStream(std::string InBytes) : Bytes(std::move(InBytes)) {}

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    ssize_t read(char* Destination, size_t Size) override
    {
        const size_t Taken = std::min(Size, Bytes.size() - Position);
        std::memcpy(Destination, Bytes.data() + Position, Taken);
        Position += Taken;
        return ssize_t(Taken);
    }
    ssize_t write(const char*, size_t Size) override { return ssize_t(Size); }
    void get_remote_ip_and_port(std::string& Ip, int& Port) const override
    {
        Ip = "127.0.0.1";
        Port = 1;
    }
    void get_local_ip_and_port(std::string& Ip, int& Port) const override
    {
        Ip = "127.0.0.1";
        Port = 2;
    }
    socket_t socket() const override { return INVALID_SOCKET; }

private:
    std::string Bytes;
    size_t Position = 0;
};

class FFuzzServer : public httplib::Server
{
public:
    FFuzzServer()
    {
        Post("/dh/api/v2/zel",
             [](const httplib::Request& Request, httplib::Response& Response,
                const httplib::ContentReader& Reader)
             {
                 auto Form = ReadForm(Request, Response, Reader, MaxBody);
                 if (auto* Parts = std::get_if<FForm>(&Form))
                 {
                     ParseLipsyncRequest(Request.headers, *Parts);
                 }
             });
        set_payload_max_length(MaxBody);
    }

    void Serve(std::string Bytes)
    {
        FMemoryStream Stream(std::move(Bytes));
        bool bClosed = false;
        process_request(Stream, true, bClosed, nullptr);
    }

    static constexpr size_t MaxBody = 1 << 20;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    static FFuzzServer Server;
    const std::string_view Input(reinterpret_cast<const char*>(Data), Size);
    const size_t Split = Input.find("\r\n\r\n");
    const std::string_view Headers =
        Split == std::string_view::npos ? std::string_view() : Input.substr(0, Split + 2);
    const std::string_view Body = Split == std::string_view::npos ? Input : Input.substr(Split + 4);
    std::string Request =
        "POST /dh/api/v2/zel HTTP/1.1\r\nHost: fuzz\r\nContent-Length: " + std::to_string(Body.size()) +
        "\r\n";
    Request.append(Headers);
    Request += "\r\n";
    Request.append(Body);
    Server.Serve(std::move(Request));
    return 0;
}
