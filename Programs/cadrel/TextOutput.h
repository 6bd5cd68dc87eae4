#pragma once

#include "CoreMinimal.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

// Text written at a cursor into a buffer that grows ahead of it, so that a writer
// asks for room once for a whole row instead of for every character it adds.
//
// Given somewhere to send it, the text leaves in chunks of about the buffer's size
// as it is written, and the buffer is reused: a long take's text is never held
// whole, and the file it goes to is written while the rest is still being made.
class FTextOutput
{
public:
    using FSink = std::function<void(std::string_view Chunk)>;

    explicit FTextOutput(SIZE_T ExpectedBytes) { Text.reserve(ExpectedBytes); }
    FTextOutput(SIZE_T ChunkBytes, FSink InSink) : Sink(std::move(InSink)) { Text.resize(ChunkBytes); }

    // A cursor with room for Bytes characters; hand the end of what was written to Advance.
    char* Room(SIZE_T Bytes)
    {
        if (Text.size() - Used < Bytes)
        {
            if (Sink && Used > 0)
            {
                Flush();
            }
            if (Text.size() - Used < Bytes)
            {
                // In steps, so that only a little memory beyond the text is ever cleared.
                Text.resize(std::max(Used + Bytes, Text.size() + GrowthStep));
            }
        }
        return Text.data() + Used;
    }
    void Advance(const char* End) { Used = static_cast<SIZE_T>(End - Text.data()); }

    void Append(std::string_view Part)
    {
        char* At = Room(Part.size());
        std::memcpy(At, Part.data(), Part.size());
        Used += Part.size();
    }

    // Sends what is written so far.
    void Flush()
    {
        Sink(std::string_view(Text.data(), Used));
        Used = 0;
    }

    std::string Take() &&
    {
        Text.resize(Used);
        return std::move(Text);
    }

private:
    static constexpr SIZE_T GrowthStep = SIZE_T{64} << 10;

    FSink Sink;
    std::string Text;
    SIZE_T Used = 0;
};

// Copies a short ASCII run known at compile time, without a call.
template <SIZE_T N> char* WriteAscii(char* Out, const char (&Ascii)[N])
{
    std::memcpy(Out, Ascii, N - 1);
    return Out + (N - 1);
}
