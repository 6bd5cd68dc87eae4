#include "Resampler.h"

#include <soxr.h>

namespace LipsyncEngine
{

FResampler::~FResampler()
{
    soxr_delete(Soxr);
}

void FResampler::Process(std::span<const float> Samples, double SampleRate, std::vector<float>& Out)
{
    if (SampleRate != Rate)
    {
        Close(Out);
        Rate = SampleRate;
    }
    if (Rate == AnalysisRate)
    {
        Out.insert(Out.end(), Samples.begin(), Samples.end());
        return;
    }
    if (Soxr == nullptr)
    {
        // Low quality is plenty for formants below 4 kHz, and with small transforms
        // the filter holds back only a few milliseconds, so a live stream's frames
        // can show the audio that has just arrived. Narrow-band audio (telephone,
        // 8 kHz) is interpolated instead: the 13 ms the filter would hold made the
        // mouth late enough to miss short lip closures.
        const soxr_quality_spec_t Quality = soxr_quality_spec(Rate < AnalysisRate ? SOXR_QQ : SOXR_LQ, 0);
        const soxr_io_spec_t Io = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
        soxr_runtime_spec_t Runtime = soxr_runtime_spec(1);
        Runtime.log2_min_dft_size = 8;
        Runtime.log2_large_dft_size = 8;
        soxr_error_t Error = nullptr;
        Soxr = soxr_create(Rate, AnalysisRate, 1, &Error, &Io, &Quality, &Runtime);
        if (Error != nullptr)
        {
            soxr_delete(Soxr);
            Soxr = nullptr;
            return;
        }
    }
    Drain(Samples.data(), Samples.size(), Out);
}

void FResampler::Drain(const float* Input, std::size_t Count, std::vector<float>& Out)
{
    // A null input asks soxr to flush; it then returns what the filter still holds.
    const bool bFlush = Input == nullptr;
    std::size_t Consumed = 0;
    for (;;)
    {
        const std::size_t Room = 4096;
        const std::size_t Start = Out.size();
        Out.resize(Start + Room);
        std::size_t Taken = 0;
        std::size_t Produced = 0;
        const soxr_error_t Error = soxr_process(Soxr, bFlush ? nullptr : Input + Consumed, Count - Consumed,
                                                &Taken, Out.data() + Start, Room, &Produced);
        Out.resize(Start + Produced);
        Consumed += Taken;
        if (Error != nullptr || (Produced < Room && Consumed >= Count) || (Taken == 0 && Produced == 0))
        {
            return;
        }
    }
}

void FResampler::Close(std::vector<float>& Out)
{
    if (Soxr != nullptr)
    {
        Drain(nullptr, 0, Out);
        soxr_delete(Soxr);
        Soxr = nullptr;
    }
}

} // namespace LipsyncEngine
