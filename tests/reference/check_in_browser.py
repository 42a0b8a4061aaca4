#!/usr/bin/env python3
"""Reads the reference manual in a real browser, from the file system.

    check_in_browser.py MANUAL_FOLDER [UNITTEST ARGUMENTS]

Search finds, links and pointers lead, nothing overflows, the keyboard suffices, the console stays empty. How long each
page takes to open is printed.
"""

from __future__ import annotations

import pathlib
import sys
import time
import unittest
from typing import Any

from webdriver import Browser

folder = pathlib.Path()

DOWN, ESCAPE, ENTER, TAB = "\ue015", "\ue00c", "\ue007", "\ue004"
CHAIN = "/SETUP/ORVAMD/ORVACHAIN_1D"
PLANE = "/SETUP/ORVAMD/ORVAPLANE_2D"

LANDMARKS = {"main", "navigation", "search", "banner", "contentinfo"}

SHOWN_RESULTS = """
return [...document.querySelectorAll("#results:not([hidden]) #result-list .result-path")].map((path) => path.textContent);
"""
FIRST_RESULTS = SHOWN_RESULTS.replace("return", "const paths =") + "return paths.length > 0 && paths;"
OVERFLOWING = """
const width = document.documentElement.clientWidth;
const scrolls = (element) => element.closest("pre, #tree, .skip, .unseen, thead");
return [...document.querySelectorAll("body *")]
    .filter((element) => element.getBoundingClientRect().right > width + 1 && !scrolls(element))
    .slice(0, 5).map((element) => element.outerHTML.slice(0, 150))
    .concat(document.documentElement.scrollWidth > width ? ["the page is " + document.documentElement.scrollWidth] : []);
"""
TARGET_IS_IN_VIEW = """
const target = document.querySelector(":target");
if (!target || target.id !== arguments[0]) { return false; }
const top = target.getBoundingClientRect().top;
return top > -2 && top < innerHeight;
"""
OPENING_TIME = """
const timing = performance.getEntriesByType("navigation")[0];
return timing.loadEventEnd ? timing.loadEventEnd - timing.startTime : 0;
"""


