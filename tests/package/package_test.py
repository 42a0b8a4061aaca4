#!/usr/bin/env python3
"""The Debian package: made from the sources as the preset "package" says, then unpacked into a scratch root and used.

    package_test.py CMAKE CPACK SOURCE_FOLDER WORK_FOLDER CONSUMER_FOLDER

The build in WORK_FOLDER is kept, so that the next run only builds what has changed.
"""

from __future__ import annotations

import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

from usage import tool

CMAKE, CPACK, SOURCE, WORK, CONSUMER = sys.argv[1:]
MODEL = "minimal_chain"
PROGRAMS = ("orvante_setup", "jsv", "orvante_reference")
LINTIAN, DPKG_DEB = tool("lintian"), tool("dpkg-deb")
for needed in ("dpkg-shlibdeps", "file", "gzip", "h5dump"):
    tool(needed)


def run(*command: str | Path, status: int = 0, **more: object) -> str:
    environment = dict(os.environ, LC_ALL="C.UTF-8")
    done = subprocess.run(
        [str(part) for part in command], capture_output=True, text=True, check=False, env=environment,
        stdin=subprocess.DEVNULL, **more,  # type: ignore[call-overload]
    )
    if done.returncode != status:
        raise AssertionError(f"{command}: status {done.returncode}\n{done.stdout}{done.stderr}")
    return str(done.stdout)


def forget_build_of_another_place(build: Path) -> None:
    """Removes a build folder that was copied or moved with its tree: it cannot be used where it is now."""
    cache = build / "CMakeCache.txt"
    if not cache.is_file():
        return
    lines = cache.read_text(encoding="utf-8").splitlines()
    if not {f"CMAKE_HOME_DIRECTORY:INTERNAL={SOURCE}", f"CMAKE_CACHEFILE_DIR:INTERNAL={build}"} <= set(lines):
        shutil.rmtree(build)


def make_package(build: Path) -> Path:
    """The package, made afresh."""
    forget_build_of_another_place(build)
    for old in build.glob("*.deb"):
        old.unlink()
    run(CMAKE, "--preset", "package", "-S", SOURCE, "-B", build, cwd=SOURCE)
    run(CMAKE, "--build", build)
    run(CPACK, "--config", build / "CPackConfig.cmake", "-B", build)
    (package,) = build.glob("*.deb")
    return package


