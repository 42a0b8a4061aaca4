#!/usr/bin/env python3
"""Tests of run_guide.py: it follows a sound page and notices each kind of defect."""

from __future__ import annotations

import contextlib
import io
import pathlib
import sys
import tempfile
import unittest

import run_guide

SAMPLE_LINES = (
    "/a: Error: This value must be equal to 'x'.",
    "/a: Error: This value must be equal to one of the following: 'x', 'y'.",
    "/a: Error: Only one of the following two items is allowed: 'x', 'y'.",
    "/a: Error: This value must be greater than or equal to 0.000000.",
    "/a: Error: This value must be greater than 0.000000.",
    "/a: Error: This value must be less than or equal to 0.000000.",
    "/a: Error: This value must be less than 0.000000.",
    "/a: Error: This value must be an integer.",
    "/a: Error: This value must be a number.",
    "/a: Error: This value must be a string.",
    "/a: Error: This value must be an object.",
    "/a: Error: This value must be an array.",
    "/a: Error: This value must be of a different type.",
    "/a: Error: This item is required but missing.",
    "/a: Error: One of the following items must be provided: 'x', 'y'.",
    "/a: Error: This value must match a 'name' in '/b'.",
    "/a: Warning: The value of this item will not be used.",
    "/a: Error: This item is invalid.",
)


def report(lines: tuple[str, ...] = SAMPLE_LINES) -> str:
    """Steps that write a report and show it."""
    text = "\n".join(lines)
    return f"```text file=report\n{text}\n```\n\n```console\n$ cat report\n{text}\n```\n"


def console(text: str) -> str:
    return f"```console\n{text}\n```\n"


class RunGuide(unittest.TestCase):
    """Each test gives a page and looks at status and output."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.page = pathlib.Path(folder.name, "page.md")
        self.program = pathlib.Path(folder.name, "greeter")
        self.program.write_text("#!/bin/sh\necho hello\n", encoding="utf-8")
        self.program.chmod(0o755)

    def outcome(self, text: str) -> tuple[int, str]:
        self.page.write_text(text, encoding="utf-8")
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            status = run_guide.main([str(self.page), "/share", sys.executable, str(self.program)])
        return status, output.getvalue()

    def assert_follows(self, *steps: str) -> None:
        status, output = self.outcome("\n".join([report(), *steps]))
        self.assertEqual(status, 0, output)

    def assert_refused(self, reason: str, *steps: str) -> None:
        status, output = self.outcome("\n".join([report(), *steps]))
        self.assertEqual(status, 1, output)
        self.assertIn(reason, output)

    def test_report_alone(self) -> None:
        self.assertEqual(self.outcome(report()), (0, "1 commands, all as the page says\n"))

    def test_each_kind_of_line_is_asked_for(self) -> None:
        for index, line in enumerate(SAMPLE_LINES):
            with self.subTest(line=line):
                status, output = self.outcome(report(SAMPLE_LINES[:index] + SAMPLE_LINES[index + 1 :]))
                self.assertEqual(status, 1)
                self.assertIn("no command shows", output)

    def test_both_streams_are_shown(self) -> None:
        self.assert_follows(console("$ printf 'a\\n'; printf 'b\\n' >&2\na\nb"))

    def test_other_output(self) -> None:
        self.assert_refused("+b", console("$ echo b\na"))

    def test_output_that_the_page_leaves_out(self) -> None:
        self.assert_refused("+b", console("$ echo b"))

    def test_status_goes_on(self) -> None:
        self.assert_follows(console("$ (exit 3)\n$ echo $?\n3"))
        self.assert_refused("+3", console("$ (exit 3)\n$ echo $?\n0"))

    def test_folder_goes_on(self) -> None:
        self.assert_follows(console("$ mkdir a\n$ cd a"), "```text file=b\nc\n```\n", console("$ cat ../a/b\nc"))

    def test_share_folder(self) -> None:
        self.assert_follows(console("$ echo /usr/share/orvante/x\n/share/x"))

    def test_program_is_on_the_path(self) -> None:
        self.assert_follows(console("$ greeter\nhello"))

    def test_diff(self) -> None:
        diff = "```diff file=a\n one\n-two\n+2\n@@\n-three\n```\n"
        self.assert_follows("```text file=a\none\ntwo\nthree\n```\n", diff, console("$ cat a\none\n2"))

    def test_diff_that_fits_nowhere(self) -> None:
        self.assert_refused("0 times", "```text file=a\none\n```\n", "```diff file=a\n-two\n```\n")

    def test_diff_that_fits_twice(self) -> None:
        self.assert_refused("2 times", "```text file=a\none\none\n```\n", "```diff file=a\n-one\n```\n")

    def test_diff_with_other_lines(self) -> None:
        self.assert_refused("begins with none", "```text file=a\none\n```\n", "```diff file=a\none\n```\n")

    def test_diff_of_a_file_that_is_missing(self) -> None:
        self.assert_refused("No such file", "```diff file=a\n-one\n```\n")

    def test_other_block(self) -> None:
        self.assert_refused("is no kind of step", "```sh\necho\n```\n")

    def test_block_without_language(self) -> None:
        self.assert_refused("is no kind of step", "```\n$ false\n```\n")

    def test_command_in_no_block(self) -> None:
        self.assert_refused("would not be run", "    $ false\n")

    def test_output_before_the_first_command(self) -> None:
        self.assert_refused("before the first command", console("a\n$ echo a"))

    def test_block_never_closed(self) -> None:
        self.assert_refused("never closed", "```console\n$ true\n")

    def test_empty_page(self) -> None:
        self.assertEqual(self.outcome("")[0], 1)


if __name__ == "__main__":
    unittest.main()
