// The live path end to end: `cadrel serve` sends its link to `cadrel view`, whose page
// is open in chromium while `cadrel stream` streams the demo speech, all on free ports.
// The page must receive every frame in order, show at every moment the frame under the
// audio playhead, and draw frames within 50 ms (median) of their arrival or, for frames
// that came early, of their time coming. A flood of malformed datagrams is the receiver's
// test (FVelkReceiverTest) and the datagram fuzzer's.
"use strict";

const readline = require("readline");
const { spawn } = require("child_process");
const { openPage, run, check } = require("./browser");

const [Cadrel, Speech] = process.argv.slice(2);

const Children = [];

function start(Arguments) {
    const Child = spawn(Cadrel, Arguments, { stdio: ["ignore", "pipe", "inherit"] });
    Children.push(Child);
    return Child;
}

function firstLines(Child, Count) {
    return new Promise((Resolve, Reject) => {
        const Lines = [];
        readline.createInterface({ input: Child.stdout }).on("line", (Line) => {
            Lines.push(Line);
            if (Lines.length === Count) {
                Resolve(Lines);
            }
        });
        Child.on("exit", (Code) => Reject(new Error(Child.spawnargs.join(" ") + " exited " + Code)));
    });
}

function exited(Child) {
    return new Promise((Resolve) => Child.on("exit", (Code) => Resolve(Code)));
}

function median(Values) {
    const Sorted = Values.slice().sort((A, B) => A - B);
    return Sorted[Math.floor(Sorted.length / 2)];
}

run(async (Browser) => {
    try {
        const [PageUrl, PortLine] = await firstLines(start(["view", "--web-port", "0", "--velk-port", "0", "--audio-port", "0"]), 2);
        const [, VelkPort, AudioPort] = PortLine.match(/^velk port (\d+), audio port (\d+)$/).map(Number);
        const [ServerUrl] = await firstLines(
            start(["serve", "--port", "0", "--quiet", "--velk-port", String(VelkPort), "--audio-port", String(AudioPort)]),
            1
        );

        const Errors = [];
        const Page = await openPage(Browser, Errors);
        await Page.goto(PageUrl);
        await Page.waitForFunction(() => window.CadrelView.receiver.type === "counts");

        const Stream = start(["stream", Speech, "--url", ServerUrl]);
        check((await exited(Stream)) === 0, "cadrel stream failed");
        // Until the playhead has passed the last frame.
        await Page.waitForFunction(
            () => window.CadrelView.shown.length > 0 &&
                window.CadrelView.shown[window.CadrelView.shown.length - 1].frame === window.CadrelView.lastNumber,
            { timeout: 20000, polling: 50 }
        );
        const View = await Page.evaluate(() => ({
            ...window.CadrelView,
            audio: document.getElementById("sound").hidden,
            status: document.getElementById("status").textContent,
        }));

        check(Errors.length === 0, "console errors: " + Errors.join("; "));
        check(View.audio, "the sound did not play");
        check(View.received === View.receiver.frames, "page got " + View.received + " frames, receiver " + View.receiver.frames);
        check(View.received === View.lastNumber + 1 && View.outOfOrder === 0 && View.receiver.missing === 0,
            "frames missing or out of order: " + View.status);
        check(View.received > 100, "too few frames: " + View.received);
        // Within one frame: the frame under the playhead, or the one before it while the next is on its way.
        const Off = View.shown.filter((Shown, Index) => {
            const Behind = Shown.playhead - Shown.time;
            const bLast = Index === View.shown.length - 1;
            return Behind < 0 || (!bLast && Behind >= 2 * Shown.step);
        });
        // A frame the machine delayed past its time is counted late and the one before stays up; a
        // loaded machine may do that now and then, but not often.
        check(Off.length <= 0.02 * View.shown.length,
            Off.length + " of " + View.shown.length + " frames shown off the playhead: " + JSON.stringify(Off.slice(0, 3)));
        const Lag = median(View.lags);
        check(Lag < 50, "median arrival-to-display lag " + Lag.toFixed(1) + " ms");
        check(View.status.includes("malformed " + View.receiver.malformed), "status line: " + View.status);

        // A page opened (or reloaded) after the fact gets the stream again and shows its live edge.
        const Again = await openPage(Browser, Errors);
        await Again.goto(PageUrl);
        await Again.waitForFunction((Frames) => window.CadrelView.received === Frames && window.CadrelView.shown.length > 0,
            { timeout: 20000, polling: 50 }, View.received);
        check(Errors.length === 0, "console errors on the second page: " + Errors.join("; "));
        if (process.env.CADREL_LIVE_SHOT) {
            await Page.screenshot({ path: process.env.CADREL_LIVE_SHOT });
        }
        console.log("delivery " + median(View.deliveries).toFixed(1) + " ms, frames " + View.received + ", dropped " + View.dropped + ", late " + View.late +
            ", median lag " + Lag.toFixed(1) + " ms");
    } finally {
        Children.forEach((Child) => Child.kill());
    }
});
