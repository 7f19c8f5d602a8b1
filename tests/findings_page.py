#!/usr/bin/python3
"""Looks at the page that textmanager check --html writes, in a browser without a window and without a mouse.

Usage: findings_page.py TEXTMANAGER LANGUAGE_FOLDER [--picture FILE]
--picture draws the page as it is on a desk, for the documentation.
"""

import json
import pathlib
import subprocess
import sys
import tempfile
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys


class Browser(webdriver.Chrome):
    """Chromium, driven as a user with a keyboard would."""

    def __init__(self):
        options = webdriver.ChromeOptions()
        for argument in ("headless=new", "no-sandbox", "disable-gpu", "disable-dev-shm-usage", "lang=en"):
            options.add_argument("--" + argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        super().__init__(options=options, service=Service("/usr/bin/chromedriver"))

    def press(self, *keys):
        for key in keys:
            ActionChains(self, duration=0).send_keys(key).perform()

    def press_until(self, key, condition, limit=80):
        for _ in range(limit):
            if self.execute_script(f"return {condition}"):
                return
            self.press(key)
        raise AssertionError(f"{key} never leads to: {condition}")

    def show(self, page, width, height):
        metrics = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": width < 600}
        self.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", metrics)
        self.get(page.as_uri())


def write_page(textmanager, folder, page):
    command = [textmanager, "check", folder, "--short-folder", "short", "--short-length", "16"]
    report = subprocess.run([*command, "--format", "json", "--html", page], capture_output=True, check=False)
    assert report.returncode == 0, report.stderr
    return json.loads(report.stdout)


def count_shown(browser):
    return browser.execute_script("return document.querySelectorAll('.finding').length")


def check_content(browser, report):
    findings, languages = report["findings"], report["languages"]
    assert count_shown(browser) == len(findings), count_shown(browser)
    bars = browser.execute_script("return [...document.querySelectorAll('.bar span')].map(bar => parseFloat(bar.style.width))")
    assert [round(language["share"] * 10 - 0.5) / 10 for language in languages] == bars, bars
    rows, columns = browser.execute_script("const t = document.getElementById('matrix');"
                                "return [t.tBodies[0].rows.length, t.rows[0].cells.length - 1]")
    assert (rows, columns) == (100, len(languages)), (rows, columns)
    arabic = browser.execute_script("const e = [...document.querySelectorAll('dd[lang=ar-EG]')][0];"
                         "return [getComputedStyle(e).direction, e.dir]")
    assert arabic == ["rtl", "auto"], arabic
    assert browser.execute_script("return performance.getEntriesByType('resource').length") == 0
    # The browser itself asks for an icon of pages that it loads from disk: no.
    log = browser.get_log("browser")
    assert not log, log


def check_keyboard(browser, report):
    findings = report["findings"]
    browser.press_until(Keys.TAB, "document.activeElement.id === 'language'")
    browser.press("a", "r")
    arabic = [finding for finding in findings if finding["language"] == "ar_EG"]
    assert count_shown(browser) == len(arabic) > 0, count_shown(browser)
    browser.press_until(Keys.TAB, "document.activeElement.value === 'warning'")
    browser.press(Keys.SPACE)
    infos = [finding for finding in arabic if finding["class"] != "warning"]
    assert count_shown(browser) == len(infos) > 0, count_shown(browser)
    browser.press_until(Keys.TAB, "document.activeElement.type === 'reset'")
    browser.press(Keys.ENTER)
    time.sleep(0.1)
    assert count_shown(browser) == len(findings)
    browser.press_until(Keys.TAB, "document.activeElement.tagName === 'TD'", 2000)
    browser.press(Keys.DOWN, Keys.RIGHT, Keys.ENTER)
    assert "at" in browser.execute_script("return document.getElementById('count').textContent")
    browser.execute_script("document.getElementById('words').focus()")
    browser.press(*"EVENTLOG")
    found = [finding for finding in findings if finding["url"] == "Service/EventLog"]
    browser.execute_script("document.getElementById('language').value = '';"
                "document.getElementById('words').dispatchEvent(new Event('input', {bubbles: true}))")
    assert count_shown(browser) == len(found) > 0, count_shown(browser)


def check_phone(browser):
    wide = browser.execute_script("return [...document.body.querySelectorAll('*')].filter(e => !e.closest('.scroll')"
                       " && !e.classList.contains('skip')"
                       " && e.getBoundingClientRect().right > innerWidth + 1).map(e => e.outerHTML.slice(0, 80))")
    assert not wide, wide
    assert browser.execute_script("return document.documentElement.scrollWidth <= innerWidth")


def main(textmanager, folder, picture):
    with tempfile.TemporaryDirectory() as temporary:
        page = pathlib.Path(temporary, "findings.html")
        report = write_page(textmanager, folder, page)
        with Browser() as browser:
            browser.show(page, 1280, 960)
            if picture:
                browser.save_screenshot(picture)
                return
            check_content(browser, report)
            check_keyboard(browser, report)
            browser.show(page, 360, 740)
            check_phone(browser)


if __name__ == "__main__":
    main(sys.argv[1], sys.argv[2], sys.argv[4] if len(sys.argv) > 4 else None)
