#include "VelkFrameAssembler.h"

namespace
{
// ARKit has 52 shapes and VRM avatars a few dozen more; a sender naming more is not describing a face.
constexpr size_t MaxShapesPerFrame = 256;

// Headerless frames come from senders outside our link, which have no stream number; this one
// cannot collide with ours, which come from non-negative request indices.
constexpr int32_t HeaderlessStream = -1;
} // namespace

std::optional<FViewFrame> FVelkFrameAssembler::Add(const FVelkMessage& Message, double ArrivalMs)
{
    switch (Message.Kind)
    {
    case EVelkMessageKind::FrameHeader:
        Pending = FViewFrame{};
        Pending.Stream = Message.Stream;
        Pending.Number = Message.FrameNumber;
        Pending.Time = Message.FrameTime;
        bHeader = true;
        return std::nullopt;
    case EVelkMessageKind::BlendValue:
        SetWeight(Message.Name, Message.Value);
        return std::nullopt;
    case EVelkMessageKind::BonePose:
        if (Message.Name == "Head")
        {
            Pending.Head = VmcRotationToAngles(Message.Rotation);
        }
        else if (Message.Name == "LeftEye")
        {
            Pending.LeftEye = VmcRotationToAngles(Message.Rotation);
        }
        else if (Message.Name == "RightEye")
        {
            Pending.RightEye = VmcRotationToAngles(Message.Rotation);
        }
        return std::nullopt;
    case EVelkMessageKind::Apply:
    {
        FViewFrame Frame = bHeader ? std::move(Pending) : FinishHeaderlessFrame(ArrivalMs);
        Frame.ArrivalMs = ArrivalMs;
        Pending = FViewFrame{};
        bHeader = false;
        return Frame;
    }
    case EVelkMessageKind::Audio:
        break;
    }
    return std::nullopt;
}

void FVelkFrameAssembler::SetWeight(const std::string& Name, float Value)
{
    for (auto& [Known, Weight] : Pending.Weights)
    {
        if (Known == Name)
        {
            Weight = Value;
            return;
        }
    }
    if (Pending.Weights.size() < MaxShapesPerFrame)
    {
        Pending.Weights.emplace_back(Name, Value);
    }
}

FViewFrame FVelkFrameAssembler::FinishHeaderlessFrame(double ArrivalMs)
{
    if (HeaderlessFrames == 0)
    {
        HeaderlessStartMs = ArrivalMs;
    }
    FViewFrame Frame = std::move(Pending);
    Frame.Stream = HeaderlessStream;
    Frame.Number = HeaderlessFrames++;
    Frame.Time = (ArrivalMs - HeaderlessStartMs) / 1000.0;
    return Frame;
}