class Package(unittest.TestCase):
    package: Path
    root: Path
    folder: Path

    @classmethod
    def setUpClass(cls) -> None:
        cls.package = make_package(Path(WORK, "build"))
        cls.root = Path(WORK, "root")
        cls.folder = Path(WORK, "user")
        for folder in (cls.root, cls.folder):
            shutil.rmtree(folder, ignore_errors=True)
        cls.folder.mkdir(parents=True)
        run(DPKG_DEB, "-x", cls.package, cls.root)

    def field(self, name: str) -> str:
        return run(DPKG_DEB, "-f", self.package, name).strip()

    def documents(self) -> Path:
        return self.root / "usr/share/doc/orvante"

    def test_no_complaint_of_the_package_checker(self) -> None:
        done = subprocess.run(
            [LINTIAN, "--no-cfg", "--no-user-dirs", "--allow-root", "--display-info", "--fail-on", "error,warning,info",
             str(self.package)],
            capture_output=True, text=True, check=False,
        )
        self.assertEqual((done.returncode, done.stdout), (0, ""), done.stderr)

    def test_name_and_version(self) -> None:
        architecture = run("dpkg", "--print-architecture").strip()
        self.assertEqual(self.package.name, f"orvante_4.2.0-1_{architecture}.deb")
        self.assertEqual((self.field("Package"), self.field("Version")), ("orvante", "4.2.0-1"))

    def test_depends_on_the_shared_libraries(self) -> None:
        depends = self.field("Depends")
        for library in ("libc6", "libstdc++6", "libhdf5"):
            self.assertIn(library, depends)
        self.assertNotIn("-dev", depends)

    def test_belongs_to_root(self) -> None:
        lines = run(DPKG_DEB, "-c", self.package).splitlines()
        self.assertGreater(len(lines), 50)
        for line in lines:
            self.assertRegex(line, r"^(drwxr-xr-x|-rw[x-]r-[x-]r-[x-]) root/root ")

    def test_what_is_in_it(self) -> None:
        share = self.root / "usr/share"
        expected = [
            *(self.root / "usr/bin" / program for program in PROGRAMS),
            *(share / f"man/man1/{program}.1.gz" for program in PROGRAMS),
            share / "bash-completion/completions/orvante_setup",
            share / "zsh/vendor-completions/_orvante_setup",
            share / "orvante/command_file_schema.json",
            share / "orvante/command_file_schema.draft-07.json",
            share / "orvante/command_file_schema.2020-12.json",
            self.documents() / "reference/index.html",
            *(self.documents() / name for name in ("users_guide.md", "README.md", "copyright", "changelog.gz")),
            self.root / "usr/include/orvante/jsv/validate.hpp",
        ]
        self.assertEqual([path for path in expected if not path.is_file()], [])
        self.assertEqual(len(list((self.root / "usr/lib").rglob("liborvante_*.a"))), 5)

    def test_every_example_and_header_is_in_it(self) -> None:
        def models(folder: Path) -> set[str]:
            return {path.parent.name for path in folder.glob("*/model.json")}

        self.assertGreater(len(models(Path(SOURCE, "examples"))), 10)
        self.assertEqual(models(self.documents() / "examples"), models(Path(SOURCE, "examples")))
        for library in ("api", "app", "dataio", "h5io", "jsv", "schema"):
            self.assertTrue(list((self.root / "usr/include/orvante" / library).glob("*.hpp")), library)

    def test_nothing_names_a_place_of_the_build(self) -> None:
        for path in self.root.rglob("*"):
            if path.is_file():
                content = path.read_bytes()
                self.assertFalse(SOURCE.encode() in content or WORK.encode() in content, path)

    def test_main_job(self) -> None:
        model = self.documents() / "examples" / MODEL / "model.json"
        shown = run(self.root / "usr/bin/orvante_setup", "--file", model, "--output", "reach.h5", cwd=self.folder)
        self.assertIn(" ORVANTE successfully processed all necessary jobs!\n", shown)
        stored = run("h5dump", "--dataset", "/.config/model", "reach.h5", cwd=self.folder)
        self.assertRegex(stored.replace("\\", ""), rf'"simulation_name":"{MODEL}"')

    def test_faulty_model(self) -> None:
        faulty = self.folder / "faulty.json"
        faulty.write_text('{"SETUP": {"simulation_name": 1, "ORVAMD": {}}}', encoding="utf-8")
        shown = run(self.root / "usr/bin/orvante_setup", "-f", faulty, "-o", "faulty.h5", cwd=self.folder, status=1)
        self.assertIn("/SETUP/simulation_name: Error: This value must be a string.\n", shown)
        self.assertFalse((self.folder / "faulty.h5").exists())

    def test_validator_with_the_schema_of_the_package(self) -> None:
        schema = self.root / "usr/share/orvante/command_file_schema.json"
        model = self.documents() / "examples" / MODEL / "model.json"
        self.assertEqual(run(self.root / "usr/bin/jsv", schema, model), "")

    def test_solver_is_built_with_its_libraries(self) -> None:
        build = Path(WORK, "consumer")
        shutil.rmtree(build, ignore_errors=True)
        run(CMAKE, "-S", CONSUMER, "-B", build, "-G", "Ninja", f"-DCMAKE_PREFIX_PATH={self.root / 'usr'}")
        run(CMAKE, "--build", build)
        self.assertEqual(run(build / "model_reader", cwd=build), "reach\n")

    def test_changelog_of_the_package(self) -> None:
        text = run("zcat", self.documents() / "changelog.Debian.gz")
        self.assertTrue(re.match(r"orvante \(4\.2\.0-1\) \w+; urgency=\w+\n", text), text)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
