// The search over the manual. It works on pages read from files: what it looks through is a script, search-index.js,
// which is loaded when somebody begins to search.
"use strict";
(function () {
  const MOST = 20; // results shown
  const AROUND = 70; // characters shown before and behind the first word found

  const box = document.getElementById("search");
  const form = document.createElement("form");
  const field = document.createElement("input");
  const list = document.createElement("ol");
  let loading = null;

  function load() {
    loading = loading || new Promise(function (done) {
      const script = document.createElement("script");
      script.src = "search-index.js";
      script.onload = done;
      document.head.append(script);
    });
    return loading;
  }

  /** The pattern of a word. Hyphens inside a word are not looked at: "utf8" finds "UTF-8". */
  function pattern(word) {
    return word.replace(/([a-z0-9])-(?=[a-z0-9])/gi, "$1")
      .replace(/[\\^$.*+?()[\]{}|]/g, "\\$&")
      .replace(/([a-z0-9])(?=[a-z0-9])/gi, "$1-?");
  }

  function finder(patterns) {
    return new RegExp(patterns.join("|"), "gi");
  }

  function count(text, word) {
    return (text.match(word) || []).length;
  }

  /** How well a section answers; 0 when it lacks one of the words. The beginning of a page, which has no heading, answers
      for the page's title. */
  function score(section, words) {
    const [, title, , heading, text] = section;
    let sum = 0;
    for (const word of words) {
      const found = (heading ? 10 : 10000) * Math.min(count(title, word), 1) +
        100 * Math.min(count(heading, word), 5) + Math.min(count(text, word), 5);
      if (found === 0)
        return 0;
      sum += found;
    }
    return sum;
  }

  function best(patterns) {
    const words = patterns.map(function (one) { return finder([one]); });
    return kivSections
      .map(function (section) { return {section: section, score: score(section, words)}; })
      .filter(function (result) { return result.score > 0; })
      .sort(function (a, b) { return b.score - a.score; }) // equal ones stay in the order of the pages
      .map(function (result) { return result.section; });
  }

  /** Whole words of the text around the first place of a word that was looked for. */
  function around(text, words) {
    const first = Math.max(0, text.search(words));
    const from = text.lastIndexOf(" ", Math.max(0, first - AROUND)) + 1;
    const space = text.indexOf(" ", first + 2 * AROUND);
    const end = space < 0 ? text.length : space;
    return {before: from > 0 ? "\u2026 " : "", words: text.slice(from, end), behind: end < text.length ? " \u2026" : ""};
  }

  /** A piece of the text with the words that were looked for marked. */
  function excerpt(text, words) {
    const shown = around(text, words);
    const piece = document.createElement("span");
    piece.className = "excerpt";
    piece.append(shown.before);
    let at = 0;
    for (const found of shown.words.matchAll(words)) {
      const mark = document.createElement("mark");
      mark.append(found[0]);
      piece.append(shown.words.slice(at, found.index), mark);
      at = found.index + found[0].length;
    }
    piece.append(shown.words.slice(at), shown.behind);
    return piece;
  }

  function item(section, words) {
    const [page, title, id, heading, text] = section;
    const link = document.createElement("a");
    link.href = page + ".htm" + (id ? "#" + id : "");
    link.append(title + (heading ? ": " + heading : ""));
    const entry = document.createElement("li");
    entry.append(link, excerpt(text, words));
    return entry;
  }

  function say(words) {
    const line = document.createElement("li");
    line.className = "note";
    line.append(words);
    return line;
  }

  function show() {
    const words = field.value.split(/\s+/).filter(Boolean).map(pattern);
    const results = words.length > 0 ? best(words) : [];
    const shown = results.slice(0, MOST).map(function (section) { return item(section, finder(words)); });
    if (results.length > MOST)
      shown.push(say("and " + (results.length - MOST) + " more: add a word"));
    else if (words.length > 0 && results.length === 0)
      shown.push(say("Nothing found."));
    list.replaceChildren.apply(list, shown);
  }

  field.type = "search";
  field.placeholder = "Search the manual";
  field.setAttribute("aria-label", "Search the manual");
  field.autocomplete = "off";
  list.setAttribute("aria-live", "polite");
  field.addEventListener("focus", load);
  field.addEventListener("input", function () { load().then(show); });
  field.addEventListener("keydown", function (event) {
    if (event.key === "Escape") {
      field.value = "";
      list.replaceChildren();
    }
  });
  list.addEventListener("click", function (event) {
    if (event.target.closest("a"))
      list.replaceChildren();
  });
  form.addEventListener("submit", function (event) {
    event.preventDefault();
    load().then(function () {
      show();
      const first = list.querySelector("a");
      if (first)
        first.click();
    });
  });
  form.append(field);
  box.append(form, list);
})();
