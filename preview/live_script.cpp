#include "preview/live_script.h"

namespace kiv {

namespace {

constexpr std::string_view kScript = R"js("use strict";
(() => {
    const data = document.currentScript.dataset;
    const home = new URL(document.currentScript.src).origin; // a page may have a base elsewhere
    const page = decoded(data.page);
    const key = "kiv:" + page;
    let version = Number(data.version);
    let events = null;
    let isReloading = false;

    // Percent codes as the bytes that they are; what is no UTF-8 becomes U+FFFD, as in the news.
    function decoded(path) {
        const bytes = [];
        path.replace(/%([0-9a-f]{2})|[^]/gi,
            (one, code) => bytes.push(code ? parseInt(code, 16) : one.charCodeAt(0)));
        return new TextDecoder("utf-8", {ignoreBOM: true}).decode(new Uint8Array(bytes));
    }

    // An element by its position among those beside it, and that of all it lies in.
    function pathTo(element) {
        const path = [];
        for (; element.parentElement; element = element.parentElement)
            path.unshift([...element.parentElement.children].indexOf(element));
        return path;
    }
    function elementAt(path) {
        return path.reduce((element, index) => element && element.children[index], document.documentElement);
    }
    function scrolledParts() {
        return [...document.querySelectorAll("body *")]
            .filter(element => element.scrollTop || element.scrollLeft)
            .map(element => [element.id, pathTo(element), element.scrollLeft, element.scrollTop]);
    }

    // The place on the page outlives a reload.
    function keepPlace() {
        try {
            sessionStorage.setItem(key, JSON.stringify([scrollX, scrollY, scrolledParts()]));
        } catch (error) { /* this browser keeps nothing */ }
    }
    function restorePlace(isLast) {
        try {
            const place = JSON.parse(sessionStorage.getItem(key));
            if (place)
                scrollTo({left: place[0], top: place[1], behavior: "instant"});
            for (const [id, path, left, top] of place ? place[2] : []) {
                const element = (id && document.getElementById(id)) || elementAt(path);
                if (element)
                    element.scrollTo({left, top, behavior: "instant"});
            }
            if (isLast)
                sessionStorage.removeItem(key);
        } catch (error) { /* nothing is kept */ }
    }
    function reload() {
        if (isReloading)
            return;
        isReloading = true;
        keepPlace();
        location.reload();
    }
    addEventListener("DOMContentLoaded", () => restorePlace(false));
    addEventListener("load", () => restorePlace(true));

    // What this page is made of, as paths from the root on.
    function pathOf(address) {
        try {
            const url = new URL(address, document.baseURI);
            return url.origin === location.origin ? decoded(url.pathname) : "";
        } catch (error) {
            return "";
        }
    }
    function usedPaths() {
        const used = new Set([page]);
        for (const entry of performance.getEntriesByType("resource"))
            if (!/frame|link/.test(entry.initiatorType)) // of links, see below
                used.add(pathOf(entry.name));
        // Other links, as that to the next page, name what this one is not made of.
        const seen = document.querySelectorAll("img, script, link[rel~=stylesheet i], " +
            "link[rel~=icon i], link[rel~=preload i], link[rel~=modulepreload i], " +
            "source, video, audio, embed, input[src], track, [background]");
        for (const element of seen)
            for (const name of ["src", "href", "poster", "background"])
                if (element.hasAttribute(name))
                    used.add(pathOf(element.getAttribute(name)));
        return used;
    }
    if (performance.setResourceTimingBufferSize)
        performance.setResourceTimingBufferSize(2000);

    function take(news) {
        if (news.run !== data.run)
            return reload(); // another run of the program, with another secret
        const isLater = news.version > version;
        version = news.version;
        const used = usedPaths();
        if (isLater && news.changed.some(path => used.has(path)))
            return reload();
        if (top === window)
            showBar(news);
    }

    // A browser has few connections to one server, so a page that nobody sees takes none, and
    // frames take the news of the topmost page where that one has any.
    const sharing = Symbol.for("kiv-preview");
    const followers = new Set();
    function tell(news) {
        take(news);
        for (const follow of [...followers])
            follow(news);
    }
    function listen(since = version) {
        if (events || document.hidden)
            return;
        events = new EventSource(home + "/.kiv/events?run=" + data.run + "&since=" + since);
        events.onmessage = event => tell(JSON.parse(event.data));
        events.onerror = () => {
            if (events && events.readyState === EventSource.CLOSED) {
                hushUp();
                setTimeout(() => listen(), 1000);
            }
        };
    }
    function hushUp() {
        if (events)
            events.close();
        events = null;
    }
    const leader = {
        add(follow, since) {
            followers.add(follow);
            if (since < version) { // news came while the frame was on its way
                hushUp();
                listen(since);
            }
        },
        remove: follow => followers.delete(follow),
    };
    function leaderOfTop() {
        try {
            return top === window ? null : top[sharing] || null;
        } catch (error) {
            return null; // another site's page
        }
    }
    const led = leaderOfTop();
    if (led) {
        addEventListener("pagehide", () => led.remove(take));
        addEventListener("pageshow", () => led.add(take, version));
        led.add(take, version);
    } else {
        window[sharing] = leader;
        document.addEventListener("visibilitychange", () => document.hidden ? hushUp() : listen());
        addEventListener("pagehide", hushUp);
        listen();
    }

    // What is drawn over the page, apart from its own styles and scripts.
    const style = `
        :host { all: initial; }
        * { box-sizing: border-box; }
        .bar, .story, .name { font: 14px/1.45 system-ui, sans-serif; color: #1b1b1b; }
        .bar { position: fixed; left: 0; right: 0; bottom: 0; z-index: 2147483646; display: flex; gap: 12px;
            align-items: baseline; padding: 8px 14px; background: #fff2c9; border-top: 2px solid #d9a400; }
        .bar.failed { background: #ffdcd6; border-color: #c0301a; }
        .bar .words { flex: 1; overflow-wrap: anywhere; max-height: 30vh; overflow: auto; }
        button { font: inherit; color: #0b4a86; background: none; border: 0; padding: 0; cursor: pointer;
            text-decoration: underline; }
        a { color: #0b4a86; }
        button.close { text-decoration: none; font-size: 18px; line-height: 1; padding: 2px 6px; color: #444; }
        .frame { position: fixed; z-index: 2147483645; pointer-events: none; border: 2px solid #1769c2;
            background: rgba(23, 105, 194, .12); }
        .name { position: fixed; z-index: 2147483646; pointer-events: none; padding: 2px 8px; max-width: 90vw;
            background: #1769c2; color: #fff; border-radius: 3px; white-space: nowrap; overflow: hidden;
            text-overflow: ellipsis; }
        .story { position: fixed; z-index: 2147483644; top: 0; right: 0; bottom: 0; width: 40vw; overflow: auto;
            padding: 14px 18px; background: #fbfbf9; border-left: 1px solid #aaa; }
        .story h2 { font-size: 16px; margin: 0 0 8px; display: flex; justify-content: space-between; }
        .story h3 { font-size: 14px; margin: 14px 0 2px; }
        .story p { margin: 0; color: #555; }
        .story pre { margin: 4px 0 0; padding: 6px 8px; background: #f0efe9; white-space: pre-wrap;
            overflow-wrap: anywhere; font: 13px/1.4 monospace; }
        .story mark { background: #ffe08a; }`;
    let canvas = null;
    function draw(element) {
        if (!canvas) {
            const host = document.createElement("kiv-preview");
            document.documentElement.append(host);
            canvas = host.attachShadow({mode: "open"});
            // Which no policy of a page forbids, as it might a STYLE.
            const sheet = new CSSStyleSheet();
            sheet.replaceSync(style);
            canvas.adoptedStyleSheets = [sheet];
        }
        canvas.append(element);
        return element;
    }
    function make(tag, properties, ...content) {
        const element = Object.assign(document.createElement(tag), properties);
        element.append(...content);
        return element;
    }
    function button(words, act) {
        const element = make("button", {type: "button"}, words);
        element.addEventListener("click", act);
        return element;
    }
    function closeButton(act) {
        const element = button("\u00d7", act);
        element.className = "close";
        element.setAttribute("aria-label", "Close");
        return element;
    }

    // The bar.
    let bar = null;
    let closedBar = "";
    function linkTo(path) {
        return make("a", {href: home + path.split("/").map(encodeURIComponent).join("/")}, path);
    }
    function barWords(news) {
        const build = news.build;
        const words = [];
        if (news.gone.includes(page)) {
            words.push("The last build wrote no page of this name; what you see is older. ");
            if (news.fresh.length)
                words.push("New since then: ");
            news.fresh.slice(0, 5).forEach((path, i) => words.push(i ? ", " : "", linkTo(path)));
            if (news.fresh.length)
                words.push(". ");
        }
        if (build.failed)
            words.push("The build ended in an error. ");
        else if (build.warnings)
            words.push(build.warnings === 1 ? "One warning. " : build.warnings + " warnings. The first: ");
        if (build.failed || build.warnings) {
            if (build.place)
                words.push(button(build.place, () => act("first=1")), ": ");
            words.push(build.text);
            if (build.hint)
                words.push(" \u2013 " + build.hint);
        }
        return words;
    }
    function showBar(news) {
        const words = barWords(news);
        if (bar)
            bar.remove();
        bar = null;
        const state = JSON.stringify([news.build, words.length]);
        if (!words.length || state === closedBar)
            return;
        const close = () => {
            closedBar = state;
            bar.remove();
        };
        bar = draw(make("div", {className: news.build.failed ? "bar failed" : "bar"},
            make("div", {className: "words"}, ...words), closeButton(close)));
        bar.setAttribute("role", "status");
    }

    // From an element to its source.
    const told = new Map();
    let pointer = null; // where it is
    let target = null;  // the element that is framed
    let frame = null;
    let name = null;
    function ask(what, at) {
        return fetch(home + "/.kiv/" + what + "?page=" + data.page + "&at=" + at,
            {headers: {"X-Kiv-Secret": data.secret}}).then(answer => answer.json());
    }
    function act(body) {
        fetch(home + "/.kiv/open", {method: "POST", body, headers: {"X-Kiv-Secret": data.secret}})
            .then(answer => answer.json())
            .then(answer => answer.trouble ? showName(answer.trouble) : null, () => null);
    }
    function hideFrame() {
        for (const element of [frame, name])
            if (element)
                element.remove();
        frame = name = target = null;
    }
    function showName(words) {
        if (!name)
            name = draw(make("div", {className: "name"}));
        name.textContent = words;
        const box = frame ? frame.getBoundingClientRect() : {left: 8, top: 40, bottom: 40};
        name.style.left = Math.max(0, Math.min(box.left, innerWidth - name.offsetWidth)) + "px";
        const above = box.top - name.offsetHeight - 2;
        name.style.top = (above > 0 ? above : Math.min(box.bottom + 2, innerHeight - 30)) + "px";
    }
    function showFrame(element) {
        hideFrame();
        target = element;
        const box = element.getBoundingClientRect();
        frame = draw(make("div", {className: "frame"}));
        Object.assign(frame.style, {left: box.left - 2 + "px", top: box.top - 2 + "px",
            width: box.width + 4 + "px", height: box.height + 4 + "px"});
        const at = element.dataset.kivAt;
        if (!told.has(at))
            told.set(at, ask("place", at));
        told.get(at).then(answer => {
            if (target === element)
                showName(answer.trouble || answer.place);
        }, () => told.delete(at));
    }
    function look(isHeld) {
        if (!isHeld || !pointer)
            return hideFrame();
        const found = document.elementFromPoint(pointer.x, pointer.y);
        const element = found && found.closest("[data-kiv-at]");
        if (!element)
            hideFrame();
        else if (element !== target)
            showFrame(element);
    }
    addEventListener("mousemove", event => {
        pointer = {x: event.clientX, y: event.clientY};
        if (event.altKey || target)
            look(event.altKey);
    }, true);
    addEventListener("keydown", event => {
        if (event.key === "Alt")
            look(true);
    }, true);
    addEventListener("keyup", event => {
        if (event.key !== "Alt")
            return;
        if (target)
            event.preventDefault(); // it would open the browser's menu
        hideFrame();
    }, true);
    addEventListener("blur", hideFrame);
    addEventListener("scroll", () => target ? look(true) : null, true);
    for (const kind of ["mousedown", "mouseup", "auxclick"])
        addEventListener(kind, event => {
            if (event.altKey && target)
                event.preventDefault();
        }, true);
    addEventListener("click", event => {
        const element = event.altKey && event.target.closest && event.target.closest("[data-kiv-at]");
        if (!element)
            return;
        event.preventDefault();
        event.stopImmediatePropagation();
        const at = element.dataset.kivAt;
        if (event.shiftKey)
            ask("story", at).then(showStory, () => null);
        else
            act("page=" + data.page + "&at=" + at);
    }, true);

    // The story of a line, beside the page.
    let story = null;
    function hideStory() {
        if (story)
            story.remove();
        story = null;
        document.documentElement.style.removeProperty("margin-right");
    }
    function partOf(part) {
        const text = [part.text.slice(0, part.begin),
            make("mark", {}, part.text.slice(part.begin, part.begin + part.size)),
            part.text.slice(part.begin + part.size)];
        return make("section", {}, make("h3", {}, part.title), make("p", {}, part.words),
            make("pre", {}, ...text));
    }
    function showStory(answer) {
        hideStory();
        story = draw(make("div", {className: "story"},
            make("h2", {}, answer.title || "No story", closeButton(hideStory)),
            ...(answer.trouble ? [make("p", {}, answer.trouble)] : answer.parts.map(partOf))));
        story.setAttribute("role", "complementary");
        document.documentElement.style.setProperty("margin-right", "40vw");
    }
})();
)js";

} // namespace

std::string_view LiveScript()
{
    return kScript;
}

} // namespace kiv
