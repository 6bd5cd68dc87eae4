#pragma once

#include "CoreMinimal.h"

#include <string>
#include <string_view>

namespace AtomicFile
{
// Replaces the file at Path by Bytes so that a crash at any moment leaves either
// the old file or the new one: the bytes go to a temporary file beside it, are
// synced, and the temporary file is renamed over Path. The file keeps its
// permissions; a symbolic link is followed. Path's directory is created when it
// is missing but its own parent exists. On failure nothing is changed and
// OutError says why.
bool Write(const std::string& Path, std::string_view Bytes, FString& OutError);
} // namespace AtomicFile