class BrowserTest(unittest.TestCase):
    browser: Browser

    @classmethod
    def setUpClass(cls) -> None:
        cls.browser = Browser()
        cls.addClassCleanup(cls.browser.__exit__, None, None, None)

    def setUp(self) -> None:
        self.browser.emulate(1280, 900)
        self.open("index.html")
        self.browser.console()

    def tearDown(self) -> None:
        self.assertEqual(self.browser.console(), [])

    def open(self, page: str) -> None:
        # Another page first: a new fragment alone would not load the page again.
        self.browser.open("about:blank")
        self.browser.open(f"{folder.as_uri()}/{page}")

    def search(self, text: str) -> list[str]:
        self.browser.type("#search", text)
        return list(self.browser.wait_for(FIRST_RESULTS))

    def assert_at(self, path: str) -> None:
        self.browser.wait_for(TARGET_IS_IN_VIEW, path)

    def test_search_finds_a_key_by_its_name(self) -> None:
        found = self.search("minimum_water_depth")
        self.assertIn("/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/PARAMETER/minimum_water_depth", found)
        self.assertIn(f"{CHAIN}/HYDRAULICS/PARAMETER/minimum_water_depth", found)

    def test_search_finds_words_of_descriptions(self) -> None:
        found = self.search("richards celia")
        self.assertEqual(found, ["/SETUP/ORVAMD/ORVASUB/PARAMETER"])

    def test_search_finds_by_parts_of_the_path(self) -> None:
        found = self.search("orvasub material kf")
        self.assertEqual(found[0], "/SETUP/ORVAMD/ORVASUB/MATERIAL/SOIL_DEF/kf")

    def test_search_says_that_nothing_is_found(self) -> None:
        self.browser.type("#search", "xyzzy")
        count = self.browser.wait_for("return document.querySelector('#result-count').textContent")
        self.assertEqual(count, "Nothing found.")

    def test_search_takes_a_line_of_the_report(self) -> None:
        line = f"{PLANE}/0/HYDRAULICS/BOUNDARY/0/slope: Error: This item is required but missing."
        self.assertEqual(self.search(line), [f"{PLANE}/HYDRAULICS/BOUNDARY/slope"])

    def test_a_result_leads_to_its_entry(self) -> None:
        self.search("orvasub material kf")
        self.browser.click("#result-list a")
        self.assert_at("/SETUP/ORVAMD/ORVASUB/MATERIAL/SOIL_DEF/kf")

    def test_the_keyboard_suffices(self) -> None:
        self.browser.press("/")
        for letter in "simulation_name":
            self.browser.press(letter)
        self.browser.wait_for(FIRST_RESULTS)
        self.browser.press(DOWN)
        self.assertEqual(self.browser.run("return document.activeElement.closest('ol').id"), "result-list")
        self.browser.press(ESCAPE)
        self.assertEqual(self.browser.run(SHOWN_RESULTS), [])
        self.assertEqual(self.browser.run("return document.activeElement.id"), "search")
        self.browser.press("_")
        self.browser.run("const box = document.querySelector('#search'); box.value = 'simulation_name';"
                         "box.dispatchEvent(new Event('input'));")
        self.browser.wait_for(FIRST_RESULTS)
        self.browser.press(ENTER)
        self.assert_at("/SETUP/simulation_name")

    def test_the_first_stop_skips_to_the_content(self) -> None:
        self.browser.press(TAB)
        self.assertEqual(self.browser.run("return document.activeElement.className"), "skip")
        self.browser.press(ENTER)
        self.browser.wait_for("return document.activeElement.id === 'content'")

    def test_everything_to_operate_has_a_name(self) -> None:
        for page in sorted(folder.glob("*.html")):
            self.open(page.name)
            roles = {"button", "link", "searchbox", "navigation", "region", "table"}
            nameless = [
                node["role"]["value"] for node in self.accessible_nodes()
                if node["role"]["value"] in roles and not node.get("name", {}).get("value")
            ]
            self.assertEqual(nameless, [], page.name)

    def accessible_nodes(self) -> list[dict[str, Any]]:
        """What assistive technology is told of the page, which the browser makes up some time after it has opened it."""
        end = time.monotonic() + 15
        while True:
            tree = self.browser.devtools("Accessibility.getFullAXTree", {})["nodes"]
            nodes = [node for node in tree if not node["ignored"]]
            missing = LANDMARKS - {node["role"]["value"] for node in nodes}
            if not missing:
                return nodes
            self.assertLess(time.monotonic(), end, f"{self.browser.address()} lacks {sorted(missing)}")
            time.sleep(0.05)

    def test_a_pointer_leads_to_its_entry_on_another_page(self) -> None:
        self.open(f"index.html#{PLANE}/HYDRAULICS")
        self.assert_at(f"{PLANE}/HYDRAULICS")

    def test_a_pointer_of_the_report_leads_to_its_entry(self) -> None:
        self.open(f"index.html#{PLANE}/0/HYDRAULICS/BOUNDARY/12/slope")
        self.assert_at(f"{PLANE}/HYDRAULICS/BOUNDARY/slope")

    def test_a_pointer_with_a_blank_leads_to_its_entry(self) -> None:
        self.open(f"index.html#{CHAIN}/OUTPUT/SPECIAL_OUTPUT/show gridlines")
        self.assert_at(f"{CHAIN}/OUTPUT/SPECIAL_OUTPUT/show%20gridlines")

    def test_an_unknown_pointer_leads_to_the_closest_entry(self) -> None:
        self.open(f"index.html#{PLANE}/0/HYDRAULICS/BOUNDARY/0/slop")
        self.assert_at(f"{PLANE}/HYDRAULICS/BOUNDARY")
        self.browser.find("#not-found:not([hidden])")
        text, top = self.browser.run(
            "const note = document.querySelector('#not-found');"
            "return [note.textContent, note.getBoundingClientRect().top]"
        )
        self.assertTrue(0 <= top < 900, top)
        self.assertIn(f"{PLANE}/0/HYDRAULICS/BOUNDARY/0/slop", text)

    def test_the_tree_shows_where_one_is(self) -> None:
        self.open(f"ORVAMD-ORVAPLANE_2D.html#{PLANE}/HYDRAULICS/BOUNDARY/slope")
        shown = self.browser.run("const link = document.querySelector('#tree [aria-current]');"
                                 "return [link.textContent, link.getBoundingClientRect().height > 0]")
        self.assertEqual(shown, ["BOUNDARY", True])

    def test_the_tree_opens_and_leads(self) -> None:
        button = "#tree [aria-label='Blocks of COUPLINGS']"
        link = "#tree a[href='ORVAMD-COUPLINGS.html#/SETUP/ORVAMD/COUPLINGS/PARAMETER']"
        self.open("ORVAMD-CONTROLLER.html")
        self.browser.click(button)
        self.browser.click(link)
        self.assert_at("/SETUP/ORVAMD/COUPLINGS/PARAMETER")

    def test_an_example_is_copied(self) -> None:
        self.browser.run("navigator.clipboard.writeText = async (text) => { window.copied = text; };")
        self.browser.click(".copy")
        copied = self.browser.wait_for("return window.copied")
        self.assertEqual(copied, self.browser.run("return document.querySelector('.snippet code').textContent"))
        self.browser.wait_for("return document.querySelector('.copy').textContent === 'Copied'")

    def test_nothing_overflows(self) -> None:
        for width in (360, 1280):
            self.browser.emulate(width, 740)
            for page in sorted(folder.glob("*.html")):
                self.open(page.name)
                self.assertEqual(self.browser.run(OVERFLOWING), [], f"{page.name} at {width} px")

    def test_a_phone_opens_the_tree_on_demand(self) -> None:
        self.browser.emulate(360, 740)
        is_shown = "return document.querySelector('#tree').getBoundingClientRect().height > 0"
        self.assertFalse(self.browser.run(is_shown))
        self.browser.click("#tree-button")
        self.assertTrue(self.browser.run(is_shown))

    def test_print_leaves_out_what_is_operated(self) -> None:
        self.browser.devtools("Emulation.setEmulatedMedia", {"media": "print"})
        shown = "return ['.top', '#tree', '.copy'].filter((name) => document.querySelector(name).offsetHeight > 0)"
        left = self.browser.run(shown)
        self.browser.devtools("Emulation.setEmulatedMedia", {"media": ""})
        self.assertEqual(left, [])
        self.assertEqual(len(self.browser.run(shown)), 3)

    def test_text_stands_out_in_light_and_dark(self) -> None:
        colours = "const style = getComputedStyle(document.body); return [style.color, style.backgroundColor]"
        for dark in (False, True):
            self.browser.prefer_dark(dark)
            text, page = self.browser.run(colours)
            self.assertGreater(contrast(text, page), 7)
            self.assertEqual(luminance(text) > luminance(page), dark)
        self.browser.prefer_dark(False)

    def test_pages_open_quickly(self) -> None:
        for page in sorted(folder.glob("*.html")):
            self.open(page.name)
            print(f"{page.name} opens in {self.browser.wait_for(OPENING_TIME):.0f} ms")


def luminance(colour: str) -> float:
    """Relative luminance of "rgb(r, g, b)"."""
    parts = [float(part) / 255 for part in colour[colour.index("(") + 1 : -1].split(",")[:3]]
    red, green, blue = (part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one: str, other: str) -> float:
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1]).resolve()
    unittest.main(argv=sys.argv[:1] + sys.argv[2:])
