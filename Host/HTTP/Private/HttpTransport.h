#pragma once

#include "CoreMinimal.h"
#include "HttpEventQueue.h"
#include "Modules/ModuleInterface.h"

#include <memory>
#include <string>
#include <vector>

// Everything an exchange needs, copied from the request when it starts so that the
// transport never touches the request object.
struct FHttpTransferSpec
{
    uint64 RequestId = 0;
    FString URL;
    std::string Verb;
    // "Name: Value" lines in the order they go on the wire.
    std::vector<std::string> HeaderLines;
    // Shared with the request rather than copied: a later SetContent replaces the
    // request's array and leaves this one alone.
    std::shared_ptr<const TArray<uint8>> Body;
    // Seconds for the whole exchange; 0 for no overall limit.
    double TimeoutSeconds = 0.0;
    // The certificate authorities to trust instead of libcurl's default bundle.
    std::string CAFile;
};

// What moves the bytes: libcurl, on a thread of its own. It is a library of its own,
// the module OrvaneHTTPCurl, which the manager loads when the first request starts:
// libcurl brings some forty libraries with it, and a program that never sends a
// request would otherwise load them all, and wait for that, every time it starts.
class IHttpTransport
{
public:
    // Stops, dropping whatever still runs, without completions.
    virtual ~IHttpTransport() = default;

    // The exchange's headers, progress and completion go to the manager's event queue.
    virtual void Start(FHttpTransferSpec&& Spec) = 0;
    virtual void Cancel(uint64 RequestId) = 0;
};

// The module object of the transport's library.
class IHttpTransportModule : public IModuleInterface
{
public:
    virtual std::unique_ptr<IHttpTransport> CreateTransport(FHttpEventQueue& Events) = 0;
};
