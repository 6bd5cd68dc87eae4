#include "RequestCommand.h"

#include "AnimationOptions.h"

#include "CadrelJson.h"

#include <cstdio>

namespace
{
constexpr uint8 NoEnumerator = 255;

std::string CheckRigType(const std::string& Name)
{
    const ECadrelRigType RigType = CadrelJson::GetRigType(FString::FromUTF8(Name));
    return static_cast<uint8>(RigType) == NoEnumerator ? "no such rig type: " + Name : std::string();
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
    AddAnimationOptions(*Command, Animation);
    // The codec's own name lookup decides, as for the emotion.
    Command->add_option("--rig", RigType, "Kind of face rig the animation is for: vireth or custom")
        ->check(CLI::Validator(CheckRigType, "RIG"))
        ->capture_default_str();
    Command->add_option("--id", Id, "Request identifier, 32 hexadecimal digits (default: a new one)")
        ->check(CLI::Validator(CheckGuid, "GUID"));
}

int FRequestCommand::Run() const
{
    FCadrelZELRequest Request;
    ApplyAnimationOptions(Animation, Request);
    Request.Data.Attributes.Zel.RigType = CadrelJson::GetRigType(FString::FromUTF8(RigType));
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
