#!/usr/bin/env python3
"""The man pages: sound, and no less and nothing else than what --help says.

    man_pages_test.py FOLDER_OF_PAGES MAKE_MAN_PAGE TEMPLATE_FOLDER PROGRAM...
"""

from __future__ import annotations

import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from usage import described, tool, usage

PAGES, MAKER, TEMPLATES, *PROGRAMS = sys.argv[1:]
MANDOC = tool("mandoc")
SECTIONS = ("NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES", "SEE ALSO")


def rendered(page: Path) -> str:
    """A page as text, without overstriking; wide, so that nothing but the options' layout breaks lines."""
    done = subprocess.run(
        [MANDOC, "-T", "ascii", "-O", "width=400", str(page)], capture_output=True, text=True, check=True
    )
    return re.sub(r".\x08", "", done.stdout)


def section(text: str, title: str) -> str:
    found = re.search(rf"^{title}\n(.*?)(?=^\S|\Z)", text, re.MULTILINE | re.DOTALL)
    return found[1] if found else ""


def short_headings_on_lines_of_their_own(text: str) -> str:
    """The formatter puts the description beside a heading that is narrower than the indentation."""
    return re.sub(r"^ {7}(?=\S+ +(?<=^.{14})\S)(\S+) +", r"       \1\n              ", text, flags=re.MULTILINE)


def documented(text: str) -> dict[str, str]:
    """The entries of the OPTIONS section, each form of them with its description."""
    entries = short_headings_on_lines_of_their_own(section(text, "OPTIONS"))
    found: dict[str, str] = {}
    for heading, lines in re.findall(r"^ {7}(\S.*)\n((?: {14}.*\n)+)", entries, re.MULTILINE):
        for form in heading.split(","):
            found[form.strip()] = " ".join(lines.split())
    return found


class ManPages(unittest.TestCase):
    def each_page(self) -> list[tuple[str, Path]]:
        self.assertTrue(PROGRAMS)
        return [(program, Path(PAGES, Path(program).name + ".1")) for program in PROGRAMS]

    def test_a_page_for_each_program(self) -> None:
        self.assertEqual({page for _, page in self.each_page()}, set(Path(PAGES).glob("*.1")))

    def test_no_complaint_of_the_formatter(self) -> None:
        for _, page in self.each_page():
            done = subprocess.run(
                [MANDOC, "-T", "lint", "-W", "warning", str(page)], capture_output=True, text=True, check=False
            )
            self.assertEqual((done.returncode, done.stdout + done.stderr), (0, ""), page)

    def test_sections(self) -> None:
        for _, page in self.each_page():
            text = rendered(page)
            for title in SECTIONS:
                self.assertTrue(section(text, title).strip(), f"{page}: {title}")

    def test_options_are_those_of_the_usage(self) -> None:
        for program, page in self.each_page():
            expected = described(program)
            self.assertTrue({"--help", "--version"} <= set(expected), program)
            self.assertEqual(documented(rendered(page)), expected, page)

    def test_synopsis_is_that_of_the_usage(self) -> None:
        for program, page in self.each_page():
            usage_line = usage(program).partition("USAGE:")[2].partition("Where:")[0]
            expected = usage_line.replace("<", "").replace(">", "").split()
            self.assertEqual(section(rendered(page), "SYNOPSIS").replace("\xa0", " ").split(), expected)

    def test_nothing_is_left_of_the_template(self) -> None:
        for _, page in self.each_page():
            self.assertNotRegex(page.read_text(encoding="utf-8"), r"@[A-Z]+@")


class Maker(unittest.TestCase):
    """What make_man_page.py does with a usage or a template that is not in order."""

    def made(self, output: str, template: str = "@VERSION@\n@SYNOPSIS@\n@OPTIONS@\n") -> tuple[int, str, str]:
        with tempfile.TemporaryDirectory() as folder:
            program, source, page = (Path(folder, name) for name in ("program", "source", "page"))
            program.write_text(f"#!/bin/sh\ncat <<'END'\n{output}\nEND\n", encoding="utf-8")
            program.chmod(0o755)
            source.write_text(template, encoding="utf-8")
            done = subprocess.run(
                [sys.executable, "-B", MAKER, program, "program", "1.2", source, page],
                capture_output=True, text=True, check=False,
            )
            return done.returncode, done.stderr, page.read_text(encoding="utf-8") if page.exists() else ""

    USAGE = "\nUSAGE: \n\n   program  [-x <int>] <A>\n\n\nWhere: \n\n   -x <int>,  --ex <int>\n     .5 or\n     a\\b\n\n" \
        "   <A>\n     first\n\n\n   Message.\n"

    def test_sound_usage(self) -> None:
        status, errors, page = self.made(self.USAGE)
        self.assertEqual((status, errors), (0, ""))
        self.assertIn("\\fB\\-x\\fR \\fIint\\fR, \\fB\\-\\-ex\\fR \\fIint\\fR\n\\&.5 or a\\eb\n", page)
        self.assertTrue(page.startswith("1.2\n.B program\n"), page)

    def test_choice_of_values(self) -> None:
        status, _, page = self.made(self.USAGE.replace("<int>", "<draft-07|2020-12>"))
        self.assertEqual(status, 0)
        self.assertIn("\n[\\fB\\-x\\fR\\~\\fIdraft\\-07|2020\\-12\\fR]\n", page)

    def assert_refused(self, output: str, reason: str, **more: str) -> None:
        status, errors, page = self.made(output, **more)
        self.assertEqual((status, page), (1, ""))
        self.assertIn(reason, errors)

    def test_no_usage(self) -> None:
        self.assert_refused("Hello.", "no USAGE and Where sections")

    def test_other_program(self) -> None:
        self.assert_refused(self.USAGE.replace("   program ", "   other "), "does not begin with program")

    def test_no_option(self) -> None:
        self.assert_refused(self.USAGE.replace("   <A>\n", "   first argument\n"), "no option")

    def test_no_description(self) -> None:
        self.assert_refused(self.USAGE.replace("     first\n", ""), "no description")

    def test_template_that_leaves_the_options_out(self) -> None:
        self.assert_refused(self.USAGE, "lacks @OPTIONS@", template="@VERSION@ @SYNOPSIS@\n")

    def test_templates_are_for_programs(self) -> None:
        self.assertTrue({Path(name).name for name in PROGRAMS} <= {p.name[:-5] for p in Path(TEMPLATES).glob("*.1.in")})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
