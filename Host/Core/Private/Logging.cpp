#include "Logging/LogMacros.h"
#include "Misc/AssertionMacros.h"
#include "Misc/OutputDevice.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace
{
constinit FOutputDeviceRedirector GRedirector;

// A device that logs from inside Serialize must not deadlock the redirector.
thread_local bool bInsideSerialize = false;
} // namespace

FOutputDeviceRedirector* GLog = &GRedirector;

const TCHAR* ELogVerbosity::ToString(Type Verbosity)
{
    switch (Verbosity)
    {
    case NoLogging:
        return TEXT("NoLogging");
    case Fatal:
        return TEXT("Fatal");
    case Error:
        return TEXT("Error");
    case Warning:
        return TEXT("Warning");
    case Display:
        return TEXT("Display");
    case Log:
        return TEXT("Log");
    case Verbose:
        return TEXT("Verbose");
    case VeryVerbose:
        return TEXT("VeryVerbose");
    }
    return TEXT("Unknown");
}

void FOutputDeviceRedirector::AddOutputDevice(FOutputDevice* Device)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    if (Device && std::find(Devices.begin(), Devices.end(), Device) == Devices.end())
    {
        Devices.push_back(Device);
    }
}

void FOutputDeviceRedirector::RemoveOutputDevice(FOutputDevice* Device)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    Devices.erase(std::remove(Devices.begin(), Devices.end(), Device), Devices.end());
}

void FOutputDeviceRedirector::Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity,
                                        const FName& Category)
{
    const std::string Line =
        (Category.ToString() + TEXT(": ") + ELogVerbosity::ToString(Verbosity) + TEXT(": ") + FString(Text))
            .ToUTF8();
    std::fprintf(stderr, "%s\n", Line.c_str());
    if (bInsideSerialize)
    {
        return;
    }
    std::lock_guard<std::mutex> Lock(Mutex);
    bInsideSerialize = true;
    for (FOutputDevice* Device : Devices)
    {
        Device->Serialize(Text, Verbosity, Category);
    }
    bInsideSerialize = false;
}

void FMsg::Log(const FName& Category, ELogVerbosity::Type Verbosity, const FString& Text)
{
    GLog->Serialize(*Text, Verbosity, Category);
    if (Verbosity == ELogVerbosity::Fatal)
    {
        std::abort();
    }
}

void FDebug::EnsureFailed(const char* Expr, const char* File, int32 Line)
{
    FMsg::Log(TEXT("LogAssert"), ELogVerbosity::Error,
              FString::Printf(TEXT("Ensure condition failed: %s [%s:%d]"), *FString::FromUTF8(Expr),
                              *FString::FromUTF8(File), Line));
}

void FDebug::CheckFailed(const char* Expr, const char* File, int32 Line)
{
    FMsg::Log(TEXT("LogAssert"), ELogVerbosity::Fatal,
              FString::Printf(TEXT("Assertion failed: %s [%s:%d]"), *FString::FromUTF8(Expr),
                              *FString::FromUTF8(File), Line));
    std::abort();
}
