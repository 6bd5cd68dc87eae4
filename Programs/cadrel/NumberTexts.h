#pragma once

#include "CoreMinimal.h"
#include "Serialization/JsonStringEscape.h"

#include <bit>
#include <cstring>
#include <vector>

// The shortest text of a finite double, as std::to_chars writes it, remembered for
// the values met lately. An animation repeats few values over and over (the server
// rounds weights to four decimals, and most rest at 0), and std::to_chars costs
// several times what copying a remembered text does: with it the output files are
// written at the speed at which they are read.
class FNumberTexts
{
public:
    FNumberTexts() : Slots(SlotCount) {}

    // Writes the text at Out, which must have room for MaxJsonNumberLength
    // characters, and returns its end.
    char* Write(char* Out, double Value)
    {
        const uint64 Bits = std::bit_cast<uint64>(Value);
        if (Bits == 0)
        {
            *Out = '0';
            return Out + 1;
        }
        FSlot& Slot = Slots[(Bits * 0x9E3779B97F4A7C15ull) >> (64 - SlotBits)];
        // A slot never filled has length 0, which no number's text has.
        if (Slot.Bits != Bits || Slot.Length == 0)
        {
            Slot.Bits = Bits;
            Slot.Length = static_cast<uint8>(WriteJsonNumber(Slot.Text, Value) - Slot.Text);
        }
        // The whole slot is copied, which is one move where an exact copy is a call.
        std::memcpy(Out, Slot.Text, MaxJsonNumberLength);
        return Out + Slot.Length;
    }

private:
    static constexpr int SlotBits = 13;
    static constexpr SIZE_T SlotCount = SIZE_T{1} << SlotBits;

    struct FSlot
    {
        uint64 Bits = 0;
        char Text[MaxJsonNumberLength] = {};
        uint8 Length = 0;
    };
    std::vector<FSlot> Slots;
};
