#pragma once

#include "LipsyncServer.h"
#include "AnswerWriter.h"
#include "LipsyncRequest.h"
#include "StreamStates.h"
#include "VelkLink.h"

#include <httplib.h>

#include <memory>
#include <string>

// The lipsync endpoints and /healthz: check the request, animate its speech,
// answer in the format of the endpoint's server kind.
class FLipsyncEndpoints
{
public:
    explicit FLipsyncEndpoints(const FLipsyncServerOptions& Options);
    ~FLipsyncEndpoints();

    void Register(httplib::Server& Server);

private:
    enum class EFormat
    {
        Audio2Face,
        Cloud,
    };
    struct FEndpoint
    {
        const char* Path;
        EFormat Format;
        bool bStream;
    };

    void Serve(const FEndpoint& Endpoint, const httplib::Request& Request, httplib::Response& Response,
               const httplib::ContentReader& Reader);
    std::vector<LipsyncEngine::FFaceFrame> Animate(const FEndpoint& Endpoint, const FLipsyncRequest& Request);
    std::string WriteAnswer(const FEndpoint& Endpoint, const FLipsyncRequest& Request, FFrames Frames) const;

    const FLipsyncServerOptions& Options;
    FStreamStates Streams;
    // Null with the link turned off.
    std::unique_ptr<FVelkLink> Link;
};

void Refuse(httplib::Response& Response, const FRequestError& Error);
