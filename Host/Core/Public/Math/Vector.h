#pragma once

#include "CoreTypes.h"

// Three double-precision components; a default-constructed vector is zero.
struct FVector
{
    double X = 0.0;
    double Y = 0.0;
    double Z = 0.0;

    FVector() = default;
    explicit FVector(double InF) : X(InF), Y(InF), Z(InF) {}
    FVector(double InX, double InY, double InZ) : X(InX), Y(InY), Z(InZ) {}

    bool operator==(const FVector& Other) const = default;

    static const FVector ZeroVector;
};

inline const FVector FVector::ZeroVector{0.0, 0.0, 0.0};
