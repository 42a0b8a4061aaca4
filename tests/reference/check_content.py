#!/usr/bin/env python3
"""Checks the pages of the reference manual against the schema and the block tree.

    check_content.py MANUAL_FOLDER SCHEMA_FILE BLOCK_TREE_FILE

Every block and key has its entry, with unit, default, limits and values as in the schema; every link leads somewhere;
every page is valid HTML by the judgement of tidy.
"""

from __future__ import annotations

import html
import json
import pathlib
import re
import shutil
import subprocess
import sys
import unittest
import urllib.parse
from html.parser import HTMLParser
from typing import Any, Iterator

folder = pathlib.Path()
schema: dict[str, Any] = {}
block_tree: dict[str, Any] = {}

NOTHING = "none"


class Page(HTMLParser):
    """The ids and links of a page, and of each key the text of the cells of its table row by their class."""

    def __init__(self, text: str) -> None:
        super().__init__(convert_charrefs=True)
        self.ids: list[str] = []
        self.sections: set[str] = set()
        self.links: list[str] = []
        self.sources: list[str] = []
        self.cells: dict[str, dict[str, str]] = {}
        self.codes: dict[str, list[str]] = {}
        self._key = ""
        self._cell = ""
        self._in_code = False
        self.feed(text)
        self.close()

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str | None]]) -> None:
        given = {name: value or "" for name, value in attributes}
        if "id" in given:
            self.ids.append(given["id"])
        if tag == "a":
            self.links.append(given["href"])
        if tag in ("script", "link"):
            self.sources.append(given.get("src") or given["href"])
        if tag == "section":
            self.sections.add(given.get("id", ""))
        if tag == "tbody" and given.get("class") == "key":
            self._key = given["id"]
            self.cells[self._key] = {}
            self.codes[self._key] = []
        if tag == "td" and self._key:
            self._cell = given.get("class", "")
            self.cells[self._key][self._cell] = ""
        self._in_code = tag == "code"
        if self._in_code and self._cell == "allowed":
            self.codes[self._key].append("")

    def handle_endtag(self, tag: str) -> None:
        if tag == "td":
            self._cell = ""
        elif tag == "tbody":
            self._key = ""
        elif tag == "code":
            self._in_code = False

    def handle_data(self, data: str) -> None:
        if self._key and self._cell:
            self.cells[self._key][self._cell] += data
            if self._in_code and self._cell == "allowed":
                self.codes[self._key][-1] += data


def pages() -> dict[str, Page]:
    return {path.name: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.glob("*.html"))}


def plain(text: str) -> str:
    """The text of a piece of HTML as a reader sees it."""
    return html.unescape(re.sub(r"<[^>]*>", "", text))


def element_of(node: dict[str, Any]) -> dict[str, Any]:
    while node.get("type") == "array" and "items" in node:
        node = node["items"]
    return node


def members(block: dict[str, Any], path: str) -> Iterator[tuple[str, bool]]:
    """The paths below a block of the block tree; true for blocks, false for keys and values."""
    for key in block.get("keys", []):
        yield f"{path}/{key}", False
    for inner in block.get("blocks", []):
        inner_path = f"{path}/{inner['name']}"
        yield inner_path, "value" not in inner["kind"]
        yield from members(inner, inner_path)


def all_members() -> list[tuple[str, bool]]:
    root = "/" + block_tree["name"]
    return [(root, True), *members(block_tree, root)]


def node_at(path: str) -> dict[str, Any]:
    node: dict[str, Any] = schema
    for name in path.split("/")[1:]:
        node = element_of(node)["properties"][name]
    return node


def id_of(path: str) -> str:
    return urllib.parse.quote(path, safe="/-._~")


def expected_range(element: dict[str, Any]) -> str:
    parts = []
    if "minimum" in element:
        sign = ">" if element.get("exclusiveMinimum") else "\u2265"
        parts.append((sign, float(element["minimum"])))
    if "maximum" in element:
        sign = "<" if element.get("exclusiveMaximum") else "\u2264"
        parts.append((sign, float(element["maximum"])))
    return " and ".join(f"{sign} {limit}" for sign, limit in parts)


def range_as_floats(text: str) -> str:
    return re.sub(r"-?[0-9][-0-9.e+]*", lambda number: str(float(number[0])), text)


