#include "LiveStreamBuffer.h"

void FLiveStreamBuffer::AddFrame(const FViewFrame& Frame)
{
    std::string Event = FrameEventJson(Frame);
    {
        std::lock_guard Lock(Mutex);
        SwitchStream(Frame.Stream);
        ++Current.Frames;
        if (Frame.Number > LastFrameNumber)
        {
            Current.MissingFrames += static_cast<uint64_t>(Frame.Number - LastFrameNumber - 1);
            LastFrameNumber = Frame.Number;
        }
        else
        {
            ++Current.OutOfOrderFrames;
        }
        Append(std::move(Event));
    }
    Added.notify_all();
}

void FLiveStreamBuffer::AddAudio(const FViewAudio& Audio)
{
    std::string Event = AudioEventJson(Audio);
    {
        std::lock_guard Lock(Mutex);
        SwitchStream(Audio.Stream);
        ++Current.AudioBlocks;
        Append(std::move(Event));
    }
    Added.notify_all();
}

void FLiveStreamBuffer::CountDatagram(EVelkDatagramKind Kind)
{
    std::lock_guard Lock(Mutex);
    switch (Kind)
    {
    case EVelkDatagramKind::Malformed:
        ++Current.Malformed;
        break;
    case EVelkDatagramKind::Oversized:
        ++Current.Oversized;
        break;
    case EVelkDatagramKind::Foreign:
        ++Current.Foreign;
        break;
    case EVelkDatagramKind::Accepted:
        break;
    }
}

FViewCounts FLiveStreamBuffer::Counts() const
{
    std::lock_guard Lock(Mutex);
    return Current;
}

std::vector<std::string> FLiveStreamBuffer::Follow(uint64_t& Cursor, std::chrono::milliseconds Wait)
{
    std::unique_lock Lock(Mutex);
    const auto End = [this] { return FirstSequence + Events.size(); };
    Added.wait_for(Lock, Wait, [&] { return Cursor < End(); });
    // A follower that fell behind what is kept, or that followed an earlier stream, goes on
    // from the oldest event still here.
    if (Cursor < FirstSequence || Cursor > End())
    {
        Cursor = FirstSequence;
    }
    std::vector<std::string> Out(Events.begin() + static_cast<std::ptrdiff_t>(Cursor - FirstSequence),
                                 Events.end());
    Cursor = End();
    return Out;
}

void FLiveStreamBuffer::WakeAll()
{
    Added.notify_all();
}

void FLiveStreamBuffer::SwitchStream(int32_t Stream)
{
    if (bAnyStream && Stream == Current.Stream)
    {
        return;
    }
    // The datagram counts describe the receiver, not a stream, so they carry over.
    FViewCounts Next;
    Next.Stream = Stream;
    Next.Malformed = Current.Malformed;
    Next.Oversized = Current.Oversized;
    Next.Foreign = Current.Foreign;
    Current = Next;
    bAnyStream = true;
    LastFrameNumber = -1;
    FirstSequence += Events.size();
    Events.clear();
}

void FLiveStreamBuffer::Append(std::string Event)
{
    Events.push_back(std::move(Event));
    if (Events.size() > MaxEvents)
    {
        Events.pop_front();
        ++FirstSequence;
    }
}
