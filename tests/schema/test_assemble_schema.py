"""The program assemble_schema from outside, and the check of the fragments that is made with it.

    test_assemble_schema.py ASSEMBLE_SCHEMA
"""

from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True

from check_fragments import faults  # noqa: E402

PROGRAM = sys.argv.pop(1)
TEXT = b'{\r\n  "b": 1,\r\n  "a": 2\r\n}'


class Program(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="orvante schema ")
        self.addCleanup(folder.cleanup)
        self.work = Path(folder.name)
        self.fragments = self.work / "fragments"
        self.write("root.json", '{"$fragment": "common/b.json", "a": 2}')
        self.write("common/b.json", '{"b": 1}')

    def write(self, path: str, text: str) -> None:
        file = self.fragments / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text.encode())

    def run_with(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run([PROGRAM, *arguments], cwd=self.work, capture_output=True, text=True, check=False)

    def assert_silent(self, done: subprocess.CompletedProcess[str]) -> None:
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def names(self) -> list[str]:
        return sorted(path.name for path in self.work.iterdir())

    def test_text_alone(self) -> None:
        self.assert_silent(self.run_with("--json", "out.json", "fragments", "root.json"))
        self.assertEqual((self.work / "out.json").read_bytes(), TEXT)
        self.assertEqual(self.names(), ["fragments", "out.json"])

    def test_source_alone(self) -> None:
        self.assert_silent(self.run_with("--cpp", "out.cpp", "fragments", "root.json"))
        codes = ",".join(str(code) for code in TEXT)
        self.assertIn(f"{{\n{codes[:20]}", (self.work / "out.cpp").read_text(encoding="ascii"))
        self.assertEqual(self.names(), ["fragments", "out.cpp"])

    def test_nothing_wanted_checks_the_fragments(self) -> None:
        self.assert_silent(self.run_with("fragments", "root.json"))
        self.assertEqual(self.names(), ["fragments"])

    def test_dependencies(self) -> None:
        self.assert_silent(self.run_with("--json", "out.json", "--depfile", "rule", "fragments", "root.json"))
        rule = (self.work / "rule").read_text(encoding="ascii")
        self.assertEqual(rule, "out.json: \\\n  fragments/root.json \\\n  fragments/common/b.json\n")

    def test_fault_leaves_no_output(self) -> None:
        self.write("root.json", '{\n  "$fragment": "common/c.json"}')
        done = self.run_with("--json", "out.json", "--cpp", "out.cpp", "--depfile", "rule", "fragments", "root.json")
        message = "fragments/root.json:2:3: the fragment 'common/c.json' cannot be read\n"
        self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", message))
        self.assertEqual(self.names(), ["fragments"])

    def test_output_that_cannot_be_written(self) -> None:
        done = self.run_with("--json", "nowhere/out.json", "fragments", "root.json")
        message = "nowhere/out.json: this file cannot be written\n"
        self.assertEqual((done.returncode, done.stdout, done.stderr), (1, "", message))

    def test_missing_argument(self) -> None:
        done = self.run_with("fragments")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("usage: assemble_schema", done.stderr)

    def test_fragments_in_use(self) -> None:
        self.assertEqual(list(faults(PROGRAM, self.fragments)), [])

    def test_fragment_that_nobody_asks_for(self) -> None:
        self.write("common/c.json", "{}\r\n")
        self.assertEqual(
            list(faults(PROGRAM, self.fragments)),
            [
                "common/c.json: no fragment asks for it",
                "common/c.json: a line that does not end in LF alone",
            ],
        )


if __name__ == "__main__":
    unittest.main()
