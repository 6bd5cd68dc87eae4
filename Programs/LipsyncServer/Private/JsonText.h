#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Appenders for answers written into one reserved string: numbers through
// std::to_chars, so no locale and no allocation per value.
void AppendInteger(std::string& Out, std::int64_t Value);

// The shortest fixed-point text of Value rounded to four decimals ("0.1235", "1",
// "0"). Non-finite values are written as 0, since JSON has no text for them.
void AppendWeight(std::string& Out, double Value);

// A JSON string literal; control characters, quotes and backslashes are escaped,
// other bytes pass unchanged (the texts written are UTF-8 already).
void AppendJsonString(std::string& Out, std::string_view Text);