class ContentTest(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls) -> None:
        cls.pages = pages()
        cls.cells = {key: cells for page in cls.pages.values() for key, cells in page.cells.items()}
        cls.codes = {key: codes for page in cls.pages.values() for key, codes in page.codes.items()}
        cls.sections = {section for page in cls.pages.values() for section in page.sections}
        # An array of objects that the tree counts among the keys is shown as a block.
        cls.keys = [path for path, _ in all_members() if "properties" not in element_of(node_at(path))]

    def test_every_member_has_its_entry(self) -> None:
        listed = all_members()
        missing = [
            path for path, is_block in listed
            if id_of(path) not in self.sections and (is_block or id_of(path) not in self.cells)
        ]
        self.assertEqual(missing, [])
        print(f"{len(listed)} members of the block tree, {len(self.keys)} of them keys with values, have their entry")

    def test_every_entry_stands_once(self) -> None:
        ids = [name for page in self.pages.values() for name in page.ids if name.startswith("/")]
        self.assertEqual(len(ids), len(set(ids)))

    def test_units(self) -> None:
        for path in self.keys:
            node = node_at(path)
            unit = element_of(node).get("units", node.get("units"))
            expected = NOTHING if unit is None else plain(unit)
            self.assertEqual(self.cells[id_of(path)]["unit"], expected, path)

    def test_defaults(self) -> None:
        for path in self.keys:
            shown = self.cells[id_of(path)]["default"]
            if "default" in node_at(path):
                self.assertEqual(json.loads(shown), node_at(path)["default"], path)
            else:
                self.assertEqual(shown, NOTHING, path)

    def test_limits_and_values(self) -> None:
        for path in self.keys:
            element = element_of(node_at(path))
            shown = self.cells[id_of(path)]["allowed"]
            if "enum" in element:
                self.assertEqual(self.codes[id_of(path)], element["enum"], path)
            elif "requiredIn" in element:
                self.assertIn(element["requiredIn"]["itemProperty"], shown, path)
            else:
                self.assertEqual(range_as_floats(shown), expected_range(element) or "any", path)

    def test_descriptions_go_in_as_they_are(self) -> None:
        text = "".join(path.read_text(encoding="utf-8") for path in folder.glob("*.html"))
        lost = [path for path in self.keys if node_at(path).get("description", "") not in text]
        self.assertEqual(lost, [])

    def test_links_lead_somewhere(self) -> None:
        broken = []
        count = 0
        for name, page in self.pages.items():
            for link in page.links:
                count += 1
                file, _, fragment = link.partition("#")
                target = self.pages.get(file or name)
                if target is None or (fragment and fragment not in target.ids):
                    broken.append((name, link))
        self.assertEqual(broken, [])
        self.assertGreater(count, 1000)
        print(f"{count} links in {len(self.pages)} pages are whole")

    def test_nothing_comes_from_elsewhere(self) -> None:
        for page in self.pages.values():
            files = [source for source in page.sources if not source.startswith("data:")]
            self.assertEqual([file for file in files if not (folder / file).is_file()], [])
        for path in folder.iterdir():
            self.assertNotRegex(path.read_text(encoding="utf-8"), r"https?://", path.name)

    def test_index_holds_every_entry(self) -> None:
        text = (folder / "search_index.js").read_text(encoding="utf-8")
        entries = json.loads(text[text.index("[") : text.rindex("]") + 1])
        for path, page, _, _ in entries:
            self.assertIn(id_of(path) or "/", self.pages[page].ids)
        listed = {path for path, _ in all_members()}
        self.assertEqual(listed - {entry[0] for entry in entries}, set())

    def test_html_is_valid(self) -> None:
        tidy = shutil.which("tidy")
        assert tidy, "tidy is not installed: run scripts/install_dependencies.sh"
        for path in sorted(folder.glob("*.html")):
            done = subprocess.run(
                [tidy, "-quiet", "-errors", "-utf8", str(path)], capture_output=True, text=True, check=False
            )
            self.assertEqual((done.returncode, done.stderr), (0, ""), path.name)

    def test_variants_stand_as_in_the_schema(self) -> None:
        pages_text = "".join(path.read_text(encoding="utf-8") for path in folder.glob("*.html"))
        shown = re.findall(r'for <code>([^<]*)</code> <code class="value">([^<]*)</code>', pages_text)
        self.assertEqual(sorted(shown), sorted(selectors(schema)))
        self.assertGreater(len(shown), 300)


def selectors(node: Any) -> list[tuple[str, str]]:
    """Every member that an alternative fixes, with its value."""
    found: list[tuple[str, str]] = []
    if isinstance(node, dict):
        for name, member in node.get("properties", {}).items():
            if isinstance(member, dict) and "const" in member:
                found.append((name, member["const"]))
        node = list(node.values())
    if isinstance(node, list):
        for inner in node:
            found += selectors(inner)
    return found


if __name__ == "__main__":
    folder = pathlib.Path(sys.argv[1])
    schema = json.loads(pathlib.Path(sys.argv[2]).read_text(encoding="utf-8"))
    block_tree = json.loads(pathlib.Path(sys.argv[3]).read_text(encoding="utf-8"))
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
