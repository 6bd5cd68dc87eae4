#pragma once

// Reflected types declared as a module declares its own; their tables are in
// TestTypesRegistration.cpp.

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/Object.h"

enum class ETestColour : uint8
{
    Red = 0,
    Green = 1,
    Blue = 5,
};
template <> UEnum* StaticEnum<ETestColour>();

// Registered but never asked for by name, so only the deferred registration can
// make it known.
enum class ETestQueued : uint8
{
    Only = 7,
};
template <> UEnum* StaticEnum<ETestQueued>();

struct FTestInner
{
    double Weight = 0.0;

    static UScriptStruct* StaticStruct();
};
template <> UScriptStruct* StaticStruct<FTestInner>();

class UTestSettings : public UObject
{
    ORV_DECLARE_CLASS(UTestSettings, UObject)

public:
    FString Url = TEXT("http://127.0.0.1:9011");
    int64 Stamp = 0;
    double Ratio = 0.5;
    float Scale = 1.0f;
    bool bEnabled = true;
    ETestColour Colour = ETestColour::Green;
    int32 Transient = 3;
};
template <> UClass* StaticClass<UTestSettings>();
