#include "RequestCommand.h"

#include "CadrelJson.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace
{
// The names the server knows, in the enumeration's order.
const std::vector<std::string> EmotionNames = {
    "angry",  "calm",   "curious",      "disgust",  "doubt",    "dreamy",     "embarrassment",
    "fear",   "flirt",  "happy",        "playful",  "positive", "resentment", "shame",
    "sorrow", "strict", "supplication", "surprise", "wrath",
};
const std::vector<std::string> RigTypeNames = {"vireth", "custom"};

uint8 IndexOf(const std::vector<std::string>& Names, const std::string& Name)
{
    const auto Found = std::find(Names.begin(), Names.end(), Name);
    return static_cast<uint8>(Found - Names.begin());
}

std::string CheckGuid(const std::string& Text)
{
    FGuid Parsed;
    return FGuid::Parse(FString::FromUTF8(Text), Parsed) ? std::string() : "not a GUID: " + Text;
}
} // namespace

FRequestCommand::FRequestCommand(CLI::App& Parent)
{
    CLI::App* Command = Parent.add_subcommand(
        "request", "Print the JSON document a lipsync request sends (the default command).");
    // As a transform, IsMember replaces the given name by the table's spelling, which IndexOf relies on.
    Command->add_option("--emotion", Emotion, "Emotion the animation is to express")
        ->transform(CLI::IsMember(EmotionNames, CLI::ignore_case))
        ->capture_default_str();
    Command->add_option("--rig", RigType, "Kind of face rig the animation is for")
        ->transform(CLI::IsMember(RigTypeNames, CLI::ignore_case))
        ->capture_default_str();
    Command->add_option("--id", Id, "Request identifier, 32 hexadecimal digits (default: a new one)")
        ->check(CLI::Validator(CheckGuid, "GUID"));
    Command->add_flag("--eyes", bEyeMovement, "Ask for captured eye movement");
    Command->add_flag("--neck", bNeckMovement, "Ask for captured neck movement");
}

int FRequestCommand::Run() const
{
    FCadrelZELRequest Request;
    FCadrelZELInfo& Zel = Request.Data.Attributes.Zel;
    Zel.ExplicitEmotion = static_cast<ECadrelExplicitEmotion>(IndexOf(EmotionNames, Emotion));
    Zel.RigType = static_cast<ECadrelRigType>(IndexOf(RigTypeNames, RigType));
    Zel.EyeMovementParameters.bEyeMovementMode = bEyeMovement;
    Zel.NeckMovementParameters.bNeckMovementMode = bNeckMovement;
    if (!Id.empty())
    {
        FGuid::Parse(FString::FromUTF8(Id), Request.Data.ID);
    }

    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    const std::string Document = Json.ToUTF8() + "\n";
    if (std::fwrite(Document.data(), 1, Document.size(), stdout) != Document.size() ||
        std::fflush(stdout) != 0)
    {
        std::fprintf(stderr, "cadrel: cannot write the request document to standard output\n");
        return 1;
    }
    return 0;
}
