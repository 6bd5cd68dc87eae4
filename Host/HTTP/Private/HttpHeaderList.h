#pragma once

#include "CoreMinimal.h"

// A request's or an answer's headers, in the order they were set or arrived.
struct FHttpHeader
{
    FString Name;
    FString Value;
};

// The value of the first header of that name (any case), or empty text.
inline FString FindHttpHeader(const TArray<FHttpHeader>& Headers, const FString& HeaderName)
{
    for (const FHttpHeader& Header : Headers)
    {
        if (Header.Name.Equals(HeaderName))
        {
            return Header.Value;
        }
    }
    return FString();
}

// "Name: Value" lines.
inline TArray<FString> FormatHttpHeaders(const TArray<FHttpHeader>& Headers)
{
    TArray<FString> Lines;
    for (const FHttpHeader& Header : Headers)
    {
        Lines.Add(Header.Name + TEXT(": ") + Header.Value);
    }
    return Lines;
}
