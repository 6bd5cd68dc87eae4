// The live page of `cadrel view`: follows the receiver's event stream, plays the
// stream's audio through Web Audio and shows, at each moment, the frame whose time
// matches the audio playhead. Frames and audio carry times on the stream's own
// clock, so the two stay aligned whatever the network did.
(function () {
    "use strict";

    const Lead = 0.02; // seconds of slack between an event's arrival and its playing
    const KeptSeconds = 4; // frames this far behind the playhead are let go
    const LagWindow = 301; // lags the median is taken over

    const Face = CadrelFace.create(document.getElementById("face"));
    const Status = document.getElementById("status");
    const SoundButton = document.getElementById("sound");
    const Audio = new (window.AudioContext || window.webkitAudioContext)();

    // Everything a test or a curious user may read back, as window.CadrelView.
    const View = {
        stream: null,
        received: 0,
        late: 0,
        dropped: 0,
        outOfOrder: 0,
        lastNumber: -1,
        receiver: {},
        lags: [],
        // From a frame's arrival at the receiver to its arrival in the page, the event stream's share of the lag.
        deliveries: [],
        // One entry per drawn frame: the frame, the playhead and the frame step then.
        shown: [],
        playhead: null,
    };
    window.CadrelView = View;

    let Frames = []; // kept in time order
    let Shown = -1; // index in Frames of the frame on screen
    let Anchor = null; // { clock, audioClock } that maps the stream's clock to now
    let FrameStep = 1 / 60;
    let Newest = -Infinity; // the latest stream time received so far

    function wallSeconds() {
        return (performance.timeOrigin + performance.now()) / 1000;
    }

    function audioRunning() {
        return Audio.state === "running";
    }

    // Playhead on the stream's clock: the audio clock while sound plays, else the wall clock.
    function playhead() {
        if (!Anchor) {
            return null;
        }
        return audioRunning() && Anchor.audioClock !== null
            ? Audio.currentTime - Anchor.audioClock
            : wallSeconds() - Anchor.clock;
    }

    // The first event of a stream fixes its clock: the event's stream time plays Lead
    // after its arrival. A page opened mid-stream thus starts at the live edge.
    function anchorAt(StreamTime, ArrivalMs) {
        const Age = Math.max(0, wallSeconds() - ArrivalMs / 1000);
        const Now = StreamTime + Age - Lead;
        Anchor = { clock: wallSeconds() - Now, audioClock: audioRunning() ? Audio.currentTime - Now : null };
    }

    function startStream(Stream) {
        View.stream = Stream;
        View.received = View.late = View.dropped = View.outOfOrder = 0;
        View.lastNumber = -1;
        View.lags = [];
        View.deliveries = [];
        View.shown = [];
        Frames = [];
        Shown = -1;
        Anchor = null;
        Newest = -Infinity;
    }

    // Places an event on the clock. New data that comes after its time means the sender runs
    // slower than the sound: the playhead then waits for it, so sound and face stall together
    // instead of parting. Returns false for old data that came too late to be of use.
    function place(StreamTime, ArrivalMs) {
        const bNew = StreamTime >= Newest;
        Newest = Math.max(Newest, StreamTime);
        if (!Anchor) {
            anchorAt(StreamTime, ArrivalMs);
            return true;
        }
        if (StreamTime >= playhead()) {
            return true;
        }
        if (bNew) {
            anchorAt(StreamTime, ArrivalMs);
        }
        return bNew;
    }

    function onFrame(Event) {
        if (Event.stream !== View.stream) {
            startStream(Event.stream);
        }
        View.received += 1;
        pushBounded(View.deliveries, wallSeconds() * 1000 - Event.arrival);
        if (Event.frame <= View.lastNumber) {
            View.outOfOrder += 1;
        }
        View.lastNumber = Math.max(View.lastNumber, Event.frame);
        const Last = Frames[Frames.length - 1];
        if (Last && Event.time > Last.time) {
            FrameStep = Event.time - Last.time;
        }
        const bInTime = !Anchor || Event.time >= playhead();
        if (!bInTime) {
            View.late += 1;
        }
        if (!place(Event.time, Event.arrival)) {
            return;
        }
        let At = Frames.length;
        while (At > 0 && Frames[At - 1].time > Event.time) {
            At -= 1;
        }
        Frames.splice(At, 0, Event);
        if (At <= Shown) {
            Shown += 1;
        }
    }

    function onAudio(Event) {
        if (Event.stream !== View.stream) {
            startStream(Event.stream);
        }
        const Start = Event.index / Event.rate;
        if (!place(Start, Event.arrival) || !audioRunning() || Anchor.audioClock === null || Event.pcm.length === 0) {
            return;
        }
        const Buffer = Audio.createBuffer(1, Event.pcm.length, Event.rate);
        const Samples = Buffer.getChannelData(0);
        for (let I = 0; I < Event.pcm.length; I += 1) {
            Samples[I] = Event.pcm[I] / 32768;
        }
        const When = Anchor.audioClock + Start;
        const Skip = Math.max(0, Audio.currentTime - When);
        if (Skip >= Buffer.duration) {
            return;
        }
        const Source = Audio.createBufferSource();
        Source.buffer = Buffer;
        Source.connect(Audio.destination);
        Source.start(When + Skip, Skip);
    }

    function pushBounded(Values, Value) {
        Values.push(Value);
        if (Values.length > LagWindow) {
            Values.shift();
        }
    }

    function median(Values) {
        if (Values.length === 0) {
            return null;
        }
        const Sorted = Values.slice().sort((A, B) => A - B);
        return Sorted[Math.floor(Sorted.length / 2)];
    }

    // Each animation frame: the latest frame whose time has come, and the ones passed over.
    function draw() {
        const Now = playhead();
        View.playhead = Now;
        if (Now !== null) {
            let Next = Shown;
            while (Next + 1 < Frames.length && Frames[Next + 1].time <= Now) {
                Next += 1;
            }
            if (Next > Shown) {
                View.dropped += Math.max(0, Next - Shown - 1);
                const Frame = Frames[Next];
                Face.apply(Frame.weights, Frame.pose);
                // Lag counts from when the frame could first be shown: its arrival, or the moment the
                // playhead reached its time if it came early and waited for its sound.
                pushBounded(View.lags, Math.min(wallSeconds() * 1000 - Frame.arrival, (Now - Frame.time) * 1000));
                View.shown.push({ frame: Frame.frame, time: Frame.time, playhead: Now, step: FrameStep });
                Shown = Next;
            }
            const Old = Frames.findIndex((Frame) => Frame.time >= Now - KeptSeconds);
            if (Old > 0 && Old <= Shown) {
                Frames.splice(0, Old);
                Shown -= Old;
            }
        }
        showStatus();
        requestAnimationFrame(draw);
    }

    function showStatus() {
        if (View.stream === null) {
            return;
        }
        const Lag = median(View.lags);
        const R = View.receiver;
        Status.textContent =
            "stream " + View.stream + " · frames received " + View.received + " · late " + View.late +
            " · dropped " + View.dropped + " · lag " + (Lag === null ? "–" : Math.round(Lag) + " ms") +
            " (delivery " + Math.round(median(View.deliveries) || 0) + " ms)" +
            "\nreceiver: malformed " + (R.malformed || 0) + " · oversized " + (R.oversized || 0) +
            " · foreign " + (R.foreign || 0) + " · missing " + (R.missing || 0) +
            (audioRunning() ? "" : " · sound off");
    }

    function onMessage(Message) {
        let Event;
        try {
            Event = JSON.parse(Message.data);
        } catch (Error) {
            return;
        }
        if (Event.type === "frame") {
            onFrame(Event);
        } else if (Event.type === "audio") {
            onAudio(Event);
        } else if (Event.type === "counts") {
            View.receiver = Event;
        }
    }

    // Browsers keep sound off until the user asks for it; the face runs on the wall clock meanwhile.
    function offerSound() {
        SoundButton.hidden = audioRunning();
    }
    SoundButton.addEventListener("click", () => {
        const Now = playhead();
        Audio.resume().then(() => {
            if (Anchor && Now !== null) {
                Anchor.audioClock = Audio.currentTime - Now;
            }
            offerSound();
        });
    });
    Audio.onstatechange = offerSound;
    offerSound();

    new EventSource("events").onmessage = onMessage;
    requestAnimationFrame(draw);
})();
