#pragma once

#include "CoreMinimal.h"

#define PROJECTS_API ORV_EXPORT

// What a plug-in's .uplugin file says about it. Keys are matched without regard to
// the case of A-Z, as everywhere in the host's JSON; unknown keys are ignored and
// absent ones keep their defaults.
struct PROJECTS_API FPluginDescriptor
{
    int32 FileVersion = 0;
    int32 Version = 0;
    FString VersionName;
    FString FriendlyName;
    FString Description;
    FString Category;
    FString CreatedBy;

    // False, with a reason and this descriptor unchanged, for a file that cannot be
    // read, is not a JSON object, or gives a known key a value of the wrong type.
    bool Load(const FString& FileName, FString& OutFailReason);
    bool Read(const FString& Text, FString& OutFailReason);
};
