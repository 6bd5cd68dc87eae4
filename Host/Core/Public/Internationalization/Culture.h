#pragma once

#include "CoreTypes.h"
#include "Containers/String.h"
#include "Templates/SharedPointer.h"

// A culture by its IETF-style name ("en-US"); the empty name is the invariant culture.
class CORE_API FCulture
{
public:
    explicit FCulture(FString InName) : Name(std::move(InName)) {}
    const FString& GetName() const { return Name; }

private:
    FString Name;
};

using FCultureRef = TSharedRef<const FCulture>;
using FCulturePtr = TSharedPtr<const FCulture>;
