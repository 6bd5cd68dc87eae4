#pragma once

#include "LipsyncServer.h"
#include "Modules/ModuleInterface.h"

#include <memory>
#include <string>

// The reference lipsync server embedded in a command, running until destroyed.
class IEmbeddedLipsyncServer
{
public:
    // Stops the server, answering requests in flight first.
    virtual ~IEmbeddedLipsyncServer() = default;
    // Such as http://127.0.0.1:43521.
    virtual std::string BaseUrl() const = 0;
};

// Where `cadrel view` receives the live link and serves its page.
struct FViewOptions
{
    int WebPort = 0;
    int VelkPort = 9012;
    int AudioPort = 9013;
    std::string Bind = "127.0.0.1";
};

// What cadrel's commands need of servers: the reference lipsync server, embedded or
// in the foreground, and the live link's receiver with its page. They live in the
// module CadrelServers, which the commands that use them load: with them come
// cpp-httplib, OpenSSL and liblo, whose loading (OpenSSL's start-up above all) would
// otherwise slow every command down, `convert` and `settings` too.
class ICadrelServersModule : public IModuleInterface
{
public:
    // Null, with the reason in OutError, when the server cannot start.
    virtual std::unique_ptr<IEmbeddedLipsyncServer> StartLipsyncServer(const FLipsyncServerOptions& Options,
                                                                       std::string& OutError) = 0;
    // RunLipsyncServerUntilSignal, with its exit code.
    virtual int RunLipsyncServer(const FLipsyncServerOptions& Options, const char* ProgramName) = 0;
    // Receives the live link and serves the page until SIGINT or SIGTERM; the exit code.
    virtual int RunView(const FViewOptions& Options) = 0;
};

// The loaded module; null, with one line in OutError, when its library cannot be
// loaded (the host's log says why).
ICadrelServersModule* LoadCadrelServers(std::string& OutError);
