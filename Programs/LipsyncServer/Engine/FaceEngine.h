#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>
#include <string_view>

namespace LipsyncEngine
{

// The 52 ARKit blend shapes, in the order of FFaceFrame::Weights.
inline constexpr std::size_t NumBlendShapes = 52;
const std::array<std::string_view, NumBlendShapes>& BlendShapeNames();

// Left eye, right eye, neck: Euler angles [x, y, z] in degrees.
inline constexpr std::size_t NumBones = 3;
const std::array<std::string_view, NumBones>& BoneNames();

// The nineteen emotions a request may ask for, in the request document's order
// ("angry", "calm", ..., "wrath").
enum class EEmotion : std::uint8_t
{
    Angry,
    Calm,
    Curious,
    Disgust,
    Doubt,
    Dreamy,
    Embarrassment,
    Fear,
    Flirt,
    Happy,
    Playful,
    Positive,
    Resentment,
    Shame,
    Sorrow,
    Strict,
    Supplication,
    Surprise,
    Wrath,
};
// Case-insensitive; false for a name that is no emotion.
bool ParseEmotion(std::string_view Name, EEmotion& OutEmotion);

struct FAnimationOptions
{
    EEmotion Emotion = EEmotion::Calm;
    bool bEyeMovement = false;
    bool bNeckMovement = false;
    int Fps = 60;
};

struct FFaceFrame
{
    std::array<float, NumBlendShapes> Weights{};
    std::array<std::array<float, 3>, NumBones> Bones{};
};

// One speaker's face over time. Feed it the audio in order, whole or chunk by
// chunk: a chunk continues from the state the previous one left, and the frames of
// all chunks together are those of the whole. The same audio always gives the same
// frames.
class FFaceEngine
{
public:
    explicit FFaceEngine(const FAnimationOptions& Options);
    ~FFaceEngine();
    FFaceEngine(const FFaceEngine&) = delete;
    FFaceEngine& operator=(const FFaceEngine&) = delete;

    // Takes effect from the next chunk on (a stream may change its emotion).
    void SetOptions(const FAnimationOptions& Options);

    // Mono samples in [-1, 1] at any rate above zero. Returns one frame per 1/fps of
    // audio, counted over everything fed so far (so chunks add up to the whole).
    std::vector<FFaceFrame> Animate(std::span<const float> Samples, int SampleRate);

private:
    struct FState;
    std::unique_ptr<FState> State;
};

} // namespace LipsyncEngine
