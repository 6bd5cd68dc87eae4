#include "TestSpeech.h"

#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace EngineBench
{
namespace
{
constexpr double GapSeconds = 0.6;

struct FPhonemeEvent
{
    std::string Name;
    long Sample;
};

// espeak-ng reports through one process-wide callback; this is where it writes.
struct FCapture
{
    std::vector<short> Audio;
    std::vector<FPhonemeEvent> Events;
};
FCapture* GCapture = nullptr;

int OnSynth(short* Wave, int Count, espeak_EVENT* Events)
{
    if (Wave != nullptr && Count > 0)
    {
        GCapture->Audio.insert(GCapture->Audio.end(), Wave, Wave + Count);
    }
    for (; Events != nullptr && Events->type != espeakEVENT_LIST_TERMINATED; ++Events)
    {
        if (Events->type == espeakEVENT_PHONEME)
        {
            const std::size_t Length = strnlen(Events->id.string, sizeof(Events->id.string));
            GCapture->Events.push_back({std::string(Events->id.string, Length), Events->sample});
        }
    }
    return 0;
}

int Initialise()
{
    static const int Rate = []
    {
        const int Result =
            espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_PHONEME_EVENTS);
        espeak_SetSynthCallback(OnSynth);
        return Result;
    }();
    return Rate;
}

// Phonemes by espeak-ng's English mnemonics; diphthongs that move between classes
// (aI, aU, OI) and the schwa-like vowels are not scored.
bool ClassOf(std::string_view Phoneme, EMouthClass& OutClass)
{
    struct FEntry
    {
        std::string_view Name;
        EMouthClass Class;
    };
    static constexpr std::array<FEntry, 14> Table = {{
        {"p", EMouthClass::Bilabial},
        {"b", EMouthClass::Bilabial},
        {"m", EMouthClass::Bilabial},
        {"a", EMouthClass::Open},
        {"aa", EMouthClass::Open},
        {"A:", EMouthClass::Open},
        {"A@", EMouthClass::Open},
        {"0", EMouthClass::Open},
        {"V", EMouthClass::Open},
        {"u:", EMouthClass::Rounded},
        {"oU", EMouthClass::Rounded},
        {"w", EMouthClass::Rounded},
        {"i:", EMouthClass::Spread},
        {"eI", EMouthClass::Spread},
    }};
    const auto Found =
        std::find_if(Table.begin(), Table.end(), [&](const FEntry& E) { return E.Name == Phoneme; });
    if (Found == Table.end())
    {
        return false;
    }
    OutClass = Found->Class;
    return true;
}

void AppendSilence(FTestSpeech& Speech, double Seconds, bool bLabel)
{
    const double Start = static_cast<double>(Speech.Samples.size()) / Speech.SampleRate;
    Speech.Samples.resize(Speech.Samples.size() + static_cast<std::size_t>(Seconds * Speech.SampleRate),
                          0.0f);
    if (bLabel)
    {
        Speech.Labels.push_back({EMouthClass::Silence, Start, Start + Seconds, "_"});
    }
}

void AppendSentence(FTestSpeech& Speech, const FCapture& Capture)
{
    const double Offset = static_cast<double>(Speech.Samples.size()) / Speech.SampleRate;
    const long Length = static_cast<long>(Capture.Audio.size());
    for (std::size_t Index = 0; Index < Capture.Events.size(); ++Index)
    {
        EMouthClass Class;
        if (!ClassOf(Capture.Events[Index].Name, Class))
        {
            continue;
        }
        const long Start = std::clamp(Capture.Events[Index].Sample, 0L, Length);
        const long End = Index + 1 < Capture.Events.size()
                             ? std::clamp(Capture.Events[Index + 1].Sample, Start, Length)
                             : Length;
        Speech.Labels.push_back({Class, Offset + static_cast<double>(Start) / Speech.SampleRate,
                                 Offset + static_cast<double>(End) / Speech.SampleRate,
                                 Capture.Events[Index].Name});
    }
    for (short Sample : Capture.Audio)
    {
        Speech.Samples.push_back(static_cast<float>(Sample) / 32768.0f);
    }
}
} // namespace

std::string_view MouthClassName(EMouthClass Class)
{
    static constexpr std::array<std::string_view, 5> Names = {"bilabial", "open", "rounded", "spread",
                                                              "silence"};
    return Names[static_cast<std::size_t>(Class)];
}

FTestSpeech SpeakSentences(const FVoice& Voice, const std::vector<std::string>& Sentences)
{
    FTestSpeech Speech;
    const int Rate = Initialise();
    if (Rate <= 0 || espeak_SetVoiceByName(Voice.Name.c_str()) != EE_OK)
    {
        return Speech;
    }
    espeak_SetParameter(espeakRATE, Voice.WordsPerMinute, 0);
    espeak_SetParameter(espeakPITCH, Voice.Pitch, 0);
    Speech.SampleRate = Rate;
    AppendSilence(Speech, GapSeconds, true);
    for (const std::string& Sentence : Sentences)
    {
        FCapture Capture;
        GCapture = &Capture;
        espeak_Synth(Sentence.c_str(), Sentence.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr,
                     nullptr);
        espeak_Synchronize();
        GCapture = nullptr;
        AppendSentence(Speech, Capture);
        AppendSilence(Speech, GapSeconds, true);
    }
    return Speech;
}

} // namespace EngineBench
