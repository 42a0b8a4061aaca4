"""What a case finds when it starts: its input files, the rights on them, files held open by others."""

from __future__ import annotations

import contextlib
import functools
import hashlib
import json
import os
import shutil
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path
from typing import Any

NOBODY = 65534
H5_TOOL = Path(__file__).resolve().parent / "h5_tool.py"
INPUT_SOURCES = {"copy", "text", "hex", "nesting", "model_megabytes", "hdf5", "folder"}


class CaseError(Exception):
    """The case itself is wrong, or this machine cannot provide what it needs."""


@functools.cache
def h5_python() -> str:
    """An interpreter that has h5py: this one or the system's."""
    for candidate in (sys.executable, "/usr/bin/python3"):
        found = subprocess.run([candidate, "-c", "import h5py"], capture_output=True, check=False)
        if found.returncode == 0:
            return candidate
    raise CaseError("no python3 with h5py here: run scripts/install_dependencies.sh")


def run_h5_tool(*arguments: str) -> str:
    finished = subprocess.run([h5_python(), H5_TOOL, *arguments], capture_output=True, text=True, check=False)
    if finished.returncode != 0:
        raise CaseError(f"h5_tool {arguments[0]} failed: {finished.stderr.strip()}")
    return finished.stdout


def nested_model(depth: int) -> str:
    """A model that is `depth` levels deep, its outermost object being the first."""
    arrays = depth - 3
    head = '{"SETUP":{"simulation_name":"deep","ORVAMD":{"multiregion":"deep","nested":'
    return head + "[" * arrays + "]" * arrays + "}}}"


def large_model(template: dict[str, Any], megabytes: int) -> str:
    """The template with its first chain domain repeated, each under a name of its own, up to that size."""
    multi_domain = template["SETUP"]["ORVAMD"]
    domain = dict(multi_domain["ORVACHAIN_1D"][0], region_name="@name@")
    before, after = json.dumps(domain, indent=2).split("@name@")
    multi_domain["ORVACHAIN_1D"] = ["@domains@"]
    head, tail = json.dumps(template, indent=2).split('"@domains@"')
    count = megabytes * 1_000_000 // len(before + after) + 1
    return head + ",\n".join(f"{before}reach_{i}{after}" for i in range(count)) + tail


def input_bytes(source: dict[str, Any], case: Path) -> bytes:
    if "copy" in source:
        return (case / source["copy"]).read_bytes()
    if "text" in source:
        return source["text"].encode()
    if "hex" in source:
        return bytes.fromhex(source["hex"])
    if "nesting" in source:
        return nested_model(source["nesting"]).encode()
    template = json.loads((case / source["of"]).read_text(encoding="utf-8"))
    return large_model(template, source["model_megabytes"]).encode()


def check_input(name: str, source: dict[str, Any]) -> None:
    kinds = INPUT_SOURCES & source.keys()
    extra = source.keys() - kinds - {"mode"} - ({"of"} if "model_megabytes" in kinds else set())
    if len(kinds) != 1 or extra:
        raise CaseError(f"input '{name}' needs exactly one of {sorted(INPUT_SOURCES)}; unknown: {sorted(extra)}")


def make_inputs(inputs: dict[str, dict[str, Any]], case: Path, work: Path) -> None:
    for name, source in inputs.items():
        check_input(name, source)
        path = work / name
        path.parent.mkdir(parents=True, exist_ok=True)
        if "folder" in source:
            path.mkdir(exist_ok=True)
        elif "hdf5" in source:
            run_h5_tool("create", str(path))
        else:
            path.write_bytes(input_bytes(source, case))


def fingerprints(work: Path) -> dict[str, str]:
    """Every file and folder below the working folder, with the digest of its bytes."""
    found = {}
    for path in sorted(work.rglob("*")):
        kind = "folder" if path.is_dir() else hashlib.sha256(path.read_bytes()).hexdigest()
        found[str(path.relative_to(work))] = kind
    return found


@contextlib.contextmanager
def restricted_rights(inputs: dict[str, dict[str, Any]], work: Path) -> Iterator[None]:
    """The declared modes, in force within the block only: the runner has to look and to clean up afterwards."""
    deepest_first = sorted((name for name in inputs if "mode" in inputs[name]), reverse=True)
    earlier = {name: (work / name).stat().st_mode for name in deepest_first}
    for name in deepest_first:
        (work / name).chmod(int(inputs[name]["mode"], 8))
    try:
        yield
    finally:
        for name in reversed(deepest_first):
            (work / name).chmod(earlier[name])


@contextlib.contextmanager
def held_open(path: Path | None) -> Iterator[None]:
    """The file, kept open for writing by another process under HDF5's lock."""
    if path is None:
        yield
        return
    holder = subprocess.Popen(
        [h5_python(), H5_TOOL, "hold", path], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE
    )
    with holder:
        if holder.stdout.readline() != b"held\n":
            raise CaseError(f"could not hold {path.name} open: {holder.stderr.read().decode()}")
        try:
            yield
        finally:
            holder.stdin.close()


def hand_over_to_nobody(program: Path, base: Path) -> Path:
    """Make the folder usable by an unprivileged user; return a copy of the program that this user can reach."""
    copy = base / program.name
    shutil.copy(program, copy)
    copy.chmod(0o755)
    base.chmod(0o755)
    for path in [base / "work", *(base / "work").rglob("*")]:
        os.chown(path, NOBODY, NOBODY)
    return copy
