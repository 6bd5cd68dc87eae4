#pragma once

// A bone's rotation as the face page takes it: Unity's Euler angles in degrees, so
// positive pitch looks down and positive yaw turns toward the viewer's left.
struct FViewAngles
{
    double Pitch = 0.0;
    double Yaw = 0.0;
    double Roll = 0.0;
};

// VMC rotations use Unity's axes (left-handed, y up, z forward) and its Euler order
// (roll about z, then pitch about x, then yaw about y).
FViewAngles VmcRotationToAngles(const float (&Rotation)[4]);
