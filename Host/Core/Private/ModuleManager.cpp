#include "Modules/ModuleManager.h"

#include "Containers/String.h"
#include "Logging/LogMacros.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <string>

ORV_DEFINE_LOG_CATEGORY_STATIC(LogModuleManager, Log, All);

namespace
{
namespace fs = std::filesystem;

using FInitializeModuleFunction = IModuleInterface* (*)();

// Any object of this library tells dladdr where the library lives.
const char LibraryAnchor = 0;

std::vector<fs::path> SearchDirectories()
{
    std::vector<fs::path> Directories;
    Dl_info Info;
    if (::dladdr(&LibraryAnchor, &Info) != 0 && Info.dli_fname)
    {
        Directories.push_back(fs::path(Info.dli_fname).parent_path());
    }
    const fs::path Installed(ORV_INSTALL_LIBDIR);
    if (std::find(Directories.begin(), Directories.end(), Installed) == Directories.end())
    {
        Directories.push_back(Installed);
    }
    return Directories;
}

// The module's library, opened from the first directory that has it (its path
// in OutPath); logs why when there is none.
void* OpenLibrary(const FString& ModuleName, FString& OutPath)
{
    const std::string FileName = "lib" + ModuleName.ToUTF8() + ".so";
    FString Searched;
    for (const fs::path& Directory : SearchDirectories())
    {
        const fs::path Candidate = Directory / FileName;
        std::error_code Error;
        if (!fs::exists(Candidate, Error))
        {
            Searched += (Searched.IsEmpty() ? TEXT("") : TEXT(", ")) + FString::FromUTF8(Directory.string());
            continue;
        }
        OutPath = FString::FromUTF8(Candidate.string());
        // The library stays mapped after dlclose: descriptors, default objects
        // and vtables made from its code outlive the module object.
        void* Handle = ::dlopen(Candidate.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        if (!Handle)
        {
            ORV_LOG(LogModuleManager, Error, TEXT("Cannot load module %s: %s"), *ModuleName,
                    *FString::FromUTF8(::dlerror()));
        }
        return Handle;
    }
    ORV_LOG(LogModuleManager, Error, TEXT("Cannot load module %s: no %s in %s"), *ModuleName,
            *FString::FromUTF8(FileName), *Searched);
    return nullptr;
}

IModuleInterface* InitializeModuleIn(void* Handle, const FString& ModuleName, const FString& Path)
{
    const auto Initialize = reinterpret_cast<FInitializeModuleFunction>(::dlsym(Handle, "InitializeModule"));
    if (!Initialize)
    {
        ORV_LOG(LogModuleManager, Error, TEXT("Cannot load module %s: %s exports no InitializeModule"),
                *ModuleName, *Path);
        return nullptr;
    }
    IModuleInterface* Module = Initialize();
    if (!Module)
    {
        ORV_LOG(LogModuleManager, Error, TEXT("Cannot load module %s: InitializeModule of %s made no module"),
                *ModuleName, *Path);
    }
    return Module;
}
} // namespace

FModuleManager& FModuleManager::Get()
{
    // Never destroyed: modules are shut down by the host, not by static destructors
    // that run in no fixed order with the modules' own.
    static FModuleManager* const Instance = new FModuleManager();
    return *Instance;
}

FModuleManager::FLoadedModule* FModuleManager::FindLocked(const FName& Name)
{
    const auto Found = std::find_if(Modules.begin(), Modules.end(),
                                    [&Name](const FLoadedModule& Loaded) { return Loaded.Name == Name; });
    return Found == Modules.end() ? nullptr : &*Found;
}

IModuleInterface* FModuleManager::LoadModule(const FName InModuleName)
{
    std::lock_guard<std::recursive_mutex> Lock(Mutex);
    if (FLoadedModule* Loaded = FindLocked(InModuleName))
    {
        return Loaded->Module.get();
    }
    const FString ModuleName = InModuleName.ToString();
    if (ModuleName.IsEmpty() || ModuleName.Contains(TEXT("/")))
    {
        ORV_LOG(LogModuleManager, Error, TEXT("Cannot load module \"%s\": not a module name"), *ModuleName);
        return nullptr;
    }
    FString Path;
    void* const Handle = OpenLibrary(ModuleName, Path);
    if (!Handle)
    {
        return nullptr;
    }
    IModuleInterface* const Module = InitializeModuleIn(Handle, ModuleName, Path);
    ::dlclose(Handle);
    if (!Module)
    {
        return nullptr;
    }
    // Registered before start-up, so that a start-up asking for its own module gets it.
    Modules.push_back(FLoadedModule{InModuleName, std::unique_ptr<IModuleInterface>(Module)});
    Module->StartupModule();
    return Module;
}

bool FModuleManager::UnloadModule(const FName InModuleName)
{
    std::lock_guard<std::recursive_mutex> Lock(Mutex);
    FLoadedModule* const Loaded = FindLocked(InModuleName);
    if (!Loaded)
    {
        return false;
    }
    std::unique_ptr<IModuleInterface> Module = std::move(Loaded->Module);
    Modules.erase(Modules.begin() + (Loaded - Modules.data()));
    Module->PreUnloadCallback();
    Module->ShutdownModule();
    return true;
}

IModuleInterface* FModuleManager::GetModule(const FName InModuleName)
{
    std::lock_guard<std::recursive_mutex> Lock(Mutex);
    FLoadedModule* const Loaded = FindLocked(InModuleName);
    return Loaded ? Loaded->Module.get() : nullptr;
}

bool FModuleManager::IsModuleLoaded(const FName InModuleName)
{
    return GetModule(InModuleName) != nullptr;
}
