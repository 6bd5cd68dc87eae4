#include "AnimationOptions.h"

#include "CadrelJson.h"

namespace
{
constexpr uint8 NoEnumerator = 255;

std::string CheckEmotion(const std::string& Name)
{
    const ECadrelExplicitEmotion Emotion = CadrelJson::GetExplicitEmotion(FString::FromUTF8(Name));
    return static_cast<uint8>(Emotion) == NoEnumerator ? "no such emotion: " + Name : std::string();
}
} // namespace

void AddAnimationOptions(CLI::App& Command, FAnimationOptions& Options)
{
    // The codec's own name lookup decides, so the program accepts exactly what the
    // request reader would read back.
    Command
        .add_option(
            "--emotion", Options.Emotion,
            "Emotion the animation is to express: angry, calm, curious, disgust, doubt, dreamy, "
            "embarrassment, fear, flirt, happy, playful, positive, resentment, shame, sorrow, strict, "
            "supplication, surprise or wrath")
        ->check(CLI::Validator(CheckEmotion, "EMOTION"))
        ->capture_default_str();
    Command.add_flag("--eyes", Options.bEyeMovement, "Ask for captured eye movement");
    Command.add_flag("--neck", Options.bNeckMovement, "Ask for captured neck movement");
}

void ApplyAnimationOptions(const FAnimationOptions& Options, FCadrelZELRequest& Request)
{
    FCadrelZELInfo& Zel = Request.Data.Attributes.Zel;
    Zel.ExplicitEmotion = CadrelJson::GetExplicitEmotion(FString::FromUTF8(Options.Emotion));
    Zel.EyeMovementParameters.bEyeMovementMode = Options.bEyeMovement;
    Zel.NeckMovementParameters.bNeckMovementMode = Options.bNeckMovement;
}
