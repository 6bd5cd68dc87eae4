#include "CadrelVelkStream.h"

#include "CadrelBlendShapeLog.h"

#include <cmath>

namespace
{
// Offsets of the format chunk's byte rate and the data chunk's length in the
// canonical header: a 16-byte format chunk directly followed by the data chunk.
constexpr int32 ByteRateOffset = 28;
constexpr int32 DataSizeOffset = 40;
constexpr int32 CanonicalHeaderSize = 44;

int32 ReadInt32LE(const TArray<uint8>& Bytes, int32 Offset)
{
    const uint32 Value = static_cast<uint32>(Bytes[Offset]) | (static_cast<uint32>(Bytes[Offset + 1]) << 8) |
                         (static_cast<uint32>(Bytes[Offset + 2]) << 16) |
                         (static_cast<uint32>(Bytes[Offset + 3]) << 24);
    return static_cast<int32>(Value);
}
} // namespace

void FCadrelVelkStream::AddVelkStreamRequest(const FCadrelVelkStreamQueueElement& Element)
{
    Queue.Add(Element);
}

void FCadrelVelkStream::TickQueue(float DeltaTime)
{
    if (Queue.IsEmpty() || Queue[0].AudioData.IsEmpty())
    {
        return;
    }
    FCadrelVelkStreamQueueElement& Head = Queue[0];
    if (!Head.bExecute)
    {
        Head.bExecute = true;
        // An interval that is not finite would hold the queue for ever; it counts as none.
        const float Interval = std::isfinite(TimeInterval) ? TimeInterval : 0.0f;
        Head.CurrentDelayTime = GetAuidoTimeLength(Head.AudioData) + Interval;
        ZELStreamRequest(Head.ZELInfo, Head.Param, Head.AudioData);
        ORV_LOG(CadrelBlendShapeLog, Log, TEXT("Delay=%f"), static_cast<double>(Head.CurrentDelayTime));
        return;
    }
    // A NaN step is no time at all: subtracting it would hold the head for ever.
    if (!std::isnan(DeltaTime))
    {
        Head.CurrentDelayTime -= DeltaTime;
    }
    if (Head.CurrentDelayTime > 0.0f || std::isnan(Head.CurrentDelayTime))
    {
        return;
    }
    // The callback may append to the queue, clear it or let go of this stream, so it
    // runs from copies, with the stream kept alive, and only a head that is still
    // the sent element is removed afterwards.
    const std::shared_ptr<FCadrelBlendShape> KeepAlive = weak_from_this().lock();
    const FVelkEndPlayDelegate EndPlay = Head.EndPlayDelegate;
    EndPlay.ExecuteIfBound(Head.Param.MainIndex, Head.Param.Index, FString());
    if (!Queue.IsEmpty() && Queue[0].bExecute)
    {
        Queue.RemoveAt(0);
    }
    ORV_LOG(CadrelBlendShapeLog, Log, TEXT("VelkEndPlay."));
}

void FCadrelVelkStream::ClearQueue()
{
    Queue.Empty();
}

float FCadrelVelkStream::GetAuidoTimeLength(const TArray<uint8>& AudioData)
{
    if (AudioData.Num() < CanonicalHeaderSize)
    {
        return 0.0f;
    }
    const int32 ByteRate = ReadInt32LE(AudioData, ByteRateOffset);
    if (ByteRate <= 0)
    {
        return 0.0f;
    }
    const float DataSize = static_cast<float>(ReadInt32LE(AudioData, DataSizeOffset));
    return DataSize / static_cast<float>(ByteRate) * 0.5f;
}
