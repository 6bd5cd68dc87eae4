#include "Internationalization/Internationalization.h"

#include <cstdlib>
#include <string>

namespace
{
const char* ProcessLocale()
{
    for (const char* Variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    {
        const char* Value = std::getenv(Variable);
        if (Value && *Value)
        {
            return Value;
        }
    }
    return "";
}
} // namespace

FInternationalization::FInternationalization()
    : Current(MakeShared<const FCulture>(CultureNameFromLocale(ProcessLocale())))
{
}

FInternationalization& FInternationalization::Get()
{
    static FInternationalization Instance;
    return Instance;
}

FCultureRef FInternationalization::GetCurrentCulture() const
{
    std::lock_guard<std::mutex> Lock(Mutex);
    return Current;
}

bool FInternationalization::SetCurrentCulture(const FString& Name)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    Current = MakeShared<const FCulture>(Name);
    return true;
}

FString FInternationalization::CultureNameFromLocale(const char* Locale)
{
    std::string Name = Locale ? Locale : "";
    Name = Name.substr(0, Name.find_first_of(".@"));
    if (Name == "C" || Name == "POSIX")
    {
        return FString();
    }
    for (char& Char : Name)
    {
        if (Char == '_')
        {
            Char = '-';
        }
    }
    return FString::FromUTF8(Name);
}
