#!/usr/bin/env python3
"""Installs the packages of package-lock.json into a folder, for the tests that ask a language service.

    install_packages.py FOLDER

They are fetched when the lock file has changed since the last time. Needs node and npm.
"""

from __future__ import annotations

import shutil
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
FILES = ("package.json", "package-lock.json", ".npmrc")


def is_current(folder: Path) -> bool:
    """Whether the folder holds what the lock file asks for."""
    stamp = folder / "installed"
    return stamp.is_file() and stamp.read_bytes() == (HERE / "package-lock.json").read_bytes()


def install(folder: Path) -> None:
    folder.mkdir(parents=True, exist_ok=True)
    for name in FILES:
        shutil.copyfile(HERE / name, folder / name)
    subprocess.run(["npm", "ci", "--ignore-scripts"], cwd=folder, check=True)
    shutil.copyfile(HERE / "package-lock.json", folder / "installed")


def main(arguments: list[str]) -> int:
    for program in ("node", "npm"):
        if shutil.which(program) is None:
            sys.exit(f"This test needs {program}: run scripts/install_dependencies.sh.")
    folder = Path(arguments[0])
    if not is_current(folder):
        try:
            install(folder)
        except subprocess.CalledProcessError as error:
            return error.returncode
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
