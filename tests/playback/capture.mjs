#!/usr/bin/env node
// Plays a batch of SWF movies in Ruffle inside headless Chromium and writes the
// requested frames as PNG files, plus a JSON report of what the player said.
//
//   node capture.mjs <batch.json> <report.json>
//
// batch.json: {"jobs": [{"movie": "/abs/a.swf", "frames": [0, 3], "outDir": "/abs/out",
//                        "clicks": [{"frame": 1, "x": 20, "y": 20}]}]}
// A click happens once its frame has been drawn (and captured, if asked for);
// the report lists every URL the movie then tried to open ("openedUrls").
// Frames are zero based and counted in frames the player has run since the
// movie started, so a looping movie of n frames shows frame k % n at frame k.
//
// Time in the page is virtual: requestAnimationFrame callbacks are queued and
// run only when this script flushes them at a chosen time, so every run sees
// the same frame schedule and draws the same pixels.

import {mkdirSync, readFileSync, writeFileSync, existsSync} from "node:fs";
import {createServer} from "node:http";
import {dirname, join} from "node:path";
import {fileURLToPath} from "node:url";
import {inflateSync} from "node:zlib";
import {chromium} from "playwright-core";

const here = dirname(fileURLToPath(import.meta.url));
const ruffleDir = join(here, "node_modules", "@ruffle-rs", "ruffle");
const pagePollMs = 10;
const clickSettleMs = 300;
// Generous: the first movie waits for Ruffle's WebAssembly to compile, which
// takes seconds on an idle machine and many times that on a busy one.
const loadTimeoutMs = 120000;

// Stored frames hold one renderer's pixels, so every run must use the same one.
// Ruffle's own WebGL renderer (on SwiftShader here) starts faster than its wgpu
// one and draws the same pixels.
const renderer = process.env.VIMBO_RUFFLE_RENDERER || "webgl";

// The page background; a movie always paints its own background over it, so a
// frame showing this colour means the player drew nothing.
const pageBackground = "#FF00FF";

function chromiumPath() {
    if (process.env.VIMBO_CHROMIUM) return process.env.VIMBO_CHROMIUM;
    // Debian's /usr/bin/chromium is a shell wrapper that adds flags from
    // /etc/chromium.d; the binary behind it keeps the command line ours.
    for (const path of ["/usr/lib/chromium/chromium", "/usr/bin/chromium"]) {
        if (existsSync(path)) return path;
    }
    return "chromium";
}

const chromiumFlags = [
    "--no-sandbox",  // we run as root in CI
    "--disable-gpu",
    "--use-angle=swiftshader",
    "--enable-unsafe-swiftshader",
    "--disable-quic",
    "--no-first-run",
    "--disable-background-networking",
    "--disable-component-update",
    "--disable-sync",
    "--force-color-profile=srgb",
    "--disable-lcd-text",
];

/// Reads the few header fields the page needs: stage size in pixels and frame rate.
export function readSwfHeader(bytes) {
    const signature = bytes.toString("latin1", 0, 3);
    if (signature !== "FWS" && signature !== "CWS") {
        throw new Error(`not an SWF file (signature "${signature}")`);
    }
    if (bytes.length < 8) throw new Error("SWF header is cut short");
    const body = signature === "CWS" ? inflateSync(bytes.subarray(8)) : bytes.subarray(8);
    let bit = 0;
    const read = (count) => {
        let value = 0;
        for (let i = 0; i < count; ++i, ++bit) {
            const byte = body[bit >> 3];
            if (byte === undefined) throw new Error("SWF header is cut short");
            value = value * 2 + ((byte >> (7 - (bit & 7))) & 1);
        }
        return value;
    };
    const signed = (count) => {
        const value = read(count);
        return count > 0 && value >= 2 ** (count - 1) ? value - 2 ** count : value;
    };
    const nbits = read(5);
    const [xMin, xMax, yMin, yMax] = [signed(nbits), signed(nbits), signed(nbits), signed(nbits)];
    const at = (bit + 7) >> 3;
    if (body.length < at + 4) throw new Error("SWF header is cut short");
    return {
        version: bytes[3],
        width: Math.round((xMax - xMin) / 20),
        height: Math.round((yMax - yMin) / 20),
        frameRate: body.readUInt16LE(at) / 256,
        frameCount: body.readUInt16LE(at + 2),
    };
}

