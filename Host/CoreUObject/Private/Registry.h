#pragma once

#include "UObject/Class.h"
#include "UObject/Enum.h"

#include <memory>
#include <mutex>
#include <span>
#include <unordered_map>
#include <vector>

// The process's one table of reflected types: what static initialisation queued
// and the descriptors built so far, keyed by the address of their tables.
class FReflectionRegistry
{
public:
    // Never destroyed, so that descriptors stay valid through every static
    // destructor of every module.
    static FReflectionRegistry& Get();

    void Enqueue(std::span<const FClassParams* const> Classes, std::span<const FStructParams* const> Structs,
                 std::span<const FEnumParams* const> Enums);

    UScriptStruct* FindOrBuild(const FStructParams& Params);
    UEnum* FindOrBuild(const FEnumParams& Params);
    UClass* FindOrBuild(const FClassParams& Params);

    // Every registered enumeration, queued ones included.
    std::vector<UEnum*> GetAllEnums();

private:
    struct FPending
    {
        std::span<const FClassParams* const> Classes;
        std::span<const FStructParams* const> Structs;
        std::span<const FEnumParams* const> Enums;
    };

    template <typename DescriptorType, typename ParamsType>
    DescriptorType* FindOrBuildLocked(const ParamsType& Params);
    void BuildPendingLocked();

    std::mutex Mutex;
    std::vector<FPending> Pending;
    std::unordered_map<const void*, std::unique_ptr<UField>> Built;
    std::vector<UEnum*> Enums;
};
