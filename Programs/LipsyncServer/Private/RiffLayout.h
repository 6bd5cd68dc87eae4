#pragma once

#include <string>
#include <string_view>

// Walks the chunks of a RIFF/WAVE file and checks that every size fits in the bytes
// at hand and that "fmt " and "data" are there. libsndfile trusts the sizes it
// reads (it clips a "data" chunk that runs past the end), so a truncated or forged
// file is caught here first. Returns the problem, or an empty string.
std::string CheckRiffLayout(std::string_view Bytes);
