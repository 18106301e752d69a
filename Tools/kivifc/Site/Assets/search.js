/* The search. The index is a script of its own, which is loaded when the box is first used, because browsers let pages that
   lie in a folder load nothing else. Names that are, begin with or contain what was typed are found by looking at all names,
   which takes a few milliseconds; those that are near by MiniSearch, as soon as it has read the names. */
"use strict";

// After site.js, which has made the box.
document.addEventListener("DOMContentLoaded", () => {
    const Most = 40; // Results that are listed.
    const MostOfOne = 4; // Of one name and kind, before the others are asked for.
    const MostAtOnce = 100; // Of these, each time.
    const MostWords = 8; // Nobody asks for a name by more.
    const SetKinds = new Set(["Property set", "Quantity set"]);

    const box = document.getElementById("search");
    const list = document.getElementById("results");
    const status = document.getElementById("found");
    if (!box || !list)
        return;
    // Always a path below the page's own folder, whatever the index says.
    const top = "./" + (document.documentElement.dataset.root || "");

    /* Texts */

    // As it is compared: without case, accents, and forms that differ in width only. Marks of Japanese stay.
    function folded(text) {
        return text.normalize("NFKD").replace(/[\u0300-\u036f]/g, "").normalize("NFKC").toLowerCase().trim();
    }

    const Ideographs = /[\p{Script=Han}\p{Script=Hiragana}\p{Script=Katakana}\u30fc]+/gu;

    function pairs(text) {
        const letters = [...text];
        return letters.length < 2 ? letters : letters.slice(1).map((letter, index) => letters[index] + letter);
    }

    // The words of a name: IfcWallType has ifc, wall and type; Chinese and Japanese, which has no spaces, pairs of characters.
    function words(text) {
        const found = [];
        const rest = text.replace(Ideographs, (run) => {
            found.push(...pairs(run));
            return " ";
        });
        for (const word of rest.match(/\p{Lu}+(?!\p{Ll})|\p{Lu}?[\p{L}\p{M}]+?(?=\p{Lu}|[^\p{L}\p{M}]|$)|\p{N}+/gu) || [])
            found.push(folded(word));
        return found;
    }

    // A name and its words.
    function terms(text) {
        const whole = folded(text);
        return whole.includes(" ") || whole.length > 60 ? words(text) : [...new Set([whole, ...words(text)])];
    }

    /* GUIDs */

    const Base64 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_$";

    // What was typed as the beginning of a GUID, in hexadecimal digits: 8 or more of them, or 6 or more of the 22 characters, which
    // say two bits and then six each. What consists of such digits alone may be either.
    function guidDigits(text) {
        const bare = text.trim().replace(/^\{|\}$/g, "");
        const found = [];
        const digits = bare.replace(/-/g, "").toLowerCase();
        if (/^[0-9a-f]{8,32}$/.test(digits))
            found.push(digits);
        if (/^[0-3][0-9A-Za-z_$]{5,21}$/.test(bare)) {
            const number = [...bare].reduce((sum, character) => sum * 64n + BigInt(Base64.indexOf(character)), 0n);
            const bits = 6 * bare.length - 4;
            found.push((number >> BigInt(bits % 4)).toString(16).padStart(Math.floor(bits / 4), "0"));
        }
        return found;
    }

    /* Index */

    // Each: {name, key, short, kind, order, page: {name, key, short, file, note, above}, of, anchor, language}; short is another way
    // to write it, above the name of the supertype.
    let entries = null;
    let kinds = [];
    const pagesByKey = new Map(); // Of what a supertype can be.
    const guids = []; // [digits, entry]
    const byName = new Map(); // Name: entries
    let near = null; // MiniSearch over the distinct names, once it is there

    // What nearly all names of a schema begin with, such as "Ifc": nobody types it.
    function commonPrefix(names) {
        const counts = new Map();
        for (const name of names) {
            const prefix = /^\p{Lu}\p{Ll}+(?=\p{Lu})/u.exec(name)?.[0];
            if (prefix)
                counts.set(prefix, (counts.get(prefix) || 0) + 1);
        }
        const [prefix, count] = [...counts].sort((a, b) => b[1] - a[1])[0] || ["", 0];
        return count * 2 > names.length ? prefix : "";
    }

    // What is left of a name without that.
    function shortened(name, kind, prefix) {
        if (SetKinds.has(kind))
            return folded(name.replace(/^[^_]*_/, ""));
        return prefix && name.startsWith(prefix) ? folded(name.slice(prefix.length)) : "";
    }

    // An entry for the name and one for each translation of it; `of` says where it is.
    function entriesAdd(all, entry, guid, translations, languages) {
        all.push(entry);
        if (guid)
            guids.push([guid, entry]);
        for (let at = 0; at + 1 < translations.length; at += 2) {
            const name = translations[at + 1];
            const of = entry.of ? entry.of + " › " + entry.name : entry.name;
            if (name !== entry.name)
                all.push({ ...entry, name, key: folded(name), short: "", of, language: languages[translations[at]] });
        }
    }

    function rowsRead(all, index, page, runs) {
        for (const [kind, ...run] of runs) {
            // On the page of a set, it is what the values of a property are: less than a property of that name.
            const isOfValues = index.kinds[kind] === "Enumeration";
            const order = isOfValues ? index.kinds.indexOf("Quantity") + 0.5 : kind;
            for (const row of run) {
                const [name, anchor, guid, ...translations] = typeof row === "string" ? [row] : row;
                const key = folded(name);
                const short = isOfValues ? "penum_" + key : "";
                const entry = { name, key, short, kind, order, page, of: page.name, anchor: anchor || name, language: "" };
                entriesAdd(all, entry, guid, translations, index.languages);
            }
        }
    }

    function indexRead(index) {
        const all = [];
        const isSet = (kind) => SetKinds.has(index.kinds[kind]);
        const prefix = commonPrefix(index.pages.filter(([kind]) => !isSet(kind)).map(([, name]) => name));
        for (const [kind, name, file, guid, rows, translations, note, above] of index.pages) {
            const short = shortened(name, index.kinds[kind], prefix);
            const address = file || (isSet(kind) ? "sets/" : "") + name + ".html";
            const page = { name, key: folded(name), short, file: address, note, above };
            if (index.kinds[kind] === "Entity" && !pagesByKey.has(page.key))
                pagesByKey.set(page.key, page);
            const entry = { name, key: page.key, short, kind, order: kind, page, of: "", anchor: "", language: "" };
            entriesAdd(all, entry, guid, translations || [], index.languages);
            rowsRead(all, index, page, rows || []);
        }
        kinds = index.kinds;
        return all;
    }

    // In parts, so that the page goes on answering meanwhile.
    function nearBuild() {
        for (const entry of entries) {
            const same = byName.get(entry.name);
            if (same)
                same.push(entry);
            else
                byName.set(entry.name, [entry]);
        }
        const index = new MiniSearch({ fields: ["name"], idField: "name", tokenize: terms, processTerm: (term) => term });
        const names = [...byName.keys()];
        const step = (from) => {
            index.addAll(names.slice(from, from + 1500).map((name) => ({ name })));
            if (from + 1500 < names.length) {
                setTimeout(step, 0, from + 1500);
                return;
            }
            near = index;
            // Who is among the results already keeps them.
            if (box.value && document.activeElement === box)
                shownUnlessClosed();
        };
        setTimeout(step, 0, 0);
    }

    let loading = null;

    function scriptLoad(name) {
        return new Promise((resolve, reject) => {
            const script = document.createElement("script");
            script.src = top + "assets/" + name;
            script.onload = resolve;
            script.onerror = () => {
                script.remove();
                reject(new Error(name));
            };
            document.head.append(script);
        });
    }

    function load() {
        loading ||= Promise.all([scriptLoad("search-index.js"), scriptLoad("minisearch.js")]).then(() => {
            entries = indexRead(window.kivSearch);
            window.kivSearch = null;
            nearBuild();
        }).catch((error) => {
            // A file that was not there, while a site is exchanged or on its way, may be there at the next key.
            loading = null;
            throw error;
        });
        return loading;
    }

    /* Ranks: it, the beginning of it, a part of it, near it */

    function rank(entry, query) {
        const { key } = entry;
        // Without what all names begin with it is the name too: "wall" means IfcWall before an item WALL of some property.
        if (key === query || entry.short === query)
            return 0;
        if (key.startsWith(query) || entry.short.startsWith(query))
            return 1;
        const place = key.indexOf(query);
        if (place < 0)
            return -1;
        return isWordBegin(entry, place) ? 2 : 3;
    }

    // As far as folding has kept the places of the characters.
    function isWordBegin({ name, key }, place) {
        return key.length === name.length && (/\p{Lu}/u.test(name[place]) || !/[\p{L}\p{N}]/u.test(name[place - 1]));
    }

    function compared(one, other) {
        return one.order - other.order || one.key.length - other.key.length || (one.key < other.key ? -1 : Number(one.key > other.key));
    }

    // Puts an entry where it belongs among the best of its rank, at most one more than are listed, so that it is known that there
    // are more: a letter has more hits than can be sorted at each key.
    function bestAdd(best, entry) {
        let at = best.length;
        while (at > 0 && compared(entry, best[at - 1]) < 0)
            --at;
        const isOneOfMany = at >= MostOfOne && compared(entry, best[at - MostOfOne]) === 0;
        if (at === Most + 1 || isOneOfMany)
            return;
        best.splice(at, 0, entry);
        best.length = Math.min(best.length, Most + 1);
    }

    function ranked(query) {
        const ranks = [[], [], [], []];
        for (const entry of entries) {
            const value = rank(entry, query);
            if (value >= 0)
                bestAdd(ranks[value], entry);
        }
        return ranks.flat();
    }

    // How many letters must be put in, left out, replaced or swapped with the next one. Of long names the beginning is compared.
    function distance(one, other) {
        const [from, to] = [one.slice(0, 60), other.slice(0, 60)];
        let before = [];
        let last = Array.from({ length: to.length + 1 }, (_, at) => at);
        for (let row = 1; row <= from.length; ++row) {
            const now = [row];
            for (let at = 1; at <= to.length; ++at) {
                const isSame = from[row - 1] === to[at - 1];
                now[at] = Math.min(last[at] + 1, now[at - 1] + 1, last[at - 1] + (isSame ? 0 : 1));
                if (row > 1 && at > 1 && from[row - 1] === to[at - 2] && from[row - 2] === to[at - 1])
                    now[at] = Math.min(now[at], before[at - 2] + 1);
            }
            before = last;
            last = now;
        }
        return last[to.length];
    }

    function nameDistance(name, query) {
        const { key, short } = byName.get(name)[0];
        return short ? Math.min(distance(key, query), distance(short, query)) : distance(key, query);
    }

    // How many mistakes a word may have, more where nothing else is found. Swapped letters are one, which MiniSearch counts as two.
    function mistakesMax(term, isAlone) {
        return term.length > 3 ? Math.min(4, Math.round(term.length * (isAlone ? 0.34 : 0.2))) : 0;
    }

    // Whether each word of the query is near a word that MiniSearch found in the name, or begins it.
    function isNear({ terms: found }, asked, isAlone) {
        return asked.every((word) =>
            found.some((term) => term.startsWith(word) || distance(term, word) <= mistakesMax(word, isAlone)));
    }

    function nearest(text, query, isAlone) {
        if (!near || query.length < 2)
            return [];
        if (query.search(Ideographs) >= 0)
            return near.search(text, { combineWith: "OR" }).slice(0, Most).flatMap((result) => byName.get(result.id));
        // Of a query that is one word, the whole; of several words, each.
        const split = (words) => folded(words).split(/[\s.]+/).filter((word) => word);
        const fuzzy = (term) => (term.length > 3 ? Math.min(4, mistakesMax(term, isAlone) + 1) : false);
        const asked = split(text);
        const hits = near.search(text, { combineWith: "AND", prefix: true, fuzzy, tokenize: split })
            .filter((result) => isNear(result, asked, isAlone));
        const found = hits.slice(0, 5 * Most)
            .map(({ id }) => ({ away: nameDistance(id, query), same: [...byName.get(id)].sort(compared) }));
        found.sort((one, other) => one.away - other.away || compared(one.same[0], other.same[0]));
        return found.slice(0, Most).flatMap(({ same }) => same);
    }

    // The page and those of its supertypes, the nearest first.
    function* line(page) {
        const known = new Set();
        for (let each = page; each && !known.has(each); each = each.above && pagesByKey.get(folded(each.above))) {
            known.add(each);
            yield each;
        }
    }

    // "IfcWall.PredefinedType", "wall.globalid" or "IfcWall GlobalId": rows of a page, or of one whose rows it inherits.
    function rowsOfOwner(query) {
        const [, owner, begin] = /^(.*[^.\s])[.\s]+([^.\s]*)$/.exec(query) || [];
        if (!owner)
            return [];
        const owners = new Set(entries.map((entry) => entry.page).filter((page) => page.key === owner || page.short === owner));
        const pages = [...owners].flatMap((page) => [...line(page)]);
        const distances = new Map(pages.map((page, at) => [page, at]).reverse());
        return entries.filter((entry) => entry.of && entry.key.startsWith(begin) && distances.has(entry.page))
            .sort((one, other) => distances.get(one.page) - distances.get(other.page)).slice(0, 5 * Most);
    }

    // How well a word fits a name: it, the beginning of it, a part of it; or not.
    function wordRank({ key, short }, word) {
        if (key === word || short === word)
            return 0;
        if (key.startsWith(word) || short && short.startsWith(word))
            return 1;
        return key.includes(word) ? 2 : -1;
    }

    // Of several words, each is in the name or in that of its page, and one or more in the name itself: names that have them all
    // come first.
    function rankedByWords(query) {
        const asked = query.split(/[.\s]+/).filter((word) => word);
        const ranks = [];
        if (asked.length < 2 || asked.length > MostWords)
            return ranks;
        for (const entry of entries) {
            let sum = 0;
            let named = 0;
            for (const word of asked) {
                const own = wordRank(entry, word);
                const value = own >= 0 ? own : wordRank(entry.page, word);
                named += own >= 0;
                sum = value < 0 ? Infinity : sum + value;
            }
            if (named === 0 || sum === Infinity)
                continue;
            const isWhole = named === asked.length;
            bestAdd(ranks[isWhole ? sum : 2 * MostWords + 1 + sum] ||= [], entry);
        }
        return ranks.flat();
    }

    function search(text) {
        const query = folded(text);
        if (!query)
            return { results: [], isCut: false };
        const wanted = guidDigits(text);
        const found = new Set(guids.filter(([digits]) => wanted.some((begin) => digits.startsWith(begin))).map(([, entry]) => entry));
        const named = ranked(query);
        for (const entry of [...named, ...rowsOfOwner(query), ...(named.length === 0 ? rankedByWords(query) : [])])
            found.add(entry);
        const matching = found.size;
        if (matching < Most) {
            for (const entry of nearest(text, query, matching === 0))
                found.add(entry);
        }
        return grouped([...found], matching);
    }

    function isSame(one, other) {
        return one.kind === other.kind && one.key === other.key;
    }

    // One name in many places leaves room for others. Each result: {entry, rest}, where rest is what else there is of the name and
    // is there for the last of those that are listed. The first of what was found, that many, match and are not only near.
    function grouped(found, matching) {
        const groups = new Map();
        const kept = [];
        let isCut = false;
        for (const [at, entry] of found.entries()) {
            const id = entry.kind + " " + entry.key;
            const group = groups.get(id) || new Set();
            groups.set(id, group.add(entry));
            if (group.size > MostOfOne)
                continue;
            if (kept.length === Most) {
                isCut = at < matching;
                break;
            }
            kept.push({ entry, rest: [] });
        }
        for (const [at, result] of kept.entries()) {
            const group = groups.get(result.entry.kind + " " + result.entry.key);
            const isLast = !kept.slice(at + 1).some((other) => isSame(other.entry, result.entry));
            if (isLast && group.size >= MostOfOne)
                result.rest = restOf(result.entry, kept);
        }
        return { results: kept, isCut };
    }

    function restOf(entry, kept) {
        const listed = new Set(kept.map((result) => result.entry));
        return entries.filter((other) => isSame(other, entry) && !listed.has(other));
    }

    /* Results */

    function element(tag, className, text) {
        const made = document.createElement(tag);
        made.className = className;
        made.textContent = text;
        return made;
    }

    // Long names may be broken between their words: IfcWall|Type.
    function broken(text) {
        return text.split(/(?<=\p{Ll})(?=\p{Lu})|(?<=_)/u).flatMap((part, at) => (at > 0 ? [element("wbr", "", ""), part] : [part]));
    }

    // The part that was typed is marked, where folding has kept the places of the characters.
    function nameElement(entry, query) {
        const made = element("span", "name", "");
        const place = entry.key.length === entry.name.length ? entry.key.indexOf(query) : -1;
        if (place < 0) {
            made.append(...broken(entry.name));
            return made;
        }
        const mark = element("mark", "", "");
        mark.append(...broken(entry.name.slice(place, place + query.length)));
        made.append(...broken(entry.name.slice(0, place)), mark, ...broken(entry.name.slice(place + query.length)));
        return made;
    }

    function placeOf({ page, kind }) {
        if (page.file.startsWith("sets/"))
            return "Sets";
        return kinds[kind] === "Page" ? "Site" : "Schema";
    }

    function resultElement(entry, query) {
        const item = document.createElement("li");
        const link = document.createElement("a");
        link.href = top + entry.page.file + (entry.anchor ? "#" + entry.anchor : "");
        const name = nameElement(entry, query);
        if (entry.language)
            name.lang = entry.language;
        const place = [entry.of, entry.language].filter((text) => text).join(" · ") || placeOf(entry);
        link.append(name, " ", element("span", "place", place), " ");
        if (entry.page.note)
            link.append(element("span", "badge", entry.page.note), " ");
        link.append(element("span", "kind", kinds[entry.kind]));
        item.append(link);
        return item;
    }

    // Opens what else there is of the name of the results before it.
    function restElement(rest, query) {
        const item = document.createElement("li");
        const button = element("button", "rest", `and ${rest.length} more: ${rest[0].name}`);
        button.type = "button";
        button.addEventListener("click", () => {
            const opened = resultElements(rest.slice(0, MostAtOnce).map((entry) => ({ entry, rest: [] })), query);
            if (rest.length > MostAtOnce)
                opened.push(restElement(rest.slice(MostAtOnce), query));
            item.replaceWith(...opened);
            opened[0].querySelector("a").focus();
        });
        item.append(button);
        return item;
    }

    function resultElements(results, query) {
        return results.flatMap(({ entry, rest }) =>
            [resultElement(entry, query), ...(rest.length > 0 ? [restElement(rest, query)] : [])]);
    }

    // Until somebody types, or comes back to the box: what is read meanwhile does not open the list again.
    let isClosed = false;

    function hide() {
        isClosed = true;
        list.hidden = true;
    }

    function say(text) {
        if (status)
            status.textContent = text;
    }

    function show() {
        if (!box.value.trim())
            return hide();
        const { results, isCut } = search(box.value);
        list.replaceChildren(...resultElements(results, folded(box.value)));
        list.querySelector("a")?.classList.add("first");
        if (results.length === 0)
            list.append(element("li", "none", near ? "No name is like that." : "Searching…"));
        if (isCut)
            list.append(element("li", "none", "More names match; type more of the name."));
        say(isCut ? `The first ${Most} results` : results.length === 1 ? "1 result" : `${results.length} results`);
        list.scrollTop = 0;
        list.hidden = false;
    }

    function shownUnlessClosed() {
        if (!isClosed)
            show();
    }

    function failureShow() {
        const text = "The index of the search cannot be read. The next key tries again.";
        list.replaceChildren(element("li", "none", text));
        say(text);
        list.hidden = false;
    }

    function typed() {
        isClosed = false;
        if (entries)
            return show();
        return load().then(shownUnlessClosed, failureShow);
    }

    function focusMove(step) {
        const links = [...list.querySelectorAll("a, button")];
        const at = links.indexOf(document.activeElement) + step;
        if (list.hidden || links.length === 0)
            return;
        (at < 0 ? box : links[Math.min(at, links.length - 1)]).focus();
    }

    function keyTaken(event) {
        const isInBox = event.target === box;
        switch (event.key) {
        case "ArrowDown":
            focusMove(1);
            return true;
        case "ArrowUp":
            if (isInBox)
                return false;
            focusMove(-1);
            return true;
        case "Enter":
            if (!isInBox)
                return false;
            // A list that is not shown is of what was typed before.
            if (!list.hidden)
                list.querySelector("a")?.click();
            return true;
        case "Escape":
            if (isInBox && list.hidden)
                box.value = "";
            box.focus(); // From a result, this shows what was found.
            hide();
            return true;
        default:
            return false;
        }
    }

    /* Members in place, on the page of an entity, in the language that was chosen */

    // This very language, or else the first other form of it.
    function inLanguage(variants, tag) {
        const wanted = tag.toLowerCase();
        const primary = (text) => text.toLowerCase().split(/[-_]/)[0];
        return variants.find(({ language }) => language.toLowerCase() === wanted) ||
            variants.find(({ language }) => primary(language) === primary(wanted));
    }

    // Names by the address of the row.
    function namesRead() {
        const names = new Map();
        for (const { name, language, page, anchor, kind } of entries) {
            const isMember = kinds[kind] === "Property" || kinds[kind] === "Quantity";
            if (!language || !isMember)
                continue;
            const address = page.file + "#" + anchor;
            names.set(address, [...(names.get(address) || []), { text: name, language }]);
        }
        return names;
    }

    // Definitions by the address of the row; that of a set has no anchor.
    function definitionsRead({ languages, texts, sets }) {
        const definitions = new Map();
        for (const [file, ...rows] of sets) {
            for (const [anchor, ...values] of rows) {
                const variants = [];
                for (let at = 0; at + 1 < values.length; at += 2)
                    variants.push({ language: languages[values[at]], text: texts[values[at + 1]] });
                definitions.set(anchor ? file + "#" + anchor : file, variants);
            }
        }
        return definitions;
    }

    let translations = null; // Names and definitions, once they are asked for.
    const replaced = new Map(); // Of each definition in another language, what the document says first.

    function translationsLoad() {
        translations ||= Promise.all([load(), scriptLoad("definitions.js")]).then(() => {
            const read = { names: namesRead(), definitions: definitionsRead(window.kivDefinitions) };
            window.kivDefinitions = null;
            return read;
        }).catch((error) => {
            translations = null;
            throw error;
        });
        return translations;
    }

    function definitionShow(element, variants, tag) {
        const found = inLanguage(variants || [], tag);
        if (!element || !found)
            return;
        replaced.set(element, element.textContent);
        element.textContent = found.text;
        element.lang = found.language;
    }

    function membersRestore() {
        document.querySelectorAll("details.set .translated").forEach((each) => each.remove());
        for (const [element, text] of replaced) {
            element.textContent = text;
            element.removeAttribute("lang");
        }
        replaced.clear();
    }

    function membersTranslate({ names, definitions }) {
        const tag = document.documentElement.dataset.language;
        membersRestore();
        if (!tag)
            return;
        for (const link of document.querySelectorAll("details.set th > a")) {
            const address = link.getAttribute("href");
            const name = inLanguage(names.get(address) || [], tag);
            if (name)
                link.after(Object.assign(element("span", "note translated", name.text), { lang: name.language }));
            definitionShow(link.closest("tr").cells[2], definitions.get(address), tag);
        }
        for (const link of document.querySelectorAll("details.set > p:first-of-type > a:first-child"))
            definitionShow(link.parentNode.querySelector("bdi"), definitions.get(link.getAttribute("href")), tag);
    }

    function languageTaken() {
        // Nothing has been translated, so there is nothing to take back.
        if (!translations && !document.documentElement.dataset.language)
            return;
        // All stays as it is written when there is no index; the search says so when it is used.
        translationsLoad().then(membersTranslate, () => {});
    }

    document.addEventListener("kivlanguage", languageTaken);
    if (document.documentElement.dataset.language)
        languageTaken();

    box.addEventListener("focus", () => load().catch(failureShow));
    box.addEventListener("input", typed);
    box.addEventListener("focus", () => {
        isClosed = false;
        if (box.value && entries && list.hidden)
            show();
    });
    box.parentNode.addEventListener("keydown", (event) => {
        if (event.ctrlKey || event.metaKey || event.altKey || event.isComposing)
            return;
        if (keyTaken(event))
            event.preventDefault();
        else if (event.target !== box && event.key.length === 1)
            box.focus(); // The character goes on into the box.
    });
    // A result on this page moves there; the list is in the way then.
    list.addEventListener("click", (event) => {
        if (event.target.closest("a") && !event.ctrlKey && !event.metaKey && !event.shiftKey)
            hide();
    });
    document.addEventListener("pointerdown", (event) => {
        if (!box.parentNode.contains(event.target))
            hide();
    });
    box.parentNode.addEventListener("focusout", (event) => {
        if (event.relatedTarget && !box.parentNode.contains(event.relatedTarget))
            hide();
    });
});