function startServer(jobs) {
    const page = `<!doctype html><html><head><meta charset="utf-8"><style>
html, body { margin: 0; padding: 0; background: ${pageBackground}; overflow: hidden; }
</style></head><body><div id="stage"></div><script src="/ruffle/ruffle.js"></script></body></html>`;
    const types = {".js": "text/javascript", ".wasm": "application/wasm", ".map": "application/json"};
    const server = createServer((request, response) => {
        const url = new URL(request.url, "http://127.0.0.1");
        const send = (status, type, body) => {
            response.writeHead(status, {"Content-Type": type, "Cache-Control": "no-store"});
            response.end(body);
        };
        try {
            if (url.pathname === "/") return send(200, "text/html", page);
            if (url.pathname === "/favicon.ico") return send(204, "text/plain", "");
            const movie = url.pathname.match(/^\/movie\/(\d+)\.swf$/);
            if (movie && jobs[Number(movie[1])]) {
                return send(200, "application/x-shockwave-flash",
                            readFileSync(jobs[Number(movie[1])].movie));
            }
            const asset = url.pathname.match(/^\/ruffle\/([\w.-]+)$/);
            if (asset) {
                const extension = asset[1].slice(asset[1].lastIndexOf("."));
                return send(200, types[extension] ?? "application/octet-stream",
                            readFileSync(join(ruffleDir, asset[1])));
            }
        } catch (error) {
            return send(404, "text/plain", String(error));
        }
        send(404, "text/plain", "not found");
    });
    return new Promise((resolve, reject) => {
        server.on("error", reject);
        server.listen(0, "127.0.0.1", () => resolve(server));
    });
}

// Runs in the page before any of its scripts.
function installVirtualTime() {
    let now = 0;
    let nextId = 1;
    let queue = [];
    const epoch = 1700000000000;
    window.requestAnimationFrame = (callback) => {
        queue.push({id: nextId, callback});
        return nextId++;
    };
    window.cancelAnimationFrame = (id) => {
        queue = queue.filter((entry) => entry.id !== id);
    };
    performance.now = () => now;
    Date.now = () => epoch + now;
    window.__vimboFlush = (time) => {
        now = time;
        const due = queue;
        queue = [];
        for (const entry of due) entry.callback(time);
        return due.length;
    };
    // Ruffle styles some lines with %c; drop the CSS arguments so the report
    // holds only words.
    for (const method of ["log", "info", "warn", "error", "debug"]) {
        const original = console[method].bind(console);
        console[method] = (...args) => {
            if (typeof args[0] === "string" && args[0].includes("%c")) {
                const styles = args[0].split("%c").length - 1;
                args = [args[0].replaceAll("%c", ""), ...args.slice(1 + styles)];
            }
            original(...args);
        };
    }
    const getContext = HTMLCanvasElement.prototype.getContext;
    HTMLCanvasElement.prototype.getContext = function (type, attributes) {
        if (String(type).startsWith("webgl")) {
            attributes = {...attributes, preserveDrawingBuffer: true};
        }
        return getContext.call(this, type, attributes);
    };
}

function classify(text) {
    if (/panic/i.test(text)) return "error";
    if (/^(ERROR|error)\b|\bERROR\b/.test(text)) return "error";
    if (/^(WARN|warn)\b|\bWARN\b/.test(text)) return "warning";
    return "log";
}

