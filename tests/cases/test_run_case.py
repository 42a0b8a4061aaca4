"""Checks that the runner of the cases finds what it is there to find; small scripts stand in for the program."""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

from circumstances import h5_python

RUNNER = Path(__file__).resolve().parent / "run_case.py"
BANNER = " ORVANTE successfully processed all necessary jobs!\n"
TEXT = '{"é":"\\u0000 \\"q\\" \\\\ b"}'
STORING = f"""#!{h5_python()}
import h5py
with h5py.File("result.h5", "w") as file:
    model = file.create_group(".config").create_dataset("model", (), dtype=DTYPE)
    model[()] = TEXT
print(BANNER, end="")
"""
UTF8 = "h5py.string_dtype('utf-8')"


def storing_program(dtype: str = UTF8, text: str = TEXT, banner: str = BANNER, more: str = "") -> str:
    script = STORING.replace("DTYPE", dtype).replace("TEXT", ascii(text)).replace("BANNER", ascii(banner))
    return script + more


def shell(commands: str) -> str:
    return "#!/bin/sh\n" + commands + "\n"


class RunnerTest(unittest.TestCase):
    def run_case(self, program: str, files: dict[str, str] | None = None, **members: Any) -> tuple[int, str]:
        case = {"purpose": "test", "arguments": [], "status": 0, "inputs": {}, **members}
        with tempfile.TemporaryDirectory(prefix="orvante_runner_test_") as name:
            folder = Path(name)
            for file, text in {"case.json": json.dumps(case), "program": program, **(files or {})}.items():
                (folder / file).write_text(text, encoding="utf-8")
            (folder / "program").chmod(0o755)
            command = [sys.executable, "-B", RUNNER, folder / "program", folder]
            finished = subprocess.run(command, capture_output=True, text=True, check=False)
        return finished.returncode, finished.stdout + finished.stderr

    def assert_passes(self, program: str, files: dict[str, str] | None = None, **members: Any) -> None:
        status, output = self.run_case(program, files, **members)
        self.assertEqual((status, output.count("as expected")), (0, 1), output)

    def assert_fault(self, fault: str, program: str, files: dict[str, str] | None = None, **members: Any) -> None:
        status, output = self.run_case(program, files, **members)
        self.assertEqual(status, 1, output)
        self.assertIn(fault, output)

    def assert_storing_fault(self, fault: str, program: str) -> None:
        self.assert_fault(fault, program, {"stdout": BANNER, "stored": TEXT + "\n"}, result={"name": "result.h5"})

    def test_passes_what_is_as_expected(self) -> None:
        streams = {"stdout": "out\n", "stderr": "error\n"}
        self.assert_passes(shell("echo out; echo error >&2; exit 3"), streams, status=3)
        self.assert_passes(storing_program(), {"stdout": BANNER, "stored": TEXT + "\n"}, result={"name": "result.h5"})

    def test_fills_in_placeholders(self) -> None:
        streams = {"stdout": "{{work}}\n{{hex:fc}}\n{{work}}/a\n"}
        self.assert_passes(shell('pwd; printf "\\374\\n"; echo "$1"'), streams, arguments=["{{work}}/a"])

    def test_status_and_signal(self) -> None:
        self.assert_fault("exit status 4, expected 3", shell("exit 4"), status=3)
        self.assert_fault("ended by signal 11", shell("kill -SEGV $$"), status=1)

    def test_streams(self) -> None:
        self.assert_fault("+out", shell("echo out"))
        self.assert_fault("-line", shell(""), {"stderr": "line\n"})
        self.assert_fault("<no line end>", shell("printf out"), {"stdout": "out\n"})
        self.assert_fault("error stack", shell("echo HDF5-DIAG"), {"stdout": "HDF5-DIAG\n"})

    def test_closing_banner(self) -> None:
        self.assert_fault("closing banner", shell(f"echo '{BANNER.rstrip()}'"), {"stdout": BANNER})
        self.assert_storing_fault("closing banner", storing_program(banner=""))

    def test_files(self) -> None:
        inputs = {"a": {"text": "a"}, "b/c": {"text": "c"}}
        self.assert_fault("'new' was created", shell("touch new"), inputs=inputs)
        self.assert_fault("'a' was changed", shell("echo >a"), inputs=inputs)
        self.assert_fault("'b/c' vanished", shell("rm b/c"), inputs=inputs)
        self.assert_passes(shell("echo >a"), inputs=inputs, undefined_afterwards=["a"])

    def test_result_file(self) -> None:
        self.assert_storing_fault("no result file", shell("true"))
        self.assert_storing_fault("CSET H5T_CSET_ASCII", storing_program("h5py.string_dtype('ascii')", '"ascii"'))
        self.assert_storing_fault('"variable_length": false', storing_program("h5py.string_dtype('utf-8', 40)"))
        self.assert_storing_fault("differs at byte 3", storing_program(text=TEXT.replace("é", "è")))
        self.assert_storing_fault("differs at byte 20", storing_program(text=TEXT[:19]))
        more = 'h5py.File("result.h5", "a").create_group("RESULTS")'
        self.assert_storing_fault('GROUP "RESULTS"', storing_program(more=more))
        more = 'h5py.File("result.h5", "a").attrs["version"] = 1'
        self.assert_storing_fault('"attributes": 1', storing_program(more=more))

    def test_rights(self) -> None:
        inputs = {"closed": {"text": "secret\n", "mode": "000"}}
        self.assert_passes(shell("cat closed 2>/dev/null"), inputs=inputs, unprivileged=True, status=1)
        self.assert_fault("+secret", shell("cat closed"), inputs={"closed": {"text": "secret\n"}}, unprivileged=True)

    def test_file_size_limit(self) -> None:
        fill = shell("trap '' XFSZ; head -c 3000 /dev/zero >big 2>/dev/null; wc -c <big")
        self.assert_passes(fill, {"stdout": "1000\n"}, file_size_limit=1000, undefined_afterwards=["big"])
        careless = shell("exec head -c 3000 /dev/zero >big")
        self.assert_fault("ended by signal 25", careless, file_size_limit=1000, status=1)

    def test_file_held_open(self) -> None:
        lock = f'#!{h5_python()}\nimport fcntl\nfcntl.flock(open("old.h5"), fcntl.LOCK_EX | fcntl.LOCK_NB)\n'
        inputs = {"old.h5": {"hdf5": True}}
        self.assert_passes(lock, inputs=inputs)
        self.assert_fault("BlockingIOError", lock, inputs=inputs, held_open="old.h5")

    def test_faulty_cases(self) -> None:
        self.assert_fault("unknown ['input']", shell(""), input={})
        self.assert_fault("needs exactly one of", shell(""), inputs={"a": {"text": "", "hex": ""}})
        self.assert_fault("needs exactly one of", shell(""), inputs={"a": {"text": "", "mod": "000"}})
        self.assert_fault("must have status 0", shell(""), status=1, result={"name": "result.h5"})


if __name__ == "__main__":
    unittest.main()
