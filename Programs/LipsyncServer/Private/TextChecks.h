#pragma once

#include <cstddef>
#include <string_view>

// Small exact checks on texts from requests; each consumes the whole text or fails.
bool EqualsNoCase(std::string_view Left, std::string_view Right);
bool IsHexDigits(std::string_view Text, std::size_t Count);
bool ParseInt32(std::string_view Text, int& Out);
bool IsDecimalInteger(std::string_view Text);
bool IsDecimalNumber(std::string_view Text);
