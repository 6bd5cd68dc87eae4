#include "UObject/Class.h"
#include "UObject/Object.h"

ORV_DEFINE_LOG_CATEGORY_STATIC(LogConfig, Log, All);

namespace
{
// Config/Default<ConfigName>.ini of the project, as the class's own code builds it.
FString DefaultConfigFilename(const UClass& Class)
{
    FString Path = FPaths::ProjectConfigDir();
    Path.PathAppend(TEXT("Default") + Class.GetConfigName() + TEXT(".ini"));
    return Path;
}

FString ConfigFilename(const UClass& Class, const TCHAR* Filename)
{
    return Filename && *Filename ? FString(Filename) : DefaultConfigFilename(Class);
}

// Calls Visit for every config member of Class and its parents, the class's own first.
template <typename VisitorType> void ForEachConfigProperty(const UClass& Class, VisitorType&& Visit)
{
    for (const UStruct* Struct = &Class; Struct; Struct = Struct->GetSuperStruct())
    {
        for (FProperty* Property : Struct->GetProperties())
        {
            if (Property->IsConfig())
            {
                Visit(*Property);
            }
        }
    }
}
} // namespace

void UObject::LoadConfig(UClass* ConfigClass, const TCHAR* Filename, uint32, FProperty* PropertyToLoad)
{
    UClass* const Class = ConfigClass ? ConfigClass : GetClass();
    // Members are reached through the class's tables, which are only right for
    // objects of that class.
    if (!Class || !Class->IsConfigClass() || !ORV_ENSURE(GetClass() && GetClass()->IsChildOf(Class)))
    {
        return;
    }
    const FString File = ConfigFilename(*Class, Filename);
    const FString Section = Class->GetPathName();
    ForEachConfigProperty(*Class,
                          [&](const FProperty& Property)
                          {
                              FString Text;
                              if ((PropertyToLoad && PropertyToLoad != &Property) ||
                                  !GConfig->GetString(Section, Property.GetName(), Text, File) ||
                                  Property.ImportValueText(Text, this))
                              {
                                  return;
                              }
                              ORV_LOG(
                                  LogConfig, Warning,
                                  TEXT("%s [%s] %s=%s is not a value of that member's type; the member keeps "
                                       "its value and the file keeps the line until it is corrected"),
                                  *File, *Section, *Property.GetName(), *Text);
                          });
}

void UObject::SaveConfig(EPropertyFlags RequiredPropertyFlags, const TCHAR* Filename, FConfigCacheIni* Config,
                         bool bAllowCopyToDefaultObject)
{
    UClass* const Class = GetClass();
    if (!Class || !Class->IsConfigClass() || !Config)
    {
        return;
    }
    const FString File = ConfigFilename(*Class, Filename);
    const FString Section = Class->GetPathName();
    UObject* const Default = bAllowCopyToDefaultObject ? Class->GetDefaultObject() : nullptr;
    ForEachConfigProperty(*Class,
                          [&](const FProperty& Property)
                          {
                              FString Text;
                              FString Stored;
                              if (!Property.HasAllPropertyFlags(RequiredPropertyFlags) ||
                                  !Property.ExportValueText(this, Text) ||
                                  (Config->GetString(Section, Property.GetName(), Stored, File) &&
                                   !Property.IsValidValueText(Stored)))
                              {
                                  return;
                              }
                              Config->SetString(Section, Property.GetName(), Text, File);
                              if (Default && Default != this)
                              {
                                  Property.ImportValueText(Text, Default);
                              }
                          });
    Config->Flush(false, File);
}
