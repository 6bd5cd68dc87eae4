// A NAME.html player opened from disk: no console errors; a click on the timeline
// shows the frame under it, with the lip gap the face computes from that frame drawn;
// the face moves with the audio clock, both when the page starts itself and after
// Play. With CADREL_SCREENSHOT=FILE it also saves the player, on its widest vowel, there.
"use strict";

const { pathToFileURL } = require("url");
const { openPage, run, check } = require("./browser");

const PlayerFile = process.argv[2];
// A page made without sound plays by the page's clock, and only when asked.
const bSilent = process.argv[3] === "--silent";

async function clickTimelineAt(Page, Time) {
    const Box = await (await Page.$("#timeline")).boundingBox();
    const Duration = await Page.evaluate(() => CadrelPlayer.duration);
    await Page.mouse.click(Box.x + (Time / Duration) * Box.width, Box.y + Box.height / 2);
    return Page.evaluate(() => {
        const Shown = CadrelPlayer.shownFrame();
        return {
            Shown: Shown,
            Time: CadrelPlayer.time(),
            Computed: CadrelFace.mouthOpening(CadrelPlayer.frameWeights(Shown)),
            Drawn: CadrelPlayer.face.drawnMouthOpening(),
        };
    });
}

// The face and the clock over 1.4 s of playing.
async function watchPlaying(Page) {
    const Samples = [];
    for (let Step = 0; Step < 15; ++Step) {
        await new Promise((Resolve) => setTimeout(Resolve, 100));
        Samples.push(await Page.evaluate(() => ({ Time: CadrelPlayer.time(), Clock: CadrelPlayer.audioClock(), Drawn: CadrelPlayer.face.drawnMouthOpening() })));
    }
    const First = Samples[0];
    const Last = Samples[Samples.length - 1];
    check(bSilent || Last.Clock - First.Clock > 0.8, "the audio clock ran " + (Last.Clock - First.Clock) + " s in 1.4 s");
    check(Last.Time - First.Time > 0.8, "the playhead moved " + (Last.Time - First.Time) + " s in 1.4 s");
    check(new Set(Samples.map((Sample) => Sample.Drawn.toFixed(1))).size >= 4, "the mouth hardly moved: " + JSON.stringify(Samples.map((Sample) => Sample.Drawn)));
}

run(async (Browser) => {
    const Errors = [];
    const Page = await openPage(Browser, Errors, { width: 800, height: 760 });
    await Page.goto(pathToFileURL(PlayerFile).href);
    await Page.waitForFunction(() => window.CadrelPlayer, { timeout: 20000 });
    if (!bSilent) {
        // The browser allows sound unasked (browser.js), so the page plays at once.
        await watchPlaying(Page);
        await Page.click("#play");
    }
    check(await Page.evaluate(() => !CadrelPlayer.playing()), "the player plays when it should not");

    const Facts = await Page.evaluate(() => {
        let Widest = 0;
        for (let Index = 0; Index < CadrelPlayer.frameCount; ++Index) {
            if ((CadrelPlayer.frameWeights(Index).jawOpen || 0) > (CadrelPlayer.frameWeights(Widest).jawOpen || 0)) {
                Widest = Index;
            }
        }
        return { Widest: Widest, Fps: CadrelPlayer.fps, Duration: CadrelPlayer.duration, Audio: CadrelPlayer.hasAudio, Frames: CadrelPlayer.frameCount };
    });
    check(Facts.Audio !== bSilent, bSilent ? "a silent page carries sound" : "the page carries no sound");
    check(Facts.Frames > 10, "the page carries " + Facts.Frames + " frames");

    const Times = [(Facts.Widest + 0.5) / Facts.Fps, Facts.Duration * 0.3, Facts.Duration * 0.7];
    const Openings = [];
    for (const Time of Times) {
        const Seen = await clickTimelineAt(Page, Time);
        // A click lands within a pixel of the time asked for, under 1.5 frames here.
        check(Math.abs(Seen.Time - Time) < 1.5 / Facts.Fps, "asked for " + Time + " s, the playhead is at " + Seen.Time);
        check(Seen.Shown === Math.min(Facts.Frames - 1, Math.floor(Seen.Time * Facts.Fps + 1e-6)), "at " + Seen.Time + " s the page shows frame " + Seen.Shown);
        check(Math.abs(Seen.Computed - Seen.Drawn) < 0.3, "frame " + Seen.Shown + ": gap " + Seen.Computed + " computed, " + Seen.Drawn + " drawn");
        Openings.push(Seen.Drawn);
    }
    check(Openings[0] > 10, "the widest vowel opens the lips " + Openings[0] + " units");
    if (process.env.CADREL_SCREENSHOT) {
        await clickTimelineAt(Page, Times[0]);
        await (await Page.$("main")).screenshot({ path: process.env.CADREL_SCREENSHOT });
    }

    // Play from the start by the button.
    await clickTimelineAt(Page, 0);
    await Page.click("#play");
    await watchPlaying(Page);
    await Page.click("#play");
    check(await Page.evaluate(() => !CadrelPlayer.playing()), "pause did not stop the player");
    check(Errors.length === 0, Errors.join("\n"));
});
