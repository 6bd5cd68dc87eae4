#include "CadrelServersModule.h"

#include "Modules/ModuleManager.h"

ICadrelServersModule* LoadCadrelServers(std::string& OutError)
{
    auto* const Module =
        static_cast<ICadrelServersModule*>(FModuleManager::Get().LoadModule(TEXT("CadrelServers")));
    if (!Module)
    {
        OutError =
            "libCadrelServers.so, which runs the servers, cannot be loaded; is cadrel installed whole?";
    }
    return Module;
}
