#include "SettingsCommand.h"

#include "HostLogCapture.h"

#include "HttpModule.h"
#include "Misc/ConfigCacheIni.h"
#include "Modules/ModuleManager.h"
#include "Setting/CadrelSetting.h"
#include "UObject/Class.h"

#include <cstdio>

namespace
{
// The file and section that the settings object reads and writes.
struct FSettingsLocation
{
    std::string Path;
    FString File;
    FString Section;
};

FSettingsLocation LocateSettings()
{
    const UClass* const Class = UCadrelSetting::StaticClass();
    FString File = FPaths::ProjectConfigDir();
    File.PathAppend(TEXT("Default"), 7);
    File += Class->GetConfigName() + TEXT(".ini");
    return FSettingsLocation{File.ToUTF8(), File, Class->GetPathName()};
}

// The settings members, in declaration order; a new config member shows up here unasked.
TArray<FProperty*> SettingProperties()
{
    TArray<FProperty*> Properties;
    for (FProperty* Property : UCadrelSetting::StaticClass()->GetProperties())
    {
        if (Property->IsConfig())
        {
            Properties.Add(Property);
        }
    }
    return Properties;
}

std::string KeyList()
{
    std::string Keys;
    for (const FProperty* Property : SettingProperties())
    {
        Keys += (Keys.empty() ? "" : ", ") + Property->GetName().ToUTF8();
    }
    return Keys;
}

std::string DescribeExpected(const FProperty& Property)
{
    return Property.GetKind() == EPropertyKind::Int64
               ? "a whole number from -9223372036854775808 to 9223372036854775807"
               : "a value of its type";
}

std::string ValueOf(const FProperty& Property, const UCadrelSetting& Settings)
{
    FString Text;
    Property.ExportValueText(static_cast<const UObject*>(&Settings), Text);
    return Text.ToUTF8();
}

// What the file held for one member before the module's start-up read it.
struct FStoredValue
{
    FProperty* Property;
    bool bInFile = false;
    FString Text;
};

TArray<FStoredValue> ReadStoredValues(const FSettingsLocation& Location)
{
    TArray<FStoredValue> Stored;
    for (FProperty* Property : SettingProperties())
    {
        FString Text;
        const bool bInFile = GConfig->GetString(Location.Section, Property->GetName(), Text, Location.File);
        Stored.Add(FStoredValue{Property, bInFile, Text});
    }
    return Stored;
}

// Loads the module as the editor does; its start-up reads the settings and
// writes them straight back.
bool StartModule()
{
    return FModuleManager::Get().LoadModule(TEXT("CadrelBlendShape")) != nullptr;
}

std::string Reason(const FHostLogCapture& Capture, const std::string& Fallback)
{
    return Capture.GetFirstProblem().IsEmpty() ? Fallback : Capture.GetFirstProblem().ToUTF8();
}

int Fail(FHostLogCapture& Capture, const std::string& Message)
{
    Capture.Stop();
    std::fprintf(stderr, "cadrel: %s\n", Message.c_str());
    return 1;
}

bool WriteOut(const std::string& Text)
{
    return std::fwrite(Text.data(), 1, Text.size(), stdout) == Text.size() && std::fflush(stdout) == 0;
}
} // namespace

FSettingsCommand::FSettingsCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "settings",
        "Print the plug-in's settings (Config/DefaultCadrel.ini of $ORVANE_PROJECT_DIR, else of the "
        "working directory) and where each came from.");
    Command->add_flag("--host-log", bHostLog, "Show the host's log lines as they happen");
    SetCommand = Command->add_subcommand("set", "Change one setting and save it.");
    SetCommand->fallthrough();
    // Keys and values are checked in Run, so that a mistake costs one line of output.
    SetCommand->add_option("key", Key, "A2FURL, Token or TimeStamp")->required();
    SetCommand->add_option("value", Value, "The new value; TimeStamp takes a whole number")->required();
}

int FSettingsCommand::Run() const
{
    return SetCommand->parsed() ? Set() : Show();
}

