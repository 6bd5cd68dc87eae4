// Scores how well the face engine's mouth follows test speech with known phonemes.
#include "Corpus.h"
#include "FaceEngine.h"
#include "LabelledTakes.h"
#include "LoudnessBaseline.h"
#include "MouthScore.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

namespace
{
using namespace EngineBench;

struct FRun
{
    FScore Score;
    std::map<std::string, std::pair<int, int>> ByPhoneme;
};

FRun ScoreSet(const std::vector<FVoice>& Voices, const std::vector<std::string>& Sentences, int Fps,
              bool bVerbose)
{
    FRun Run;
    for (const FVoice& Voice : Voices)
    {
        const FTestSpeech Speech = SpeakSentences(Voice, Sentences);
        if (Speech.Samples.empty())
        {
            std::fprintf(stderr, "espeak-ng cannot speak with voice %s\n", Voice.Name.c_str());
            continue;
        }
        LipsyncEngine::FAnimationOptions Options;
        Options.Fps = Fps;
        LipsyncEngine::FFaceEngine Engine(Options);
        const auto Frames = Engine.Animate(Speech.Samples, Speech.SampleRate);
        const FScore Score = ScoreFrames(Frames, Fps, Speech.Labels);
        if (bVerbose)
        {
            std::printf("  %-14s %3d wpm pitch %2d: %.1f%%\n", Voice.Name.c_str(), Voice.WordsPerMinute,
                        Voice.Pitch, 100.0 * Score.Overall());
            for (const FLabel& Label : Speech.Labels)
            {
                auto& Counts = Run.ByPhoneme[Label.Phoneme];
                Counts.first += static_cast<int>(ScoreFrames(Frames, Fps, {&Label, 1}).Overall() > 0.5);
                ++Counts.second;
            }
        }
        Run.Score.Add(Score);
    }
    return Run;
}

bool Report(const char* Title, const FRun& Run, double MinOverall, double MinClass)
{
    bool bPassed = Run.Score.Overall() >= MinOverall;
    std::printf("%s: overall %.1f%%", Title, 100.0 * Run.Score.Overall());
    for (int Index = 0; Index < static_cast<int>(EMouthClass::Count); ++Index)
    {
        const auto Class = static_cast<EMouthClass>(Index);
        bPassed = bPassed && Run.Score.Of(Class) >= MinClass;
        std::printf(", %s %.1f%% (%zu)", std::string(MouthClassName(Class)).c_str(),
                    100.0 * Run.Score.Of(Class), Run.Score.Totals[static_cast<std::size_t>(Index)]);
    }
    std::printf("\n");
    for (const auto& [Phoneme, Counts] : Run.ByPhoneme)
    {
        std::printf("    %-4s %3d/%3d\n", Phoneme.c_str(), Counts.first, Counts.second);
    }
    return bPassed;
}

struct FCell
{
    FScore Engine;
    FScore Loudness;
};

// Takes live at .../FAMILY/CONDITION/NAME, as make_corpus.py writes them.
std::pair<std::string, std::string> FamilyAndCondition(const std::string& Path)
{
    const std::filesystem::path Condition = std::filesystem::path(Path).parent_path();
    return {Condition.parent_path().filename().string(), Condition.filename().string()};
}

void PrintRow(const std::string& Title, const FCell& Cell)
{
    std::printf("%-24s %5.1f%%  %5.1f%%", Title.c_str(), 100.0 * Cell.Engine.Overall(),
                100.0 * Cell.Loudness.Overall());
    for (int Index = 0; Index < static_cast<int>(EMouthClass::Count); ++Index)
    {
        std::printf("  %5.1f%%", 100.0 * Cell.Engine.Of(static_cast<EMouthClass>(Index)));
    }
    std::printf("  %5.1f%%\n", 100.0 * Cell.Engine.Specificity());
}

bool CellPasses(const FCell& Cell, double MinOverall, double MinClass)
{
    bool bPassed = Cell.Engine.Overall() >= MinOverall;
    for (int Index = 0; Index < static_cast<int>(EMouthClass::Count); ++Index)
    {
        const auto Class = static_cast<EMouthClass>(Index);
        bPassed = bPassed && (Cell.Engine.Totals[Index] == 0 || Cell.Engine.Of(Class) >= MinClass);
    }
    return bPassed && (Cell.Engine.SpecificTotal == 0 || Cell.Engine.Specificity() >= MinClass);
}

// Every take of a corpus list, per voice family and recording condition, beside
// the mouth loudness alone would give; the thresholds apply to every condition.
bool ScoreCorpus(const std::string& ListPath, int Fps, double MinOverall, double MinClass)
{
    std::map<std::pair<std::string, std::string>, FCell> Cells;
    for (const std::string& Path : ReadTakeList(ListPath))
    {
        FTake Take;
        if (!ReadTake(Path, Take))
        {
            return false;
        }
        LipsyncEngine::FAnimationOptions Options;
        Options.Fps = Fps;
        LipsyncEngine::FFaceEngine Engine(Options);
        FCell& Cell = Cells[FamilyAndCondition(Path)];
        const FTestSpeech& Speech = Take.Speech;
        Cell.Engine.Add(ScoreFrames(Engine.Animate(Speech.Samples, Speech.SampleRate), Fps, Speech.Labels));
        Cell.Loudness.Add(
            ScoreFrames(LoudnessFrames(Speech.Samples, Speech.SampleRate, Fps), Fps, Speech.Labels));
    }
    std::printf("%-24s %6s  %6s", "family/condition", "engine", "loud");
    for (int Index = 0; Index < static_cast<int>(EMouthClass::Count); ++Index)
    {
        std::printf("  %6.6s", std::string(MouthClassName(static_cast<EMouthClass>(Index))).c_str());
    }
    std::printf("  %6s\n", "specif");
    std::map<std::string, FCell> ByCondition;
    FCell All;
    for (const auto& [Key, Cell] : Cells)
    {
        PrintRow(Key.first + "/" + Key.second, Cell);
        ByCondition[Key.second].Engine.Add(Cell.Engine);
        ByCondition[Key.second].Loudness.Add(Cell.Loudness);
        All.Engine.Add(Cell.Engine);
        All.Loudness.Add(Cell.Loudness);
    }
    bool bPassed = !Cells.empty();
    for (const auto& [Condition, Cell] : ByCondition)
    {
        PrintRow("all/" + Condition, Cell);
        bPassed = CellPasses(Cell, MinOverall, MinClass) && bPassed;
    }
    PrintRow("all", All);
    std::printf("with the specificity cases counted among the intervals: engine %.1f%%, loud %.1f%%\n",
                100.0 * All.Engine.OverallWithSpecificity(), 100.0 * All.Loudness.OverallWithSpecificity());
    return bPassed;
}
} // namespace

