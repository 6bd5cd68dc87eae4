#pragma once

#include "CadrelBlendShapeType.h"
#include "ModuleBody.h"
#include "TestWav.h"

#include <httplib.h>

#include <cstdint>
#include <string>
#include <vector>

// The request document exactly as the module writes it.
std::string RequestDocument(const FCadrelZELRequest& Request = FCadrelZELRequest());

// The headers the module sends with a body, "Content-Type" aside (cpp-httplib's
// client takes it separately).
httplib::Headers ModuleHeaders(std::size_t AudioSize, int Index = -1, int MainIndex = 0,
                               bool bStream = false);

inline constexpr const char* ModuleContentType = "multipart/form-data; boundary=ZELBoundary";

// Reads an answer with the module's own readers.
FCadrelZELResponse ReadCloudAnswer(const std::string& Body);
FCadrelAudio2FaceBlendShapeInfo ReadAudio2FaceExport(const std::string& Body);
FCadrelVelkInfo ReadVelkInfo(const std::string& Body);
