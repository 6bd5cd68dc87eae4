#include "IdleMotion.h"

#include "BlendShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace LipsyncEngine
{
namespace
{
using namespace EBlendShape;

// In 10 ms steps: a blink every 2.5 to 5.5 s, lids down in 70 ms and up in 130 ms;
// a saccade every 0.5 to 2.5 s, so the eyes move within any 3 seconds.
constexpr std::int64_t BlinkClose = 7;
constexpr std::int64_t BlinkOpen = 13;
constexpr float MaxGazeYaw = 10.0f;
constexpr float MaxGazePitch = 6.0f;
// Degrees of gaze that make an eye-look shape fully on.
constexpr float LookRangeDegrees = 25.0f;

float Blink(std::int64_t SinceStart)
{
    if (SinceStart < 0 || SinceStart >= BlinkClose + BlinkOpen)
    {
        return 0.0f;
    }
    return SinceStart < BlinkClose ? static_cast<float>(SinceStart + 1) / BlinkClose
                                   : 1.0f - static_cast<float>(SinceStart - BlinkClose + 1) / BlinkOpen;
}

void Look(FFaceFrame& Frame, float Yaw, float Pitch)
{
    const auto Amount = [](float Degrees) { return std::clamp(Degrees / LookRangeDegrees, 0.0f, 1.0f); };
    // Positive yaw turns both eyes to the face's left: out for the left eye, in for
    // the right; positive pitch looks down.
    Frame.Weights[EyeLookOutLeft] = Amount(Yaw);
    Frame.Weights[EyeLookInLeft] = Amount(-Yaw);
    Frame.Weights[EyeLookInRight] = Amount(Yaw);
    Frame.Weights[EyeLookOutRight] = Amount(-Yaw);
    Frame.Weights[EyeLookDownLeft] = Frame.Weights[EyeLookDownRight] = Amount(Pitch);
    Frame.Weights[EyeLookUpLeft] = Frame.Weights[EyeLookUpRight] = Amount(-Pitch);
}
} // namespace

float FIdleMotion::Uniform(float Low, float High)
{
    // The generator's raw output is fixed by the standard; distributions are not.
    const float Unit = static_cast<float>(Random() >> 8) / static_cast<float>(1u << 24);
    return Low + (High - Low) * Unit;
}

void FIdleMotion::Step(float Loudness)
{
    ++Step10ms;
    if (Step10ms >= NextBlink)
    {
        BlinkStart = Step10ms;
        NextBlink = Step10ms + static_cast<std::int64_t>(Uniform(250.0f, 550.0f));
    }
    if (Step10ms >= NextSaccade)
    {
        TargetYaw = Uniform(-MaxGazeYaw, MaxGazeYaw);
        TargetPitch = Uniform(-MaxGazePitch, MaxGazePitch);
        NextSaccade = Step10ms + static_cast<std::int64_t>(Uniform(50.0f, 250.0f));
    }
    // A saccade takes a few tens of milliseconds.
    GazeYaw += 0.5f * (TargetYaw - GazeYaw);
    GazePitch += 0.5f * (TargetPitch - GazePitch);
    Nod += 0.05f * (std::clamp(Loudness, 0.0f, 1.0f) - Nod);
}

void FIdleMotion::Apply(bool bEyes, bool bNeck, FFaceFrame& Frame) const
{
    const float Lid = Blink(Step10ms - BlinkStart);
    Frame.Weights[EyeBlinkLeft] = std::max(Frame.Weights[EyeBlinkLeft], Lid);
    Frame.Weights[EyeBlinkRight] = std::max(Frame.Weights[EyeBlinkRight], Lid);
    if (bEyes)
    {
        for (std::size_t Eye : {EBone::LeftEye, EBone::RightEye})
        {
            Frame.Bones[Eye] = {GazePitch, GazeYaw, 0.0f};
        }
        Look(Frame, GazeYaw, GazePitch);
    }
    if (bNeck)
    {
        // Slow sway from incommensurate sines, with a small nod on loud speech.
        const double Seconds = static_cast<double>(Step10ms) * 0.01;
        const double Tau = 2.0 * std::numbers::pi;
        Frame.Bones[EBone::Neck] = {
            static_cast<float>(1.5 * std::sin(Tau * 0.11 * Seconds) +
                               0.8 * std::sin(Tau * 0.37 * Seconds + 1.0)) +
                2.0f * Nod,
            static_cast<float>(2.0 * std::sin(Tau * 0.07 * Seconds + 2.0) +
                               0.6 * std::sin(Tau * 0.23 * Seconds)),
            static_cast<float>(1.0 * std::sin(Tau * 0.05 * Seconds + 4.0)),
        };
    }
}

} // namespace LipsyncEngine
