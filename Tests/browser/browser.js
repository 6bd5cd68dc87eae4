// What every browser test shares: Debian's chromium, headless, and a page whose
// console errors and uncaught exceptions fail the test.
"use strict";

const puppeteer = require("puppeteer-core");

const Chromium = process.env.CADREL_CHROMIUM || "/usr/bin/chromium";

async function launch() {
    return puppeteer.launch({
        executablePath: Chromium,
        headless: true,
        args: [
            // Root in containers cannot use chromium's sandbox.
            ...(process.getuid && process.getuid() === 0 ? ["--no-sandbox"] : []),
            "--autoplay-policy=no-user-gesture-required",
            "--disable-gpu",
        ],
    });
}

// A new page that records console errors, page errors and failed loads in Errors.
async function openPage(Browser, Errors, Size = { width: 800, height: 600 }) {
    const Page = await Browser.newPage();
    await Page.setViewport(Size);
    Page.on("console", (Message) => {
        if (Message.type() === "error") {
            Errors.push("console: " + Message.text());
        }
    });
    Page.on("pageerror", (Error) => Errors.push("page: " + Error.message));
    Page.on("requestfailed", (Request) => Errors.push("load: " + Request.url() + " " + Request.failure().errorText));
    return Page;
}

// Runs Body(browser) and exits 0 when it returns, 1 with the reason when it throws.
function run(Body) {
    let Browser = null;
    const Finish = async (Code, Message) => {
        if (Message) {
            console.error(Message);
        }
        if (Browser) {
            await Browser.close().catch(() => {});
        }
        process.exit(Code);
    };
    launch()
        .then((Launched) => {
            Browser = Launched;
            return Body(Browser);
        })
        .then(() => Finish(0), (Error) => Finish(1, Error && Error.stack ? Error.stack : String(Error)));
}

function check(Condition, Message) {
    if (!Condition) {
        throw new Error(Message);
    }
}

module.exports = { launch, openPage, run, check };
