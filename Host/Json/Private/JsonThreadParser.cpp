#include "JsonThreadParser.h"

namespace
{
// Documents up to this size keep their buffers between calls; larger ones are rare
// enough that allocating their buffers afresh costs little by comparison.
constexpr size_t KeptCapacity = size_t{8} << 20;

thread_local simdjson::dom::parser ThreadParser;
} // namespace

simdjson::dom::parser& FJsonThreadParser::Get()
{
    return ThreadParser;
}

void FJsonThreadParser::Trim()
{
    if (ThreadParser.capacity() > KeptCapacity)
    {
        ThreadParser = simdjson::dom::parser();
    }
}
