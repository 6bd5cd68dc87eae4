#pragma once

#include "CadrelBlendShapeType.h"

#include <iterator>

// The enumerator names in value order, without the enumeration's name; the emotion
// names also without their "CEE_" prefix, which the request document leaves out.
// Fixed tables give the same answers as the host's reflected names and need no
// reflection data, so the codec works before or without the type registration.
namespace CadrelEnumNames
{
inline constexpr const TCHAR* BlendShapeTypes[] = {TEXT("AUDIO2FACE"), TEXT("VIRETHIO")};
static_assert(std::size(BlendShapeTypes) == static_cast<SIZE_T>(EBlendShapeType::VIRETHIO) + 1);

inline constexpr const TCHAR* RigTypes[] = {TEXT("VIRETH"), TEXT("CUSTOM")};
static_assert(std::size(RigTypes) == static_cast<SIZE_T>(ECadrelRigType::CUSTOM) + 1);

inline constexpr const TCHAR* Emotions[] = {
    TEXT("Angry"),   TEXT("Calm"),          TEXT("Curious"),    TEXT("Disgust"), TEXT("Doubt"),
    TEXT("Dreamy"),  TEXT("Embarrassment"), TEXT("Fear"),       TEXT("Flirt"),   TEXT("Happy"),
    TEXT("Playful"), TEXT("Positive"),      TEXT("Resentment"), TEXT("Shame"),   TEXT("Sorrow"),
    TEXT("Strict"),  TEXT("Supplication"),  TEXT("Surprise"),   TEXT("Wrath"),
};
static_assert(std::size(Emotions) == static_cast<SIZE_T>(ECadrelExplicitEmotion::CEE_Wrath) + 1);
} // namespace CadrelEnumNames
