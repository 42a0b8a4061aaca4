"""Installs the build into a fresh folder and uses it from outside, as another project would.

    run_test.py CMAKE BUILD_FOLDER SOURCE_FOLDER CONSUMER_FOLDER [-D...]

The options are those with which the consumer is configured (generator, compilers, flags).
"""

from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CMAKE, BUILD, SOURCE, CONSUMER, *OPTIONS = sys.argv[1:]


def run(*command: str | Path, cwd: Path | None = None, status: int = 0) -> str:
    done = subprocess.run([str(part) for part in command], cwd=cwd, capture_output=True, text=True, check=False)
    if done.returncode != status:
        raise AssertionError(f"{command}: status {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


class Installation(unittest.TestCase):
    folder: tempfile.TemporaryDirectory[str]
    prefix: Path
    work: Path

    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory(prefix="orvante install ")
        cls.prefix = Path(cls.folder.name) / "prefix"
        cls.work = Path(cls.folder.name) / "consumer"
        run(CMAKE, "--install", BUILD, "--prefix", cls.prefix)

    @classmethod
    def tearDownClass(cls) -> None:
        cls.folder.cleanup()

    def build_consumer(self, source: Path, build: Path) -> None:
        run(CMAKE, "-S", source, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}", *OPTIONS)
        run(CMAKE, "--build", build)

    def test_programs_are_installed_and_run(self) -> None:
        self.assertIn("v4.2.0-arm64", run(self.prefix / "bin/orvante_setup", "--version"))
        self.assertIn("v4.2.0-arm64", run(self.prefix / "bin/jsv", "--version"))

    def test_schema_is_installed_and_describes_an_example(self) -> None:
        schema = self.prefix / "share/orvante/command_file_schema.json"
        run(self.prefix / "bin/jsv", schema, Path(SOURCE) / "examples/minimal_plane/model.json")

    def test_manual_and_schemas_for_editors_are_installed(self) -> None:
        self.assertIn("v4.2.0-arm64", run(self.prefix / "bin/orvante_reference", "--version"))
        self.assertTrue((self.prefix / "share/doc/orvante/reference/index.html").exists())
        for draft in ("draft-07", "2020-12"):
            self.assertTrue((self.prefix / f"share/orvante/command_file_schema.{draft}.json").exists(), draft)

    def test_consumer_finds_libraries_and_headers(self) -> None:
        self.build_consumer(Path(CONSUMER), self.work)
        self.assertEqual(run(self.work / "model_reader", cwd=self.work), "reach\n")
        self.assertTrue((self.work / "consumer.h5").exists())
        report = run(self.work / "validator_only/checker", status=2)
        self.assertEqual(report, "/width: Error: This value must be greater than or equal to 0.000000.\n\n")

    def test_validator_is_found_without_what_the_rest_needs(self) -> None:
        hidden = [f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in ("HDF5", "TCLAP", "OrvanteHdf5", "HighFive")]
        build = self.work.with_name("validator only")
        run(CMAKE, "-S", Path(CONSUMER) / "validator_only", "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
            *OPTIONS, *hidden)
        run(CMAKE, "--build", build)
        self.assertIn("/width", run(build / "checker", status=2))

    def test_unknown_component_is_refused(self) -> None:
        source = self.work.with_name("unknown component")
        source.mkdir()
        (source / "CMakeLists.txt").write_text(
            "cmake_minimum_required(VERSION 3.22)\nproject(x LANGUAGES C CXX)\n"
            "find_package(orvante REQUIRED COMPONENTS nonsense)\n",
            encoding="utf-8",
        )
        with self.assertRaisesRegex(AssertionError, "nonsense"):
            self.build_consumer(source, source / "build")

    def test_installed_program_names_no_place_of_the_build(self) -> None:
        stripped = self.work.with_name("stripped")
        run("objcopy", "--strip-debug", self.prefix / "bin/orvante_setup", stripped)
        content = stripped.read_bytes()
        self.assertTrue(b"app/main_setup_md.cpp" in content)
        self.assertFalse(SOURCE.encode() in content)

    def test_installed_package_names_no_place_of_the_build(self) -> None:
        for path in (self.prefix / "lib").rglob("*.cmake"):
            self.assertNotIn(SOURCE, path.read_text(encoding="utf-8"), path)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=1)
