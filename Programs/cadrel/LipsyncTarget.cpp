#include "LipsyncTarget.h"

#include "CadrelServersModule.h"
#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

namespace
{
bool HasHttpScheme(const std::string& URL)
{
    const FString Text = FString::FromUTF8(URL);
    return Text.StartsWith(TEXT("http://")) || Text.StartsWith(TEXT("https://"));
}

// The cloud paths are appended with their own '/'.
std::string WithoutTrailingSlashes(std::string URL)
{
    while (!URL.empty() && URL.back() == '/')
    {
        URL.pop_back();
    }
    return URL;
}
} // namespace

void AddTargetOptions(CLI::App& Command, FTargetOptions& Options)
{
    Command
        .add_option(
            "--server", Options.Server,
            "Kind of server: cloud (the lipsync service's answer) or a2f (an Audio2Face bridge's export)")
        ->check(CLI::IsMember({"cloud", "a2f"}))
        ->capture_default_str();
    Command.add_option("--url", Options.URL,
                       "Base URL of a running server (default: start the embedded server on a free port)");
    Command.add_option("--token", Options.Token,
                       "Access token sent in Authorization (default with --url: the saved settings' Token)");
}

FLipsyncTarget::FLipsyncTarget() = default;

FLipsyncTarget::~FLipsyncTarget() = default;

EAnswerFormat FLipsyncTarget::GetAnswerFormat() const
{
    return ServerType == EBlendShapeType::AUDIO2FACE ? EAnswerFormat::Audio2Face : EAnswerFormat::Cloud;
}

bool FLipsyncTarget::Start(const FTargetOptions& Options, std::string& OutError)
{
    ServerType = Options.Server == "a2f" ? EBlendShapeType::AUDIO2FACE : EBlendShapeType::VIRETHIO;
    UCadrelSetting& Settings = *GetMutableDefault<UCadrelSetting>();
    if (Options.URL.empty())
    {
        FLipsyncServerOptions ServerOptions;
        ServerOptions.Port = 0;
        ServerOptions.bQuiet = true;
        ICadrelServersModule* const Servers = LoadCadrelServers(OutError);
        Embedded = Servers ? Servers->StartLipsyncServer(ServerOptions, OutError) : nullptr;
        if (!Embedded)
        {
            OutError = "cannot start the embedded server: " + OutError;
            return false;
        }
        BaseURL = Embedded->BaseUrl();
    }
    else if (!HasHttpScheme(Options.URL))
    {
        OutError = "--url " + Options.URL + ": only http:// and https:// URLs can be used";
        return false;
    }
    else
    {
        BaseURL = WithoutTrailingSlashes(Options.URL);
        // Reading only; the module's start-up, which writes the file back, is not run.
        Settings.LoadZELSettingsConfig();
        Token = Settings.Token;
    }
    if (!Options.Token.empty())
    {
        Token = FString::FromUTF8(Options.Token);
    }
    Settings.A2FURL = FString::FromUTF8(BaseURL);
    GConfig->SetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), Settings.A2FURL, GEngineIni);
    return true;
}
