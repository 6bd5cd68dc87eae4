#pragma once

#include "FaceEngine.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// Where a stream's live animation goes, and how long the chunk played.
struct FVelkInfo
{
    std::string Host;
    int VelkPort = 0;
    int AudioPort = 0;
    std::int64_t TimeLengthMs = 0;
};

using FFrames = std::span<const LipsyncEngine::FFaceFrame>;

// The lipsync answer: version, platform, fps, frames with "blendshapes" and
// "bones" ({"eul":[x,y,z]} per bone), blendShapesNames, bonesNames. The three bones
// are always listed, still (zero) when no movement was asked for, so every answer
// has the same shape.
std::string WriteCloudAnswer(FFrames Frames, int Fps, std::string_view Platform,
                             const std::optional<FVelkInfo>& Velk);

// The Audio2Face blend-shape export: exportFps, trackPath, numPoses, numFrames,
// facsNames and weightMat (one row per frame, one column per name).
std::string WriteAudio2FaceExport(FFrames Frames, int Fps, std::string_view TrackPath,
                                  const std::optional<FVelkInfo>& Velk);
