#pragma once

#include <string>

// How many times Needle occurs in Text, overlapping ones included.
inline int CountOf(const std::string& Text, const std::string& Needle)
{
    int Found = 0;
    for (std::size_t At = Text.find(Needle); At != std::string::npos; At = Text.find(Needle, At + 1))
    {
        ++Found;
    }
    return Found;
}
