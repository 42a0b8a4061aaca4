"use strict";

(() => {
    const shownResults = 60;
    const get = (id) => document.getElementById(id);
    const here = () => decodeURIComponent(location.pathname).split("/").pop() || "index.html";

    document.documentElement.classList.add("scripted");

    // ------------------------------------------------------------ the index, loaded when it is first asked for

    let index = null;

    // Descriptions carry entities; the browser knows them all.
    const decodeAll = (texts) => {
        const area = document.createElement("textarea");
        area.innerHTML = texts.join("\u0001");
        return area.value.split("\u0001");
    };

    const readIndex = () => {
        const texts = decodeAll(window.manualIndex.map((entry) => entry[3]));
        return window.manualIndex.map(([path, page, isBlock], at) => ({
            path,
            page,
            isBlock: isBlock === 1,
            name: path.slice(path.lastIndexOf("/") + 1).toLowerCase(),
            lowerPath: path.toLowerCase(),
            text: texts[at].replace(/\s+/g, " ").trim(),
            lowerText: texts[at].replace(/\s+/g, " ").trim().toLowerCase(),
        }));
    };

    const loadIndex = () => {
        index = index || new Promise((resolve, reject) => {
            const script = document.createElement("script");
            script.src = "search_index.js";
            script.onload = () => resolve(readIndex());
            script.onerror = () => reject(new Error("search_index.js is missing"));
            document.head.append(script);
        });
        return index;
    };

    const linkTo = (entry) => entry.page + "#" + (encodeURI(entry.path) || "/");

    // ------------------------------------------------------------ pointers, as the validation report writes them

    const pointerOf = (line) => line.replace(/: (Error|Warning): .*$/, "").trim();
    const withoutIndices = (path) => path.replace(/\/\d+(?=\/|$)/g, "");

    // The entry of a pointer, or of the closest one above it that has an entry.
    const entryOf = (entries, pointer) => {
        const byPath = new Map(entries.map((entry) => [entry.path, entry]));
        for (let path = withoutIndices(pointer); path !== ""; path = path.slice(0, path.lastIndexOf("/"))) {
            if (byPath.has(path)) {
                return byPath.get(path);
            }
        }
        return byPath.get("");
    };

    const hashPointer = () => {
        try {
            return decodeURIComponent(location.hash.slice(1));
        } catch (fault) {
            return location.hash.slice(1);
        }
    };

    const follow = async () => {
        const pointer = hashPointer();
        if (!pointer.startsWith("/") || get(encodeURI(pointer))) {
            return;
        }
        const entry = entryOf(await loadIndex(), pointer);
        const isExact = entry.path === withoutIndices(pointer);
        location.replace(isExact ? linkTo(entry) : linkTo(entry).replace("#", "?missed=" + encodeURIComponent(pointer) + "#"));
    };

    const tellMissed = () => {
        const missed = new URLSearchParams(location.search).get("missed");
        const target = get(location.hash.slice(1));
        if (missed && target) {
            target.closest(".block").prepend(get("not-found"));
            get("not-found").textContent = "There is no entry " + missed + "; this is the closest one.";
            get("not-found").hidden = false;
        }
    };

    // ------------------------------------------------------------ the tree

    const setFold = (button, isOpen) => {
        button.setAttribute("aria-expanded", String(isOpen));
        button.closest("li").querySelector(":scope > ul").hidden = !isOpen;
    };

    const treeLinks = new Map([...document.querySelectorAll("#tree a")].map((link) => [link.getAttribute("href"), link]));

    const treeLinkOf = (target) => {
        for (let path = target; ; path = path.slice(0, path.lastIndexOf("/"))) {
            const link = treeLinks.get(here() + "#" + (path || "/"));
            if (link || path === "") {
                return link;
            }
        }
    };

    const showInTree = () => {
        const first = document.querySelector("main .block");
        const link = treeLinkOf(location.hash.startsWith("#/") ? location.hash.slice(1) : first.id);
        document.querySelectorAll("#tree [aria-current]").forEach((old) => old.removeAttribute("aria-current"));
        if (!link) {
            return;
        }
        link.setAttribute("aria-current", "true");
        for (let item = link.closest("li"); item; item = item.parentElement.closest("li")) {
            const button = item.querySelector(":scope > .branch > .fold");
            if (button) {
                setFold(button, true);
            }
        }
        const tree = get("tree");
        if (tree.scrollHeight > tree.clientHeight) {
            tree.scrollTop += link.getBoundingClientRect().top - tree.getBoundingClientRect().top - tree.clientHeight / 3;
        }
    };

    const openTree = (isOpen) => {
        get("tree").classList.toggle("open", isOpen);
        get("tree-button").setAttribute("aria-expanded", String(isOpen));
    };

    const setUpTree = () => {
        document.querySelectorAll("#tree .fold").forEach((button) => {
            setFold(button, button.closest("ul").matches(".tree, .tree > li > ul"));
            button.addEventListener("click", () => setFold(button, button.getAttribute("aria-expanded") === "false"));
        });
        get("tree-button").addEventListener("click", () => openTree(!get("tree").classList.contains("open")));
        get("tree").addEventListener("click", (event) => {
            if (event.target.closest("a")) {
                openTree(false);
            }
        });
    };

    // ------------------------------------------------------------ search

    const wordsOf = (query) => query.toLowerCase().split(/\s+/).filter((word) => word !== "");

    const rankOfWord = (entry, word) => {
        if (entry.name === word) {
            return 0;
        }
        if (entry.name.startsWith(word)) {
            return 1;
        }
        if (entry.name.includes(word)) {
            return 2;
        }
        if (entry.lowerPath.includes(word)) {
            return 3;
        }
        return entry.lowerText.includes(word) ? 4 : NaN;
    };

    const rankOf = (entry, words) => words.reduce((sum, word) => sum + rankOfWord(entry, word), 0);

    const find = (entries, query) => {
        if (query.startsWith("/")) {
            const pointer = pointerOf(query);
            const exact = entryOf(entries, pointer);
            if (/: (Error|Warning): /.test(query) || exact.path === withoutIndices(pointer)) {
                return [exact];
            }
        }
        const words = wordsOf(query);
        return entries
            .map((entry) => ({entry, rank: rankOf(entry, words)}))
            .filter((found) => !Number.isNaN(found.rank))
            .sort((one, other) => one.rank - other.rank)
            .map((found) => found.entry);
    };

    const marked = (className, text, words) => {
        const span = document.createElement("span");
        span.className = className;
        const pattern = words.map((word) => word.replace(/[.*+?^${}()|[\]\\]/g, "\\$&")).join("|");
        text.split(pattern ? new RegExp("(" + pattern + ")", "gi") : "\u0001").forEach((part, at) => {
            const piece = at % 2 === 1 ? document.createElement("mark") : document.createElement("span");
            piece.textContent = part;
            span.append(piece);
        });
        return span;
    };

    // The part of the description around the first word found in it.
    const excerpt = (entry, words) => {
        const found = words.map((word) => entry.lowerText.indexOf(word)).filter((at) => at >= 0);
        const begin = found.length > 0 ? Math.max(0, Math.min(...found) - 60) : 0;
        const part = entry.text.slice(begin, begin + 160);
        return (begin > 0 ? "... " : "") + part + (begin + 160 < entry.text.length ? " ..." : "");
    };

    const resultItem = (entry, words) => {
        const item = document.createElement("li");
        const link = document.createElement("a");
        link.href = linkTo(entry);
        const name = document.createElement(entry.isBlock ? "strong" : "code");
        name.textContent = entry.path.slice(entry.path.lastIndexOf("/") + 1) || "Command file";
        link.append(name, marked("result-path", entry.path || "/", words), marked("result-text", excerpt(entry, words), words));
        item.append(link);
        return item;
    };

    const hideResults = () => {
        get("results").hidden = true;
    };

    const countText = (count) => {
        if (count === 0) {
            return "Nothing found.";
        }
        const shown = count > shownResults ? ", the first " + shownResults + " shown" : "";
        return count + (count === 1 ? " entry" : " entries") + shown;
    };

    const search = async () => {
        const query = get("search").value.trim();
        if (query === "") {
            hideResults();
            return;
        }
        const entries = await loadIndex();
        if (query !== get("search").value.trim()) {
            return;
        }
        const found = find(entries, query);
        const words = query.startsWith("/") ? [] : wordsOf(query);
        get("result-list").replaceChildren(...found.slice(0, shownResults).map((entry) => resultItem(entry, words)));
        get("result-count").textContent = countText(found.length);
        get("results").hidden = false;
    };

    const moveInResults = (event) => {
        const steps = {ArrowDown: 1, ArrowUp: -1};
        if (event.key === "Escape") {
            hideResults();
            get("search").focus();
        } else if (event.key in steps && !get("results").hidden) {
            const stops = [get("search"), ...get("result-list").querySelectorAll("a")];
            const next = stops[stops.indexOf(document.activeElement) + steps[event.key]];
            if (next) {
                event.preventDefault();
                next.focus();
            }
        }
    };

    const setUpSearch = () => {
        get("search").addEventListener("focus", () => loadIndex(), {once: true});
        get("search").addEventListener("input", search);
        get("search-form").addEventListener("submit", (event) => {
            event.preventDefault();
            const first = get("result-list").querySelector("a");
            if (first && !get("results").hidden) {
                first.click();
            }
        });
        document.querySelector(".top").addEventListener("keydown", moveInResults);
        get("results").addEventListener("keydown", moveInResults);
        get("results").addEventListener("click", (event) => {
            if (event.target.closest("a")) {
                hideResults();
            }
        });
        document.addEventListener("keydown", (event) => {
            const isTyping = event.target.closest("input, textarea");
            if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey && !event.altKey) {
                event.preventDefault();
                get("search").focus();
            }
        });
        document.addEventListener("click", (event) => {
            if (!event.target.closest("#results, .top")) {
                hideResults();
            }
        });
    };

    // ------------------------------------------------------------ examples

    // Pages from the file system may not be trusted with the clipboard; a selection always can be copied.
    const copyBySelection = (code) => {
        const selection = getSelection();
        selection.selectAllChildren(code);
        const isDone = document.execCommand("copy");
        selection.removeAllRanges();
        return isDone;
    };

    const copy = async (button) => {
        const code = button.parentElement.querySelector("code");
        let isDone = true;
        try {
            await navigator.clipboard.writeText(code.textContent);
        } catch (fault) {
            isDone = copyBySelection(code);
        }
        button.textContent = isDone ? "Copied" : "Select and copy by hand";
        setTimeout(() => {
            button.textContent = "Copy";
        }, 2000);
    };

    const setUpCopying = () => {
        get("content").addEventListener("click", (event) => {
            const button = event.target.closest(".copy");
            if (button) {
                copy(button);
            }
        });
    };

    setUpTree();
    setUpSearch();
    setUpCopying();
    showInTree();
    tellMissed();
    follow();
    addEventListener("hashchange", () => {
        get("not-found").hidden = true;
        showInTree();
        follow();
    });
})();
