#include "LoudnessBaseline.h"

#include "BlendShape.h"

#include <algorithm>
#include <cmath>

namespace EngineBench
{

std::vector<LipsyncEngine::FFaceFrame> LoudnessFrames(std::span<const float> Samples, int SampleRate, int Fps)
{
    std::vector<LipsyncEngine::FFaceFrame> Frames;
    if (SampleRate <= 0 || Fps <= 0)
    {
        return Frames;
    }
    const std::size_t Count = Samples.size() * Fps / SampleRate;
    std::vector<float> Db(Count, -120.0f);
    for (std::size_t Frame = 0; Frame < Count; ++Frame)
    {
        const std::size_t Begin = Frame * SampleRate / Fps;
        const std::size_t End = std::min(Samples.size(), (Frame + 1) * SampleRate / Fps);
        double Power = 0.0;
        for (std::size_t Index = Begin; Index < End; ++Index)
        {
            Power += static_cast<double>(Samples[Index]) * Samples[Index];
        }
        Db[Frame] =
            static_cast<float>(10.0 * std::log10(Power / std::max<std::size_t>(End - Begin, 1) + 1e-12));
    }
    const float Loudest = Db.empty() ? 0.0f : *std::max_element(Db.begin(), Db.end());
    Frames.resize(Count);
    for (std::size_t Frame = 0; Frame < Count; ++Frame)
    {
        Frames[Frame].Weights[LipsyncEngine::EBlendShape::JawOpen] =
            std::clamp((Db[Frame] - Loudest + 36.0f) / 30.0f, 0.0f, 1.0f);
    }
    return Frames;
}

} // namespace EngineBench
