#pragma once

#include "CoreMinimal.h"
#include "JsonGlobals.h"

#include <memory>
#include <string_view>
#include <type_traits>

// The whole input of a reader as UTF-8, followed by spare zero bytes that the
// parser's wide loads may touch, so it parses in place without another copy.
class JSON_API FJsonReaderSource
{
public:
    static constexpr SIZE_T Padding = 64;

    const char* GetUtf8() const { return Buffer.get(); }
    SIZE_T GetUtf8Length() const { return Length; }

    // Why the last deserialisation failed; empty after a success.
    const FString& GetErrorMessage() const { return ErrorMessage; }
    void SetErrorMessage(FString Message) { ErrorMessage = std::move(Message); }

protected:
    // Lone surrogates become U+FFFD, as everywhere the host turns text into UTF-8.
    explicit FJsonReaderSource(std::u16string_view Text);
    // The bytes are taken as they are; the parser rejects invalid UTF-8.
    explicit FJsonReaderSource(std::string_view Utf8);

private:
    std::unique_ptr<char[]> Buffer;
    SIZE_T Length = 0;
    FString ErrorMessage;
};

// A reader over one whole JSON text, either host text (TCHAR) or UTF-8 bytes
// (UTF8CHAR) such as an HTTP body, which then skips the round trip through UTF-16.
template <typename CharType = TCHAR> class TJsonReader : public FJsonReaderSource
{
    static_assert(std::is_same_v<CharType, TCHAR> || std::is_same_v<CharType, UTF8CHAR>,
                  "JSON is read from TCHAR text or UTF-8 bytes");

public:
    explicit TJsonReader(std::basic_string_view<CharType> Text) : FJsonReaderSource(Text) {}
};

template <typename CharType = TCHAR> class TJsonReaderFactory;

template <> class TJsonReaderFactory<TCHAR>
{
public:
    static TSharedRef<TJsonReader<TCHAR>> Create(const FString& JsonString)
    {
        return MakeShared<TJsonReader<TCHAR>>(JsonString.View());
    }
};

template <> class TJsonReaderFactory<UTF8CHAR>
{
public:
    static TSharedRef<TJsonReader<UTF8CHAR>> Create(const TArray<uint8>& Utf8Bytes)
    {
        return Create(std::string_view(reinterpret_cast<const char*>(Utf8Bytes.GetData()),
                                       static_cast<SIZE_T>(Utf8Bytes.Num())));
    }
    static TSharedRef<TJsonReader<UTF8CHAR>> Create(std::string_view Utf8)
    {
        return MakeShared<TJsonReader<UTF8CHAR>>(Utf8);
    }
};
