#!/usr/bin/env python3
"""Checks that a changed template is noticed by the next build.

    check_rebuild.py CMAKE EMBED_SCRIPT

A small project embeds a template as the real one does; the template is changed, and built again.
"""

from __future__ import annotations

import pathlib
import subprocess
import sys
import tempfile
import unittest

cmake = ""
script = ""

PROJECT = """
cmake_minimum_required(VERSION 3.22)
project(embedding NONE)
add_custom_command(
    OUTPUT templates.cpp
    COMMAND "${{CMAKE_COMMAND}}" -DOUTPUT=templates.cpp -P "{script}" -- "${{CMAKE_SOURCE_DIR}}/a.css"
    DEPENDS a.css
    VERBATIM
)
add_custom_target(embed ALL DEPENDS templates.cpp)
"""


class RebuildTest(unittest.TestCase):
    def test_a_changed_template_is_embedded_anew(self) -> None:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            (folder / "CMakeLists.txt").write_text(PROJECT.format(script=script), encoding="utf-8")
            for text in ("a { color: red; }", 'b [c] ; \\ "${d}" #e'):
                (folder / "a.css").write_text(text, encoding="utf-8")
                self.build(folder)
                self.assertIn(text, (folder / "build/templates.cpp").read_text(encoding="utf-8"))

    def test_long_templates_are_whole(self) -> None:
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            text = "".join(f"line {number};\n" for number in range(3000))
            (folder / "long.js").write_text(text, encoding="utf-8")
            self.run_cmake(f"-DOUTPUT={folder}/out.cpp", "-P", script, "--", f"{folder}/long.js")
            source = (folder / "out.cpp").read_text(encoding="utf-8")
            pieces = source.split('R"~~~(')[1:]
            self.assertGreater(len(pieces), 2)
            self.assertEqual("".join(piece.split(')~~~"')[0] for piece in pieces), text)

    def build(self, folder: pathlib.Path) -> None:
        self.run_cmake("-S", str(folder), "-B", f"{folder}/build", "-G", "Ninja")
        self.run_cmake("--build", f"{folder}/build")

    def run_cmake(self, *arguments: str) -> None:
        done = subprocess.run([cmake, *arguments], capture_output=True, text=True, timeout=120, check=False)
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)


if __name__ == "__main__":
    cmake, script = sys.argv[1:3]
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
