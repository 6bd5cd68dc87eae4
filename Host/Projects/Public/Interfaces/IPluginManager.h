#pragma once

#include "CoreMinimal.h"
#include "PluginDescriptor.h"

// A discovered plug-in; its name is the base name of its descriptor file.
class PROJECTS_API IPlugin
{
public:
    virtual ~IPlugin() = default;

    virtual const FString& GetName() const = 0;
    virtual const FString& GetDescriptorFileName() const = 0;
    // The folder that holds the descriptor.
    virtual FString GetBaseDir() const = 0;
    virtual const FPluginDescriptor& GetDescriptor() const = 0;
};

// Knows the plug-ins whose descriptors lie beside the host's libraries and, when
// $ORVANE_PROJECT_DIR is set, in the project's Plugins/<Name>/ folders. The folders
// are scanned once, on first use; a project plug-in replaces a library one of the
// same name. Safe to call from any thread.
class PROJECTS_API IPluginManager
{
public:
    virtual ~IPluginManager() = default;

    static IPluginManager& Get();

    // The plug-in of that name, compared without regard to case; null when none is known.
    virtual TSharedPtr<IPlugin> FindPlugin(const FString& Name) = 0;
    virtual TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() = 0;
};