// One page serves the whole batch: Ruffle's WebAssembly module compiles once,
// which costs seconds, and every movie gets a player of its own on it.
async function openPage(browser, origin, sink) {
    const context = await browser.newContext({viewport: {width: 64, height: 64},
                                              deviceScaleFactor: 1});
    await context.addInitScript(installVirtualTime);
    const page = await context.newPage();
    page.on("console", (message) => sink.current && record(sink.current, message));
    page.on("pageerror", (error) => sink.current?.errors.push(`page error: ${error.message}`));
    page.on("crash", () => sink.current?.errors.push("page crashed"));
    // Nothing leaves the machine: a request for anything but our server is a
    // URL the movie opened (a link button), recorded and refused.
    await context.route((url) => url.origin !== origin, (route) => {
        sink.current?.openedUrls.push(route.request().url());
        return route.abort();
    });
    await page.goto(`${origin}/`);
    await page.waitForFunction(() => window.RufflePlayer?.newest, null,
                               {polling: pagePollMs, timeout: loadTimeoutMs});
    return page;
}

function record(result, message) {
    const text = message.text();
    if (/GL Driver Message .*GPU stall due to ReadPixels/.test(text)) return;  // our readback
    const kind = message.type() === "error" ? "error"
               : message.type() === "warning" ? "warning" : classify(text);
    (kind === "error" ? result.errors : kind === "warning" ? result.warnings : result.log)
        .push(text);
}

async function playJob(page, job, index, header, clock) {
    const result = {movie: job.movie, header, errors: [], warnings: [], log: [], frames: [],
                    openedUrls: []};
    clock.sink.current = result;
    const started = performance.now();
    try {
        await page.setViewportSize({width: Math.max(header.width, 1),
                                    height: Math.max(header.height, 1)});
        await page.evaluate(({url, width, height, renderer, start}) => {
            document.getElementById("player")?.remove();
            // The new player must read the job's start time from its first look
            // at the clock, or it sees the gap since the last movie as time to
            // catch up on.
            window.__vimboFlush(start);
            window.__vimboLoaded = false;
            const player = window.RufflePlayer.newest().createPlayer();
            player.id = "player";
            player.style.width = `${width}px`;
            player.style.height = `${height}px`;
            player.style.display = "block";
            document.getElementById("stage").appendChild(player);
            player.addEventListener("loadedmetadata", () => { window.__vimboLoaded = true; });
            player.ruffle().load({
                url,
                autoplay: "on",
                unmuteOverlay: "hidden",
                letterbox: "off",
                splashScreen: false,
                contextMenu: "off",
                logLevel: "warn",
                preferredRenderer: renderer,
                warnOnUnsupportedContent: false,
                allowScriptAccess: false,
            });
        }, {url: `/movie/${index}.swf`, width: header.width, height: header.height,
            renderer, start: clock.start});
        // The player needs animation frames to get going; flushing at the
        // job's start time runs no movie frame, whatever the player has seen.
        await page.waitForFunction((time) => {
            window.__vimboFlush(time);
            return window.__vimboLoaded === true;
        }, clock.start, {polling: pagePollMs, timeout: loadTimeoutMs});
        await page.evaluate((time) => window.__vimboFlush(time), clock.start);
        result.loadMs = Math.round(performance.now() - started);
        await captureFrames(page, job, header, clock, result);
        result.captureMs = Math.round(performance.now() - started) - result.loadMs;
    } catch (error) {
        result.errors.push(String(error.message ?? error).split("\n")[0]);
    }
    result.renderer = result.log.concat(result.warnings).map(
        (line) => line.match(/Used renderer: ([\w-]+)/)?.[1]).find(Boolean) ?? null;
    if (result.renderer !== renderer) {
        result.errors.push(`Ruffle drew with the ${result.renderer} renderer, not ${renderer}`);
    }
    return result;
}

