// Writes the engine's normalised frame features of every take in a corpus list
// (PATH.wav gives PATH.features: float32, one row of NumFrameFeatures per 10 ms
// frame), for tools/engine-training/train.py. The features come from the engine's
// own code, so training sees exactly what the engine computes.
#include "FeatureNormaliser.h"
#include "LabelledTakes.h"
#include "MelSpectrum.h"
#include "Resampler.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace
{
using namespace LipsyncEngine;
using namespace EngineBench;

bool Dump(const FTake& Take)
{
    std::vector<float> Clean(Take.Speech.Samples.size());
    std::transform(Take.Speech.Samples.begin(), Take.Speech.Samples.end(), Clean.begin(),
                   [](float Sample) { return std::clamp(Sample, -1.0f, 1.0f); });
    std::vector<float> Speech16k;
    FResampler Resampler;
    Resampler.Process(Clean, Take.Speech.SampleRate, Speech16k);
    Resampler.Process({}, AnalysisRate, Speech16k);
    FMelAnalyser Analyser;
    FFeatureNormaliser Normaliser;
    const std::string OutPath = Take.Path + ".features";
    std::FILE* Out = std::fopen(OutPath.c_str(), "wb");
    if (Out == nullptr)
    {
        std::fprintf(stderr, "cannot write %s\n", OutPath.c_str());
        return false;
    }
    for (std::size_t Start = 0; Start + WindowSamples <= Speech16k.size(); Start += HopSamples)
    {
        const FFrameFeatures Features = Normaliser.Normalise(
            Analyser.Analyse(std::span<const float>(Speech16k).subspan(Start, WindowSamples)));
        std::fwrite(Features.data(), sizeof(float), Features.size(), Out);
    }
    return std::fclose(Out) == 0;
}
} // namespace

int main(int Argc, char** Argv)
{
    if (Argc != 2)
    {
        std::fprintf(stderr, "usage: %s LIST (one take path per line, without .wav)\n", Argv[0]);
        return 2;
    }
    bool bAllWritten = true;
    for (const std::string& Path : ReadTakeList(Argv[1]))
    {
        FTake Take;
        bAllWritten = ReadTake(Path, Take) && Dump(Take) && bAllWritten;
    }
    return bAllWritten ? 0 : 1;
}
