#pragma once

#include "CoreMinimal.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonStringEscape.h"

#include <type_traits>
#include <vector>

// Streams JSON tokens into a buffer; Close() moves the text into the output string
// given to the factory, replacing what it held.
template <typename CharType = TCHAR, typename PrintPolicy = TCondensedJsonPrintPolicy<CharType>>
class TJsonWriter
{
    static_assert(std::is_same_v<CharType, TCHAR>, "the host writes JSON as TCHAR text");

public:
    explicit TJsonWriter(FString* InOutput) : Output(InOutput) {}

    void WriteObjectStart() { OpenScope(u'{'); }
    void WriteObjectStart(const FString& Identifier)
    {
        WriteIdentifier(Identifier);
        OpenScope(u'{');
    }
    void WriteObjectEnd() { CloseScope(u'}'); }
    void WriteArrayStart() { OpenScope(u'['); }
    void WriteArrayStart(const FString& Identifier)
    {
        WriteIdentifier(Identifier);
        OpenScope(u'[');
    }
    void WriteArrayEnd() { CloseScope(u']'); }

    template <typename ValueType> void WriteValue(const FString& Identifier, const ValueType& Value)
    {
        WriteIdentifier(Identifier);
        WriteValueOnly(Value);
    }
    template <typename ValueType> void WriteValue(const ValueType& Value)
    {
        WriteSeparator();
        WriteValueOnly(Value);
    }
    void WriteNull(const FString& Identifier)
    {
        WriteIdentifier(Identifier);
        Buffer.Append(TEXT("null"));
        bNeedsComma = true;
    }

    // Moves the text into the output; false when an object or array is still open.
    bool Close()
    {
        if (Output)
        {
            *Output = std::move(Buffer);
            Buffer.Empty();
        }
        return Scopes.empty();
    }

private:
    void WriteSeparator()
    {
        if (bNeedsComma)
        {
            Buffer.AppendChar(u',');
        }
    }
    void WriteIdentifier(const FString& Identifier)
    {
        WriteSeparator();
        AppendEscapedJsonString(Buffer, Identifier);
        Buffer.AppendChar(u':');
        bNeedsComma = false;
    }
    void OpenScope(TCHAR Bracket)
    {
        if (bNeedsComma)
        {
            Buffer.AppendChar(u',');
        }
        Buffer.AppendChar(Bracket);
        Scopes.push_back(Bracket);
        bNeedsComma = false;
    }
    void CloseScope(TCHAR Bracket)
    {
        if (!Scopes.empty())
        {
            Scopes.pop_back();
        }
        Buffer.AppendChar(Bracket);
        bNeedsComma = true;
    }

    void WriteValueOnly(const FString& Value)
    {
        Finish([&] { AppendEscapedJsonString(Buffer, Value); });
    }
    void WriteValueOnly(const TCHAR* Value) { WriteValueOnly(FString(Value)); }
    void WriteValueOnly(bool Value)
    {
        Finish([&] { Buffer.Append(Value ? TEXT("true") : TEXT("false")); });
    }
    void WriteValueOnly(int32 Value)
    {
        Finish([&] { Buffer.AppendInt(Value); });
    }
    void WriteValueOnly(int64 Value)
    {
        Finish([&] { Buffer.Append(FString::FromUTF8(std::to_string(Value))); });
    }
    void WriteValueOnly(double Value)
    {
        Finish([&] { AppendJsonNumber(Buffer, Value); });
    }
    void WriteValueOnly(float Value) { WriteValueOnly(static_cast<double>(Value)); }

    template <typename FunctorType> void Finish(FunctorType&& Write)
    {
        Write();
        bNeedsComma = true;
    }

    FString* Output;
    FString Buffer;
    std::vector<TCHAR> Scopes;
    bool bNeedsComma = false;
};

template <typename CharType = TCHAR, typename PrintPolicy = TCondensedJsonPrintPolicy<CharType>>
class TJsonWriterFactory
{
public:
    static TSharedRef<TJsonWriter<CharType, PrintPolicy>> Create(FString* Output)
    {
        return MakeShared<TJsonWriter<CharType, PrintPolicy>>(Output);
    }
};
