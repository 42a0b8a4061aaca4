"""Runs one whole-program case and compares everything that can be seen from outside with what is expected.

    run_case.py PROGRAM CASE_FOLDER

Exit status 0 if all is as expected, 1 otherwise, with every difference on standard output. README.md beside this file
describes the folder of a case.
"""

from __future__ import annotations

import difflib
import json
import os
import re
import resource
import shutil
import subprocess
import sys
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path
from typing import Any

from circumstances import (
    NOBODY,
    CaseError,
    fingerprints,
    hand_over_to_nobody,
    held_open,
    make_inputs,
    restricted_rights,
)
from result_file import check_result_file

TIME_LIMIT = 120
NAME_OF_PROGRAM = "orvante_setup"
CLOSING_BANNER = b"ORVANTE successfully processed all necessary jobs!"
REQUIRED_KEYS = {"purpose", "arguments", "status", "inputs"}
OPTIONAL_KEYS = {"result", "unprivileged", "file_size_limit", "held_open", "undefined_afterwards"}


def read_case(folder: Path) -> dict[str, Any]:
    case = json.loads((folder / "case.json").read_text(encoding="utf-8"))
    missing, unknown = REQUIRED_KEYS - case.keys(), case.keys() - REQUIRED_KEYS - OPTIONAL_KEYS
    if missing or unknown:
        raise CaseError(f"case.json: missing {sorted(missing)}, unknown {sorted(unknown)}")
    if "result" in case and case["status"] != 0:
        raise CaseError("case.json: a run that leaves a result must have status 0")
    return case


def fill_in(text: bytes, work: Path) -> bytes:
    """Replace {{work}} by the working folder and {{hex:..}} by those bytes."""
    text = text.replace(b"{{work}}", os.fsencode(work))
    return re.sub(rb"\{\{hex:([0-9a-f]+)\}\}", lambda match: bytes.fromhex(match[1].decode()), text)


def expected_stream(folder: Path, name: str, work: Path) -> bytes:
    path = folder / name
    return fill_in(path.read_bytes(), work) if path.exists() else b""


def expected_text(case: dict[str, Any], folder: Path, work: Path) -> bytes:
    """The text to be stored: that of the file `stored`, or made of an input by another JSON implementation."""
    source = case["result"].get("text_of")
    if source is None:
        return (folder / "stored").read_bytes().removesuffix(b"\n")
    sys.setrecursionlimit(10_000)
    document = json.loads((work / source).read_text(encoding="utf-8"))
    return json.dumps(document, sort_keys=True, separators=(",", ":"), ensure_ascii=False).encode()


@contextmanager
def working_folder() -> Iterator[Path]:
    base = Path(tempfile.mkdtemp(prefix="orvante_case_"))
    try:
        (base / "work").mkdir()
        yield base / "work"
    finally:
        shutil.rmtree(base)


def run_options(case: dict[str, Any], program: Path, work: Path) -> dict[str, Any]:
    """How the program is started. Python puts SIGXFSZ back to its default in the child, as a shell would have it."""
    options: dict[str, Any] = {"executable": program, "cwd": work}
    if case.get("unprivileged") and os.geteuid() == 0:
        options["executable"] = hand_over_to_nobody(program, work.parent)
        options |= {"user": NOBODY, "group": NOBODY, "extra_groups": []}
    limit = case.get("file_size_limit")
    if limit is not None:
        options["preexec_fn"] = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
    options["env"] = {name: value for name, value in os.environ.items() if not name.startswith("HDF5_")}
    return options


def run_program(case: dict[str, Any], program: Path, work: Path) -> subprocess.CompletedProcess[bytes]:
    arguments = [os.fsdecode(fill_in(argument.encode(), work)) for argument in case["arguments"]]
    return subprocess.run(
        [NAME_OF_PROGRAM, *arguments],
        stdin=subprocess.DEVNULL,
        capture_output=True,
        timeout=TIME_LIMIT,
        check=False,
        **run_options(case, program, work),
    )


def readable_lines(stream: bytes) -> list[str]:
    return stream.decode(errors="backslashreplace").splitlines(keepends=True)


def check_stream(name: str, expected: bytes, actual: bytes) -> list[str]:
    if expected == actual:
        return []
    lines = difflib.unified_diff(readable_lines(expected), readable_lines(actual), "expected", "found")
    return [f"{name}:"] + ["    " + (line[:-1] if line.endswith("\n") else line + " <no line end>") for line in lines]


def check_ending(case: dict[str, Any], finished: subprocess.CompletedProcess[bytes]) -> list[str]:
    faults = []
    if finished.returncode < 0:
        faults.append(f"ended by signal {-finished.returncode}")
    if finished.returncode != case["status"]:
        faults.append(f"exit status {finished.returncode}, expected {case['status']}")
    if b"HDF5-DIAG" in finished.stdout + finished.stderr:
        faults.append("the HDF5 library printed an error stack")
    if (CLOSING_BANNER in finished.stdout) != ("result" in case):
        faults.append("the closing banner must stand there exactly when the job was done")
    return faults


def check_files(case: dict[str, Any], before: dict[str, str], after: dict[str, str]) -> list[str]:
    """Nothing in the working folder may appear, vanish or change, but for the result and what is declared undefined."""
    free = {*case.get("undefined_afterwards", []), case.get("result", {}).get("name")}
    faults = [f"'{name}' was created" for name in after.keys() - before.keys() - free]
    faults += [f"'{name}' vanished" for name in before.keys() - after.keys() - free]
    faults += [f"'{name}' was changed" for name in before.keys() & after.keys() - free if before[name] != after[name]]
    return sorted(faults)


def check_case(folder: Path, program: Path, work: Path) -> list[str]:
    case = read_case(folder)
    make_inputs(case["inputs"], folder, work)
    text = expected_text(case, folder, work) if "result" in case else b""
    held = work / case["held_open"] if "held_open" in case else None
    with held_open(held):
        before = fingerprints(work)
        with restricted_rights(case["inputs"], work):
            finished = run_program(case, program, work)
        after = fingerprints(work)
    faults = check_ending(case, finished)
    for name, actual in (("stdout", finished.stdout), ("stderr", finished.stderr)):
        faults += check_stream(name, expected_stream(folder, name, work), actual)
    faults += check_files(case, before, after)
    if "result" in case:
        faults += check_result_file(work, case["result"]["name"], text)
    return faults


def main() -> int:
    if len(sys.argv) != 3:
        print(__doc__.strip())
        return 1
    program, folder = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    try:
        with working_folder() as work:
            faults = check_case(folder, program, work)
    except (CaseError, OSError, ValueError) as error:
        faults = [f"the case could not be run: {error}"]
    except subprocess.TimeoutExpired:
        faults = [f"not finished after {TIME_LIMIT} s"]
    print(f"case {folder.name}: " + ("as expected" if not faults else "not as it should be"))
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
