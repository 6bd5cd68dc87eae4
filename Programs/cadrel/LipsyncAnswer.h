#pragma once

#include "CadrelBlendShapeType.h"
#include "CoreMinimal.h"
#include "Interfaces/IHttpResponse.h"

#include <string>

// Which reader a server's answer needs: the cloud service answers with the common
// animation, the Audio2Face bridge with a blend-shape export.
enum class EAnswerFormat : uint8
{
    Cloud,
    Audio2Face,
};

// Turns a server's answer into an animation. False, with one line in OutError that
// names the URL, for an HTTP error status, a body that is not the expected JSON,
// or an animation without frames. The codec's readers report nothing, so a body
// they could not read shows as a record still at its defaults.
bool ReadAnswer(const IHttpResponse& Response, EAnswerFormat Format, FCadrelZELResponse& OutAnimation,
                std::string& OutError);
