#pragma once

#include "CoreTypes.h"
#include "Internationalization/Culture.h"

#include <mutex>

class CORE_API FInternationalization
{
public:
    static FInternationalization& Get();

    // Starts from the process locale (LC_ALL, LC_MESSAGES, LANG): "en_US.UTF-8"
    // gives "en-US"; "C", "POSIX" or none give the empty name.
    FCultureRef GetCurrentCulture() const;
    // Any name is taken as given, the empty one included.
    bool SetCurrentCulture(const FString& Name);

    // The culture name for a POSIX locale text.
    static FString CultureNameFromLocale(const char* Locale);

private:
    FInternationalization();

    mutable std::mutex Mutex;
    FCultureRef Current;
};
