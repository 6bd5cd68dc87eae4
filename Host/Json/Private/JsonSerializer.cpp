#include "Serialization/JsonSerializer.h"

#include "JsonThreadParser.h"
#include "JsonTreeBuilder.h"

#include <new>

namespace
{
// Parses the reader's text and, while the parser still holds the document, hands
// its root to Build, which returns whether it produced an output. Every failure
// leaves a reason in the reader; no exception leaves this function.
template <typename BuildFunctor> bool ParseAndBuild(FJsonReaderSource& Reader, BuildFunctor&& Build)
{
    Reader.SetErrorMessage(FString());
    // Counts in the tree are int32; a text below 2 GiB cannot hold more elements.
    if (Reader.GetUtf8Length() > static_cast<SIZE_T>(INT32_MAX))
    {
        Reader.SetErrorMessage(TEXT("The JSON text is too large."));
        return false;
    }
    bool bBuilt = false;
    try
    {
        simdjson::dom::element Root;
        const simdjson::error_code Error =
            FJsonThreadParser::Get().parse(Reader.GetUtf8(), Reader.GetUtf8Length(), false).get(Root);
        if (Error)
        {
            Reader.SetErrorMessage(FString::FromUTF8(simdjson::error_message(Error)));
        }
        else
        {
            bBuilt = Build(Root);
        }
    }
    catch (const std::bad_alloc&)
    {
        Reader.SetErrorMessage(TEXT("Out of memory while reading the JSON text."));
    }
    FJsonThreadParser::Trim();
    return bBuilt;
}
} // namespace

bool FJsonSerializer::DeserializeValue(FJsonReaderSource& Reader, TSharedPtr<FJsonValue>& OutValue)
{
    return ParseAndBuild(Reader,
                         [&](simdjson::dom::element Root)
                         {
                             if (!Root.is_object() && !Root.is_array())
                             {
                                 Reader.SetErrorMessage(TEXT("The JSON text is not an object or an array."));
                                 return false;
                             }
                             OutValue = FJsonTreeBuilder::BuildValue(Root);
                             return true;
                         });
}

bool FJsonSerializer::DeserializeObject(FJsonReaderSource& Reader, TSharedPtr<FJsonObject>& OutObject)
{
    return ParseAndBuild(Reader,
                         [&](simdjson::dom::element Root)
                         {
                             if (!Root.is_object())
                             {
                                 Reader.SetErrorMessage(TEXT("The JSON text is not an object."));
                                 return false;
                             }
                             OutObject = FJsonTreeBuilder::BuildObject(Root.get_object().value_unsafe());
                             return true;
                         });
}
