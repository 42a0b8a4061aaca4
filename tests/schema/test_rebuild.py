"""What the build does when fragments change: builds a small schema of its own with the project's build rules.

    test_rebuild.py CMAKE SOURCE_FOLDER ASSEMBLE_SCHEMA [-D...]
"""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CMAKE, SOURCE, PROGRAM, *OPTIONS = sys.argv[1:]
PROJECT = """
cmake_minimum_required(VERSION 3.22)
project(rebuild LANGUAGES CXX)
include(GNUInstallDirs)
include("{source}/cmake/OrvanteCompile.cmake")
add_executable(assemble_schema IMPORTED)
set_target_properties(assemble_schema PROPERTIES IMPORTED_LOCATION "{program}")
add_subdirectory(schema)
"""


class Rebuild(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="orvante rebuild ")
        self.addCleanup(folder.cleanup)
        self.project = Path(folder.name)
        self.schema = self.project / "schema"
        self.schema.mkdir()
        for name in ("CMakeLists.txt", "command_file_schema.hpp"):
            shutil.copy(Path(SOURCE) / "schema" / name, self.schema)
        (self.project / "CMakeLists.txt").write_text(PROJECT.format(source=SOURCE, program=PROGRAM), encoding="utf-8")
        self.write("root.json", '{"a": {"$fragment": "common/a.json"}}')
        self.write("common/a.json", '{"b": 1}')
        self.call("-S", ".", "-B", "build", *OPTIONS)
        self.call("--build", "build")
        self.text = self.project / "build/schema/command_file_schema.json"
        self.assertIn('"b": 1', self.text.read_text(encoding="ascii"))
        self.make_older()

    def write(self, path: str, text: str) -> None:
        file = self.schema / "fragments" / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="ascii")

    def call(self, *arguments: str, status: int = 0) -> str:
        done = subprocess.run([CMAKE, *arguments], cwd=self.project, capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode == 0, status == 0, done.stdout + done.stderr)
        return done.stdout + done.stderr

    def outputs(self) -> dict[str, int]:
        """When the results were made."""
        names = ("command_file_schema.json", "command_file_schema.cpp", "liborvante_schema.a")
        return {name: (self.project / "build/schema" / name).stat().st_mtime_ns for name in names}

    def make_older(self) -> None:
        """Lets everything be ten seconds older, so that a change is one whatever the clock's steps are."""
        for file in self.project.rglob("*"):
            if file.is_file():
                times = file.stat()
                ten_seconds = 10_000_000_000
                os.utime(file, ns=(times.st_atime_ns - ten_seconds, times.st_mtime_ns - ten_seconds))

    def rebuilt(self) -> list[str]:
        """The results that a build makes anew."""
        before = self.outputs()
        self.call("--build", "build")
        after = self.outputs()
        return [name for name in before if after[name] != before[name]]

    EVERYTHING = ["command_file_schema.json", "command_file_schema.cpp", "liborvante_schema.a"]

    def test_nothing_touched(self) -> None:
        self.assertEqual(self.rebuilt(), [])
        self.assertEqual(self.rebuilt(), [])

    def test_any_fragment_touched(self) -> None:
        for path in ("common/a.json", "root.json"):
            (self.schema / "fragments" / path).touch()
            self.assertEqual(self.rebuilt(), self.EVERYTHING, path)
            self.make_older()
            self.assertEqual(self.rebuilt(), [])

    def test_file_beside_the_fragments(self) -> None:
        self.write("common/notes.txt", "not a fragment")
        self.assertEqual(self.rebuilt(), [])

    def test_fragment_changed(self) -> None:
        self.write("common/a.json", '{"b": 2}')
        self.assertEqual(self.rebuilt(), self.EVERYTHING)
        self.assertIn('"b": 2', self.text.read_text(encoding="ascii"))

    def test_fragment_added(self) -> None:
        self.write("common/a.json", '{"$fragment": "common/new.json"}')
        self.assertIn("common/a.json:1:2: the fragment 'common/new.json'", self.call("--build", "build", status=1))
        self.write("common/new.json", '{"c": 1}')
        self.assertEqual(self.rebuilt(), self.EVERYTHING)
        self.assertIn('"c": 1', self.text.read_text(encoding="ascii"))
        self.make_older()
        self.write("common/new.json", '{"c": 2}')
        self.assertEqual(self.rebuilt(), self.EVERYTHING)
        self.assertIn('"c": 2', self.text.read_text(encoding="ascii"))

    def test_fragment_removed(self) -> None:
        (self.schema / "fragments/common/a.json").unlink()
        self.assertIn("root.json:1:8: the fragment 'common/a.json'", self.call("--build", "build", status=1))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
