// A module as the host loads it: its start-up and shut-down say so in the log,
// which is the one channel the test shares with it.

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

ORV_DEFINE_LOG_CATEGORY_STATIC(LogOrvaneTestModule, Log, All);

namespace
{
class FTestModule : public IModuleInterface
{
public:
    void StartupModule() override { ORV_LOG(LogOrvaneTestModule, Log, TEXT("started")); }
    void PreUnloadCallback() override { ORV_LOG(LogOrvaneTestModule, Log, TEXT("unloading")); }
    void ShutdownModule() override { ORV_LOG(LogOrvaneTestModule, Log, TEXT("shut down")); }
    ~FTestModule() override { ORV_LOG(LogOrvaneTestModule, Log, TEXT("destroyed")); }
};
} // namespace

extern "C" ORV_EXPORT IModuleInterface* InitializeModule()
{
    return new FTestModule();
}
