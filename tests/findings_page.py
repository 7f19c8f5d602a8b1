#!/usr/bin/python3
"""Looks at the page that textmanager check --html writes, in a browser without a window and without a mouse.

Usage: findings_page.py TEXTMANAGER LANGUAGE_FOLDER [--picture FILE]
--picture draws the page as it is on a desk, for the documentation.
"""

import base64
import json
import pathlib
import subprocess
import sys
import tempfile
import time
import urllib.error
import urllib.request

KEYS = {"Tab": "\ue004", "Enter": "\ue007", "Space": " ", "Down": "\ue015", "Right": "\ue014", "Escape": "\ue00c"}


class Browser:
    """Chromium, driven as a user with a keyboard would."""

    def __init__(self, port):
        self.driver = subprocess.Popen(
            ["chromedriver", f"--port={port}"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL
        )
        self.address = f"http://127.0.0.1:{port}/session"
        arguments = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--lang=en"]
        options = {"goog:chromeOptions": {"args": arguments}, "goog:loggingPrefs": {"browser": "ALL"}}
        for _ in range(100):
            try:
                answer = self.ask("", {"capabilities": {"alwaysMatch": options}})
                break
            except urllib.error.URLError:
                time.sleep(0.1)
        self.address += "/" + answer["sessionId"]

    def ask(self, path, body=None, method=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.address + path, data, {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=60) as response:
            return json.load(response)["value"]

    def run(self, script, *arguments):
        return self.ask("/execute/sync", {"script": script, "args": list(arguments)})

    def press(self, *keys):
        for key in keys:
            stroke = KEYS.get(key, key)
            actions = [{"type": kind, "value": stroke} for kind in ("keyDown", "keyUp")]
            self.ask("/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": actions}]})

    def press_until(self, key, condition, limit=80):
        for _ in range(limit):
            if self.run(f"return {condition}"):
                return
            self.press(key)
        raise AssertionError(f"{key} never leads to: {condition}")

    def show(self, page, width, height):
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600}
        self.ask("/goog/cdp/execute", {"cmd": "Emulation.setDeviceMetricsOverride", "params": metrics})
        self.ask("/url", {"url": page.as_uri()})

    def draw(self, path):
        path.write_bytes(base64.b64decode(self.ask("/screenshot")))

    def close(self):
        self.ask("", method="DELETE")
        self.driver.terminate()
        self.driver.wait()


def write_page(textmanager, folder, page):
    command = [textmanager, "check", folder, "--short-folder", "short", "--short-length", "16"]
    report = subprocess.run([*command, "--format", "json", "--html", page], capture_output=True, check=False)
    assert report.returncode == 0, report.stderr
    return json.loads(report.stdout)


def count_shown(browser):
    return browser.run("return document.querySelectorAll('.finding').length")


def check_content(browser, report):
    findings, languages = report["findings"], report["languages"]
    assert count_shown(browser) == len(findings), count_shown(browser)
    bars = browser.run("return [...document.querySelectorAll('.bar span')].map(bar => parseFloat(bar.style.width))")
    assert [round(language["share"] * 10 - 0.5) / 10 for language in languages] == bars, bars
    rows, columns = browser.run("const t = document.getElementById('matrix');"
                                "return [t.tBodies[0].rows.length, t.rows[0].cells.length - 1]")
    assert (rows, columns) == (100, len(languages)), (rows, columns)
    arabic = browser.run("const e = [...document.querySelectorAll('dd[lang=ar-EG]')][0];"
                         "return [getComputedStyle(e).direction, e.dir]")
    assert arabic == ["rtl", "auto"], arabic
    assert browser.run("return performance.getEntriesByType('resource').length") == 0
    # The browser itself asks for an icon of pages that it loads from disk: no.
    log = [entry["message"] for entry in browser.ask("/se/log", {"type": "browser"})]
    assert not log, log


def check_keyboard(browser, report):
    findings = report["findings"]
    browser.press_until("Tab", "document.activeElement.id === 'language'")
    browser.press("a", "r")
    arabic = [finding for finding in findings if finding["language"] == "ar_EG"]
    assert count_shown(browser) == len(arabic) > 0, count_shown(browser)
    browser.press_until("Tab", "document.activeElement.value === 'warning'")
    browser.press("Space")
    infos = [finding for finding in arabic if finding["class"] != "warning"]
    assert count_shown(browser) == len(infos) > 0, count_shown(browser)
    browser.press_until("Tab", "document.activeElement.type === 'reset'")
    browser.press("Enter")
    time.sleep(0.1)
    assert count_shown(browser) == len(findings)
    browser.press_until("Tab", "document.activeElement.tagName === 'TD'", 2000)
    browser.press("Down", "Right", "Enter")
    assert "at" in browser.run("return document.getElementById('count').textContent")
    browser.run("document.getElementById('words').focus()")
    browser.press(*"EVENTLOG")
    found = [finding for finding in findings if finding["url"] == "Service/EventLog"]
    browser.run("document.getElementById('language').value = '';"
                "document.getElementById('words').dispatchEvent(new Event('input', {bubbles: true}))")
    assert count_shown(browser) == len(found) > 0, count_shown(browser)


def check_phone(browser):
    wide = browser.run("return [...document.body.querySelectorAll('*')].filter(e => !e.closest('.scroll')"
                       " && !e.classList.contains('skip')"
                       " && e.getBoundingClientRect().right > innerWidth + 1).map(e => e.outerHTML.slice(0, 80))")
    assert not wide, wide
    assert browser.run("return document.documentElement.scrollWidth <= innerWidth")


def main(textmanager, folder, picture):
    with tempfile.TemporaryDirectory() as temporary:
        page = pathlib.Path(temporary, "findings.html")
        report = write_page(textmanager, folder, page)
        browser = Browser(9515)
        try:
            browser.show(page, 1280, 960)
            if picture:
                browser.draw(pathlib.Path(picture))
                return
            check_content(browser, report)
            check_keyboard(browser, report)
            browser.show(page, 360, 740)
            check_phone(browser)
        finally:
            browser.close()


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[4] if len(sys.argv) > 4 else None)
