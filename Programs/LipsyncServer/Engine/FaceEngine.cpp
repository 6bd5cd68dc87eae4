#include "FaceEngine.h"

#include "BlendShape.h"
#include "EmotionShapes.h"
#include "IdleMotion.h"
#include "MouthMapping.h"
#include "Resampler.h"
#include "FeatureNormaliser.h"
#include "MelSpectrum.h"
#include "VisemeNetwork.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace LipsyncEngine
{
namespace
{
// How far a frame looks back from its end, in 16 kHz samples: the resampler may
// still hold this much of the newest audio, and a frame must not depend on how the
// audio was chunked. Every millisecond here delays the mouth, so it is as short as
// each rate allows: soxr's low-quality filter with small transforms holds about
// 4.5 ms above 16 kHz, and the cubic interpolation below 16 kHz about a sample.
std::int64_t ResamplerAllowance(int SampleRate)
{
    if (SampleRate == AnalysisRate)
    {
        return 0;
    }
    return SampleRate > AnalysisRate ? AnalysisRate * 6 / 1000 : AnalysisRate * 2 / 1000;
}

float SanitizeSample(float Sample)
{
    return std::isfinite(Sample) ? std::clamp(Sample, -1.0f, 1.0f) : 0.0f;
}

struct FAnalysedFrame
{
    FVisemeWeights Visemes{};
    float LevelDb = 0.0f;
};
} // namespace

struct FFaceEngine::FState
{
    FAnimationOptions Options;
    FResampler Resampler;

    // Frames are counted per stretch of constant sample rate and frame rate, so the
    // count is exact however the audio is chunked.
    int SegmentRate = 0;
    int SegmentFps = 0;
    std::int64_t SegmentSamples = 0;
    std::int64_t SegmentFirstFrame = 0;
    double SegmentStartSeconds = 0.0;
    std::int64_t FramesEmitted = 0;

    // Resampled speech not yet analysed; Speech[0] is sample SpeechOffset of the stream.
    std::vector<float> Speech;
    std::int64_t SpeechOffset = 0;
    std::int64_t AnalysedFrames = 0;

    FMelAnalyser Analyser;
    FFeatureNormaliser Normaliser;
    FVisemeNetwork Network;
    FMouthMapper Mouth;
    FIdleMotion Idle;
    FWeights MouthWeights{};
    FWeights EmotionWeights{};
    bool bEmotionSet = false;

    void StartSegment(int SampleRate)
    {
        SegmentStartSeconds += SegmentRate > 0 ? static_cast<double>(SegmentSamples) / SegmentRate : 0.0;
        SegmentFirstFrame = FramesEmitted;
        SegmentSamples = 0;
        SegmentRate = SampleRate;
        SegmentFps = Options.Fps;
    }

    std::int64_t FramesDue() const { return SegmentFirstFrame + SegmentSamples * SegmentFps / SegmentRate; }

    // The last 16 kHz sample a frame may look at.
    std::int64_t LastSampleOf(std::int64_t Frame) const
    {
        const double EndSeconds =
            SegmentStartSeconds + static_cast<double>(Frame - SegmentFirstFrame + 1) / SegmentFps;
        return static_cast<std::int64_t>(std::floor(EndSeconds * AnalysisRate)) -
               ResamplerAllowance(SegmentRate);
    }

    // Analyses every window that ends by EndSample and that the speech holds, all
    // through the network at once (a matrix product is far cheaper per frame than
    // one product per frame); the mouth steps through them later, frame by frame.
    std::vector<FAnalysedFrame> AnalyseUntil(std::int64_t EndSample)
    {
        std::vector<FFrameFeatures> Features;
        std::vector<float> Levels;
        for (;;)
        {
            const std::int64_t Start = AnalysedFrames * static_cast<std::int64_t>(HopSamples);
            const std::int64_t End = Start + static_cast<std::int64_t>(WindowSamples);
            if (End > EndSample || End > SpeechOffset + static_cast<std::int64_t>(Speech.size()))
            {
                break;
            }
            const auto Window = std::span<const float>(Speech).subspan(Start - SpeechOffset, WindowSamples);
            Features.push_back(Normaliser.Normalise(Analyser.Analyse(Window)));
            Levels.push_back(Normaliser.LevelDb());
            ++AnalysedFrames;
        }
        const std::vector<FVisemeWeights> Visemes = Network.Classify(Features);
        std::vector<FAnalysedFrame> Analysed(Visemes.size());
        for (std::size_t Index = 0; Index < Analysed.size(); ++Index)
        {
            Analysed[Index] = {Visemes[Index], Levels[Index]};
        }
        return Analysed;
    }

    // Once per chunk, not per frame: erasing from the front is linear in what stays.
    void DropAnalysedSpeech()
    {
        const std::int64_t Keep = AnalysedFrames * static_cast<std::int64_t>(HopSamples);
        if (Keep > SpeechOffset)
        {
            Speech.erase(Speech.begin(), Speech.begin() + (Keep - SpeechOffset));
            SpeechOffset = Keep;
        }
    }

    void Step(const FAnalysedFrame& Frame)
    {
        Mouth.Step(Frame.Visemes, Frame.LevelDb, MouthWeights);
        Idle.Step(MouthWeights[EBlendShape::JawOpen]);
        // A new emotion fades in over about half a second.
        const FWeights Target = EmotionShapes(Options.Emotion);
        const float Rate = bEmotionSet ? 0.05f : 1.0f;
        for (std::size_t Shape = 0; Shape < NumBlendShapes; ++Shape)
        {
            EmotionWeights[Shape] += Rate * (Target[Shape] - EmotionWeights[Shape]);
        }
        bEmotionSet = true;
    }

    FFaceFrame Compose() const
    {
        FFaceFrame Frame;
        for (std::size_t Shape = 0; Shape < NumBlendShapes; ++Shape)
        {
            Frame.Weights[Shape] = std::clamp(MouthWeights[Shape] + EmotionWeights[Shape], 0.0f, 1.0f);
        }
        Idle.Apply(Options.bEyeMovement, Options.bNeckMovement, Frame);
        return Frame;
    }
};

FFaceEngine::FFaceEngine(const FAnimationOptions& Options) : State(std::make_unique<FState>())
{
    SetOptions(Options);
}

FFaceEngine::~FFaceEngine() = default;

void FFaceEngine::SetOptions(const FAnimationOptions& Options)
{
    State->Options = Options;
    State->Options.Fps = std::clamp(Options.Fps, 1, 1000);
}

std::vector<FFaceFrame> FFaceEngine::Animate(std::span<const float> Samples, int SampleRate)
{
    std::vector<FFaceFrame> Frames;
    if (SampleRate <= 0)
    {
        return Frames;
    }
    FState& S = *State;
    if (SampleRate != S.SegmentRate || S.Options.Fps != S.SegmentFps)
    {
        S.StartSegment(SampleRate);
    }
    std::vector<float> Clean(Samples.size());
    std::transform(Samples.begin(), Samples.end(), Clean.begin(), SanitizeSample);
    S.Resampler.Process(Clean, SampleRate, S.Speech);
    S.SegmentSamples += static_cast<std::int64_t>(Samples.size());

    const std::int64_t Due = S.FramesDue();
    if (Due <= S.FramesEmitted)
    {
        return Frames;
    }
    Frames.reserve(static_cast<std::size_t>(Due - S.FramesEmitted));
    const std::int64_t FirstAnalysed = S.AnalysedFrames;
    const std::vector<FAnalysedFrame> Analysed = S.AnalyseUntil(S.LastSampleOf(Due - 1));
    std::size_t Stepped = 0;
    for (; S.FramesEmitted < Due; ++S.FramesEmitted)
    {
        // The windows that end by this frame's last sample, as if analysed just now.
        const std::int64_t Last = S.LastSampleOf(S.FramesEmitted);
        const std::int64_t Ready =
            Last < static_cast<std::int64_t>(WindowSamples)
                ? 0
                : (Last - static_cast<std::int64_t>(WindowSamples)) / static_cast<std::int64_t>(HopSamples) +
                      1;
        for (; Stepped < Analysed.size() && FirstAnalysed + static_cast<std::int64_t>(Stepped) < Ready;
             ++Stepped)
        {
            S.Step(Analysed[Stepped]);
        }
        Frames.push_back(S.Compose());
    }
    S.DropAnalysedSpeech();
    return Frames;
}

} // namespace LipsyncEngine
