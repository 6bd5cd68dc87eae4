#include "Registry.h"

#include "UObject/Registration.h"

FReflectionRegistry& FReflectionRegistry::Get()
{
    static FReflectionRegistry* const Instance = new FReflectionRegistry();
    return *Instance;
}

void FReflectionRegistry::Enqueue(std::span<const FClassParams* const> Classes,
                                  std::span<const FStructParams* const> Structs,
                                  std::span<const FEnumParams* const> InEnums)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    Pending.push_back(FPending{Classes, Structs, InEnums});
}

template <typename DescriptorType, typename ParamsType>
DescriptorType* FReflectionRegistry::FindOrBuildLocked(const ParamsType& Params)
{
    std::unique_ptr<UField>& Slot = Built[&Params];
    if (!Slot)
    {
        auto Descriptor = std::make_unique<DescriptorType>(Params);
        if constexpr (std::is_same_v<DescriptorType, UEnum>)
        {
            Enums.push_back(Descriptor.get());
        }
        Slot = std::move(Descriptor);
    }
    return static_cast<DescriptorType*>(Slot.get());
}

void FReflectionRegistry::BuildPendingLocked()
{
    // Building runs no module code (member types are resolved when asked for), so
    // holding the lock here cannot call back into the registry.
    for (const FPending& Registration : Pending)
    {
        for (const FClassParams* Params : Registration.Classes)
        {
            FindOrBuildLocked<UClass>(*Params);
        }
        for (const FStructParams* Params : Registration.Structs)
        {
            FindOrBuildLocked<UScriptStruct>(*Params);
        }
        for (const FEnumParams* Params : Registration.Enums)
        {
            FindOrBuildLocked<UEnum>(*Params);
        }
    }
    Pending.clear();
}

UScriptStruct* FReflectionRegistry::FindOrBuild(const FStructParams& Params)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    BuildPendingLocked();
    return FindOrBuildLocked<UScriptStruct>(Params);
}

UEnum* FReflectionRegistry::FindOrBuild(const FEnumParams& Params)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    BuildPendingLocked();
    return FindOrBuildLocked<UEnum>(Params);
}

UClass* FReflectionRegistry::FindOrBuild(const FClassParams& Params)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    BuildPendingLocked();
    return FindOrBuildLocked<UClass>(Params);
}

std::vector<UEnum*> FReflectionRegistry::GetAllEnums()
{
    std::lock_guard<std::mutex> Lock(Mutex);
    BuildPendingLocked();
    return Enums;
}

UScriptStruct* OrvReflection::ConstructStruct(const FStructParams& Params)
{
    return FReflectionRegistry::Get().FindOrBuild(Params);
}

UEnum* OrvReflection::ConstructEnum(const FEnumParams& Params)
{
    return FReflectionRegistry::Get().FindOrBuild(Params);
}

UClass* OrvReflection::ConstructClass(const FClassParams& Params)
{
    return FReflectionRegistry::Get().FindOrBuild(Params);
}

FCompiledInRegistration::FCompiledInRegistration(std::span<const FClassParams* const> Classes,
                                                 std::span<const FStructParams* const> Structs,
                                                 std::span<const FEnumParams* const> Enums)
{
    FReflectionRegistry::Get().Enqueue(Classes, Structs, Enums);
}
