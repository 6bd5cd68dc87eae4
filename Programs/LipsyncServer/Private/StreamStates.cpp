#include "StreamStates.h"

#include <algorithm>

FStreamStates::FStreamStates(std::size_t InMaxStreams, FClock::duration InIdleTimeout)
    : MaxStreams(std::max<std::size_t>(InMaxStreams, 1)), IdleTimeout(InIdleTimeout)
{
}

FStreamStates::FEngine FStreamStates::Take(int MainIndex, int Index,
                                           const LipsyncEngine::FAnimationOptions& Options,
                                           FStreamClock& OutClock)
{
    FEngine Engine;
    OutClock = FStreamClock{};
    {
        std::lock_guard Lock(Mutex);
        ForgetIdle(FClock::now());
        const auto Found = Entries.find(MainIndex);
        if (Found != Entries.end())
        {
            if (Found->second.Index < Index)
            {
                Engine = std::move(Found->second.Engine);
                OutClock = Found->second.StreamClock;
            }
            Entries.erase(Found);
        }
    }
    if (!Engine)
    {
        return std::make_unique<LipsyncEngine::FFaceEngine>(Options);
    }
    Engine->SetOptions(Options);
    return Engine;
}

void FStreamStates::Keep(int MainIndex, int Index, FEngine Engine, FStreamClock Clock)
{
    const FClock::time_point Now = FClock::now();
    // The engine that loses is destroyed after the lock is released.
    FEngine Dropped;
    std::lock_guard Lock(Mutex);
    ForgetIdle(Now);
    const auto Found = Entries.find(MainIndex);
    if (Found != Entries.end())
    {
        if (Found->second.Index >= Index)
        {
            Dropped = std::move(Engine);
            return;
        }
        Dropped = std::move(Found->second.Engine);
        Found->second = FEntry{std::move(Engine), Index, Now, Clock};
        return;
    }
    if (Entries.size() >= MaxStreams)
    {
        const auto Oldest = std::min_element(Entries.begin(), Entries.end(),
                                             [](const auto& A, const auto& B)
                                             { return A.second.LastUse < B.second.LastUse; });
        Dropped = std::move(Oldest->second.Engine);
        Entries.erase(Oldest);
    }
    Entries.emplace(MainIndex, FEntry{std::move(Engine), Index, Now, Clock});
}

std::size_t FStreamStates::Count() const
{
    std::lock_guard Lock(Mutex);
    return Entries.size();
}

void FStreamStates::ForgetIdle(FClock::time_point Now)
{
    std::erase_if(Entries, [&](const auto& Entry) { return Now - Entry.second.LastUse > IdleTimeout; });
}
