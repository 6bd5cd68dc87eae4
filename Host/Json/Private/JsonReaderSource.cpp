#include "Serialization/JsonReader.h"

#include <cstring>
#include <simdjson.h>
#include <utf8.h>

static_assert(FJsonReaderSource::Padding >= simdjson::SIMDJSON_PADDING,
              "the reader's buffer must carry the padding the parser reads past the end");

namespace
{
bool IsHighSurrogate(uint32 Unit)
{
    return Unit >= 0xD800 && Unit <= 0xDBFF;
}

bool IsLowSurrogate(uint32 Unit)
{
    return Unit >= 0xDC00 && Unit <= 0xDFFF;
}

// Length of the run of ASCII units at the start of Text, eight units at a time
// while it lasts: JSON text is nearly all ASCII (punctuation, keys, numbers).
SIZE_T AsciiPrefixLength(std::u16string_view Text)
{
    constexpr uint64 NonAsciiBits = 0xFF80FF80FF80FF80ull;
    SIZE_T Index = 0;
    while (Index + 8 <= Text.size())
    {
        uint64 Low = 0;
        uint64 High = 0;
        std::memcpy(&Low, Text.data() + Index, sizeof(Low));
        std::memcpy(&High, Text.data() + Index + 4, sizeof(High));
        if (((Low | High) & NonAsciiBits) != 0)
        {
            break;
        }
        Index += 8;
    }
    while (Index < Text.size() && Text[Index] < 0x80)
    {
        ++Index;
    }
    return Index;
}

// Walks Text as runs of ASCII and single code points beyond it; a surrogate that is
// not half of a pair is handed on as U+FFFD.
template <typename AsciiFunctor, typename CodePointFunctor>
void ForEachUtf16Run(std::u16string_view Text, AsciiFunctor&& OnAscii, CodePointFunctor&& OnCodePoint)
{
    SIZE_T Index = 0;
    while (Index < Text.size())
    {
        const SIZE_T Run = AsciiPrefixLength(Text.substr(Index));
        if (Run > 0)
        {
            OnAscii(Text.data() + Index, Run);
            Index += Run;
            continue;
        }
        uint32 CodePoint = Text[Index++];
        if (IsHighSurrogate(CodePoint) && Index < Text.size() && IsLowSurrogate(Text[Index]))
        {
            CodePoint = 0x10000 + ((CodePoint - 0xD800) << 10) + (Text[Index++] - 0xDC00u);
        }
        else if (IsHighSurrogate(CodePoint) || IsLowSurrogate(CodePoint))
        {
            CodePoint = 0xFFFD;
        }
        OnCodePoint(CodePoint);
    }
}

// Only the padding is cleared; the text itself is written over right away.
std::unique_ptr<char[]> AllocatePadded(SIZE_T Length)
{
    std::unique_ptr<char[]> Buffer =
        std::make_unique_for_overwrite<char[]>(Length + FJsonReaderSource::Padding);
    std::memset(Buffer.get() + Length, 0, FJsonReaderSource::Padding);
    return Buffer;
}

SIZE_T Utf8Length(uint32 CodePoint)
{
    return CodePoint < 0x800 ? 2 : (CodePoint < 0x10000 ? 3 : 4);
}
} // namespace

FJsonReaderSource::FJsonReaderSource(std::u16string_view Text)
{
    // Measuring first lets the text be written once into a buffer of its exact size.
    ForEachUtf16Run(
        Text, [this](const TCHAR*, SIZE_T Count) { Length += Count; },
        [this](uint32 CodePoint) { Length += Utf8Length(CodePoint); });
    Buffer = AllocatePadded(Length);
    char* Out = Buffer.get();
    ForEachUtf16Run(
        Text,
        [&Out](const TCHAR* Units, SIZE_T Count)
        {
            for (SIZE_T Index = 0; Index < Count; ++Index)
            {
                Out[Index] = static_cast<char>(Units[Index]);
            }
            Out += Count;
        },
        [&Out](uint32 CodePoint) { Out = utf8::unchecked::append(CodePoint, Out); });
}

FJsonReaderSource::FJsonReaderSource(std::string_view Utf8)
    : Buffer(AllocatePadded(Utf8.size())), Length(Utf8.size())
{
    if (!Utf8.empty())
    {
        std::memcpy(Buffer.get(), Utf8.data(), Utf8.size());
    }
}
