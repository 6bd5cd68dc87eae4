#pragma once

#include "CoreMinimal.h"

// Every log line written while it lives: its text, and beside it its category.
class FLogCapture : public FOutputDevice
{
public:
    FLogCapture() { GLog->AddOutputDevice(this); }
    ~FLogCapture() override { GLog->RemoveOutputDevice(this); }
    FLogCapture(const FLogCapture&) = delete;
    FLogCapture& operator=(const FLogCapture&) = delete;

    void Serialize(const TCHAR* Text, ELogVerbosity::Type InVerbosity, const FName& Category) override
    {
        Lines.Add(FString(Text));
        Categories.Add(Category.ToString());
        Verbosities.Add(InVerbosity);
    }

    // How many lines hold Needle.
    int32 CountContaining(const TCHAR* Needle) const
    {
        int32 Count = 0;
        for (const FString& Line : Lines)
        {
            Count += Line.Contains(Needle) ? 1 : 0;
        }
        return Count;
    }

    TArray<FString> Lines;
    TArray<FString> Categories;
    TArray<ELogVerbosity::Type> Verbosities;
};
