#!/usr/bin/env python3
"""Tests of the program orvante_reference from outside.

    check_program.py PROGRAM SCHEMA_FILE
"""

from __future__ import annotations

import json
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

program = ""
schema = ""


class ProgramTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_program(self, *arguments: str | pathlib.Path) -> subprocess.CompletedProcess[str]:
        command = [program, *map(str, arguments)]
        return subprocess.run(command, capture_output=True, text=True, timeout=60, cwd=self.folder, check=False)

    def assert_fails(self, done: subprocess.CompletedProcess[str], text: str) -> None:
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertTrue(done.stderr.startswith(" -> "), done.stderr)
        self.assertIn(text, done.stderr)

    def test_writes_the_site(self) -> None:
        begin = time.monotonic()
        done = self.run_program(schema, "new/manual")
        print(f"writing the manual took {time.monotonic() - begin:.2f} s")
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        self.assertTrue((self.folder / "new/manual/index.html").is_file())

    def test_the_same_schema_gives_the_same_site(self) -> None:
        for name in ("one", "two"):
            self.run_program(schema, name)
        for path in (self.folder / "one").iterdir():
            self.assertEqual(path.read_bytes(), (self.folder / "two" / path.name).read_bytes(), path.name)

    def test_writes_standard_drafts(self) -> None:
        for draft, address in (("draft-07", "draft-07/schema"), ("2020-12", "draft/2020-12/schema")):
            done = self.run_program("--standard", draft, schema, "standard.json")
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
            written = json.loads((self.folder / "standard.json").read_text(encoding="utf-8"))
            self.assertIn(address, written["$schema"])

    def test_help_and_version(self) -> None:
        shown = self.run_program("--help")
        self.assertEqual(shown.returncode, 0)
        self.assertIn("SCHEMA_FILE", shown.stdout)
        self.assertIn("--standard", shown.stdout)
        version = self.run_program("--version")
        self.assertEqual(version.returncode, 0)
        self.assertIn("v4.2.0", version.stdout)

    def test_faults(self) -> None:
        self.assert_fails(self.run_program(), "usage: orvante_reference")
        self.assert_fails(self.run_program("none.json", "out"), "none.json: this file is missing or empty.")
        self.assert_fails(self.run_program("--standard", "draft-99", schema, "out"), "standard")
        (self.folder / "broken.json").write_text("{", encoding="utf-8")
        self.assert_fails(self.run_program("broken.json", "out"), "parse error")
        (self.folder / "odd.json").write_text('{"properties": {"A": true}}', encoding="utf-8")
        self.assert_fails(self.run_program("odd.json", "out"), "/A: this schema is no object.")
        (self.folder / "file").write_text("", encoding="utf-8")
        self.assert_fails(self.run_program(schema, "file"), "file")


if __name__ == "__main__":
    program, schema = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
