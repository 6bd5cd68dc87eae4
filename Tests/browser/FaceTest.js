// The face script alone: the drawn lip gap agrees with the one it computes, the
// mouth closes for m/b/p, hostile weights draw nothing broken. The page gets its
// head and eye angles from the live receiver, whose VmcPoseTest checks them. With
// CADREL_FACE_SHOTS=DIR it also saves a picture of each pose there, to look at.
"use strict";

const path = require("path");
const { openPage, run, check } = require("./browser");

const FaceScript = process.argv[2];

const Poses = [
    { Name: "rest", Weights: {} },
    { Name: "vowel", Weights: { jawOpen: 0.7, mouthLowerDownLeft: 0.3, mouthLowerDownRight: 0.3, browInnerUp: 0.2 } },
    { Name: "closed", Weights: { jawOpen: 0.35, mouthClose: 0.35, mouthPressLeft: 0.4, mouthPressRight: 0.4 } },
    { Name: "rounded", Weights: { jawOpen: 0.2, mouthFunnel: 0.8, mouthPucker: 0.5 } },
    { Name: "smile", Weights: { jawOpen: 0.15, mouthSmileLeft: 0.9, mouthSmileRight: 0.9, cheekSquintLeft: 0.5, cheekSquintRight: 0.5 } },
    { Name: "blink", Weights: { eyeBlinkLeft: 1, eyeBlinkRight: 1, browDownLeft: 0.6, browDownRight: 0.6 } },
    {
        Name: "look",
        Weights: { jawOpen: 0.4, mouthStretchLeft: 0.6, mouthRollLower: 0.5 },
        Pose: { head: { roll: 12, yaw: 15 }, leftEye: { yaw: -20, pitch: 10 }, rightEye: { yaw: -20, pitch: 10 } },
    },
    { Name: "hostile", Weights: { jawOpen: "1e400", mouthClose: NaN, mouthFunnel: -5, eyeBlinkLeft: null }, Pose: { head: { roll: "x" } } },
];

run(async (Browser) => {
    const Errors = [];
    const Page = await openPage(Browser, Errors, { width: 400, height: 500 });
    await Page.setContent("<!doctype html><html><body style='margin:0'><div id='face' style='width:400px;height:500px'></div></body></html>");
    await Page.addScriptTag({ path: FaceScript });
    await Page.evaluate(() => {
        window.TheFace = CadrelFace.create(document.getElementById("face"));
    });
    const Gaps = {};
    const Widths = {};
    for (const { Name, Weights, Pose } of Poses) {
        const [Computed, Drawn, Width] = await Page.evaluate(
            (W, P) => {
                TheFace.apply(W, P || {});
                return [CadrelFace.mouthOpening(W), TheFace.drawnMouthOpening(), TheFace.svg.querySelector(".cadrel-lips").getBBox().width];
            },
            Weights,
            Pose
        );
        check(Number.isFinite(Computed), Name + ": the computed gap is " + Computed);
        check(Math.abs(Computed - Drawn) < 0.3, Name + ": computed gap " + Computed + ", drawn " + Drawn);
        Gaps[Name] = Computed;
        Widths[Name] = Width;
        if (process.env.CADREL_FACE_SHOTS) {
            await Page.screenshot({ path: path.join(process.env.CADREL_FACE_SHOTS, Name + ".png") });
        }
    }
    check(Gaps.rest < 0.5 && Gaps.closed < 0.5, "lips apart at rest or for m/b/p: " + JSON.stringify(Gaps));
    check(Gaps.vowel > 15, "a vowel barely opens the mouth: " + Gaps.vowel);
    check(Widths.rounded < 0.8 * Widths.rest && Widths.smile > 1.15 * Widths.rest, "lip widths: " + JSON.stringify(Widths));

    check(Errors.length === 0, Errors.join("\n"));
});
