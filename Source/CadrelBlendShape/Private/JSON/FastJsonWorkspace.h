#pragma once

#include "CoreMinimal.h"

#include <simdjson.h>

#include <memory>
#include <string_view>

namespace CadrelJson::FastJson
{
// What one thread keeps between reads: the parser, and a buffer for the text as
// padded UTF-8. Long answers would otherwise cost their size in fresh pages on
// every read, which costs more than parsing them.
class FReadWorkspace
{
public:
    // The workspace of the calling thread.
    static FReadWorkspace& Get();

    // The text as UTF-8, followed by the zero padding that the parser's wide loads
    // may touch; valid until the next call on this thread. Bytes are copied as they
    // are, and the parser refuses invalid UTF-8 as the host's does. Host text is
    // converted, a surrogate that is not half of a pair becoming U+FFFD, as
    // everywhere the host turns text into UTF-8.
    std::string_view Pad(std::string_view Utf8);
    std::string_view Pad(std::u16string_view Text);
    // Bytes with room behind them, as a body that grew by appending usually has, are
    // read where they lie: the parser may read that room but never depends on what
    // it holds. Others are copied.
    std::string_view Pad(const TArray<uint8>& Bytes);

    simdjson::ondemand::parser& GetParser() { return Parser; }

    // The end of the text that Pad last gave, before its padding.
    const char* TextEnd() const { return End; }

    // Gives back the buffers after a text longer than any expected answer, so that
    // a thread that once read one does not keep that much memory for good.
    void Trim();

private:
    FReadWorkspace();
    char* Reserve(SIZE_T Bytes);
    void ResetParser();

    simdjson::ondemand::parser Parser;
    std::unique_ptr<char[]> Buffer;
    SIZE_T Capacity = 0;
    SIZE_T Used = 0;
    const char* End = nullptr;
};
} // namespace CadrelJson::FastJson
