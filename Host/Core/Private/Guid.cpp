#include "Misc/Guid.h"

#include <random>

namespace
{
void AppendHex(FString& Out, uint32 Value, int32 Digits, bool bLower)
{
    const char16_t* Alphabet = bLower ? u"0123456789abcdef" : u"0123456789ABCDEF";
    for (int32 Shift = (Digits - 1) * 4; Shift >= 0; Shift -= 4)
    {
        Out.AppendChar(Alphabet[(Value >> Shift) & 0xF]);
    }
}

int32 HexValue(TCHAR Unit)
{
    if (Unit >= u'0' && Unit <= u'9')
    {
        return Unit - u'0';
    }
    const TCHAR Upper = ToUpperAscii(Unit);
    return (Upper >= u'A' && Upper <= u'F') ? Upper - u'A' + 10 : -1;
}

// Reads exactly 32 hexadecimal digits, skipping hyphens only where the hyphenated
// form puts them.
bool ParseDigits(std::u16string_view Text, bool bHyphens, FGuid& Out)
{
    uint32 Words[4] = {0, 0, 0, 0};
    int32 Digit = 0;
    for (SIZE_T Pos = 0; Pos < Text.size(); ++Pos)
    {
        const bool bHyphenSlot = bHyphens && (Pos == 8 || Pos == 13 || Pos == 18 || Pos == 23);
        if (bHyphenSlot)
        {
            if (Text[Pos] != u'-')
            {
                return false;
            }
            continue;
        }
        const int32 Value = HexValue(Text[Pos]);
        if (Value < 0 || Digit >= 32)
        {
            return false;
        }
        Words[Digit / 8] = (Words[Digit / 8] << 4) | static_cast<uint32>(Value);
        ++Digit;
    }
    if (Digit != 32)
    {
        return false;
    }
    Out = FGuid(Words[0], Words[1], Words[2], Words[3]);
    return true;
}
} // namespace

void FGuid::AppendString(FString& Out, EGuidFormats Format) const
{
    const bool bLower = Format == EGuidFormats::DigitsLower || Format == EGuidFormats::DigitsWithHyphensLower;
    if (Format == EGuidFormats::Digits || Format == EGuidFormats::DigitsLower)
    {
        for (const uint32 Word : {A, B, C, D})
        {
            AppendHex(Out, Word, 8, bLower);
        }
        return;
    }
    const TCHAR* Open = Format == EGuidFormats::DigitsWithHyphensInBraces        ? u"{"
                        : Format == EGuidFormats::DigitsWithHyphensInParentheses ? u"("
                                                                                 : u"";
    const TCHAR* Close = Format == EGuidFormats::DigitsWithHyphensInBraces        ? u"}"
                         : Format == EGuidFormats::DigitsWithHyphensInParentheses ? u")"
                                                                                  : u"";
    Out.Append(Open);
    AppendHex(Out, A, 8, bLower);
    Out.AppendChar(u'-');
    AppendHex(Out, B >> 16, 4, bLower);
    Out.AppendChar(u'-');
    AppendHex(Out, B & 0xFFFF, 4, bLower);
    Out.AppendChar(u'-');
    AppendHex(Out, C >> 16, 4, bLower);
    Out.AppendChar(u'-');
    AppendHex(Out, C & 0xFFFF, 4, bLower);
    AppendHex(Out, D, 8, bLower);
    Out.Append(Close);
}

FString FGuid::ToString(EGuidFormats Format) const
{
    FString Out;
    AppendString(Out, Format);
    return Out;
}

FGuid FGuid::NewGuid()
{
    thread_local std::random_device Device;
    FGuid Result;
    do
    {
        Result = FGuid(Device(), Device(), Device(), Device());
    } while (!Result.IsValid());
    return Result;
}

bool FGuid::Parse(const FString& Text, FGuid& OutGuid)
{
    std::u16string_view View = Text.View();
    bool bHyphens = false;
    if (View.size() == 38 &&
        ((View.front() == u'{' && View.back() == u'}') || (View.front() == u'(' && View.back() == u')')))
    {
        View = View.substr(1, 36);
    }
    if (View.size() == 36)
    {
        bHyphens = true;
    }
    else if (View.size() != 32)
    {
        OutGuid.Invalidate();
        return false;
    }
    if (!ParseDigits(View, bHyphens, OutGuid))
    {
        OutGuid.Invalidate();
        return false;
    }
    return true;
}

uint32 GetTypeHash(const FGuid& Guid)
{
    return Guid.A ^ (Guid.B * 31u) ^ (Guid.C * 131u) ^ (Guid.D * 1031u);
}
