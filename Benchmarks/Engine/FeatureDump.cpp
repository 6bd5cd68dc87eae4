// Writes the engine's per-frame speaker-normalised features with the class of the
// phoneme in force, as CSV, for fitting the viseme classifier (fit_visemes.py).
#include "Corpus.h"
#include "Resampler.h"
#include "SpeakerNormaliser.h"
#include "SpeechFeatures.h"

#include <cstdio>
#include <string>

namespace
{
using namespace LipsyncEngine;
using namespace EngineBench;

// Classes as the classifier numbers them: the scored ones, then every other phoneme.
int ClassAt(const FTestSpeech& Speech, double Seconds)
{
    for (const FLabel& Label : Speech.Labels)
    {
        if (Seconds >= Label.StartSeconds && Seconds < Label.EndSeconds)
        {
            return static_cast<int>(Label.Class);
        }
    }
    return static_cast<int>(EMouthClass::Count);
}

void Dump(const FTestSpeech& Speech, std::FILE* Out)
{
    std::vector<float> Speech16k;
    FResampler Resampler;
    Resampler.Process(Speech.Samples, Speech.SampleRate, Speech16k);
    Resampler.Process({}, AnalysisRate, Speech16k);
    FFeatureExtractor Extractor;
    FSpeakerNormaliser Normaliser;
    for (std::size_t Start = 0; Start + WindowSamples <= Speech16k.size(); Start += HopSamples)
    {
        const FNormalisedFeatures F = Normaliser.Normalise(
            Extractor.Extract(std::span<const float>(Speech16k).subspan(Start, WindowSamples)));
        const double Centre = (Start + WindowSamples / 2.0) / AnalysisRate;
        std::fprintf(Out, "%d,%g,%g,%g,%g,%g,%g,%g,%g,%g,%g,%g,%d\n", ClassAt(Speech, Centre), F.Level,
                     F.AboveFloor, F.Z1, F.Z2, F.Z3, F.TiltZ, F.F2Slope, F.Dip, F.LowBandDb, F.HighBandDb,
                     F.ZeroCrossingRate, F.bVoiced ? 1 : 0);
    }
}
} // namespace

int main(int Argc, char** Argv)
{
    if (Argc != 2)
    {
        std::fprintf(stderr, "usage: %s OUT.csv (tuning sentences and voices only)\n", Argv[0]);
        return 2;
    }
    std::FILE* Out = std::fopen(Argv[1], "w");
    if (Out == nullptr)
    {
        std::fprintf(stderr, "cannot write %s\n", Argv[1]);
        return 1;
    }
    for (const FVoice& Voice : TuningVoices())
    {
        Dump(SpeakSentences(Voice, TuningSentences()), Out);
    }
    return std::fclose(Out) == 0 ? 0 : 1;
}
