#pragma once

#include "CoreMinimal.h"
#include "Serialization/JsonSerializer.h"

#include <exception>

// Rules that the general readers over the host's JSON tree and the fast readers
// over the parser's document must apply alike, kept in one place so that both
// paths give the same records.
namespace CadrelJson::ReadRules
{
// JSON numbers are doubles while the records count in int32: the number is
// truncated toward zero, and a number beyond the int32 range gives the nearest
// limit, so that a hostile 1e300 reads as a large count instead of an undefined one.
int32 TruncateToInt32(double Value);

// A float field takes a double: beyond float's range the result is the largest
// finite float of the same sign, where a plain conversion would be undefined and
// an infinite value would be written back as text no server reads.
float NarrowToFloat(double Value);

// Raises the host's non-fatal assertion for a bone whose "eul" is not a triple.
// Both reader paths share this one call site, so that a run reports it once,
// whichever path read the answer.
bool CheckEulTriple(int32 Num);

// The readers return nothing, so a caller cannot expect an exception from them:
// running out of memory on an enormous answer ends the read quietly instead.
template <typename ReadFunctor> void ReadWithoutThrowing(ReadFunctor&& Read) noexcept
{
    try
    {
        Read();
    }
    catch (const std::exception&)
    {
    }
}

// The general readers' first step: the text becomes one JSON value, and Read gets
// its object view. Text that is not JSON, or whose top level is no object, reaches
// nothing, so the record stays as it was.
template <typename CharType, typename ReadFunctor>
void ReadRootObject(const TSharedRef<TJsonReader<CharType>>& Reader, ReadFunctor&& Read) noexcept
{
    ReadWithoutThrowing(
        [&]
        {
            TSharedPtr<FJsonValue> Root;
            if (!FJsonSerializer::Deserialize(Reader, Root))
            {
                return;
            }
            if (const TSharedPtr<FJsonObject>& Object = Root->AsObject())
            {
                Read(*Object);
            }
        });
}
} // namespace CadrelJson::ReadRules
