#include "VelkAudio.h"

#include "VelkPackets.h"

#include <soxr.h>

#include <algorithm>
#include <cmath>

namespace
{
std::int16_t ToPcm16(float Sample)
{
    const float Clamped = std::isfinite(Sample) ? std::clamp(Sample, -1.0f, 1.0f) : 0.0f;
    return std::int16_t(std::lrint(Clamped * 32767.0f));
}
} // namespace

std::vector<std::int16_t> LinkAudio(std::span<const float> Samples, int Rate, std::size_t Count)
{
    std::vector<float> Resampled;
    if (Rate == VelkPackets::AudioRate)
    {
        Resampled.assign(Samples.begin(), Samples.end());
    }
    else if (Rate > 0 && !Samples.empty())
    {
        // One shot per chunk: the chunk's sound for a listener, not for analysis, so
        // a few samples of filter edge at chunk borders do not matter.
        Resampled.resize(Count);
        std::size_t Produced = 0;
        const soxr_quality_spec_t Quality = soxr_quality_spec(SOXR_MQ, 0);
        const soxr_error_t Error =
            soxr_oneshot(double(Rate), double(VelkPackets::AudioRate), 1, Samples.data(), Samples.size(),
                         nullptr, Resampled.data(), Count, &Produced, nullptr, &Quality, nullptr);
        Resampled.resize(Error == nullptr ? Produced : 0);
    }
    Resampled.resize(Count, 0.0f);
    std::vector<std::int16_t> Pcm(Count);
    std::transform(Resampled.begin(), Resampled.end(), Pcm.begin(), ToPcm16);
    return Pcm;
}
