// The NAME.html player: the animation and its sound embedded in the page, the face
// showing the frame under the audio playhead, play/pause, and a timeline of the
// mouth curves that seeks when clicked. Needs face.js before it.
(function () {
    "use strict";

    const SvgNs = "http://www.w3.org/2000/svg";
    const Curves = [
        { Label: "jaw open", Colour: "#d1495b", Names: ["jawOpen"] },
        { Label: "mouth close", Colour: "#2e86ab", Names: ["mouthClose"] },
        { Label: "funnel", Colour: "#edae49", Names: ["mouthFunnel"] },
        { Label: "pucker", Colour: "#7b2cbf", Names: ["mouthPucker"] },
        { Label: "smile", Colour: "#3a7d44", Names: ["mouthSmileLeft", "mouthSmileRight"] },
    ];
    const TimelineWidth = 1000;
    const TimelineHeight = 100;

    // The answer's frames as {name: weight} objects and poses, so the face needs no
    // knowledge of the answer's layout.
    function readAnimation(Text) {
        const Answer = JSON.parse(Text);
        const Names = Array.isArray(Answer.blendShapesNames) ? Answer.blendShapesNames : [];
        const Bones = Array.isArray(Answer.bonesNames) ? Answer.bonesNames : [];
        const Frames = (Array.isArray(Answer.frames) ? Answer.frames : []).map(function (Frame) {
            const Weights = {};
            const Values = (Frame && Frame.blendshapes) || [];
            Names.forEach(function (Name, Index) {
                Weights[Name] = Number(Values[Index]) || 0;
            });
            const Angles = {};
            ((Frame && Frame.bones) || []).forEach(function (Bone, Index) {
                const Euler = (Bone && Bone.eul) || [];
                Angles[Bones[Index]] = { pitch: Number(Euler[0]) || 0, yaw: Number(Euler[1]) || 0, roll: Number(Euler[2]) || 0 };
            });
            return { Weights: Weights, Pose: { head: Angles.neck, leftEye: Angles.eyeLeft, rightEye: Angles.eyeRight } };
        });
        const Fps = Number(Answer.fps) > 0 ? Number(Answer.fps) : 60;
        return { Fps: Fps, Frames: Frames };
    }

    function decodeBase64(Text) {
        const Binary = atob(Text.replace(/\s+/g, ""));
        const Bytes = new Uint8Array(Binary.length);
        for (let Index = 0; Index < Binary.length; ++Index) {
            Bytes[Index] = Binary.charCodeAt(Index);
        }
        return Bytes.buffer;
    }

    // Plays the embedded sound through Web Audio, whose clock is the playhead; a page
    // without sound keeps time by the page's own clock. The audio context is made on
    // the first play, inside the click that browsers require before sound.
    function createClock(AudioBuffer) {
        let Context = null;
        let Playing = false;
        let Offset = 0;
        let StartedAt = 0;
        let Source = null;
        const Now = function () {
            return Context ? Context.currentTime : performance.now() / 1000;
        };
        const Clock = {
            context: function () {
                return Context;
            },
            // Calls Then once the browser lets the page start its sound unasked (a flag,
            // or a policy for local files); where it never does, the page waits for Play.
            whenSoundAllowed: function (Then) {
                if (!AudioBuffer || !window.AudioContext) {
                    return;
                }
                Context = Context || new AudioContext();
                if (Context.state === "running") {
                    Then();
                    return;
                }
                Context.addEventListener("statechange", function () {
                    if (Context.state === "running") {
                        Then();
                    }
                }, { once: true });
            },
            playing: function () {
                return Playing;
            },
            time: function () {
                return Playing ? Offset + Now() - StartedAt : Offset;
            },
            play: function (Duration) {
                if (Playing) {
                    return;
                }
                if (Offset >= Duration) {
                    Offset = 0;
                }
                if (AudioBuffer && window.AudioContext) {
                    Context = Context || new AudioContext();
                    Context.resume();
                    if (Offset < AudioBuffer.duration) {
                        Source = Context.createBufferSource();
                        Source.buffer = AudioBuffer;
                        Source.connect(Context.destination);
                        Source.start(0, Offset);
                    }
                }
                StartedAt = Now();
                Playing = true;
            },
            pause: function () {
                if (!Playing) {
                    return;
                }
                Offset = Clock.time();
                Playing = false;
                if (Source) {
                    Source.stop();
                    Source.disconnect();
                    Source = null;
                }
            },
            seek: function (Time) {
                const Resume = Playing;
                Clock.pause();
                Offset = Math.max(0, Time);
                return Resume;
            },
        };
        return Clock;
    }

    function element(Parent, Name, Attributes) {
        const Node = document.createElementNS(SvgNs, Name);
        for (const Key in Attributes) {
            Node.setAttribute(Key, Attributes[Key]);
        }
        Parent.appendChild(Node);
        return Node;
    }

    // Each curve as one polyline in a 1000 x 100 box, at most a point per unit across.
    function drawTimeline(Svg, Legend, Animation, Duration) {
        Svg.setAttribute("viewBox", "0 0 " + TimelineWidth + " " + TimelineHeight);
        const Count = Animation.Frames.length;
        const Step = Math.max(1, Math.floor(Count / TimelineWidth));
        for (const Curve of Curves) {
            if (!Curve.Names.some((Name) => Count && Name in Animation.Frames[0].Weights)) {
                continue;
            }
            const Points = [];
            for (let Index = 0; Index < Count; Index += Step) {
                const Weights = Animation.Frames[Index].Weights;
                const Value = Curve.Names.reduce((Sum, Name) => Sum + (Weights[Name] || 0), 0) / Curve.Names.length;
                const X = ((Index / Animation.Fps) / Duration) * TimelineWidth;
                Points.push(X.toFixed(1) + "," + (TimelineHeight - 4 - Value * (TimelineHeight - 8)).toFixed(1));
            }
            element(Svg, "polyline", { points: Points.join(" "), fill: "none", stroke: Curve.Colour, "stroke-width": 1.5, "vector-effect": "non-scaling-stroke" });
            const Key = document.createElement("span");
            Key.innerHTML = "<i></i>";
            Key.firstChild.style.background = Curve.Colour;
            Key.appendChild(document.createTextNode(Curve.Label));
            Legend.appendChild(Key);
        }
        return element(Svg, "line", { y1: 0, y2: TimelineHeight, stroke: "#2a211b", "stroke-width": 1.5, "vector-effect": "non-scaling-stroke" });
    }

    // The face, the playhead and the time line, all showing the frame under the clock.
    function createPlayer(Animation, AudioBuffer) {
        const Face = CadrelFace.create(document.getElementById("face"));
        const Button = document.getElementById("play");
        const TimeText = document.getElementById("time");
        const FramesSeconds = Animation.Frames.length / Animation.Fps;
        const Duration = Math.max(FramesSeconds, AudioBuffer ? AudioBuffer.duration : 0) || 1;
        const Clock = createClock(AudioBuffer);
        const Playhead = drawTimeline(document.getElementById("timeline"), document.getElementById("legend"), Animation, Duration);
        const Player = { Face: Face, Clock: Clock, Duration: Duration, Shown: -1 };

        Player.show = function () {
            const Time = Math.min(Clock.time(), Duration);
            Player.Shown = Math.min(Animation.Frames.length - 1, Math.max(0, Math.floor(Time * Animation.Fps + 1e-6)));
            if (Player.Shown >= 0) {
                Face.apply(Animation.Frames[Player.Shown].Weights, Animation.Frames[Player.Shown].Pose);
            }
            const X = ((Time / Duration) * TimelineWidth).toFixed(1);
            Playhead.setAttribute("x1", X);
            Playhead.setAttribute("x2", X);
            TimeText.textContent = Time.toFixed(2) + " / " + Duration.toFixed(2) + " s, frame " + Math.max(0, Player.Shown);
        };
        const tick = function () {
            if (Clock.playing() && Clock.time() >= Duration) {
                Clock.seek(Duration);
                Button.textContent = "Play";
            }
            Player.show();
            if (Clock.playing()) {
                requestAnimationFrame(tick);
            }
        };
        Player.play = function () {
            Clock.play(Duration);
            Button.textContent = "Pause";
            requestAnimationFrame(tick);
        };
        Player.pause = function () {
            Clock.pause();
            Button.textContent = "Play";
            Player.show();
        };
        Player.seek = function (Time) {
            const Resume = Clock.seek(Math.min(Math.max(0, Time), Duration));
            Player.show();
            if (Resume) {
                Player.play();
            }
        };
        return Player;
    }

    // Play/pause by the button or the space bar, seeking by a click on the time line, and
    // playing unasked where the browser allows it, until the user has acted.
    function bindControls(Player) {
        const Button = document.getElementById("play");
        const Timeline = document.getElementById("timeline");
        let UserActed = false;
        Button.addEventListener("click", function () {
            UserActed = true;
            Player.Clock.playing() ? Player.pause() : Player.play();
        });
        Timeline.addEventListener("click", function (Event) {
            UserActed = true;
            const Box = Timeline.getBoundingClientRect();
            Player.seek(((Event.clientX - Box.left) / Box.width) * Player.Duration);
        });
        document.addEventListener("keydown", function (Event) {
            if (Event.key === " " && Event.target === document.body) {
                Event.preventDefault();
                Button.click();
            }
        });
        Player.Clock.whenSoundAllowed(function () {
            if (!UserActed) {
                Player.play();
            }
        });
    }

    function start(Animation, AudioBuffer) {
        const Player = createPlayer(Animation, AudioBuffer);
        Player.show();
        bindControls(Player);
        // What the browser tests read; the page itself does not use it.
        window.CadrelPlayer = {
            face: Player.Face,
            fps: Animation.Fps,
            duration: Player.Duration,
            frameCount: Animation.Frames.length,
            hasAudio: !!AudioBuffer,
            shownFrame: () => Player.Shown,
            frameWeights: (Index) => Animation.Frames[Index].Weights,
            time: () => Player.Clock.time(),
            audioClock: () => (Player.Clock.context() ? Player.Clock.context().currentTime : null),
            playing: () => Player.Clock.playing(),
        };
    }

    const Animation = readAnimation(document.getElementById("cadrel-animation").textContent);
    const Audio = document.getElementById("cadrel-audio").textContent.trim();
    const Note = document.getElementById("note");
    if (!Audio || !window.OfflineAudioContext) {
        Note.textContent = Audio ? "this browser has no Web Audio: silent" : "no sound in this file";
        start(Animation, null);
        return;
    }
    // Decoding needs no sound device and no click, so an offline context does it.
    new OfflineAudioContext(1, 1, 44100).decodeAudioData(decodeBase64(Audio)).then(
        function (Buffer) {
            start(Animation, Buffer);
        },
        function () {
            Note.textContent = "the embedded sound could not be decoded: silent";
            start(Animation, null);
        }
    );
})();
