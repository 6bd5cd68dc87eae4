#pragma once

#include <span>
#include <vector>

typedef struct soxr* soxr_t;

namespace LipsyncEngine
{

// The engine analyses speech at this rate.
inline constexpr int AnalysisRate = 16000;

// Streams mono audio of any rate to AnalysisRate. The values it produces do not
// depend on how the input is cut into chunks.
class FResampler
{
public:
    FResampler() = default;
    ~FResampler();
    FResampler(const FResampler&) = delete;
    FResampler& operator=(const FResampler&) = delete;

    // Appends the resampled samples to Out. A new rate flushes what the previous
    // rate left in the filter first.
    void Process(std::span<const float> Samples, double SampleRate, std::vector<float>& Out);

private:
    void Drain(const float* Input, std::size_t Count, std::vector<float>& Out);
    void Close(std::vector<float>& Out);

    soxr_t Soxr = nullptr;
    double Rate = AnalysisRate;
};

} // namespace LipsyncEngine
