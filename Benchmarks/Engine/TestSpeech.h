#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace EngineBench
{

// What the mouth should show during one stretch of test speech.
enum class EMouthClass
{
    Bilabial,
    Open,
    Rounded,
    Spread,
    Silence,
    Count
};

std::string_view MouthClassName(EMouthClass Class);

struct FLabel
{
    EMouthClass Class;
    double StartSeconds;
    double EndSeconds;
    std::string Phoneme;
};

struct FTestSpeech
{
    std::vector<float> Samples;
    int SampleRate = 0;
    std::vector<FLabel> Labels;
};

// One espeak-ng voice setting: a voice name with an optional variant ("en-us+f3"),
// a speed in words per minute and a base pitch (0-100).
struct FVoice
{
    std::string Name;
    int WordsPerMinute = 175;
    int Pitch = 50;
};

// Speaks the sentences one after another with a stretch of silence around each and
// labels every phoneme that belongs to a scored class, from espeak-ng's phoneme
// events. Returns no samples when espeak-ng cannot be started or lacks the voice.
FTestSpeech SpeakSentences(const FVoice& Voice, const std::vector<std::string>& Sentences);

} // namespace EngineBench
