#include "Containers/String.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace
{
// One conversion of a format text, taken apart so that the numeric ones can be
// handed to snprintf and %s can take a wide string.
struct FConversion
{
    std::string Spec = "%";
    std::string Length;
    char Kind = 0;
};

bool IsOneOf(TCHAR Unit, const char* Set)
{
    return Unit != 0 && Unit < 0x80 && std::strchr(Set, static_cast<char>(Unit)) != nullptr;
}

SIZE_T ParseConversion(std::u16string_view Format, SIZE_T Pos, FConversion& Out)
{
    while (Pos < Format.size() && IsOneOf(Format[Pos], "-+ #0123456789.*"))
    {
        Out.Spec.push_back(static_cast<char>(Format[Pos++]));
    }
    while (Pos < Format.size() && IsOneOf(Format[Pos], "hlLqjzt"))
    {
        Out.Length.push_back(static_cast<char>(Format[Pos++]));
    }
    if (Pos < Format.size() && Format[Pos] < 0x80)
    {
        Out.Kind = static_cast<char>(Format[Pos++]);
    }
    return Pos;
}

template <typename T> void AppendNumber(FString& Out, const FConversion& Conv, T Value)
{
    const std::string Spec = Conv.Spec + Conv.Length + Conv.Kind;
    char Small[128];
    const int Needed = std::snprintf(Small, sizeof(Small), Spec.c_str(), Value);
    if (Needed < 0)
    {
        return;
    }
    if (static_cast<SIZE_T>(Needed) < sizeof(Small))
    {
        Out.Append(FString::FromUTF8(std::string_view(Small, static_cast<SIZE_T>(Needed))));
        return;
    }
    std::string Large(static_cast<SIZE_T>(Needed) + 1, '\0');
    std::snprintf(Large.data(), Large.size(), Spec.c_str(), Value);
    Large.resize(static_cast<SIZE_T>(Needed));
    Out.Append(FString::FromUTF8(Large));
}

bool IsLong(const FConversion& Conv)
{
    return !Conv.Length.empty() && Conv.Length != "h" && Conv.Length != "hh";
}

void AppendConversion(FString& Out, const FConversion& Conv, va_list& Args)
{
    switch (Conv.Kind)
    {
    case 'd':
    case 'i':
        IsLong(Conv) ? AppendNumber(Out, Conv, va_arg(Args, long long))
                     : AppendNumber(Out, Conv, va_arg(Args, int));
        break;
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        IsLong(Conv) ? AppendNumber(Out, Conv, va_arg(Args, unsigned long long))
                     : AppendNumber(Out, Conv, va_arg(Args, unsigned int));
        break;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
        AppendNumber(Out, Conv, va_arg(Args, double));
        break;
    case 'c':
        Out.AppendChar(static_cast<TCHAR>(va_arg(Args, int)));
        break;
    case 's':
    {
        const TCHAR* Text = va_arg(Args, const TCHAR*);
        Out.Append(Text ? Text : u"(null)");
        break;
    }
    case 'p':
        AppendNumber(Out, Conv, va_arg(Args, void*));
        break;
    default:
        break;
    }
}
} // namespace

FString FString::Printf(const TCHAR* Format, ...)
{
    va_list Args;
    va_start(Args, Format);
    FString Out = PrintfV(Format, Args);
    va_end(Args);
    return Out;
}

FString FString::PrintfV(const TCHAR* Format, va_list InArgs)
{
    FString Out;
    const std::u16string_view Text(Format ? Format : u"");
    va_list Args;
    va_copy(Args, InArgs);
    SIZE_T Pos = 0;
    while (Pos < Text.size())
    {
        if (Text[Pos] != u'%')
        {
            Out.AppendChar(Text[Pos++]);
            continue;
        }
        if (Pos + 1 < Text.size() && Text[Pos + 1] == u'%')
        {
            Out.AppendChar(u'%');
            Pos += 2;
            continue;
        }
        FConversion Conv;
        Pos = ParseConversion(Text, Pos + 1, Conv);
        // A '*' width or precision would consume arguments snprintf never sees.
        if (Conv.Spec.find('*') == std::string::npos)
        {
            AppendConversion(Out, Conv, Args);
        }
    }
    va_end(Args);
    return Out;
}
