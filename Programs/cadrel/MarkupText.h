#pragma once

#include <string>

// Text made safe for the body or a quoted attribute of XML or HTML: the markup
// characters as entities, bytes that are not UTF-8 replaced, and the control
// characters XML cannot hold as spaces.
std::string EscapeMarkup(const std::string& Text);
