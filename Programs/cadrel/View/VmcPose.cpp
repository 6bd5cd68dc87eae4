#include "VmcPose.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double DegreesPerRadian = 180.0 / 3.14159265358979323846;
}

FViewAngles VmcRotationToAngles(const float (&Rotation)[4])
{
    const double X = Rotation[0];
    const double Y = Rotation[1];
    const double Z = Rotation[2];
    const double W = Rotation[3];
    // Unity composes q = yaw * pitch * roll; these undo that composition.
    const double SinPitch = std::clamp(2.0 * (W * X - Y * Z), -1.0, 1.0);
    const double Pitch = std::asin(SinPitch);
    const double Yaw = std::atan2(2.0 * (W * Y + X * Z), 1.0 - 2.0 * (X * X + Y * Y));
    const double Roll = std::atan2(2.0 * (W * Z + X * Y), 1.0 - 2.0 * (X * X + Z * Z));
    return FViewAngles{Pitch * DegreesPerRadian, Yaw * DegreesPerRadian, Roll * DegreesPerRadian};
}
