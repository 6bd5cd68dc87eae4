#pragma once

#include "CoreTypes.h"

// What the host's module manager calls on a loaded module. The virtual
// operations keep this order, which modules built against the host rely on.
class IModuleInterface
{
public:
    virtual ~IModuleInterface() = default;

    // Called once after the module's object is made.
    virtual void StartupModule() {}
    // Called before ShutdownModule when the module is unloaded.
    virtual void PreUnloadCallback() {}
    // Called when the module has been loaded again while the host runs.
    virtual void PostLoadCallback() {}
    // Called once before the module's object is destroyed.
    virtual void ShutdownModule() {}

    virtual bool SupportsDynamicReloading() { return true; }
    virtual bool SupportsAutomaticShutdown() { return true; }
    virtual bool IsGameModule() const { return false; }
};
