#pragma once

#include <string_view>

// The page assets under Programs/cadrel/Web/, compiled into the program by
// cmake/EmbedWebAssets.cmake.
namespace CadrelWeb
{
// The bytes of the asset with this file name (e.g. "face.js"); empty when there is none.
std::string_view Asset(std::string_view Name);
} // namespace CadrelWeb
