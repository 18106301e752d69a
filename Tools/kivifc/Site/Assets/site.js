/* What pages do beyond being read: mode, language, links to copy, keys. It is loaded before the page is drawn, so that a
   remembered mode is there from the beginning; the rest waits for the page. Nothing here is needed to read. */
"use strict";

(() => {
    const root = document.documentElement;

    // Browsers may refuse to remember anything for pages that lie in a folder.
    function remembered(key) {
        try {
            return localStorage.getItem("kivifc-" + key);
        } catch {
            return null;
        }
    }

    function remember(key, value) {
        try {
            localStorage.setItem("kivifc-" + key, value);
        } catch {
            // Then it lasts for this page.
        }
    }

    /* The bar */

    function made(tag, values, ...children) {
        const element = Object.assign(document.createElement(tag), values);
        element.append(...children);
        return element;
    }

    // Search, language and mode do nothing without scripts, so pages do not have them.
    function barBegin() {
        const box = made("input", { id: "search", type: "search", autocomplete: "off", spellcheck: false,
            placeholder: "" });
        const list = made("ul", { id: "results", hidden: true, ariaLabel: "Results" });
        const status = made("p", { id: "found", className: "hidden", role: "status" });
        const search = made("div", { className: "search", role: "search" },
            made("label", { className: "hidden", htmlFor: "search" }, "Search"), box, status, list);
        document.querySelector(".bar")?.append(search,
            made("label", { className: "hidden", htmlFor: "language" }, "Language of names and definitions"),
            made("select", { id: "language", hidden: true }), made("button", { id: "mode", type: "button" }));
    }

    /* Mode */

    const dark = matchMedia("(prefers-color-scheme: dark)");

    function isDark() {
        return root.dataset.mode ? root.dataset.mode === "dark" : dark.matches;
    }

    function modeSet(mode) {
        if (mode === "light" || mode === "dark")
            root.dataset.mode = mode;
    }

    function modeButtonShow(button) {
        button.textContent = isDark() ? "Light" : "Dark";
        button.setAttribute("aria-label", isDark() ? "Light mode" : "Dark mode");
    }

    function modeBegin() {
        const button = document.getElementById("mode");
        if (!button)
            return;
        modeButtonShow(button);
        button.addEventListener("click", () => {
            modeSet(isDark() ? "light" : "dark");
            remember("mode", root.dataset.mode);
            modeButtonShow(button);
        });
        dark.addEventListener("change", () => modeButtonShow(button));
    }

    modeSet(remembered("mode"));

    /* Language */

    // The part that names the language: "de" of "de-CH".
    function primary(tag) {
        return tag.toLowerCase().split(/[-_]/)[0];
    }

    // Of a variant; none of what the document says first.
    function languageOf(variant) {
        return variant.dataset.l ?? variant.lang;
    }

    // What is to be read where there is a choice: this very language, another form of it, or what the document says first.
    function best(variants, tag) {
        const wanted = tag.toLowerCase();
        return variants.find((variant) => languageOf(variant).toLowerCase() === wanted) ||
            variants.find((variant) => languageOf(variant) && primary(languageOf(variant)) === primary(wanted));
    }

    function languageName(tag) {
        try {
            const name = new Intl.DisplayNames([tag], { type: "language", fallback: "none" }).of(tag);
            return name ? `${name} (${tag})` : tag;
        } catch {
            return tag.slice(0, 40);
        }
    }

    function groupsFind() {
        const groups = new Map();
        for (const variant of document.querySelectorAll(".t")) {
            const group = groups.get(variant.parentNode);
            if (group)
                group.push(variant);
            else
                groups.set(variant.parentNode, [variant]);
        }
        return [...groups.values()].filter((group) => group.length > 1);
    }

    function languageShow(groups, tag) {
        for (const group of groups) {
            const shown = tag ? best(group, tag) : undefined;
            for (const variant of group) {
                const isDefault = variant.dataset.l === "";
                variant.classList.toggle("shown", variant === shown && !isDefault);
                variant.classList.toggle("replaced", isDefault && shown !== undefined && shown !== variant);
            }
        }
    }

    // The sets of an entity have names and definitions in other languages, which search.js adds: it has the index of all names.
    function membersShow(section, tag) {
        section.querySelector(".language")?.remove();
        if (tag)
            section.querySelector("h2").after(made("p", { className: "note language" },
                `Where a document translates them, names of members are also shown in ${languageName(tag)}, and definitions ` +
                "in that language alone. The pages of the sets have both."));
        root.dataset.language = tag;
        document.dispatchEvent(new Event("kivlanguage"));
    }

    function languageBegin() {
        const select = document.getElementById("language");
        const groups = groupsFind();
        const section = document.querySelector("#sets[data-languages]");
        const tags = new Set(groups.flat().map(languageOf).filter((tag) => tag));
        section?.dataset.languages.split(" ").forEach((tag) => tags.add(tag));
        if (!select || tags.size === 0)
            return;
        const show = (tag) => {
            languageShow(groups, tag);
            if (section)
                membersShow(section, tag);
        };
        select.add(new Option("As written", ""));
        for (const tag of [...tags].sort())
            select.add(new Option(languageName(tag), tag));
        // A page without the remembered language shows a form of it, or its own names, and forgets nothing.
        const wanted = remembered("language") || "";
        const known = [...tags].find((tag) => tag.toLowerCase() === wanted.toLowerCase()) ||
            [...tags].find((tag) => wanted && primary(tag) === primary(wanted));
        select.value = known || "";
        select.hidden = false;
        select.addEventListener("change", () => {
            remember("language", select.value);
            show(select.value);
        });
        if (known)
            show(known);
    }

    /* Links to copy */

    let copiedTimer = 0;

    function copiedShow(text) {
        let status = document.querySelector(".copied");
        if (!status) {
            status = document.createElement("p");
            status.className = "copied";
            status.setAttribute("role", "status");
            document.body.append(status);
        }
        status.hidden = false;
        status.textContent = text;
        clearTimeout(copiedTimer);
        copiedTimer = setTimeout(() => { status.hidden = true; }, 1800);
    }

    function copyBegin() {
        document.addEventListener("click", (event) => {
            const anchor = event.target.closest?.("a.anchor");
            if (!anchor || event.ctrlKey || event.metaKey || event.shiftKey || !navigator.clipboard)
                return;
            // The click goes on to the row; where the browser does not let us copy, that is all.
            navigator.clipboard.writeText(anchor.href).then(() => copiedShow("Link copied"), () => {});
        });
    }

    /* Closed details */

    // The row that an address points at may be in one that is closed.
    function targetOpen() {
        let element = null;
        try {
            element = document.getElementById(decodeURIComponent(location.hash.slice(1)));
        } catch {
            return; // No address of ours.
        }
        if (!element)
            return;
        let isOpened = false;
        for (let at = element; at; at = at.parentElement) {
            if (at instanceof HTMLDetailsElement && !at.open)
                at.open = isOpened = true;
        }
        if (isOpened)
            element.scrollIntoView();
    }

    // What is printed is printed open, and as it was again afterwards.
    function printBegin() {
        let closed = [];
        addEventListener("beforeprint", () => {
            closed = [...document.querySelectorAll("details:not([open])")];
            closed.forEach((each) => { each.open = true; });
        });
        addEventListener("afterprint", () => {
            closed.forEach((each) => { each.open = false; });
            closed = [];
        });
    }

    // All branches of the tree at once.
    function treeBegin() {
        const tree = document.querySelector("main > .tree");
        const branches = tree ? [...tree.querySelectorAll("details")] : [];
        if (branches.length === 0)
            return;
        const button = (text, isOpen) => {
            const element = made("button", { type: "button" }, text);
            element.addEventListener("click", () => branches.forEach((each) => { each.open = isOpen; }));
            return element;
        };
        tree.before(made("div", { className: "tree-bar" }, button("Expand all", true), button("Collapse all", false)));
    }

    /* Contents */

    // On pages with several sections: links to them, beside the text or below the title.
    function contentsBegin() {
        const headings = document.querySelectorAll("main > section[id] > h2");
        const title = document.querySelector("main > h1");
        if (headings.length < 3 || !title || document.querySelector(".toc"))
            return;
        const contents = document.createElement("nav");
        contents.className = "toc";
        contents.setAttribute("aria-label", "On this page");
        const list = document.createElement("ul");
        for (const heading of headings) {
            const link = document.createElement("a");
            link.href = "#" + heading.parentNode.id;
            for (const part of heading.childNodes) {
                if (!part.classList?.contains("anchor"))
                    link.append(part.cloneNode(true));
            }
            const item = document.createElement("li");
            item.append(link);
            list.append(item);
        }
        contents.append(list);
        title.after(contents);
    }

    /* Keys */

    function isTyping(element) {
        return element instanceof HTMLElement &&
            (element.isContentEditable || /^(INPUT|TEXTAREA|SELECT)$/.test(element.tagName));
    }

    // Who speaks to the computer, or hits keys by chance, switches single keys off.
    function keysSwitchBegin(box) {
        const input = made("input", { type: "checkbox", id: "keys", checked: remembered("keys") !== "off" });
        const show = () => { box.placeholder = input.checked ? "Search: press / or s" : "Search"; };
        input.addEventListener("change", () => {
            remember("keys", input.checked ? "on" : "off");
            show();
        });
        show();
        document.querySelector("footer")?.append(made("p", {}, made("label", { className: "keys" }, input,
            " The keys / and s go to the search")));
        return input;
    }

    function keysBegin() {
        const box = document.getElementById("search");
        if (!box)
            return;
        const keys = keysSwitchBegin(box);
        document.addEventListener("keydown", (event) => {
            if (!keys.checked || event.ctrlKey || event.metaKey || event.altKey || isTyping(event.target))
                return;
            // From a result, letters go on with the search.
            if ((event.key === "/" || event.key === "s") && !event.target.closest?.("#results")) {
                event.preventDefault();
                box.focus();
                box.select();
            }
        });
    }

    document.addEventListener("DOMContentLoaded", () => {
        barBegin();
        modeBegin();
        contentsBegin();
        treeBegin();
        printBegin();
        languageBegin();
        copyBegin();
        keysBegin();
        targetOpen();
        addEventListener("hashchange", targetOpen);
    });
})();
