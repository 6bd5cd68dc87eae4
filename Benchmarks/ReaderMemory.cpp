#include "ReaderBenchmarkCases.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using namespace ReaderBenchmark;

int64 StatusKilobytes(const char* Field)
{
    std::ifstream Status("/proc/self/status");
    std::string Line;
    while (std::getline(Status, Line))
    {
        if (Line.rfind(Field, 0) == 0)
        {
            return std::stoll(Line.substr(std::strlen(Field)));
        }
    }
    return -1;
}

int64 HeapBytes(SIZE_T Bytes)
{
    // What the allocator hands out for a block: its size plus a header, in 16-byte steps.
    return Bytes ? static_cast<int64>((Bytes + 8 + 15) & ~SIZE_T{15}) : 0;
}

int64 RecordBytes(const FCadrelZELResponse& Response)
{
    int64 Bytes = HeapBytes(Response.Frames.Num() * sizeof(FCadrelFaceFrames));
    for (const FCadrelFaceFrames& Frame : Response.Frames)
    {
        Bytes += HeapBytes(Frame.Blendshapes.Num() * sizeof(double)) +
                 HeapBytes(Frame.Bones.Num() * sizeof(FCadrelZELBones));
    }
    return Bytes;
}

int64 RecordBytes(const FCadrelAudio2FaceBlendShapeInfo& Info)
{
    int64 Bytes = HeapBytes(Info.WeightMat.Num() * sizeof(FAudio2FaceBlendShapeWeightMat));
    for (const FAudio2FaceBlendShapeWeightMat& Row : Info.WeightMat)
    {
        Bytes += HeapBytes(Row.Weight.Num() * sizeof(double));
    }
    return Bytes;
}

// Peak resident memory that one cold read adds, beyond its input and its record.
// The peak mark is reset once the input exists, so only the read itself counts.
template <typename RecordType> void MeasureOnce(const FCase& Case, const FReaderName& Reader)
{
    const FInput& In = Input(Case.Document);
    std::ofstream("/proc/self/clear_refs") << "5";
    const int64 Before = StatusKilobytes("VmRSS:");
    RecordType Record;
    ReadOnce(Reader.Reader, In, Record);
    const int64 Peak = StatusKilobytes("VmHWM:");
    const double InputMB = static_cast<double>(In.Utf8.size()) / 1e6;
    const double PeakMB = static_cast<double>(Peak - Before) * 1024.0 / 1e6;
    const double RecordMB = static_cast<double>(RecordBytes(Record)) / 1e6;
    std::printf(
        "%-11s %-12s input %6.2f MB  peak +%7.2f MB  record %6.2f MB  beyond the record %5.2fx input\n",
        Case.Name, Reader.Name, InputMB, PeakMB, RecordMB, (PeakMB - RecordMB) / InputMB);
}

} // namespace

int ReaderBenchmark::MeasureMemory()
{
    std::printf("Peak memory of one read, each in a process of its own:\n");
    for (const FCase& Case : Cases)
    {
        for (const FReaderName& Reader : Readers)
        {
            std::fflush(stdout);
            const pid_t Child = fork();
            if (Child == 0)
            {
                IsAnswer(Case.Document) ? MeasureOnce<FCadrelZELResponse>(Case, Reader)
                                        : MeasureOnce<FCadrelAudio2FaceBlendShapeInfo>(Case, Reader);
                std::fflush(stdout);
                _exit(0);
            }
            int Status = 0;
            waitpid(Child, &Status, 0);
        }
    }
    return 0;
}
