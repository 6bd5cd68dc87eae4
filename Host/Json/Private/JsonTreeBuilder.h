#pragma once

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"

#include <simdjson.h>

// Copies a parsed document into the host's tree of shared JSON values in one pass.
// The recursion is as deep as the document, which the parser has already limited
// to its maximum depth, so a hostile document cannot exhaust the stack here.
class FJsonTreeBuilder
{
public:
    static TSharedPtr<FJsonValue> BuildValue(simdjson::dom::element Element);
    static TSharedPtr<FJsonObject> BuildObject(simdjson::dom::object Object);

private:
    static TSharedPtr<FJsonValue> BuildArray(simdjson::dom::array Array);
    static FString ToFString(std::string_view Utf8);
};
