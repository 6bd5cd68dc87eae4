#include "FeatureNormaliser.h"

#include <algorithm>

namespace LipsyncEngine
{
namespace
{
// The loud-speech level sinks 3 dB a second when nothing reaches it; the noise
// floor follows quiet frames down at once and creeps up 1 dB a second, so it finds
// the room between words.
constexpr float PeakReleaseDbPerFrame = 0.03f;
constexpr float FloorRiseDbPerFrame = 0.01f;
// Frames this far above the floor are speech and teach the average shape, over
// about two seconds once it has seen that much.
constexpr float SpeechAboveFloorDb = 10.0f;
constexpr float ShapeMemoryFrames = 200.0f;
constexpr float LevelRangeDb = 50.0f;
constexpr float DbScale = 0.05f;
constexpr float ShapeScale = 0.1f;
} // namespace

void FFeatureNormaliser::TrackLevel(float EnergyDb)
{
    if (!bStarted)
    {
        Peak = Floor = EnergyDb;
        bStarted = true;
    }
    Peak = std::max(EnergyDb, Peak - PeakReleaseDbPerFrame);
    Floor = std::min(EnergyDb, Floor + FloorRiseDbPerFrame);
    Level = std::clamp(EnergyDb - Peak, -LevelRangeDb, 0.0f);
    AboveFloor = std::clamp(EnergyDb - Floor, 0.0f, LevelRangeDb);
}

FFrameFeatures FFeatureNormaliser::Normalise(const FMelFrame& Frame)
{
    TrackLevel(Frame.EnergyDb);
    float BandMean = 0.0f;
    for (float Band : Frame.BandsDb)
    {
        BandMean += Band;
    }
    BandMean /= NumMelBands;

    const bool bSpeech = AboveFloor > SpeechAboveFloorDb;
    if (bSpeech)
    {
        SpeechFrames = std::min(SpeechFrames + 1.0f, ShapeMemoryFrames);
    }
    FFrameFeatures Features{};
    for (std::size_t Band = 0; Band < NumMelBands; ++Band)
    {
        const float Shape = Frame.BandsDb[Band] - BandMean;
        if (bSpeech)
        {
            MeanShape[Band] += (Shape - MeanShape[Band]) / SpeechFrames;
        }
        Features[Band] = ShapeScale * (Shape - MeanShape[Band]);
    }
    Features[LevelFeature] = DbScale * Level;
    Features[AboveFloorFeature] = DbScale * AboveFloor;
    return Features;
}

} // namespace LipsyncEngine
