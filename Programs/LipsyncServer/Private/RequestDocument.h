#pragma once

#include "RequestError.h"

#include "FaceEngine.h"

#include <string>
#include <string_view>

// What the server takes from the request document (the form part "json"); the
// remaining fields are checked for presence and type only.
struct FRequestDocument
{
    std::string Id;
    std::string Platform;
    bool bCustomRig = false;
    LipsyncEngine::EEmotion Emotion = LipsyncEngine::EEmotion::Calm;
    bool bEyeMovement = false;
    bool bNeckMovement = false;
};

// Checks the document field by field; a refusal names the field by its path, such
// as "data.attributes.zel.explicitEmotion".
TOrError<FRequestDocument> ParseRequestDocument(std::string_view Json);