int FSettingsCommand::Show() const
{
    FHostLogCapture Capture(bHostLog);
    const FSettingsLocation Location = LocateSettings();
    const TArray<FStoredValue> Stored = ReadStoredValues(Location);
    if (!StartModule())
    {
        return Fail(Capture, "cannot load module CadrelBlendShape: " + Reason(Capture, "no reason given"));
    }
    // False when the file could not be read, or start-up could not write it back.
    const bool bFileUsable = GConfig->Flush(false, Location.File);
    std::string Problem = bFileUsable ? std::string() : Reason(Capture, "cannot save " + Location.Path);

    const UCadrelSetting& Settings = *GetDefault<UCadrelSetting>();
    std::string Text = "# " + Location.Path + " [" + Location.Section.ToUTF8() + "]\n";
    for (const FStoredValue& Value : Stored)
    {
        const std::string Key = Value.Property->GetName().ToUTF8();
        std::string Origin = "default";
        if (Value.bInFile && Value.Property->IsValidValueText(Value.Text))
        {
            Origin = "from the file";
        }
        else if (Value.bInFile)
        {
            Origin = "default; the file's \"" + Value.Text.ToUTF8() + "\" is not usable";
            if (Problem.empty())
            {
                Problem = Location.Path + ": " + Key + "=" + Value.Text.ToUTF8() + " is not " +
                          DescribeExpected(*Value.Property) + "; the default is in effect";
            }
        }
        Text += Key + "=" + ValueOf(*Value.Property, Settings) + "  # " + Origin + "\n";
    }
    const FHttpManager& Http = FHttpModule::Get().GetHttpManager();
    Text += "# HTTP flush time limits after start-up: soft " +
            FString::SanitizeFloat(Http.GetFlushSoftTimeLimit()).ToUTF8() + " s, hard " +
            FString::SanitizeFloat(Http.GetFlushHardTimeLimit()).ToUTF8() + " s\n";

    Capture.Stop();
    if (!WriteOut(Text))
    {
        return Fail(Capture, "cannot write the settings to standard output");
    }
    return Problem.empty() ? 0 : Fail(Capture, Problem);
}

int FSettingsCommand::Set() const
{
    FHostLogCapture Capture(bHostLog);
    FProperty* const Property =
        UCadrelSetting::StaticClass()->FindPropertyByName(FName(FString::FromUTF8(Key)));
    if (!Property || !Property->IsConfig())
    {
        return Fail(Capture, "unknown setting \"" + Key + "\"; the settings are " + KeyList());
    }
    const std::string Name = Property->GetName().ToUTF8();
    const FString NewText = FString::FromUTF8(Value);
    if (!Property->IsValidValueText(NewText))
    {
        return Fail(Capture, Name + " must be " + DescribeExpected(*Property) + ", not \"" + Value + "\"");
    }

    const FSettingsLocation Location = LocateSettings();
    if (!StartModule())
    {
        return Fail(Capture, "cannot load module CadrelBlendShape: " + Reason(Capture, "no reason given"));
    }
    // An unreadable file is never overwritten, so nothing set now could be kept.
    if (!GConfig->Flush(false, Location.File))
    {
        return Fail(Capture, "cannot set " + Name + ": " + Reason(Capture, "cannot save " + Location.Path));
    }

    UCadrelSetting& Settings = *GetMutableDefault<UCadrelSetting>();
    Property->ImportValueText(NewText, static_cast<UObject*>(&Settings));
    Settings.SaveZELSettingsConfig();

    const std::string Expected = ValueOf(*Property, Settings);
    FString Saved;
    GConfig->GetString(Location.Section, Property->GetName(), Saved, Location.File);
    if (Saved.ToUTF8() != Expected)
    {
        // The host keeps a value it cannot read as the user wrote it.
        return Fail(Capture, "cannot set " + Name + ": " + Location.Path + " holds " + Name + "=" +
                                 Saved.ToUTF8() + ", which is not " + DescribeExpected(*Property) +
                                 " and is kept as written; correct or remove that line first");
    }
    if (!GConfig->Flush(false, Location.File))
    {
        return Fail(Capture, "cannot save " + Name + ": " + Reason(Capture, "cannot write " + Location.Path));
    }
    Capture.Stop();
    return WriteOut(Name + "=" + Expected + " saved to " + Location.Path + "\n")
               ? 0
               : Fail(Capture, "cannot write to standard output");
}
