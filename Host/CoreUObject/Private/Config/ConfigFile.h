#pragma once

#include "CoreMinimal.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// One ini file, kept line by line: a rewrite reproduces comments, blank lines,
// unknown sections and untouched entries byte for byte, and writes only the
// entries that were set.
class FConfigFile
{
public:
    struct FParseError
    {
        int32 LineNumber;
        FString Reason;
        // The offending line, shortened and with control characters replaced,
        // fit for a log line.
        FString Excerpt;
    };

    // Takes the whole text, or, at the first line it cannot parse, nothing.
    std::optional<FParseError> Parse(std::string_view Text);

    // The value of the last Key of Section, null when there is none.
    const FString* Find(const FString& Section, const FString& Key) const;

    enum class ESetResult
    {
        Unchanged,
        Changed,
        // The section or key cannot be written as ini text ('=' in a key, ']' in a
        // section name, control characters, surrounding blanks).
        Unrepresentable,
    };
    // Sets the last Key of Section, or adds it after the section's last line,
    // adding the section at the end of the file when it is missing.
    ESetResult Set(const FString& Section, const FString& Key, const FString& Value);

    std::string Serialize() const;

private:
    struct FLine
    {
        FLine() = default;
        explicit FLine(std::string InText) : Text(std::move(InText)) {}
        FLine(std::string InText, FString InKey, FString InValue)
            : Text(std::move(InText)), bEntry(true), Key(std::move(InKey)), Value(std::move(InValue))
        {
        }

        // What the file holds, without the line ending.
        std::string Text;
        bool bEntry = false;
        FString Key;
        FString Value;
    };
    struct FSection
    {
        FString Name;
        FLine Header;
        std::vector<FLine> Lines;
    };

    // The reason Line cannot be read, or null after adding it to the file.
    const TCHAR* ParseLine(std::string_view Line);
    const FLine* FindEntry(const FString& Section, const FString& Key) const;
    FSection& AddSection(const FString& Name);

    std::vector<FLine> Preamble;
    std::vector<FSection> Sections;
    bool bByteOrderMark = false;
    bool bCrLf = false;
};
