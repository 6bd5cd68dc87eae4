#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

// The module object the host's module manager makes through InitializeModule.
// Its only work is at start-up: the settings are read and written straight back,
// so that the project always holds a complete settings file.
class CADRELBLENDSHAPE_API FCadrelBlendShapeModule : public IModuleInterface
{
public:
    ~FCadrelBlendShapeModule() override = default;

    void StartupModule() override;
    void PreUnloadCallback() override {}
    void PostLoadCallback() override {}
    void ShutdownModule() override {}
    bool SupportsDynamicReloading() override { return true; }
    bool SupportsAutomaticShutdown() override { return true; }
    bool IsGameModule() const override { return false; }
};

extern "C" CADRELBLENDSHAPE_API IModuleInterface* InitializeModule();