async function captureFrames(page, job, header, clock, result) {
    const interval = 1000 / (header.frameRate > 0 ? header.frameRate : 1);
    const clicks = job.clicks ?? [];
    const stops = [...new Set([...job.frames, ...clicks.map((click) => click.frame)])]
        .sort((a, b) => a - b);
    mkdirSync(job.outDir, {recursive: true});
    let frame = 0;
    for (const target of stops) {
        // One frame per flush: the player catches up at most a few frames at once.
        for (; frame <= target; ++frame) {
            clock.now = clock.start + (frame + 1.5) * interval;
            await page.evaluate((time) => window.__vimboFlush(time), clock.now);
        }
        if (job.frames.includes(target)) {
            await captureCanvas(page, job, header, target, result);
        }
        for (const click of clicks.filter((click) => click.frame === target)) {
            await page.mouse.click(click.x, click.y);
            // The player handles the press and release in animation frames of
            // its own; flushing at the same time runs no movie frame.
            await page.evaluate((time) => window.__vimboFlush(time), clock.now);
        }
    }
    if (clicks.length > 0) {
        // Opening a URL goes through the browser's own event loop.
        await page.waitForTimeout(clickSettleMs);
    }
}

async function captureCanvas(page, job, header, target, result) {
    const canvas = await page.evaluate(() => {
        const canvas = document.getElementById("player")?.shadowRoot?.querySelector("canvas");
        return canvas ? {data: canvas.toDataURL("image/png"),
                         width: canvas.width, height: canvas.height} : null;
    });
    if (!canvas) throw new Error("the player has no canvas to read");
    if (canvas.width !== header.width || canvas.height !== header.height) {
        result.errors.push(`canvas is ${canvas.width}x${canvas.height}, movie is ` +
                           `${header.width}x${header.height}`);
    }
    const file = join(job.outDir, `frame_${target}.png`);
    writeFileSync(file, Buffer.from(canvas.data.slice(canvas.data.indexOf(",") + 1), "base64"));
    result.frames.push({frame: target, file});
}

async function main() {
    const [batchFile, reportFile] = process.argv.slice(2);
    if (!batchFile || !reportFile) {
        console.error("usage: node capture.mjs <batch.json> <report.json>");
        process.exit(2);
    }
    const began = performance.now();
    const {jobs} = JSON.parse(readFileSync(batchFile, "utf8"));
    const report = {chromium: chromiumPath(), renderer, jobs: []};
    const write = () => writeFileSync(reportFile, JSON.stringify(report, null, 2) + "\n");

    let browser;
    let server;
    try {
        server = await startServer(jobs);
        const origin = `http://127.0.0.1:${server.address().port}`;
        try {
            // Playwright gives every launch a new, empty profile folder of its own.
            browser = await chromium.launch({executablePath: report.chromium, headless: true,
                                             args: chromiumFlags, timeout: loadTimeoutMs});
        } catch (error) {
            report.error = `Chromium (${report.chromium}) did not start: ` +
                           String(error.message ?? error).split("\n")[0];
            write();
            process.exit(1);
        }
        report.browserVersion = browser.version();
        report.ruffleVersion = JSON.parse(readFileSync(join(ruffleDir, "package.json"))).version;
        report.browserStartMs = Math.round(performance.now() - began);
        const clock = {start: 0, now: 0, sink: {current: null}};
        const page = await openPage(browser, origin, clock.sink);
        for (const [index, job] of jobs.entries()) {
            // Time never runs backwards on the page; each movie starts a whole
            // second after the last one ended.
            clock.start = Math.ceil(clock.now / 1000) * 1000 + 1000;
            let header;
            try {
                header = readSwfHeader(readFileSync(job.movie));
            } catch (error) {
                report.jobs.push({movie: job.movie, errors: [String(error.message)], warnings: [],
                                  log: [], frames: []});
                continue;
            }
            report.jobs.push(await playJob(page, job, index, header, clock));
        }
    } catch (error) {
        report.error = String(error.message ?? error).split("\n")[0];
    } finally {
        await browser?.close();
        server?.close();
    }
    report.totalMs = Math.round(performance.now() - began);
    write();
    process.exit(report.error ? 1 : 0);
}

if (process.argv[1] === fileURLToPath(import.meta.url)) await main();
