#include "JSON/FastJsonListStep.h"

namespace
{
namespace ondemand = simdjson::ondemand;

// The parser keeps a value's iterator, and the iterator its position, to itself;
// C++ lets a derived class name a protected member of its base, which is how these
// reach them. Checked against the simdjson this was written for: its iterator's
// position and depth are the whole of what stepping over a value changes.
static_assert(simdjson::SIMDJSON_VERSION_MAJOR == 3 && simdjson::SIMDJSON_VERSION_MINOR == 0,
              "check that stepping over a value still changes only the iterator's position and depth");

struct FValueAccess : ondemand::value
{
    static ondemand::json_iterator& JsonIterator(ondemand::value& Value)
    {
        return (Value.*(&FValueAccess::iter)).json_iter();
    }
};

struct FJsonIteratorAccess : ondemand::json_iterator
{
    static ondemand::token_iterator& Token(ondemand::json_iterator& Iterator)
    {
        return Iterator.*(&FJsonIteratorAccess::token);
    }
};

const uint8_t* Bytes(const char* Text)
{
    return reinterpret_cast<const uint8_t*>(Text);
}
} // namespace

bool CadrelJson::FastJson::StepOverPlainList(ondemand::value& Value, const char* Open, const char* Close,
                                             SIZE_T Count)
{
    ondemand::json_iterator& Iterator = FValueAccess::JsonIterator(Value);
    const ondemand::token_position OpenToken = Iterator.position();
    // Only a list inside a container, not yet entered.
    if (Iterator.depth() < 2 || Iterator.peek(OpenToken) != Bytes(Open))
    {
        return false;
    }
    // '[', Count numbers, the commas between them and ']': the ']' is 2 * Count
    // tokens on. Every token takes a byte at least, so that entry lies inside the
    // index even if the parser had split the text differently.
    const ondemand::token_position CloseToken = OpenToken + 2 * Count;
    if (Iterator.peek(CloseToken) != Bytes(Close))
    {
        return false;
    }
    Iterator.ascend_to(Iterator.depth() - 1);
    FJsonIteratorAccess::Token(Iterator).set_position(CloseToken + 1);
    return true;
}
