#include "EmotionShapes.h"

#include "BlendShape.h"

namespace LipsyncEngine
{
namespace
{
using namespace EBlendShape;

// The expression of one emotion; both sides of the face alike.
struct FExpression
{
    float Smile;
    float Frown;
    float BrowDown;
    float BrowInnerUp;
    float BrowOuterUp;
    float CheekSquint;
    float EyeSquint;
    float EyeWide;
    float NoseSneer;
    float Dimple;
};

// In the order of EEmotion.
constexpr std::array<FExpression, 19> Expressions = {{
    // Smile Frown BrowDn InnerUp OuterUp Cheek EyeSq EyeWide Sneer Dimple
    {0.00f, 0.30f, 0.60f, 0.00f, 0.00f, 0.10f, 0.30f, 0.00f, 0.30f, 0.00f}, // Angry
    {0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f, 0.00f}, // Calm
    {0.05f, 0.00f, 0.00f, 0.30f, 0.30f, 0.00f, 0.00f, 0.20f, 0.00f, 0.00f}, // Curious
    {0.00f, 0.35f, 0.40f, 0.00f, 0.00f, 0.20f, 0.20f, 0.00f, 0.50f, 0.00f}, // Disgust
    {0.00f, 0.15f, 0.30f, 0.20f, 0.00f, 0.00f, 0.20f, 0.00f, 0.00f, 0.10f}, // Doubt
    {0.15f, 0.00f, 0.00f, 0.15f, 0.00f, 0.00f, 0.25f, 0.00f, 0.00f, 0.00f}, // Dreamy
    {0.15f, 0.10f, 0.00f, 0.30f, 0.00f, 0.20f, 0.10f, 0.00f, 0.00f, 0.10f}, // Embarrassment
    {0.00f, 0.25f, 0.00f, 0.60f, 0.30f, 0.00f, 0.00f, 0.50f, 0.00f, 0.00f}, // Fear
    {0.35f, 0.00f, 0.00f, 0.00f, 0.20f, 0.20f, 0.25f, 0.00f, 0.00f, 0.20f}, // Flirt
    {0.55f, 0.00f, 0.00f, 0.00f, 0.20f, 0.40f, 0.15f, 0.00f, 0.00f, 0.20f}, // Happy
    {0.40f, 0.00f, 0.00f, 0.10f, 0.30f, 0.30f, 0.10f, 0.10f, 0.00f, 0.15f}, // Playful
    {0.35f, 0.00f, 0.00f, 0.00f, 0.15f, 0.25f, 0.05f, 0.00f, 0.00f, 0.10f}, // Positive
    {0.00f, 0.30f, 0.40f, 0.00f, 0.00f, 0.00f, 0.25f, 0.00f, 0.20f, 0.00f}, // Resentment
    {0.00f, 0.30f, 0.10f, 0.40f, 0.00f, 0.00f, 0.10f, 0.00f, 0.00f, 0.00f}, // Shame
    {0.00f, 0.45f, 0.00f, 0.60f, 0.00f, 0.00f, 0.15f, 0.00f, 0.00f, 0.00f}, // Sorrow
    {0.00f, 0.15f, 0.45f, 0.00f, 0.00f, 0.00f, 0.20f, 0.00f, 0.00f, 0.00f}, // Strict
    {0.00f, 0.25f, 0.00f, 0.55f, 0.10f, 0.00f, 0.00f, 0.15f, 0.00f, 0.00f}, // Supplication
    {0.10f, 0.00f, 0.00f, 0.40f, 0.60f, 0.00f, 0.00f, 0.60f, 0.00f, 0.00f}, // Surprise
    {0.00f, 0.40f, 0.70f, 0.00f, 0.00f, 0.20f, 0.40f, 0.10f, 0.40f, 0.00f}, // Wrath
}};

void SetPair(std::array<float, NumBlendShapes>& Weights, std::size_t Left, std::size_t Right, float Value)
{
    Weights[Left] = Value;
    Weights[Right] = Value;
}
} // namespace

std::array<float, NumBlendShapes> EmotionShapes(EEmotion Emotion)
{
    std::array<float, NumBlendShapes> Weights{};
    const auto Index = static_cast<std::size_t>(Emotion);
    if (Index >= Expressions.size())
    {
        return Weights;
    }
    const FExpression& E = Expressions[Index];
    SetPair(Weights, MouthSmileLeft, MouthSmileRight, E.Smile);
    SetPair(Weights, MouthFrownLeft, MouthFrownRight, E.Frown);
    SetPair(Weights, BrowDownLeft, BrowDownRight, E.BrowDown);
    Weights[BrowInnerUp] = E.BrowInnerUp;
    SetPair(Weights, BrowOuterUpLeft, BrowOuterUpRight, E.BrowOuterUp);
    SetPair(Weights, CheekSquintLeft, CheekSquintRight, E.CheekSquint);
    SetPair(Weights, EyeSquintLeft, EyeSquintRight, E.EyeSquint);
    SetPair(Weights, EyeWideLeft, EyeWideRight, E.EyeWide);
    SetPair(Weights, NoseSneerLeft, NoseSneerRight, E.NoseSneer);
    SetPair(Weights, MouthDimpleLeft, MouthDimpleRight, E.Dimple);
    return Weights;
}

} // namespace LipsyncEngine
