#include "Config/ConfigFile.h"

#include "Config/ConfigValueText.h"

#include <algorithm>
#include <utf8.h>

namespace
{
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr int32 MaxExcerptLength = 60;

bool IsControlByte(char Byte)
{
    const unsigned char Unit = static_cast<unsigned char>(Byte);
    return (Unit < 0x20 && Unit != '\t') || Unit == 0x7F;
}

std::string_view Trim(std::string_view Text)
{
    const SIZE_T First = Text.find_first_not_of(" \t");
    if (First == std::string_view::npos)
    {
        return {};
    }
    return Text.substr(First, Text.find_last_not_of(" \t") - First + 1);
}

bool IsBlankLine(const std::string& Text)
{
    return Trim(Text).empty();
}

FString Excerpt(std::string_view Line)
{
    FString Text = FString::FromUTF8(Line).Left(MaxExcerptLength);
    for (int32 Index = 0; Index < Text.Len(); ++Index)
    {
        if (Text[Index] < 0x20 || Text[Index] == 0x7F)
        {
            Text[Index] = u'?';
        }
    }
    return Text;
}

// Whether Name can be written so that the reader, which trims blanks and stops
// at Forbidden characters, gives it back.
bool IsRepresentableName(const FString& Name, std::u16string_view Forbidden)
{
    if (Name.IsEmpty() || Name[0] == u' ' || Name[0] == u'\t' || Name[Name.Len() - 1] == u' ' ||
        Name[Name.Len() - 1] == u'\t')
    {
        return false;
    }
    return std::none_of(Name.View().begin(), Name.View().end(),
                        [Forbidden](TCHAR Char) {
                            return Char < 0x20 || Char == 0x7F ||
                                   Forbidden.find(Char) != std::u16string_view::npos;
                        });
}

bool IsRepresentableKey(const FString& Key)
{
    return IsRepresentableName(Key, u"=") && Key[0] != u'[' && Key[0] != u';' && Key[0] != u'#';
}

std::string FormatEntry(const FString& Key, const FString& Value)
{
    return (Key + TEXT("=") + ConfigValueText::QuoteIfNeeded(Value)).ToUTF8();
}
} // namespace

std::optional<FConfigFile::FParseError> FConfigFile::Parse(std::string_view Text)
{
    *this = FConfigFile();
    FConfigFile Result;
    if (Text.starts_with(ByteOrderMark))
    {
        Result.bByteOrderMark = true;
        Text.remove_prefix(ByteOrderMark.size());
    }
    const auto Invalid = utf8::find_invalid(Text.begin(), Text.end());
    const int32 InvalidLine =
        Invalid == Text.end() ? INDEX_NONE : 1 + static_cast<int32>(std::count(Text.begin(), Invalid, '\n'));

    int32 LineNumber = 0;
    for (SIZE_T Pos = 0; Pos < Text.size();)
    {
        const SIZE_T End = std::min(Text.find('\n', Pos), Text.size());
        std::string_view Line = Text.substr(Pos, End - Pos);
        Pos = End + 1;
        ++LineNumber;
        if (Line.ends_with('\r'))
        {
            Line.remove_suffix(1);
            Result.bCrLf |= LineNumber == 1;
        }
        const TCHAR* Reason = LineNumber == InvalidLine ? TEXT("invalid UTF-8") : Result.ParseLine(Line);
        if (Reason)
        {
            return FParseError{LineNumber, Reason, Excerpt(Line)};
        }
    }
    *this = std::move(Result);
    return std::nullopt;
}

