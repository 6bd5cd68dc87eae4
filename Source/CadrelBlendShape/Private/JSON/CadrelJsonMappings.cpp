#include "CadrelJson.h"

#include <iterator>

namespace
{
// The enumerator names in value order, without the enumeration's name. Fixed
// tables give the same answers as the host's reflected names, and need no
// reflection data, so the codec works before or without the type registration.
const TCHAR* const BlendShapeTypeNames[] = {TEXT("AUDIO2FACE"), TEXT("VIRETHIO")};
static_assert(std::size(BlendShapeTypeNames) == static_cast<SIZE_T>(EBlendShapeType::VIRETHIO) + 1);

const TCHAR* const RigTypeNames[] = {TEXT("VIRETH"), TEXT("CUSTOM")};
static_assert(std::size(RigTypeNames) == static_cast<SIZE_T>(ECadrelRigType::CUSTOM) + 1);

// Without the "CEE_" prefix, which the request document leaves out.
const TCHAR* const EmotionNames[] = {
    TEXT("Angry"),   TEXT("Calm"),          TEXT("Curious"),    TEXT("Disgust"), TEXT("Doubt"),
    TEXT("Dreamy"),  TEXT("Embarrassment"), TEXT("Fear"),       TEXT("Flirt"),   TEXT("Happy"),
    TEXT("Playful"), TEXT("Positive"),      TEXT("Resentment"), TEXT("Shame"),   TEXT("Sorrow"),
    TEXT("Strict"),  TEXT("Supplication"),  TEXT("Surprise"),   TEXT("Wrath"),
};
static_assert(std::size(EmotionNames) == static_cast<SIZE_T>(ECadrelExplicitEmotion::CEE_Wrath) + 1);

// 255 is no enumerator of any of the three enumerations, so a caller can tell a
// name that matched nothing.
constexpr uint8 NoEnumerator = 255;

template <SIZE_T Count> uint8 FindEnumerator(const TCHAR* const (&Names)[Count], const FString& InName)
{
    for (SIZE_T Index = 0; Index < Count; ++Index)
    {
        if (InName.Equals(Names[Index], ESearchCase::IgnoreCase))
        {
            return static_cast<uint8>(Index);
        }
    }
    return NoEnumerator;
}
} // namespace

FString CadrelJson::GetType(EBlendShapeType InType)
{
    // A value outside the enumeration has no name; empty text names no server.
    const SIZE_T Index = static_cast<SIZE_T>(InType);
    return Index < std::size(BlendShapeTypeNames) ? FString(BlendShapeTypeNames[Index]) : FString();
}

EBlendShapeType CadrelJson::GetType(const FString& InName)
{
    return static_cast<EBlendShapeType>(FindEnumerator(BlendShapeTypeNames, InName));
}

ECadrelRigType CadrelJson::GetRigType(const FString& InName)
{
    return static_cast<ECadrelRigType>(FindEnumerator(RigTypeNames, InName));
}

ECadrelExplicitEmotion CadrelJson::GetExplicitEmotion(const FString& InName)
{
    return static_cast<ECadrelExplicitEmotion>(FindEnumerator(EmotionNames, InName));
}
