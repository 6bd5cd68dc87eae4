#include "Serialization/JsonStringEscape.h"

#include <charconv>
#include <cmath>

namespace
{
bool NeedsEscape(TCHAR Unit)
{
    return Unit < 0x20 || Unit == u'"' || Unit == u'\\';
}

void AppendEscape(FString& Out, TCHAR Unit)
{
    static constexpr TCHAR Hex[] = u"0123456789abcdef";
    switch (Unit)
    {
    case u'\\':
        Out.Append(TEXT("\\\\"));
        break;
    case u'"':
        Out.Append(TEXT("\\\""));
        break;
    case u'\b':
        Out.Append(TEXT("\\b"));
        break;
    case u'\f':
        Out.Append(TEXT("\\f"));
        break;
    case u'\n':
        Out.Append(TEXT("\\n"));
        break;
    case u'\r':
        Out.Append(TEXT("\\r"));
        break;
    case u'\t':
        Out.Append(TEXT("\\t"));
        break;
    default:
    {
        const TCHAR Escape[] = {u'\\', u'u', u'0', u'0', Hex[Unit >> 4], Hex[Unit & 0xF]};
        Out.Append(Escape, 6);
    }
    }
}
} // namespace

void AppendEscapedJsonString(FString& Out, const FString& Text)
{
    const std::u16string_view View = Text.View();
    Out.AppendChar(u'"');
    // Most keys and values need no escape at all: copy clean runs in one go.
    SIZE_T RunStart = 0;
    for (SIZE_T Index = 0; Index < View.size(); ++Index)
    {
        if (NeedsEscape(View[Index]))
        {
            Out.Append(View.substr(RunStart, Index - RunStart));
            AppendEscape(Out, View[Index]);
            RunStart = Index + 1;
        }
    }
    Out.Append(View.substr(RunStart));
    Out.AppendChar(u'"');
}

void AppendJsonNumber(FString& Out, double Value)
{
    if (!std::isfinite(Value))
    {
        Out.Append(TEXT("null"));
        return;
    }
    char Buffer[32];
    const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    for (const char* Char = Buffer; Char != Result.ptr; ++Char)
    {
        Out.AppendChar(static_cast<TCHAR>(*Char));
    }
}
