#include "Interfaces/IPluginManager.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <vector>

ORV_DEFINE_LOG_CATEGORY_STATIC(LogPluginManager, Log, All);

namespace
{
namespace fs = std::filesystem;

class FPlugin final : public IPlugin
{
public:
    FPlugin(FString InName, FString InDescriptorFileName, FPluginDescriptor InDescriptor)
        : Name(std::move(InName)), DescriptorFileName(std::move(InDescriptorFileName)),
          Descriptor(std::move(InDescriptor))
    {
    }

    const FString& GetName() const override { return Name; }
    const FString& GetDescriptorFileName() const override { return DescriptorFileName; }
    FString GetBaseDir() const override { return FPaths::GetPath(DescriptorFileName); }
    const FPluginDescriptor& GetDescriptor() const override { return Descriptor; }

private:
    FString Name;
    FString DescriptorFileName;
    FPluginDescriptor Descriptor;
};

// The folder as the loader found this library, symbolic links kept, so that a
// library reached through a link finds the descriptors beside the link.
fs::path LibraryDirectory()
{
    Dl_info Info{};
    if (dladdr(reinterpret_cast<void*>(&LibraryDirectory), &Info) == 0 || Info.dli_fname == nullptr)
    {
        return {};
    }
    return fs::path(Info.dli_fname).parent_path();
}

// Sorted, so that the outcome does not depend on the order of directory entries.
std::vector<fs::path> ListEntries(const fs::path& Dir, bool bDirectories)
{
    std::vector<fs::path> Found;
    std::error_code Error;
    for (fs::directory_iterator It(Dir, Error), End; !Error && It != End; It.increment(Error))
    {
        std::error_code TypeError;
        // Only regular files: reading a pipe or device named *.uplugin could block.
        if (bDirectories ? It->is_directory(TypeError)
                         : It->is_regular_file(TypeError) && It->path().extension() == ".uplugin")
        {
            Found.push_back(It->path());
        }
    }
    std::sort(Found.begin(), Found.end());
    return Found;
}

std::vector<fs::path> DescriptorFiles()
{
    std::vector<fs::path> Files = ListEntries(LibraryDirectory(), false);
    const char* ProjectDir = std::getenv("ORVANE_PROJECT_DIR");
    if (ProjectDir && *ProjectDir)
    {
        for (const fs::path& PluginDir : ListEntries(fs::path(ProjectDir) / "Plugins", true))
        {
            const std::vector<fs::path> InPlugin = ListEntries(PluginDir, false);
            Files.insert(Files.end(), InPlugin.begin(), InPlugin.end());
        }
    }
    return Files;
}

class FPluginManager final : public IPluginManager
{
public:
    TSharedPtr<IPlugin> FindPlugin(const FString& Name) override
    {
        for (const TSharedRef<IPlugin>& Plugin : Discovered())
        {
            if (Plugin->GetName() == Name)
            {
                return Plugin.ToSharedPtr();
            }
        }
        return nullptr;
    }

    TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() override { return Discovered(); }

private:
    const TArray<TSharedRef<IPlugin>>& Discovered()
    {
        std::call_once(ScanOnce, [this] { Scan(); });
        return Plugins;
    }

    // Later files replace earlier plug-ins of the same name; project folders come
    // last, so a project can carry its own version of a plug-in.
    void Scan()
    {
        for (const fs::path& File : DescriptorFiles())
        {
            const FString FileName = FString::FromUTF8(File.string());
            FPluginDescriptor Descriptor;
            FString FailReason;
            if (!Descriptor.Load(FileName, FailReason))
            {
                ORV_LOG(LogPluginManager, Warning, TEXT("Skipped plug-in descriptor %s: %s"), *FileName,
                        *FailReason);
                continue;
            }
            const TSharedRef<IPlugin> Plugin =
                MakeShared<FPlugin>(FString::FromUTF8(File.stem().string()), FileName, std::move(Descriptor));
            const auto Same = [&Plugin](const TSharedRef<IPlugin>& Known)
            { return Known->GetName() == Plugin->GetName(); };
            const auto Existing = std::find_if(Plugins.begin(), Plugins.end(), Same);
            if (Existing != Plugins.end())
            {
                *Existing = Plugin;
            }
            else
            {
                Plugins.Add(Plugin);
            }
        }
    }

    std::once_flag ScanOnce;
    TArray<TSharedRef<IPlugin>> Plugins;
};
} // namespace

IPluginManager& IPluginManager::Get()
{
    static FPluginManager Instance;
    return Instance;
}
