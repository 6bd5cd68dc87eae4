// A face in SVG driven by ARKit blend-shape weights and VMC bone rotations.
// Plain script with no dependencies: the live view serves it and every NAME.html
// player inlines it, so it must work from file:// and inside one page.
//
// Axes follow Unity's, which VMC carries: positive pitch looks down, positive yaw
// turns toward the viewer's left, positive roll tips the head counterclockwise as
// the viewer sees it. ARKit's Left is the face's own left: the viewer's right.
(function () {
    "use strict";

    const SvgNs = "http://www.w3.org/2000/svg";
    const MouthY = 168; // where the closed lips meet at rest
    const JawTravel = 30; // lip gap at jawOpen 1
    const MaxGap = 42;
    let NextId = 0;

    function clamp(Value, Low, High) {
        return Math.min(High, Math.max(Low, Value));
    }

    function lerp(A, B, T) {
        return A + (B - A) * T;
    }

    // Weights come from files and the network: anything but a finite number counts 0.
    function weightOf(Weights, Name) {
        const Value = Weights ? Number(Weights[Name]) : 0;
        return Number.isFinite(Value) ? clamp(Value, 0, 1) : 0;
    }

    function angleOf(Part, Name, Limit) {
        const Value = Part ? Number(Part[Name]) : 0;
        return Number.isFinite(Value) ? clamp(Value, -Limit, Limit) : 0;
    }

    function pair(Weights, Stem) {
        return (weightOf(Weights, Stem + "Left") + weightOf(Weights, Stem + "Right")) / 2;
    }

    // The lips' vertical gap: the jaw drops the lower lip, mouthClose brings it back up
    // while the jaw stays open (m, b, p), a funnel holds a small hole, raised and lowered
    // lips bare the teeth, and pucker and press squeeze the hole shut.
    function mouthOpening(Weights) {
        const Jaw = weightOf(Weights, "jawOpen");
        const Close = weightOf(Weights, "mouthClose");
        const Gap =
            JawTravel * Math.max(0, Jaw - Close) +
            5 * weightOf(Weights, "mouthFunnel") +
            4 * pair(Weights, "mouthUpperUp") +
            4 * pair(Weights, "mouthLowerDown") -
            4 * weightOf(Weights, "mouthPucker") -
            3 * pair(Weights, "mouthPress");
        return clamp(Gap, 0, MaxGap);
    }

    // One corner of the mouth, on the viewer's Side (+1 right, -1 left), which is the
    // face's Left for +1.
    function mouthCorner(Weights, Side, Round) {
        const Face = Side > 0 ? "Left" : "Right";
        const Smile = weightOf(Weights, "mouthSmile" + Face);
        const HalfWidth =
            21 *
            (1 +
                0.28 * Smile +
                0.3 * weightOf(Weights, "mouthStretch" + Face) +
                0.1 * weightOf(Weights, "mouthDimple" + Face) -
                0.4 * Round);
        const Lift = 6 * Smile - 6 * weightOf(Weights, "mouthFrown" + Face) + weightOf(Weights, "mouthDimple" + Face);
        return { HalfWidth: HalfWidth, Lift: Lift };
    }

    // The mouth in the viewer's terms: its Left corner is the face's Right one.
    function mouthShape(Weights) {
        const Pucker = weightOf(Weights, "mouthPucker");
        const Funnel = weightOf(Weights, "mouthFunnel");
        const Round = clamp(Funnel + 0.6 * Pucker, 0, 1);
        const Gap = mouthOpening(Weights);
        const UpperY =
            MouthY -
            3.5 * pair(Weights, "mouthUpperUp") -
            2 * weightOf(Weights, "mouthShrugUpper") +
            1.5 * weightOf(Weights, "mouthRollUpper");
        const Press = pair(Weights, "mouthPress");
        const Jaw = 8 * (weightOf(Weights, "jawLeft") - weightOf(Weights, "jawRight"));
        return {
            X: 100 + 6 * (weightOf(Weights, "mouthLeft") - weightOf(Weights, "mouthRight")) + Jaw / 2,
            JawX: Jaw,
            UpperY: UpperY,
            LowerY: UpperY + Gap,
            Gap: Gap,
            Round: Round,
            Left: mouthCorner(Weights, -1, Round),
            Right: mouthCorner(Weights, 1, Round),
            UpperLip: 6 * (1 - 0.75 * weightOf(Weights, "mouthRollUpper")) * (1 - 0.3 * Press) + 3 * Pucker + 2 * Funnel,
            LowerLip:
                8 * (1 - 0.75 * weightOf(Weights, "mouthRollLower")) * (1 - 0.3 * Press) +
                3 * Pucker +
                2.5 * Funnel -
                2 * weightOf(Weights, "mouthShrugLower"),
        };
    }

    // SVG path data from commands and numbers: pathOf("M", 1, 2, "L", 3, 4).
    function pathOf() {
        return Array.prototype.map
            .call(arguments, (Part) => (typeof Part === "number" ? Part.toFixed(2) : Part))
            .join(" ");
    }

    // A closed lip outline through both corners whose top and bottom pass through TopY
    // and BottomY at the middle; Round pulls the control points out to an O.
    function lipPath(Shape, Spread, TopY, BottomY, Round) {
        const K = 0.5 + 0.45 * Round;
        const LeftX = Shape.X - Shape.Left.HalfWidth - Spread;
        const RightX = Shape.X + Shape.Right.HalfWidth + Spread;
        const CornerMid = Shape.UpperY + 0.45 * Shape.Gap;
        const LeftY = CornerMid - Shape.Left.Lift;
        const RightY = CornerMid - Shape.Right.Lift;
        // A cubic's middle is (P0 + 3 P1 + 3 P2 + P3) / 8: these controls put it at TopY and BottomY.
        const Top = (8 * TopY - LeftY - RightY) / 6;
        const Bottom = (8 * BottomY - LeftY - RightY) / 6;
        const InLeft = Shape.X - (Shape.Left.HalfWidth + Spread) * K;
        const InRight = Shape.X + (Shape.Right.HalfWidth + Spread) * K;
        const Upper = pathOf("M", LeftX, LeftY, "C", InLeft, Top, InRight, Top, RightX, RightY);
        return { Upper: Upper, Closed: Upper + pathOf("C", InRight, Bottom, InLeft, Bottom, LeftX, LeftY, "Z") };
    }

    function element(Parent, Name, Attributes) {
        const Node = document.createElementNS(SvgNs, Name);
        set(Node, Attributes);
        if (Parent) {
            Parent.appendChild(Node);
        }
        return Node;
    }

    function set(Node, Attributes) {
        for (const Key in Attributes) {
            Node.setAttribute(Key, Attributes[Key]);
        }
    }

    function drawEye(Defs, Parent, Id, X, Y) {
        const Clip = element(Defs, "clipPath", { id: Id });
        const Shape = element(Clip, "path", {});
        const Group = element(Parent, "g", { "clip-path": "url(#" + Id + ")" });
        element(Group, "rect", { x: X - 16, y: Y - 16, width: 32, height: 32, fill: "#fbfaf7" });
        const Iris = element(Group, "g", {});
        element(Iris, "circle", { cx: X, cy: Y, r: 6.5, fill: "#5b3b22" });
        element(Iris, "circle", { cx: X, cy: Y, r: 3, fill: "#120a06" });
        element(Iris, "circle", { cx: X + 2, cy: Y - 2, r: 1.3, fill: "#ffffff" });
        const Upper = element(Group, "path", { fill: "#ebb894" });
        const Lower = element(Group, "path", { fill: "#ebb894" });
        const Lash = element(Parent, "path", { fill: "none", stroke: "#3b2418", "stroke-width": 1.8, "stroke-linecap": "round" });
        return { X: X, Y: Y, Shape: Shape, Iris: Iris, Upper: Upper, Lower: Lower, Lash: Lash };
    }

    function applyEye(Eye, Weights, Face, Look, Side) {
        const { X, Y } = Eye;
        const Wide = weightOf(Weights, "eyeWide" + Face);
        const Blink = weightOf(Weights, "eyeBlink" + Face);
        const Squint = clamp(weightOf(Weights, "eyeSquint" + Face) + 0.5 * weightOf(Weights, "cheekSquint" + Face), 0, 1);
        const Top = Y - 13 * (1 + 0.35 * Wide);
        set(Eye.Shape, { d: pathOf("M", X - 14, Y, "C", X - 8, Top, X + 8, Top, X + 14, Y, "C", X + 8, Y + 9, X - 8, Y + 9, X - 14, Y, "Z") });
        // The lid's edge runs from the open eye's top curve down to its bottom one.
        const Lid = lerp(Y - 10 * (1 + 0.35 * Wide) - 3, Y + 13.5, Blink);
        set(Eye.Upper, { d: pathOf("M", X - 16, Y - 20, "L", X + 16, Y - 20, "L", X + 16, Y, "L", X + 14, Y, "Q", X, Lid, X - 14, Y, "L", X - 16, Y, "Z") });
        set(Eye.Lash, { d: pathOf("M", X + 14, Y, "Q", X, Lid, X - 14, Y) });
        const LowerLid = lerp(Y + 13.5, Y + 1, 0.6 * Squint);
        set(Eye.Lower, { d: pathOf("M", X - 14, Y, "Q", X, LowerLid, X + 14, Y, "L", X + 16, Y + 20, "L", X - 16, Y + 20, "Z") });
        const Out = weightOf(Weights, "eyeLookOut" + Face) - weightOf(Weights, "eyeLookIn" + Face);
        const Across = clamp(-0.3 * angleOf(Look, "yaw", 60) + 6 * Side * Out, -7, 7);
        const Down = weightOf(Weights, "eyeLookDown" + Face) - weightOf(Weights, "eyeLookUp" + Face);
        const Up = clamp(0.3 * angleOf(Look, "pitch", 60) + 4 * Down, -4, 4);
        set(Eye.Iris, { transform: pathOf("translate(", Across, Up, ")") });
    }

    function drawBrow(Parent) {
        return element(Parent, "path", { fill: "none", stroke: "#4a2e1e", "stroke-width": 4.5, "stroke-linecap": "round" });
    }

    function applyBrow(Brow, Weights, Face, Side) {
        const Down = weightOf(Weights, "browDown" + Face);
        const InnerY = 90 - 8 * weightOf(Weights, "browInnerUp") + 4 * Down;
        const OuterY = 89 - 8 * weightOf(Weights, "browOuterUp" + Face) + 2 * Down;
        const Arch = Math.min(InnerY, OuterY) - 7 + 2 * Down;
        set(Brow, { d: pathOf("M", 100 + Side * (12 - 2 * Down), InnerY, "Q", 100 + Side * 30, Arch, 100 + Side * 44, OuterY) });
    }

    function applyCheek(Cheek, Weights, Face, Side) {
        const Puff = weightOf(Weights, "cheekPuff");
        const Raise = weightOf(Weights, "cheekSquint" + Face) + weightOf(Weights, "mouthSmile" + Face);
        set(Cheek, { cx: 100 + Side * (32 + 3 * Puff), cy: 148 - 2.5 * Raise, opacity: (0.18 + 0.22 * Raise + 0.2 * Puff).toFixed(3) });
    }

    // The nostrils' wings and the tip between them; a sneer lifts the wings.
    function nosePath(Weights) {
        const Wing = 139 - 2.5 * pair(Weights, "noseSneer");
        return pathOf("M", 89, Wing, "Q", 92, Wing + 4, 96, 142, "Q", 100, 145, 104, 142, "Q", 108, Wing + 4, 111, Wing);
    }

    function headOutline(Weights, Shape) {
        const Puff = 7 * weightOf(Weights, "cheekPuff");
        const Drop = Math.max(0, 0.85 * (Shape.LowerY - MouthY));
        const Jaw = Shape.JawX;
        const ChinX = 100 + Jaw;
        const ChinY = 216 + Drop;
        return pathOf(
            "M", 100, 26, "C", 146, 26, 161, 66, 161, 108,
            "C", 161 + Puff, 148, 155 + Puff / 2, 178, 137 + Jaw / 2, 196 + Drop / 2,
            "C", 126 + Jaw, 208 + Drop, ChinX + 16, ChinY, ChinX, ChinY,
            "C", ChinX - 16, ChinY, 74 + Jaw, 208 + Drop, 63 + Jaw / 2, 196 + Drop / 2,
            "C", 45 - Puff / 2, 178, 39 - Puff, 148, 39, 108, "C", 39, 66, 54, 26, 100, 26, "Z"
        );
    }

    // Neck and shoulders stay; the head, its outline, ears and hair turn on the neck.
    function drawHead(Svg) {
        element(Svg, "path", { d: "M84,196L82,236C60,238 30,244 18,250L182,250C170,244 140,238 118,236L116,196Z", fill: "#e2ab86" });
        const Head = element(Svg, "g", {});
        element(Head, "ellipse", { cx: 40, cy: 122, rx: 9, ry: 15, fill: "#e7b18d" });
        element(Head, "ellipse", { cx: 160, cy: 122, rx: 9, ry: 15, fill: "#e7b18d" });
        const Outline = element(Head, "path", { fill: "#f0c6a4", stroke: "#b77f5e", "stroke-width": 1.2 });
        const Hair = "M40,112C34,40 78,14 100,14C140,14 170,42 160,112C154,82 140,56 100,54C68,56 50,80 40,112Z";
        element(Head, "path", { d: Hair, fill: "#3d2618" });
        return { Head: Head, Outline: Outline, Features: element(Head, "g", {}) };
    }

    // Lips, then the dark opening between them, the teeth and tongue seen through it,
    // and the seam where the lips meet, drawn last so closed lips still show it.
    function drawMouth(Defs, Parent, Id) {
        const Lips = element(Parent, "path", { fill: "#c4626a", stroke: "#9c4650", "stroke-width": 0.8, class: "cadrel-lips" });
        const Clip = element(element(Defs, "clipPath", { id: Id }), "path", {});
        const Opening = element(Parent, "path", { fill: "#4a1820", stroke: "#6e2a33", "stroke-width": 1.1, "stroke-linejoin": "round" });
        const Inside = element(Parent, "g", { "clip-path": "url(#" + Id + ")" });
        return {
            Lips: Lips,
            Clip: Clip,
            Opening: Opening,
            Tongue: element(Inside, "ellipse", { fill: "#c8566a" }),
            UpperTeeth: element(Inside, "rect", { fill: "#f6f3ea" }),
            LowerTeeth: element(Inside, "rect", { fill: "#ece7da" }),
            Seam: element(Parent, "path", { fill: "none", stroke: "#6a2530", "stroke-width": 1.5, "stroke-linecap": "round" }),
        };
    }

    function applyMouth(Mouth, Weights, Shape) {
        const Lips = lipPath(Shape, 2.5, Shape.UpperY - Shape.UpperLip, Shape.LowerY + Shape.LowerLip, Math.min(1, Shape.Round + 0.1));
        set(Mouth.Lips, { d: Lips.Closed });
        const Opening = lipPath(Shape, 0, Shape.UpperY, Shape.LowerY, Shape.Round);
        set(Mouth.Opening, { d: Opening.Closed });
        set(Mouth.Clip, { d: Opening.Closed });
        set(Mouth.Seam, { d: Opening.Upper });
        const Width = Shape.Left.HalfWidth + Shape.Right.HalfWidth;
        const Left = Shape.X - Shape.Left.HalfWidth;
        set(Mouth.UpperTeeth, { x: Left + 4, y: Shape.UpperY - 2, width: Math.max(0, Width - 8), height: 2 + Math.min(5, Shape.Gap * 0.35) });
        set(Mouth.LowerTeeth, { x: Left + 6, y: Shape.LowerY - Math.min(3.5, Shape.Gap * 0.15), width: Math.max(0, Width - 12), height: 4 });
        const Out = weightOf(Weights, "tongueOut");
        set(Mouth.Tongue, { cx: Shape.X, cy: Shape.LowerY + 1 - 6 * Out, rx: Width * 0.32, ry: 5 + 6 * Out });
    }

    function create(Container) {
        const Prefix = "cadrel-face-" + NextId++;
        const Svg = element(null, "svg", { viewBox: "0 0 200 250", class: "cadrel-face", role: "img", "aria-label": "animated face" });
        const Defs = element(Svg, "defs", {});
        const { Head, Outline, Features } = drawHead(Svg);
        const Cheeks = [-1, 1].map(() => element(Features, "ellipse", { rx: 12, ry: 7, fill: "#e58f7e" }));
        const Eyes = [drawEye(Defs, Features, Prefix + "-eye-r", 72, 110), drawEye(Defs, Features, Prefix + "-eye-l", 128, 110)];
        const Brows = [drawBrow(Features), drawBrow(Features)];
        const NoseSide = element(Features, "path", { d: "M95,114Q94,128 91.5,136", fill: "none", stroke: "#d9a582", "stroke-width": 1.4, "stroke-linecap": "round" });
        const Nose = element(Features, "path", { fill: "none", stroke: "#b77f5e", "stroke-width": 1.6, "stroke-linecap": "round" });
        const Mouth = drawMouth(Defs, Features, Prefix + "-mouth");
        Container.appendChild(Svg);

        function apply(Weights, Pose) {
            const HeadPose = (Pose && Pose.head) || {};
            const Shape = mouthShape(Weights);
            set(Head, { transform: pathOf("rotate(", -angleOf(HeadPose, "roll", 45), 100, 215, ")") });
            set(Features, { transform: pathOf("translate(", -0.35 * angleOf(HeadPose, "yaw", 45), 0.3 * angleOf(HeadPose, "pitch", 45), ")") });
            set(Outline, { d: headOutline(Weights, Shape) });
            // The viewer's left is the face's Right.
            [["Right", -1, Pose && Pose.rightEye], ["Left", 1, Pose && Pose.leftEye]].forEach(function ([Face, Side, Look], Index) {
                applyEye(Eyes[Index], Weights, Face, Look, Side);
                applyBrow(Brows[Index], Weights, Face, Side);
                applyCheek(Cheeks[Index], Weights, Face, Side);
            });
            set(Nose, { d: nosePath(Weights) });
            set(NoseSide, { transform: pathOf("translate(", 0, -pair(Weights, "noseSneer"), ")") });
            applyMouth(Mouth, Weights, Shape);
        }

        // The gap measured on what the browser fills: the opening's extent on a vertical
        // line through its middle, in the opening path's own user units.
        function drawnMouthOpening() {
            const Inner = Mouth.Opening;
            const Box = Inner.getBBox();
            const X = Box.x + Box.width / 2;
            const Step = 0.02;
            let Filled = 0;
            const Probe = Svg.createSVGPoint();
            Probe.x = X;
            for (let Y = Box.y; Y <= Box.y + Box.height; Y += Step) {
                Probe.y = Y;
                if (Inner.isPointInFill(Probe)) {
                    Filled += Step;
                }
            }
            return Filled;
        }

        apply({}, {});
        return { svg: Svg, apply: apply, drawnMouthOpening: drawnMouthOpening };
    }

    window.CadrelFace = { create: create, mouthOpening: mouthOpening };
})();
