#pragma once

#include "CoreMinimal.h"
#include "UObject/Registration.h"

// What the module's registration files share.
namespace CadrelBlendShapeReflection
{
// The reflection package of every type the module registers.
inline constexpr const TCHAR* Package = TEXT("/Script/CadrelBlendShape");

// Panels edit every reflected member; visual scripts see all but the hidden ones.
inline constexpr EPropertyFlags ReadWrite = PF_Edit | PF_ScriptVisible;
inline constexpr EPropertyFlags ReadOnly = PF_Edit | PF_ScriptVisible | PF_ScriptReadOnly;
inline constexpr EPropertyFlags PanelOnly = PF_Edit;
inline constexpr EPropertyFlags PanelConfig = PF_Edit | PF_Config;
} // namespace CadrelBlendShapeReflection
