#include "CadrelJson.h"
#include "JSON/CadrelEnumNames.h"

#include <iterator>

namespace
{
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
    return Index < std::size(CadrelEnumNames::BlendShapeTypes)
               ? FString(CadrelEnumNames::BlendShapeTypes[Index])
               : FString();
}

EBlendShapeType CadrelJson::GetType(const FString& InName)
{
    return static_cast<EBlendShapeType>(FindEnumerator(CadrelEnumNames::BlendShapeTypes, InName));
}

ECadrelRigType CadrelJson::GetRigType(const FString& InName)
{
    return static_cast<ECadrelRigType>(FindEnumerator(CadrelEnumNames::RigTypes, InName));
}

ECadrelExplicitEmotion CadrelJson::GetExplicitEmotion(const FString& InName)
{
    return static_cast<ECadrelExplicitEmotion>(FindEnumerator(CadrelEnumNames::Emotions, InName));
}
