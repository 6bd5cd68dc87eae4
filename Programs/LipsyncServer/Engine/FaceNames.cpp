#include "FaceEngine.h"

#include <algorithm>
#include <cctype>

namespace LipsyncEngine
{
namespace
{
constexpr std::array<std::string_view, 19> EmotionNames = {
    "angry",  "calm",   "curious",      "disgust",  "doubt",    "dreamy",     "embarrassment",
    "fear",   "flirt",  "happy",        "playful",  "positive", "resentment", "shame",
    "sorrow", "strict", "supplication", "surprise", "wrath",
};

bool EqualsIgnoringCase(std::string_view A, std::string_view B)
{
    return A.size() == B.size() && std::equal(A.begin(), A.end(), B.begin(),
                                              [](char X, char Y) {
                                                  return std::tolower(static_cast<unsigned char>(X)) ==
                                                         std::tolower(static_cast<unsigned char>(Y));
                                              });
}
} // namespace

const std::array<std::string_view, NumBlendShapes>& BlendShapeNames()
{
    static constexpr std::array<std::string_view, NumBlendShapes> Names = {
        "eyeBlinkLeft",      "eyeLookDownLeft",    "eyeLookInLeft",
        "eyeLookOutLeft",    "eyeLookUpLeft",      "eyeSquintLeft",
        "eyeWideLeft",       "eyeBlinkRight",      "eyeLookDownRight",
        "eyeLookInRight",    "eyeLookOutRight",    "eyeLookUpRight",
        "eyeSquintRight",    "eyeWideRight",       "jawForward",
        "jawLeft",           "jawRight",           "jawOpen",
        "mouthClose",        "mouthFunnel",        "mouthPucker",
        "mouthLeft",         "mouthRight",         "mouthSmileLeft",
        "mouthSmileRight",   "mouthFrownLeft",     "mouthFrownRight",
        "mouthDimpleLeft",   "mouthDimpleRight",   "mouthStretchLeft",
        "mouthStretchRight", "mouthRollLower",     "mouthRollUpper",
        "mouthShrugLower",   "mouthShrugUpper",    "mouthPressLeft",
        "mouthPressRight",   "mouthLowerDownLeft", "mouthLowerDownRight",
        "mouthUpperUpLeft",  "mouthUpperUpRight",  "browDownLeft",
        "browDownRight",     "browInnerUp",        "browOuterUpLeft",
        "browOuterUpRight",  "cheekPuff",          "cheekSquintLeft",
        "cheekSquintRight",  "noseSneerLeft",      "noseSneerRight",
        "tongueOut",
    };
    return Names;
}

const std::array<std::string_view, NumBones>& BoneNames()
{
    static constexpr std::array<std::string_view, NumBones> Names = {"eyeLeft", "eyeRight", "neck"};
    return Names;
}

bool ParseEmotion(std::string_view Name, EEmotion& OutEmotion)
{
    for (std::size_t Index = 0; Index < EmotionNames.size(); ++Index)
    {
        if (EqualsIgnoringCase(Name, EmotionNames[Index]))
        {
            OutEmotion = static_cast<EEmotion>(Index);
            return true;
        }
    }
    return false;
}

} // namespace LipsyncEngine
