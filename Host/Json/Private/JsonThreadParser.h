#pragma once

#include <simdjson.h>

// Each thread keeps one parser between documents so that its buffers are reused
// instead of allocated again for every reply.
class FJsonThreadParser
{
public:
    static simdjson::dom::parser& Get();
    // Gives back the buffers of an unusually large document, so that a thread that
    // once read one does not keep that much memory for the rest of its life. Call
    // it only once the parsed elements are no longer used.
    static void Trim();
};
