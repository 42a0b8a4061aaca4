"""What a program's --help says, read without regard to how the project itself reads it, and tools that must be there."""

from __future__ import annotations

import re
import shutil
import subprocess
from pathlib import Path


def tool(name: str) -> str:
    """The path of a program that a test needs."""
    found = shutil.which(name)
    if not found:
        raise FileNotFoundError(f"no {name} here: run scripts/install_dependencies.sh")
    return found


def usage(program: str) -> str:
    """The output of --help, the program called by its name alone."""
    done = subprocess.run(
        [Path(program).name, "--help"], executable=program, capture_output=True, text=True, check=True
    )
    return done.stdout


def described(program: str) -> dict[str, str]:
    """The options and operands of a program, each form of them with its description."""
    found: dict[str, str] = {}
    for heading, lines in re.findall(r"^   (-.*|<.*>)\n((?:     .*\n)+)", usage(program), re.MULTILINE):
        for form in heading.split(","):
            found[form.strip().replace("<", "").replace(">", "")] = " ".join(lines.split())
    return found


def flags(program: str) -> set[str]:
    """The options of a program, without their values."""
    return {form.split()[0] for form in described(program) if form.startswith("-")}
