"use strict";
(() => {
    const data = JSON.parse(document.getElementById("data").textContent);
    const part = id => document.getElementById(id);
    const weights = ["error", "warning", "info"];
    const checks = new Map(data.checks.map(check => [check.id, check]));
    const tags = new Map(data.languages.map(language => [language.key, language.tag]));
    const filter = { language: "", classes: new Set(weights), words: [], url: null };
    const chunk = 100;
    let shownFindings = chunk;
    let shownUrls = chunk;

    function make(name, className, text) {
        const element = document.createElement(name);
        if (className)
            element.className = className;
        if (text !== undefined)
            element.textContent = text;
        return element;
    }

    function counted(count, noun) {
        return `${count.toLocaleString("en")} ${noun}${count === 1 ? "" : "s"}`;
    }

    // A text in its language and direction, whatever stands around it.
    function makeText(name, text, language) {
        const element = make(name, "", text);
        element.dir = "auto";
        try {
            element.lang = Intl.getCanonicalLocales(tags.get(language) || data.baseTag)[0];
        } catch {
            // A key that names no language leaves the browser's choice.
        }
        return element;
    }

    function nameOfLanguage(language) {
        if (language.key === data.base)
            return "base";
        if (language.key === "POSIX")
            return "last fallback";
        try {
            return new Intl.DisplayNames(["en"], { type: "language" }).of(language.tag);
        } catch {
            return "";
        }
    }

    // Never rounded up to all.
    function percent(language) {
        const share = language.texts === 0 ? 100 : 100 * language.translated / language.texts;
        return Math.floor(share * 10) / 10;
    }

    function showSummary() {
        const verdict = make("li", `badge ${data.failed ? "error" : "good"}`, data.failed ? "Failed" : "Passed");
        part("summary").append(verdict);
        for (const weight of weights) {
            const count = data.findings.filter(finding => finding.class === weight).length;
            part("summary").append(make("li", `badge ${weight}`, counted(count, weight)));
        }
    }

    function showCoverage() {
        for (const language of data.languages) {
            const share = percent(language);
            const button = make("button");
            button.type = "button";
            button.dataset.language = language.key;
            const name = make("span", "name", language.key + " ");
            name.append(make("small", "", nameOfLanguage(language)));
            const figure = make("span", "share", `${share} % `);
            figure.append(make("small", "", `${language.translated} of ${language.texts}`));
            const bar = make("span", "bar");
            const filled = make("span", share === 100 ? "all" : "");
            filled.style.width = `${share}%`;
            bar.append(filled);
            button.append(name, figure, bar);
            button.addEventListener("click", () => {
                part("language").value = filter.language === language.key ? "" : language.key;
                readFilters();
            });
            const item = make("li");
            item.append(button);
            part("coverage").append(item);
        }
    }

    function fillLanguages() {
        const keys = new Set(data.languages.map(language => language.key));
        data.findings.forEach(finding => finding.language && keys.add(finding.language));
        for (const key of [...keys].sort())
            part("language").append(new Option(key, key));
    }

    function hasWords(text) {
        const lower = text.toLowerCase();
        return filter.words.every(word => lower.includes(word));
    }

    function isShown(finding) {
        return filter.classes.has(finding.class) &&
            (!filter.language || finding.language === filter.language) &&
            (filter.url === null || finding.url === filter.url) &&
            hasWords([finding.id, finding.file, finding.url, finding.reason, finding.text, finding.base].join("\n"));
    }

    function makeTexts(finding) {
        const texts = make("dl", "texts");
        const columns = [[finding.language, finding.text, finding.language]];
        if (finding.language !== data.base)
            columns.push([data.base, finding.base, data.base]);
        for (const [title, text, language] of columns) {
            const column = make("div");
            const value = text === "" ? make("dd", "none", "no text") : makeText("dd", text, language);
            column.append(make("dt", "", title), value);
            texts.append(column);
        }
        return texts;
    }

    function makeFinding(finding) {
        const article = make("article", `finding is-${finding.class}`);
        const head = make("div", "head");
        head.append(make("span", `badge ${finding.class}`, finding.id));
        if (finding.url)
            head.append(make("span", "url", finding.url));
        const place = finding.line ? `${finding.file}:${finding.line}:${finding.column}` : finding.file;
        head.append(make("span", "place", place));
        const reason = make("p", "", finding.reason);
        reason.dir = "auto";
        article.append(head, reason);
        if (finding.url)
            article.append(makeTexts(finding));
        const check = checks.get(finding.id);
        const details = make("details");
        details.append(make("summary", "", `What ${finding.id} means`), `${check.summary} ${check.advice}`);
        article.append(details);
        return article;
    }

    function showFindings() {
        const found = data.findings.filter(isShown);
        const list = part("findings");
        list.replaceChildren();
        let file = null;
        for (const finding of found.slice(0, shownFindings)) {
            if (finding.file !== file)
                list.append(make("h3", "", finding.file));
            file = finding.file;
            list.append(makeFinding(finding));
        }
        if (found.length === 0)
            list.append(make("p", "nothing", data.findings.length ? "Nothing is found with these filters." : "Nothing is found. All is well."));
        part("more-findings").hidden = found.length <= shownFindings;
        const at = filter.url === null ? "" : ` at ${filter.url}`;
        part("count").textContent = `${counted(found.length, "finding")} of ${data.findings.length.toLocaleString("en")}${at}`;
    }

    function countFindings() {
        const cells = new Map();
        for (const finding of data.findings) {
            if (!finding.url || !filter.classes.has(finding.class))
                continue;
            const key = `${finding.language}\n${finding.url}`;
            const cell = cells.get(key) || { count: 0, weight: 2 };
            cell.count += 1;
            cell.weight = Math.min(cell.weight, weights.indexOf(finding.class));
            cells.set(key, cell);
        }
        return cells;
    }

    const states = {
        t: ["translated", "✓", "translated"],
        m: ["missing", "✗", "missing"],
        e: ["empty", "∅", "empty"],
    };

    function makeCell(language, url, index, cells) {
        const found = cells.get(`${language.key}\n${url}`);
        const [className, mark, name] = states[language.states[index]];
        const isGap = name !== "translated";
        const cell = make("td", found && !isGap ? weights[found.weight] : className, found && !isGap ? found.count : mark);
        cell.tabIndex = -1;
        cell.setAttribute("aria-label", `${language.key}, ${name}${found ? `, ${counted(found.count, "finding")}` : ""}`);
        cell.dataset.language = language.key;
        cell.dataset.url = url;
        return cell;
    }

    function showMatrix() {
        const languages = data.languages.filter(language => !filter.language || language.key === filter.language);
        const rows = data.urls.map((url, index) => [url, index])
            .filter(([url]) => (filter.url === null || url === filter.url) && hasWords(matrixWords.get(url)));
        const cells = countFindings();
        const table = part("matrix");
        table.replaceChildren();
        const head = table.createTHead().insertRow();
        for (const title of ["URL", ...languages.map(language => language.key)]) {
            const cell = make("th", "", title);
            cell.scope = "col";
            head.append(cell);
        }
        const body = table.createTBody();
        for (const [url, index] of rows.slice(0, shownUrls)) {
            const row = body.insertRow();
            const name = make("th", "", url);
            name.scope = "row";
            row.append(name, ...languages.map(language => makeCell(language, url, index, cells)));
        }
        const first = body.querySelector("td");
        if (first)
            first.tabIndex = 0;
        part("more-urls").hidden = rows.length <= shownUrls;
    }

    // What the words of the filter are looked for in a row: its URL, and all that was found there.
    const matrixWords = new Map(data.urls.map(url => [url, url]));
    for (const finding of data.findings) {
        if (matrixWords.has(finding.url))
            matrixWords.set(finding.url, [matrixWords.get(finding.url), finding.id, finding.reason, finding.text, finding.base].join("\n"));
    }

    function showAll() {
        showFindings();
        showMatrix();
        for (const button of part("coverage").querySelectorAll("button"))
            button.setAttribute("aria-pressed", String(button.dataset.language === filter.language));
    }

    function readFilters() {
        filter.language = part("language").value;
        filter.classes = new Set([...part("classes").querySelectorAll("input:checked")].map(box => box.value));
        filter.words = part("words").value.toLowerCase().split(/\s+/).filter(Boolean);
        filter.url = null;
        shownFindings = chunk;
        shownUrls = chunk;
        showAll();
    }

    function openCell(cell) {
        part("language").value = cell.dataset.language;
        readFilters();
        filter.url = cell.dataset.url;
        showAll();
        part("findings").focus();
        part("findings-title").scrollIntoView();
    }

    function moveTo(cell, event) {
        const row = cell.parentElement;
        const column = [...row.cells].indexOf(cell);
        const targets = {
            ArrowLeft: () => row.cells[column - 1],
            ArrowRight: () => row.cells[column + 1],
            ArrowUp: () => row.previousElementSibling && row.previousElementSibling.cells[column],
            ArrowDown: () => row.nextElementSibling && row.nextElementSibling.cells[column],
            Home: () => row.cells[1],
            End: () => row.cells[row.cells.length - 1],
        };
        if (!(event.key in targets))
            return;
        event.preventDefault();
        const target = targets[event.key]();
        if (!target || target.tagName !== "TD")
            return;
        cell.tabIndex = -1;
        target.tabIndex = 0;
        target.focus();
    }

    part("filters").addEventListener("input", readFilters);
    part("filters").addEventListener("submit", event => event.preventDefault());
    part("filters").addEventListener("reset", () => setTimeout(readFilters));
    part("more-findings").addEventListener("click", () => {
        shownFindings += chunk;
        showFindings();
    });
    part("more-urls").addEventListener("click", () => {
        shownUrls += chunk;
        showMatrix();
    });
    part("matrix").addEventListener("click", event => {
        if (event.target.tagName === "TD")
            openCell(event.target);
    });
    part("matrix").addEventListener("keydown", event => {
        if (event.target.tagName !== "TD")
            return;
        if (event.key === "Enter" || event.key === " ") {
            event.preventDefault();
            openCell(event.target);
        } else {
            moveTo(event.target, event);
        }
    });

    showSummary();
    showCoverage();
    fillLanguages();
    readFilters();
})();
