#pragma once

#include "CoreMinimal.h"
#include "CadrelBlendShape.h"
#include "CadrelBlendShapeType.h"

// Feeds a live stream: one queued chunk at a time goes to the stream endpoint, and
// the next waits until the previous one has had half its audio's duration plus
// TimeInterval. The server's answers arrive through the dispatcher's own delegates.
// Add, tick and clear on one thread, the owner's; nothing here is locked.
struct CADRELBLENDSHAPE_API FCadrelVelkStream : public FCadrelBlendShape
{
    // Seconds added to each chunk's wait, read when the chunk is sent; a value that
    // is not finite adds nothing.
    float TimeInterval = 0.3f;
    // Index 0 is the head, the only element a tick looks at.
    TArray<FCadrelVelkStreamQueueElement> Queue;

    void AddVelkStreamRequest(const FCadrelVelkStreamQueueElement& Element);
    // Sends the head, or counts its wait down by DeltaTime and ends it: at most one
    // element changes per call, and sending and ending never share a call. A NaN
    // DeltaTime counts as no time.
    void TickQueue(float DeltaTime);
    // Drops every element without its end-play callback; a request already sent
    // still completes through the delegates.
    void ClearQueue();
    void SetTimeInterval(float InTimeInterval) { TimeInterval = InTimeInterval; }

    // Half the play time, in seconds, of a canonical 44-byte-header WAV file: its
    // data length over its byte rate. Audio too short to hold the header, or a byte
    // rate that is not positive, gives 0; the result is always finite.
    static float GetAuidoTimeLength(const TArray<uint8>& AudioData);
};
