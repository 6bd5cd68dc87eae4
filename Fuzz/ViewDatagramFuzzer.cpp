#include "VelkDatagramParser.h"
#include "VelkFrameAssembler.h"
#include "VmcPose.h"

#include <cmath>
#include <cstdlib>

// The live receiver's datagram parser on hostile bytes, the way liblo hands a datagram
// over; the first byte picks the port. Whatever it accepts goes on through the frame
// assembler, whose output the page draws.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    static FVelkDatagramParser Velk(EVelkPortKind::Velk, "0");
    static FVelkDatagramParser Audio(EVelkPortKind::Audio, "0");
    static FVelkFrameAssembler Assembler;
    if (Size == 0 || !Velk.Valid() || !Audio.Valid())
    {
        return 0;
    }
    FVelkDatagramParser& Parser = Data[0] % 2 == 0 ? Velk : Audio;
    const FVelkDatagram Parsed = Parser.Parse(Data + 1, Size - 1);
    if (Parsed.Kind != EVelkDatagramKind::Accepted && !Parsed.Messages.empty())
    {
        std::abort();
    }
    for (const FVelkMessage& Message : Parsed.Messages)
    {
        if (Message.Kind == EVelkMessageKind::Audio &&
            (Message.Samples.empty() || Message.Samples.size() > 512))
        {
            std::abort();
        }
        if (const auto Frame = Assembler.Add(Message, 0.0))
        {
            for (const auto& [Name, Value] : Frame->Weights)
            {
                if (Name.empty() || !(Value >= 0.0f && Value <= 1.0f))
                {
                    std::abort();
                }
            }
            if (!std::isfinite(Frame->Head.Pitch + Frame->Head.Yaw + Frame->Head.Roll + Frame->Time))
            {
                std::abort();
            }
        }
    }
    return 0;
}
