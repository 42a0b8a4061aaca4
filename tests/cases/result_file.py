"""Looks at a result file with two independent readers, h5dump and h5py, and lists what is not as it should be."""

from __future__ import annotations

import json
import re
import subprocess
import tempfile
from pathlib import Path

from circumstances import CaseError, run_h5_tool

HEADER = """HDF5 "{name}" {{
GROUP "/" {{
   GROUP ".config" {{
      DATASET "model" {{
         DATATYPE  H5T_STRING {{
            STRSIZE H5T_VARIABLE;
            STRPAD H5T_STR_NULLTERM;
            CSET H5T_CSET_UTF8;
            CTYPE H5T_C_S1;
         }}
         DATASPACE  SCALAR
      }}
   }}
}}
}}
"""
DESCRIPTION = {
    "groups": ["/.config"],
    "datasets": {
        "/.config/model": {
            "scalar": True,
            "string": True,
            "variable_length": True,
            "null_terminated": True,
            "utf8": True,
        }
    },
    "attributes": 0,
}
# Printing takes h5dump long on large strings; h5py compares those.
LONGEST_DUMPED = 100_000
# Bytes above 0x7f are printed sign-extended, as eleven octal digits.
ESCAPE = re.compile(rb'\\(?:37777777([0-7]{3})|([0-7]{3})|(["\\bfnrt]))')
LETTERS = {b"b": b"\b", b"f": b"\f", b"n": b"\n", b"r": b"\r", b"t": b"\t"}


def h5dump(work: Path, *arguments: str) -> bytes:
    try:
        finished = subprocess.run(["h5dump", *arguments], cwd=work, capture_output=True, check=False)
    except FileNotFoundError as error:
        raise CaseError("h5dump is not installed: run scripts/install_dependencies.sh") from error
    if finished.returncode != 0:
        return b"h5dump failed: " + finished.stderr
    return finished.stdout


def unescaped(dumped: bytes) -> bytes:
    def replacement(match: re.Match[bytes]) -> bytes:
        high, octal, letter = match.groups()
        if letter:
            return LETTERS.get(letter, letter)
        return bytes([int(high or octal, 8) & 0xFF])

    return ESCAPE.sub(replacement, dumped)


def dumped_text(work: Path, name: str) -> bytes | None:
    output = h5dump(work, "-e", "-y", "-w", "0", "-d", "/.config/model", name)
    match = re.search(rb'DATA \{\n\s*"(.*)"\n\s*\}', output, re.DOTALL)
    return unescaped(match[1]) if match else None


def difference(reader: str, expected: bytes, actual: bytes | None) -> list[str]:
    if actual == expected:
        return []
    if actual is None:
        return [f"{reader} finds no text in the result file"]
    shared = next((i for i, (a, b) in enumerate(zip(expected, actual)) if a != b), min(len(expected), len(actual)))
    start = max(0, shared - 30)
    return [
        f"stored text, read with {reader}, differs at byte {shared} of {len(expected)}, {len(actual)} were found:",
        f"    expected ...{expected[start : shared + 50]!r}",
        f"    found    ...{actual[start : shared + 50]!r}",
    ]


def check_with_h5dump(work: Path, name: str, text: bytes) -> list[str]:
    faults = []
    header = h5dump(work, "-H", name)
    if header != HEADER.format(name=name).encode():
        faults.append("layout of the result file, as h5dump shows it:\n" + header.decode(errors="backslashreplace"))
    if len(text) <= LONGEST_DUMPED:
        faults += difference("h5dump", text, dumped_text(work, name))
    return faults


def check_with_h5py(work: Path, name: str, text: bytes) -> list[str]:
    with tempfile.TemporaryDirectory(prefix="orvante_text_") as folder:
        text_file = Path(folder) / "text"
        description = json.loads(run_h5_tool("describe", str(work / name), str(text_file)))
        stored = text_file.read_bytes() if text_file.exists() else None
    faults = []
    if description != DESCRIPTION:
        faults.append(f"layout of the result file, as h5py shows it: {json.dumps(description, indent=1)}")
    return faults + difference("h5py", text, stored)


def check_result_file(work: Path, name: str, text: bytes) -> list[str]:
    if not (work / name).is_file():
        return [f"no result file '{name}'"]
    return check_with_h5dump(work, name, text) + check_with_h5py(work, name, text)
