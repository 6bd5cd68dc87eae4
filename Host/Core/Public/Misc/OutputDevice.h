#pragma once

#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

#include <mutex>
#include <vector>

// Receives every log line; add one to GLog to see what the host and modules log.
class CORE_API FOutputDevice
{
public:
    virtual ~FOutputDevice() = default;
    virtual void Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName& Category) = 0;
};

// Fans each line out to stderr and to every added device.
class CORE_API FOutputDeviceRedirector : public FOutputDevice
{
public:
    constexpr FOutputDeviceRedirector() = default;

    void AddOutputDevice(FOutputDevice* Device);
    void RemoveOutputDevice(FOutputDevice* Device);
    void Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName& Category) override;

private:
    std::mutex Mutex;
    std::vector<FOutputDevice*> Devices;
};

// Valid from static initialisation on.
extern CORE_API FOutputDeviceRedirector* GLog;
