#pragma once

#include "VelkDatagram.h"
#include "ViewFrame.h"

#include <optional>

// Gathers a frame's messages until its /VMC/Ext/Blend/Apply. Our server sends one whole
// frame per bundle, headed by /Cadrel/Frame; other VMC senders send no header, and may
// spread a frame over several datagrams, so their frames are numbered and timed here.
class FVelkFrameAssembler
{
public:
    std::optional<FViewFrame> Add(const FVelkMessage& Message, double ArrivalMs);

private:
    void SetWeight(const std::string& Name, float Value);
    FViewFrame FinishHeaderlessFrame(double ArrivalMs);

    FViewFrame Pending;
    bool bHeader = false;
    int32_t HeaderlessFrames = 0;
    double HeaderlessStartMs = 0.0;
};
