#pragma once

#include "CoreMinimal.h"
#include "JSON/FastJsonPlainNumbers.h"
#include "JSON/FastJsonWorkspace.h"

#include <simdjson.h>

#include <bit>
#include <string_view>
#include <utility>
#include <vector>

// Walks a parsed document straight into records, without the host's tree of
// shared values, giving exactly what the host's tree and accessors would give.
//
// The document is read on demand, and an on-demand parser checks only what is
// visited. So every value is visited: numbers are parsed, strings and keys
// unescaped, literals and punctuation checked, nesting counted as the host's
// parser counts it, and nothing may follow the top-level value. A text passes here
// exactly when the host's parser accepts it; callers gather what they read and
// apply it only after the whole walk has succeeded.
namespace CadrelJson::FastJson
{
namespace ondemand = simdjson::ondemand;
using simdjson::error_code;

// Level counts the containers around a value (a member of the top-level object is at
// level 1). The host's parser refuses a document in which non-empty containers are
// nested as deep as its depth limit, so a container at MaxLevel may only be empty.
constexpr int32 MaxLevel = static_cast<int32>(simdjson::DEFAULT_MAX_DEPTH) - 1;

// Key lookup ignores the case of A-Z only, as the host's object keys do.
// LowerCaseName is ASCII in lower case.
bool IsKey(std::string_view Key, std::string_view LowerCaseName);

// Checks a value of any type, containers to the bottom.
error_code SkipValue(ondemand::value Value, ondemand::json_type Type, int32 Level);
error_code SkipValue(ondemand::value Value, int32 Level);

// The host's AsString: a string's text, a number's shortest text, "true" or
// "false"; empty for null, arrays and objects.
error_code ReadString(ondemand::value Value, int32 Level, FString& OutText);

// The rare part of ReadNumber, kept out of line: strings, and values that are no number.
error_code ReadNonNumberAsNumber(ondemand::value Value, ondemand::json_type Type, int32 Level,
                                 double& OutNumber);

// The value of a number with more than 19 significant digits, which this version of
// the on-demand parser computes but then drops, leaving +0 in its place.
double RecoverLongNumber(ondemand::value Value);

// A number token as the host's tree holds it: integers converted to double, so
// that -0 reads as 0 and 2^63 as the nearest double.
[[gnu::always_inline]] inline error_code GetNumber(ondemand::value Value, double& OutNumber)
{
    ondemand::number Number;
    SIMDJSON_TRY(Value.get_number().get(Number));
    OutNumber = Number.as_double();
    if (std::bit_cast<uint64>(OutNumber) == 0 && Number.is_double()) [[unlikely]]
    {
        OutNumber = RecoverLongNumber(Value);
    }
    return simdjson::SUCCESS;
}

// The host's AsNumber: a number, or a string that holds exactly one JSON number;
// 0 for anything else. Always inlined: a value handed to a function through
// memory costs more than parsing the number it holds.
[[gnu::always_inline]] inline error_code ReadNumber(ondemand::value Value, int32 Level, double& OutNumber)
{
    ondemand::json_type Type;
    SIMDJSON_TRY(Value.type().get(Type));
    if (Type == ondemand::json_type::number) [[likely]]
    {
        return GetNumber(Value, OutNumber);
    }
    return ReadNonNumberAsNumber(Value, Type, Level, OutNumber);
}

// The host's AsArray: calls OnElement(ondemand::value, int32 ElementLevel) for each
// element of an array; any other value is checked and has no elements.
template <typename ElementFunctor>
error_code ForEachElement(ondemand::value Value, int32 Level, ElementFunctor&& OnElement)
{
    ondemand::json_type Type;
    SIMDJSON_TRY(Value.type().get(Type));
    if (Type != ondemand::json_type::array)
    {
        return SkipValue(Value, Type, Level);
    }
    ondemand::array Array;
    SIMDJSON_TRY(Value.get_array().get(Array));
    // Elements are taken with value_unsafe() once their error is checked: copying
    // them out with get() keeps the iterator in memory and made the walk two and a
    // half times slower.
    for (simdjson::simdjson_result<ondemand::value> Element : Array)
    {
        SIMDJSON_TRY(Element.error());
        if (Level >= MaxLevel)
        {
            return simdjson::DEPTH_ERROR;
        }
        SIMDJSON_TRY(OnElement(Element.value_unsafe(), Level + 1));
    }
    return simdjson::SUCCESS;
}

// A key without a backslash reads as its bytes, which the parser has checked
// already; unescaping it costs a call into the parser for every key of every frame.
// Null for a key with an escape, which must be unescaped.
inline std::string_view PlainKey(const char* Raw)
{
    const char* End = Raw;
    while (*End != '"' && *End != '\\')
    {
        ++End;
    }
    return *End == '"' ? std::string_view(Raw, static_cast<SIZE_T>(End - Raw)) : std::string_view();
}

// Calls OnField(std::string_view Key, ondemand::value, int32 FieldLevel) for each
// member in document order. A handler must consume the whole value it is given.
template <typename FieldFunctor>
error_code ForEachField(ondemand::object Object, int32 Level, FieldFunctor&& OnField)
{
    for (simdjson::simdjson_result<ondemand::field> Member : Object)
    {
        SIMDJSON_TRY(Member.error());
        ondemand::field& Field = Member.value_unsafe();
        std::string_view Key = PlainKey(Field.key().raw());
        if (Key.data() == nullptr)
        {
            SIMDJSON_TRY(Field.unescaped_key().get(Key));
        }
        if (Level >= MaxLevel)
        {
            return simdjson::DEPTH_ERROR;
        }
        SIMDJSON_TRY(OnField(Key, Field.value(), Level + 1));
    }
    return simdjson::SUCCESS;
}

// The host's AsObject: calls OnField for each member of an object and sets bOutObject;
// any other value is checked and yields no object.
template <typename FieldFunctor>
error_code ForObject(ondemand::value Value, int32 Level, bool& bOutObject, FieldFunctor&& OnField)
{
    ondemand::json_type Type;
    SIMDJSON_TRY(Value.type().get(Type));
    bOutObject = Type == ondemand::json_type::object;
    if (!bOutObject)
    {
        return SkipValue(Value, Type, Level);
    }
    ondemand::object Object;
    SIMDJSON_TRY(Value.get_object().get(Object));
    return ForEachField(Object, Level, OnField);
}

// Reads Value when it is a non-empty array of plain numbers, appending them to
// OutNumbers, and sets bOutRead. Otherwise leaves Value and OutNumbers untouched
// for the general walk.
error_code ReadPlainNumbers(ondemand::value Value, int32 Level, FPlainNumberReader& Numbers,
                            std::vector<double>& OutNumbers, bool& bOutRead);

// The numbers of an array as AsNumber reads them, replacing OutNumbers; any other
// value gives none. They gather in Scratch first, so that OutNumbers is allocated
// once at its final size. Flattened, so that the general loop runs without a call
// per number.
[[gnu::flatten]] inline error_code ReadNumbers(ondemand::value Value, int32 Level,
                                               FPlainNumberReader& Numbers, std::vector<double>& Scratch,
                                               TArray<double>& OutNumbers)
{
    Scratch.clear();
    bool bRead = false;
    SIMDJSON_TRY(ReadPlainNumbers(Value, Level, Numbers, Scratch, bRead));
    if (!bRead)
    {
        SIMDJSON_TRY(ForEachElement(Value, Level,
                                    [&Scratch](ondemand::value Element, int32 ElementLevel) -> error_code
                                    {
                                        double Number = 0.0;
                                        SIMDJSON_TRY(ReadNumber(Element, ElementLevel, Number));
                                        Scratch.push_back(Number);
                                        return simdjson::SUCCESS;
                                    }));
    }
    OutNumbers = TArray<double>(Scratch.data(), static_cast<int32>(Scratch.size()));
    return simdjson::SUCCESS;
}

// Makes room in To for the elements of From, so that AppendMoved allocates nothing
// afterwards. An empty To needs none: it takes From's buffer whole.
template <typename ElementType> void ReserveToAppend(TArray<ElementType>& To, const TArray<ElementType>& From)
{
    if (!To.IsEmpty())
    {
        To.Reserve(To.Num() + From.Num());
    }
}

// Moves the elements of From behind those of To.
template <typename ElementType> void AppendMoved(TArray<ElementType>& To, TArray<ElementType>&& From)
{
    if (To.IsEmpty())
    {
        To = std::move(From);
        return;
    }
    for (ElementType& Element : From)
    {
        To.Add(std::move(Element));
    }
}

// Parses Text (UTF-8 or UTF-16 text, or the UTF-8 bytes of a body) and calls
// OnField for each member of its top-level object. True only when the text is one
// JSON document that the host's parser accepts, its top level is an object, and
// every handler succeeded.
template <typename TextType, typename FieldFunctor>
bool WalkTopLevelObject(const TextType& Text, FieldFunctor&& OnField)
{
    // The host's reader refuses texts of 2 GiB and more; UTF-8 is never shorter
    // than the UTF-16 it comes from.
    constexpr SIZE_T MaxLength = static_cast<SIZE_T>(INT32_MAX);
    FReadWorkspace& Workspace = FReadWorkspace::Get();
    // Trimmed however the walk ends, a handler running out of memory included.
    const struct FTrimAtExit
    {
        FReadWorkspace& Workspace;
        ~FTrimAtExit() { Workspace.Trim(); }
    } TrimAtExit{Workspace};
    const std::string_view Utf8 = Workspace.Pad(Text);
    bool bWalked = false;
    if (Utf8.size() <= MaxLength)
    {
        ondemand::document Document;
        ondemand::object Object;
        if (!Workspace.GetParser()
                 .iterate(Utf8.data(), Utf8.size(), Utf8.size() + simdjson::SIMDJSON_PADDING)
                 .get(Document) &&
            !Document.get_object().get(Object) && !ForEachField(Object, 0, OnField))
        {
            // Past the top-level value only the end of the text may come.
            bWalked = Document.current_location().error() == simdjson::OUT_OF_BOUNDS;
        }
    }
    return bWalked;
}

// A fast reader's whole run: the walker gathers the answer into a draft, and only a
// complete walk touches the record, so a text the host's parser would refuse leaves
// it as it was.
template <typename WalkerType, typename TextType, typename RecordType>
void ReadWithWalker(const TextType& Text, RecordType& OutRecord)
{
    WalkerType Walker;
    if (WalkTopLevelObject(Text, [&Walker](std::string_view Key, ondemand::value Value, int32 Level)
                           { return Walker.OnTopLevelField(Key, Value, Level); }))
    {
        Walker.Apply(OutRecord);
    }
}

} // namespace CadrelJson::FastJson