const TCHAR* FConfigFile::ParseLine(std::string_view Line)
{
    if (std::any_of(Line.begin(), Line.end(), IsControlByte))
    {
        return TEXT("control character");
    }
    const std::string_view Trimmed = Trim(Line);
    FLine Parsed(std::string{Line});
    if (Trimmed.empty() || Trimmed[0] == ';' || Trimmed[0] == '#')
    {
        (Sections.empty() ? Preamble : Sections.back().Lines).push_back(std::move(Parsed));
        return nullptr;
    }
    if (Trimmed[0] == '[')
    {
        const std::string_view Name = Trimmed.size() > 1 ? Trim(Trimmed.substr(1, Trimmed.size() - 2)) : "";
        if (!Trimmed.ends_with(']') || Name.empty() || Name.find_first_of("[]") != std::string_view::npos)
        {
            return TEXT("broken section header");
        }
        Sections.push_back(FSection{FString::FromUTF8(Name), std::move(Parsed), {}});
        return nullptr;
    }
    const SIZE_T Equals = Trimmed.find('=');
    if (Equals == std::string_view::npos)
    {
        return TEXT("no '=' after the key");
    }
    const std::string_view Key = Trim(Trimmed.substr(0, Equals));
    if (Key.empty())
    {
        return TEXT("no key before '='");
    }
    if (Sections.empty())
    {
        return TEXT("key outside a section");
    }
    if (!ConfigValueText::Unquote(FString::FromUTF8(Trim(Trimmed.substr(Equals + 1))), Parsed.Value))
    {
        return TEXT("unterminated quoted value");
    }
    Parsed.bEntry = true;
    Parsed.Key = FString::FromUTF8(Key);
    Sections.back().Lines.push_back(std::move(Parsed));
    return nullptr;
}

const FConfigFile::FLine* FConfigFile::FindEntry(const FString& Section, const FString& Key) const
{
    const FLine* Found = nullptr;
    for (const FSection& Candidate : Sections)
    {
        if (!(Candidate.Name == Section))
        {
            continue;
        }
        for (const FLine& Line : Candidate.Lines)
        {
            if (Line.bEntry && Line.Key == Key)
            {
                Found = &Line;
            }
        }
    }
    return Found;
}

const FString* FConfigFile::Find(const FString& Section, const FString& Key) const
{
    const FLine* Entry = FindEntry(Section, Key);
    return Entry ? &Entry->Value : nullptr;
}

FConfigFile::ESetResult FConfigFile::Set(const FString& Section, const FString& Key, const FString& Value)
{
    if (!IsRepresentableName(Section, u"[]") || !IsRepresentableKey(Key))
    {
        return ESetResult::Unrepresentable;
    }
    if (FLine* Entry = const_cast<FLine*>(FindEntry(Section, Key)))
    {
        if (Entry->Value.Equals(Value, ESearchCase::CaseSensitive))
        {
            return ESetResult::Unchanged;
        }
        Entry->Value = Value;
        Entry->Text = FormatEntry(Entry->Key, Value);
        return ESetResult::Changed;
    }
    const auto Existing =
        std::find_if(Sections.rbegin(), Sections.rend(),
                     [&Section](const FSection& Candidate) { return Candidate.Name == Section; });
    FSection& Target = Existing != Sections.rend() ? *Existing : AddSection(Section);
    // After the section's last non-blank line, so that the blank line that
    // separates it from the next section stays where it is.
    const auto LastFilled = std::find_if(Target.Lines.rbegin(), Target.Lines.rend(),
                                         [](const FLine& Line) { return !IsBlankLine(Line.Text); });
    Target.Lines.insert(LastFilled.base(), FLine(FormatEntry(Key, Value), Key, Value));
    return ESetResult::Changed;
}

FConfigFile::FSection& FConfigFile::AddSection(const FString& Name)
{
    std::vector<FLine>& Before = Sections.empty() ? Preamble : Sections.back().Lines;
    const std::string& LastText = !Before.empty()     ? Before.back().Text
                                  : !Sections.empty() ? Sections.back().Header.Text
                                                      : std::string();
    if ((!Before.empty() || !Sections.empty()) && !IsBlankLine(LastText))
    {
        Before.push_back(FLine{});
    }
    Sections.push_back(FSection{Name, FLine((TEXT("[") + Name + TEXT("]")).ToUTF8()), {}});
    return Sections.back();
}

std::string FConfigFile::Serialize() const
{
    const std::string_view LineEnd = bCrLf ? "\r\n" : "\n";
    std::string Text(bByteOrderMark ? ByteOrderMark : "");
    const auto AppendLine = [&Text, LineEnd](const FLine& Line)
    {
        Text += Line.Text;
        Text += LineEnd;
    };
    std::for_each(Preamble.begin(), Preamble.end(), AppendLine);
    for (const FSection& Section : Sections)
    {
        AppendLine(Section.Header);
        std::for_each(Section.Lines.begin(), Section.Lines.end(), AppendLine);
    }
    return Text;
}
