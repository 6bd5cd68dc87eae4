#pragma once

#include "SpeechFeatures.h"

#include <array>

namespace LipsyncEngine
{

// One frame's features relative to the speaker and the recording.
struct FNormalisedFeatures
{
    // dB below the loudness of the speaker's recent vowels (0 at a typical vowel).
    float Level = -60.0f;
    // dB above the recording's noise floor.
    float AboveFloor = 0.0f;
    // Log-formant z-scores against the speaker's own vowel space (Lobanov), 0 when a
    // formant was not found.
    float Z1 = 0.0f;
    float Z2 = 0.0f;
    float Z3 = 0.0f;
    // Spectral tilt against the speaker's vowels: positive is steeper.
    float TiltZ = 0.0f;
    // Change of Z2 over the last 50 ms: rounding lowers F2.
    float F2Slope = 0.0f;
    // Drop below the loudest frame of the last 100 ms: closures show as dips.
    float Dip = 0.0f;
    float LowBandDb = 0.0f;
    float HighBandDb = 0.0f;
    float ZeroCrossingRate = 0.0f;
    bool bVoiced = false;
};

// Keeps running estimates of the speaker's level, noise floor, vowel space (F1,
// F2, F3) and spectral tilt, starting from an average adult and adapting within a
// few seconds of speech.
class FSpeakerNormaliser
{
public:
    FSpeakerNormaliser() { RecentEnergy.fill(-120.0f); }

    FNormalisedFeatures Normalise(const FSpeechFeatures& Features);

private:
    struct FRunning
    {
        float Mean;
        float Variance;
        void Update(float Value, float Rate);
        float Z(float Value) const;
    };

    void TrackLevel(float EnergyDb);
    bool IsVowelLike(const FSpeechFeatures& Features) const;

    float Peak = -30.0f;
    float Floor = -90.0f;
    float VowelFrames = 0.0f;
    std::array<FRunning, 3> LogFormants = {{{6.2f, 0.09f}, {7.3f, 0.09f}, {7.85f, 0.02f}}};
    FRunning TiltStats = {0.85f, 0.01f};
    std::array<float, 5> RecentZ2{};
    std::array<float, 10> RecentEnergy{};
    std::size_t Cursor = 0;
};

} // namespace LipsyncEngine
