#!/usr/bin/env python3
"""Tests of run_examples.py: it accepts a sound page and notices each kind of defect.

In place of jsv runs a script that does what the "$schema" of the example tells it to do.
"""

from __future__ import annotations

import contextlib
import io
import json
import pathlib
import stat
import sys
import tempfile
import unittest

import run_examples

OBEDIENT_PROGRAM = f"""#!{sys.executable} -IS
import json, os, signal, sys
orders = json.load(open(sys.argv[1]))["$schema"]
open(sys.argv[2]).close()
sys.stdout.write(orders.get("stdout", ""))
sys.stderr.write(orders.get("stderr", ""))
sys.stdout.flush()
if "signal" in orders:
    os.kill(os.getpid(), orders["signal"])
sys.exit(orders.get("status", 0))
"""


def example(keyword: str, third: str = "```report verdict=0\n```", **orders: object) -> str:
    """An example that uses a keyword and in which the program does what it is told."""
    schema = json.dumps({"$schema": orders, keyword: 0} if keyword != "$schema" else {"$schema": orders})
    return f"```json schema\n{schema}\n```\n\n```json data\n{{}}\n```\n\n{third}\n"


def section(keyword: str) -> str:
    return f"### `{keyword}`\n\n{example(keyword)}\n"


def page(*more: str) -> str:
    """A sound page, and more at its end."""
    sections = "".join(section(keyword) for keyword in run_examples.KEYWORDS)
    return "\n".join([f"# Title\n\n{sections}## More\n", *more])


class RunExamples(unittest.TestCase):
    """Each test gives a page and looks at status and output."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.program = pathlib.Path(folder.name, "program")
        self.program.write_text(OBEDIENT_PROGRAM, encoding="utf-8")
        self.program.chmod(self.program.stat().st_mode | stat.S_IXUSR)
        self.page = pathlib.Path(folder.name, "page.md")

    def outcome(self, text: str) -> tuple[int, str]:
        self.page.write_text(text, encoding="utf-8")
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = run_examples.main([str(self.program), str(self.page)])
        return status, output.getvalue()

    def assert_refused(self, text: str, reason: str) -> None:
        status, output = self.outcome(text)
        self.assertEqual(status, 1, output)
        self.assertIn(reason, output)

    def test_sound_page(self) -> None:
        report = example(
            "type", "```report verdict=2\n/: Error: no.\n```", stdout="/: Error: no.\n\n", status=2
        )
        fault = example("type", "```fault\n/type: no.\n```", stderr=" -> /type: no.\n", status=3)
        other = "```cpp\nint main() {}\n```\n"
        self.assertEqual(self.outcome(page(report, fault, other)), (0, "22 examples, 0 problems\n"))

    def test_other_status(self) -> None:
        self.assert_refused(page(example("type", status=1)), "status: expected 0, got 1")

    def test_signal(self) -> None:
        self.assert_refused(page(example("type", signal=9)), "status: expected 0, got -9")

    def test_other_standard_output(self) -> None:
        expected = "```report verdict=1\n/a: Warning: this.\n```"
        self.assert_refused(page(example("type", expected, stdout="/a: Warning: that.\n\n", status=1)), "stdout:")

    def test_report_without_closing_empty_line(self) -> None:
        expected = "```report verdict=1\n/a: Warning: this.\n```"
        self.assert_refused(page(example("type", expected, stdout="/a: Warning: this.\n", status=1)), "stdout:")

    def test_output_where_none_is_due(self) -> None:
        self.assert_refused(page(example("type", stdout="\n")), "stdout:")

    def test_other_standard_error(self) -> None:
        fault = "```fault\n/type: no.\n```"
        self.assert_refused(page(example("type", fault, stderr=" -> /: no.\n", status=3)), "stderr:")

    def test_report_beside_fault(self) -> None:
        fault = "```fault\n/type: no.\n```"
        told = example("type", fault, stdout="/: Error: no.\n\n", stderr=" -> /type: no.\n", status=3)
        self.assert_refused(page(told), "stdout:")

    def test_verdict_beside_report(self) -> None:
        self.assert_refused(page(example("type", "```report verdict=0\n/: Error: no.\n```")), "a report is empty when")
        self.assert_refused(page(example("type", "```report verdict=2\n```", status=2)), "a report is empty when")

    def test_verdict_missing(self) -> None:
        self.assert_refused(page(example("type", "```report\n```")), "is neither")

    def test_fault_without_text(self) -> None:
        self.assert_refused(page(example("type", "```fault\n```", status=3)), "a fault needs its text")

    def test_json_block_alone(self) -> None:
        self.assert_refused(page("```json\n{}\n```\n"), "this block belongs to no example")

    def test_json_block_before_example(self) -> None:
        self.assert_refused(page("```json\n{}\n```\n", example("type")), 'expected "json schema" and "json data"')

    def test_example_without_data(self) -> None:
        self.assert_refused(
            page("```json schema\n{}\n```\n\n```report verdict=0\n```\n", example("type")),
            'expected "json schema" and "json data"',
        )

    def test_words_inside_example(self) -> None:
        torn = example("type").replace("```json data", "And the data:\n\n```json data")
        self.assert_refused(page(torn), "there is something between the blocks")

    def test_block_never_closed(self) -> None:
        self.assert_refused(page("```json schema\n{}\n"), "never closed")

    def test_keyword_without_section(self) -> None:
        self.assert_refused(page().replace(section("enum"), ""), "0 sections for the keyword enum")

    def test_keyword_with_two_sections(self) -> None:
        self.assert_refused(page(section("enum")), "2 sections for the keyword enum")

    def test_section_without_example(self) -> None:
        bare = page(example("enum")).replace(section("enum"), "### `enum`\n\nNo example.\n\n")
        self.assert_refused(bare, "no example in the section of the keyword enum")

    def test_section_whose_example_is_of_another_keyword(self) -> None:
        wrong = page().replace(section("minimum"), "### `minimum`\n\n" + example("exclusiveMinimum"))
        self.assert_refused(wrong, "no example in the section of the keyword minimum")

    def test_section_of_no_keyword(self) -> None:
        self.assert_refused(page("### `pattern`\n"), "the section pattern is for no keyword")

    def test_fewer_examples_than_keywords(self) -> None:
        self.assert_refused("# Title\n\n" + section("type"), "1 examples for 20 keywords")

    def test_empty_page(self) -> None:
        self.assert_refused("", "0 examples for 20 keywords")

    def test_page_that_is_missing_is_an_error(self) -> None:
        with self.assertRaises(FileNotFoundError):
            run_examples.main([str(self.program), str(self.page)])


if __name__ == "__main__":
    unittest.main()
