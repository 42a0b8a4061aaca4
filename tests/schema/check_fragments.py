"""Checks that every file among the fragments of the schema is a fragment in use, with lines ended by LF.

    check_fragments.py ASSEMBLE_SCHEMA FRAGMENTS_FOLDER

Status: 0 all is well, 1 something is not.
"""

from __future__ import annotations

import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Iterator


def files_in_use(program: str, folder: Path) -> set[Path]:
    """The fragments that the whole text is put together from."""
    with tempfile.TemporaryDirectory() as work:
        rule = Path(work) / "rule"
        output = Path(work) / "schema.json"
        command = [program, "--json", str(output), "--depfile", str(rule), str(folder), "root.json"]
        subprocess.run(command, check=True)
        lines = rule.read_text(encoding="utf-8").splitlines()[1:]
    return {Path(line.strip().removesuffix("\\").strip().replace("\\ ", " ")).resolve() for line in lines}


def faults(program: str, folder: Path) -> Iterator[str]:
    in_use = files_in_use(program, folder)
    for file in sorted(path for path in folder.rglob("*") if path.is_file()):
        if file.resolve() not in in_use:
            yield f"{file.relative_to(folder)}: no fragment asks for it"
        if b"\r" in file.read_bytes():
            yield f"{file.relative_to(folder)}: a line that does not end in LF alone"


def main() -> int:
    found = list(faults(sys.argv[1], Path(sys.argv[2])))
    print("\n".join(found))
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
