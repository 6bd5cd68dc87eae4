#include "LabelledTakes.h"

#include <sndfile.h>

#include <cstdio>
#include <fstream>

namespace EngineBench
{

bool ReadTake(const std::string& Path, FTake& OutTake)
{
    OutTake.Path = Path;
    SF_INFO Info{};
    SNDFILE* File = sf_open((Path + ".wav").c_str(), SFM_READ, &Info);
    if (File == nullptr || Info.channels <= 0 || Info.samplerate <= 0)
    {
        std::fprintf(stderr, "cannot read %s.wav: %s\n", Path.c_str(), sf_strerror(File));
        if (File != nullptr)
        {
            sf_close(File);
        }
        return false;
    }
    std::vector<float> Interleaved(static_cast<std::size_t>(Info.frames) * Info.channels);
    const sf_count_t Read = sf_readf_float(File, Interleaved.data(), Info.frames);
    sf_close(File);
    FTestSpeech& Speech = OutTake.Speech;
    Speech.SampleRate = Info.samplerate;
    Speech.Samples.assign(static_cast<std::size_t>(std::max<sf_count_t>(Read, 0)), 0.0f);
    for (std::size_t Frame = 0; Frame < Speech.Samples.size(); ++Frame)
    {
        for (int Channel = 0; Channel < Info.channels; ++Channel)
        {
            Speech.Samples[Frame] += Interleaved[Frame * Info.channels + Channel] / Info.channels;
        }
    }
    std::ifstream Labels(Path + ".labels");
    double Start = 0.0;
    double End = 0.0;
    int Class = 0;
    Speech.Labels.clear();
    while (Labels >> Start >> End >> Class)
    {
        if (Class >= 0 && Class < static_cast<int>(EMouthClass::Count) && End > Start)
        {
            Speech.Labels.push_back({static_cast<EMouthClass>(Class), Start, End, std::to_string(Class)});
        }
    }
    return true;
}

std::vector<std::string> ReadTakeList(const std::string& ListPath)
{
    std::vector<std::string> Paths;
    std::ifstream List(ListPath);
    for (std::string Line; std::getline(List, Line);)
    {
        if (!Line.empty())
        {
            Paths.push_back(Line);
        }
    }
    return Paths;
}

} // namespace EngineBench
