"""Configures and builds the result-file layer with every value of ORVANTE_HIGHFIVE.

    highfive_choice.py CMAKE SOURCE_FOLDER [-D...]

What stands for HighFive is a package and an archive made here whose H5Easy.hpp is the stand-in with a mark added, so that
it can be seen which one was taken.
"""

from __future__ import annotations

import hashlib
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest
from pathlib import Path

CMAKE, SOURCE, *OPTIONS = sys.argv[1:]
STANDIN = Path(SOURCE) / "compat/highfive/H5Easy.hpp"
CONFIG = """add_library(HighFive INTERFACE IMPORTED)
target_include_directories(HighFive INTERFACE "${CMAKE_CURRENT_LIST_DIR}/include")
"""
VERSION = """set(PACKAGE_VERSION 2.9.0)
set(PACKAGE_VERSION_COMPATIBLE TRUE)
"""


def run(*command: str | Path) -> subprocess.CompletedProcess[str]:
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)


class HighFiveChoice(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="orvante_highfive_")
        self.addCleanup(folder.cleanup)
        self.work = Path(folder.name)
        self.build = self.work / "build"

    def configure(self, *options: str) -> subprocess.CompletedProcess[str]:
        return run(CMAKE, "-S", SOURCE, "-B", self.build, "-DORVANTE_BUILD_TESTS=OFF", *OPTIONS, *options)

    def marked_header(self, folder: Path, mark: str) -> None:
        (folder / "highfive").mkdir(parents=True)
        text = STANDIN.read_text(encoding="utf-8") + f'\ninline const char* mark = "{mark}";\n'
        (folder / "highfive/H5Easy.hpp").write_text(text, encoding="utf-8")

    def installed_package(self) -> str:
        package = self.work / "package"
        self.marked_header(package / "include", "installed")
        (package / "HighFiveConfig.cmake").write_text(CONFIG, encoding="utf-8")
        (package / "HighFiveConfigVersion.cmake").write_text(VERSION, encoding="utf-8")
        return f"-DHighFive_DIR={package}"

    def archive(self) -> tuple[str, str]:
        tree = self.work / "HighFive-2.9.0"
        self.marked_header(tree / "include", "fetched")
        path = self.work / "highfive.tar.gz"
        with tarfile.open(path, "w:gz") as archive:
            archive.add(tree, tree.name)
        shutil.rmtree(tree)
        return f"-DORVANTE_HIGHFIVE_URL={path.as_uri()}", hashlib.sha256(path.read_bytes()).hexdigest()

    def assert_builds_with(self, mark: str) -> None:
        done = run(CMAKE, "--build", self.build, "--target", "orvante_h5io")
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)
        deps = run("ninja", "-C", self.build, "-t", "deps").stdout
        header = next(line.strip() for line in deps.splitlines() if line.endswith("H5Easy.hpp"))
        self.assertEqual(f'mark = "{mark}"' in (self.build / header).read_text(encoding="utf-8"), mark != "none")
        self.assertTrue(mark != "none" or (self.build / header).samefile(STANDIN))

    def test_standin_is_taken_where_nothing_is_installed(self) -> None:
        done = self.configure("-DCMAKE_DISABLE_FIND_PACKAGE_HighFive=ON")
        self.assertIn("HighFive: stand-in", done.stdout)
        self.assert_builds_with("none")

    def test_auto_prefers_an_installed_package(self) -> None:
        self.assertIn("HighFive: installed version 2.9.0", self.configure(self.installed_package()).stdout)
        self.assert_builds_with("installed")

    def test_standin_can_be_asked_for(self) -> None:
        done = self.configure(self.installed_package(), "-DORVANTE_HIGHFIVE=standin")
        self.assertIn("HighFive: stand-in", done.stdout)

    def test_system_takes_an_installed_package(self) -> None:
        done = self.configure(self.installed_package(), "-DORVANTE_HIGHFIVE=system")
        self.assertIn("HighFive: installed version 2.9.0", done.stdout)

    def test_system_without_a_package_is_an_error(self) -> None:
        done = self.configure("-DORVANTE_HIGHFIVE=system")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("HighFive", done.stderr)

    def test_fetch_takes_the_archive(self) -> None:
        url, digest = self.archive()
        done = self.configure("-DORVANTE_HIGHFIVE=fetch", url, f"-DORVANTE_HIGHFIVE_SHA256={digest}")
        self.assertIn("HighFive: fetched", done.stdout, done.stderr)
        self.assert_builds_with("fetched")

    def test_fetch_refuses_another_archive(self) -> None:
        url, _ = self.archive()
        done = self.configure("-DORVANTE_HIGHFIVE=fetch", url)
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("hash", done.stderr.lower())

    def test_other_values_are_refused(self) -> None:
        done = self.configure("-DORVANTE_HIGHFIVE=newest")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("choose auto, system, fetch or standin", " ".join(done.stderr.split()))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
