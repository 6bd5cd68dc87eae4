#pragma once

#include "CoreTypes.h"

#define COREUOBJECT_API ORV_EXPORT

// What the host may do with a reflected member. Read-only members carry both
// PF_ScriptVisible and PF_ScriptReadOnly.
enum EPropertyFlags : uint64
{
    PF_None = 0,
    // Shown and editable in property panels.
    PF_Edit = 1ull << 0,
    // Visual scripts can read the member (and write it unless PF_ScriptReadOnly).
    PF_ScriptVisible = 1ull << 1,
    PF_ScriptReadOnly = 1ull << 2,
    // Read from and written to the class's configuration file.
    PF_Config = 1ull << 3,
};

constexpr EPropertyFlags operator|(EPropertyFlags A, EPropertyFlags B)
{
    return static_cast<EPropertyFlags>(static_cast<uint64>(A) | static_cast<uint64>(B));
}
constexpr EPropertyFlags operator&(EPropertyFlags A, EPropertyFlags B)
{
    return static_cast<EPropertyFlags>(static_cast<uint64>(A) & static_cast<uint64>(B));
}

// What the host may do with a reflected record, enumeration or class.
enum ETypeFlags : uint32
{
    TF_None = 0,
    // Visual scripts can hold values of the type, make and break them.
    TF_ScriptType = 1u << 0,
};

constexpr ETypeFlags operator|(ETypeFlags A, ETypeFlags B)
{
    return static_cast<ETypeFlags>(static_cast<uint32>(A) | static_cast<uint32>(B));
}

// How UObject::LoadConfig passes loaded values on; the host keeps no live
// instances besides class default objects, so there is nothing to pass them to.
enum ELoadConfigPropagationFlags : uint32
{
    LCPF_None = 0,
};

// Options of the host's by-name lookups.
enum class EFindFirstObjectOptions : uint32
{
    None = 0,
};
