#include "CadrelServersModule.h"

#include "LipsyncServerCommand.h"
#include "LiveStreamBuffer.h"
#include "VelkReceiver.h"
#include "ViewPageServer.h"

#include <csignal>
#include <cstdio>
#include <pthread.h>

namespace
{
// A page bound to this machine only takes the live link from this machine only, too.
bool IsLoopbackAddress(const std::string& Address)
{
    return Address == "localhost" || Address == "::1" || Address.rfind("127.", 0) == 0;
}

class FEmbeddedLipsyncServer final : public IEmbeddedLipsyncServer
{
public:
    explicit FEmbeddedLipsyncServer(const FLipsyncServerOptions& Options) : Server(Options) {}
    ~FEmbeddedLipsyncServer() override
    {
        Server.Stop();
        Server.Wait();
    }

    bool Start(std::string& OutError) { return Server.Start(OutError); }
    std::string BaseUrl() const override { return Server.BaseUrl(); }

private:
    FLipsyncServer Server;
};

class FCadrelServersModule final : public ICadrelServersModule
{
public:
    std::unique_ptr<IEmbeddedLipsyncServer> StartLipsyncServer(const FLipsyncServerOptions& Options,
                                                               std::string& OutError) override
    {
        auto Server = std::make_unique<FEmbeddedLipsyncServer>(Options);
        if (!Server->Start(OutError))
        {
            return nullptr;
        }
        return Server;
    }

    int RunLipsyncServer(const FLipsyncServerOptions& Options, const char* ProgramName) override
    {
        return RunLipsyncServerUntilSignal(Options, ProgramName);
    }

    int RunView(const FViewOptions& Options) override
    {
        // Blocked before any thread starts, so that every thread inherits the mask and
        // the signals reach only the sigwait below.
        sigset_t Signals;
        sigemptyset(&Signals);
        sigaddset(&Signals, SIGINT);
        sigaddset(&Signals, SIGTERM);
        pthread_sigmask(SIG_BLOCK, &Signals, nullptr);

        FLiveStreamBuffer Buffer;
        FVelkReceiver Receiver(Buffer);
        FViewPageServer Page(Buffer);
        std::string Error;
        if (!Receiver.Start(Options.VelkPort, Options.AudioPort, IsLoopbackAddress(Options.Bind), Error) ||
            !Page.Start(Options.Bind, Options.WebPort, Error))
        {
            std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
            return 1;
        }
        std::printf("%s\n", Page.Url().c_str());
        std::printf("velk port %d, audio port %d\n", Receiver.VelkPort(), Receiver.AudioPort());
        std::fflush(stdout);

        int Signal = 0;
        sigwait(&Signals, &Signal);
        Page.Stop();
        Receiver.Stop();
        return 0;
    }
};
} // namespace

extern "C" ORV_EXPORT IModuleInterface* InitializeModule()
{
    return new FCadrelServersModule();
}
