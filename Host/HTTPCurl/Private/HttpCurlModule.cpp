#include "HttpTransport.h"
#include "HttpWorker.h"

namespace
{
class FHttpCurlModule final : public IHttpTransportModule
{
public:
    std::unique_ptr<IHttpTransport> CreateTransport(FHttpEventQueue& Events) override
    {
        return std::make_unique<FHttpWorker>(Events);
    }
};
} // namespace

extern "C" ORV_EXPORT IModuleInterface* InitializeModule()
{
    return new FHttpCurlModule();
}