int main(int Argc, char** Argv)
{
    CLI::App App{"Speaks test sentences with espeak-ng, animates them with the face engine and scores the\n"
                 "share of phoneme intervals on which the mouth agrees.\n\n" +
                 DescribePredicates()};
    std::string Set = "both";
    std::string CorpusList;
    int Fps = 60;
    int QuickCount = 0;
    bool bVerbose = false;
    double MinOverall = 0.0;
    double MinClass = 0.0;
    App.add_option("--set", Set, "tuning, held-out or both")
        ->check(CLI::IsMember({"tuning", "held-out", "both"}));
    App.add_option("--fps", Fps, "frames per second")->check(CLI::Range(1, 240));
    App.add_option("--quick", QuickCount,
                   "score only the first N held-out sentences with three held-out voices");
    App.add_option(
        "--corpus", CorpusList,
        "score the takes of a corpus list written by tools/engine-training/make_corpus.py instead, "
        "per voice family and condition");
    App.add_flag("--verbose", bVerbose, "print per voice and per phoneme");
    App.add_option("--min-overall", MinOverall, "exit with 1 when the overall share is below this (0-1)");
    App.add_option("--min-class", MinClass, "exit with 1 when any class's share is below this (0-1)");
    CLI11_PARSE(App, Argc, Argv);

    if (!CorpusList.empty())
    {
        return ScoreCorpus(CorpusList, Fps, MinOverall, MinClass) ? 0 : 1;
    }
    bool bPassed = true;
    if (QuickCount > 0)
    {
        const auto& All = HeldOutSentences();
        const std::vector<std::string> Sentences(All.begin(),
                                                 All.begin() + std::min<std::size_t>(QuickCount, All.size()));
        const std::vector<FVoice> Voices(HeldOutVoices().begin(), HeldOutVoices().begin() + 3);
        return Report("held-out (quick)", ScoreSet(Voices, Sentences, Fps, bVerbose), MinOverall, MinClass)
                   ? 0
                   : 1;
    }
    if (Set != "held-out")
    {
        bPassed = Report("tuning", ScoreSet(TuningVoices(), TuningSentences(), Fps, bVerbose), MinOverall,
                         MinClass) &&
                  bPassed;
    }
    if (Set != "tuning")
    {
        bPassed = Report("held-out", ScoreSet(HeldOutVoices(), HeldOutSentences(), Fps, bVerbose), MinOverall,
                         MinClass) &&
                  bPassed;
    }
    return bPassed ? 0 : 1;
}
