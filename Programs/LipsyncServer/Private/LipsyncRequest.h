#pragma once

#include "MultipartForm.h"
#include "RequestDocument.h"
#include "RequestError.h"
#include "WavReader.h"

#include <httplib.h>

#include <string>

// One lipsync request, checked: its headers, its request document and its speech.
struct FLipsyncRequest
{
    std::string Guid;
    int Index = 0;
    int MainIndex = 0;
    bool bStream = false;
    FRequestDocument Document;
    FAudio Audio;
};

// Checks the headers and the two form parts ("json", "audio") in the order a
// client can fix them: headers, parts, document, audio. Needs no socket, so the
// fuzzer calls it as the server does.
TOrError<FLipsyncRequest> ParseLipsyncRequest(const httplib::Headers& Headers, const FForm& Form);
