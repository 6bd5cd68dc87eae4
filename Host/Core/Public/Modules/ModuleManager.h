#pragma once

#include "CoreTypes.h"
#include "Modules/ModuleInterface.h"
#include "UObject/NameTypes.h"

#include <memory>
#include <mutex>
#include <vector>

// Loads modules: shared libraries named lib<Module>.so that export the C-linkage
// function InitializeModule, which returns a new module object.
class CORE_API FModuleManager
{
public:
    static FModuleManager& Get();

    // Loads the module's library (from the directory of the host's libraries, then
    // from the install prefix's library directory), makes its module object and
    // starts it. A module already loaded is returned as it is. Null, with a log
    // line saying why, when the library or its InitializeModule is missing.
    IModuleInterface* LoadModule(const FName InModuleName);

    // Shuts the module down and destroys its object. Its library stays mapped,
    // since the host keeps descriptors and objects made from its code; loading the
    // module again makes and starts a new module object.
    bool UnloadModule(const FName InModuleName);

    IModuleInterface* GetModule(const FName InModuleName);
    bool IsModuleLoaded(const FName InModuleName);

private:
    FModuleManager() = default;

    struct FLoadedModule
    {
        FName Name;
        std::unique_ptr<IModuleInterface> Module;
    };
    FLoadedModule* FindLocked(const FName& Name);

    // Recursive: a module's start-up may load the modules it needs.
    std::recursive_mutex Mutex;
    std::vector<FLoadedModule> Modules;
};
