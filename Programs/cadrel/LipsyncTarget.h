#pragma once

#include "CadrelBlendShapeType.h"
#include "CoreMinimal.h"
#include "LipsyncAnswer.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <string>

class IEmbeddedLipsyncServer;

// Where lipsync requests go, as the user asked on the command line.
struct FTargetOptions
{
    // "cloud" or "a2f".
    std::string Server = "cloud";
    // Empty: the embedded reference server on a free loopback port.
    std::string URL;
    std::string Token;
};

void AddTargetOptions(CLI::App& Command, FTargetOptions& Options);

// Points the module at the chosen server for this run. The module reads its
// endpoints from the settings' A2FURL and the engine configuration's cloud base
// URL; both are changed in memory only, so the user's saved files stay as they are.
class FLipsyncTarget
{
public:
    FLipsyncTarget();
    ~FLipsyncTarget();
    FLipsyncTarget(const FLipsyncTarget&) = delete;
    FLipsyncTarget& operator=(const FLipsyncTarget&) = delete;

    // Starts the embedded server when no URL was given. False, with one line in
    // OutError, for a URL the module cannot use or a server that cannot start.
    bool Start(const FTargetOptions& Options, std::string& OutError);

    EBlendShapeType GetServerType() const { return ServerType; }
    EAnswerFormat GetAnswerFormat() const;
    const FString& GetToken() const { return Token; }
    // The base URL requests go to.
    const std::string& GetBaseURL() const { return BaseURL; }

private:
    std::unique_ptr<IEmbeddedLipsyncServer> Embedded;
    EBlendShapeType ServerType = EBlendShapeType::VIRETHIO;
    FString Token;
    std::string BaseURL;
};
