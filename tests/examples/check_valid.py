#!/usr/bin/env python3
"""Checks that nothing is found in the examples, and that each has its document and its cases.

    check_valid.py JSV_PROGRAM SCHEMA

Multi-domain examples are stored by a case example_NAME, single-domain ones refused by a case NAME_refused; each has a
faulty twin, the case faulty_NAME.
"""

from __future__ import annotations

import argparse
import json
import subprocess
import sys
from pathlib import Path
from typing import Iterator

from models import ROOT, Example, load_examples

CASES = ROOT / "tests" / "cases"


def problems(example: Example, jsv: Path, schema: Path, cases: Path = CASES) -> Iterator[str]:
    """What is wrong with an example."""
    command = [str(jsv), str(schema), str(example.file)]
    done = subprocess.run(command, capture_output=True, text=True, encoding="utf-8", check=False)
    if done.returncode != 0 or done.stdout or done.stderr:
        yield f"jsv ends with status {done.returncode}: {done.stdout.strip()}{done.stderr.strip()}"
    if not (example.file.parent / "README.md").is_file():
        yield "there is no README.md"
    yield from case_problems(example, cases)


def case_problems(example: Example, cases: Path) -> Iterator[str]:
    """The cases that an example lacks, and those that run something else."""
    own = f"{example.name}_refused" if example.is_single_domain else f"example_{example.name}"
    if not runs(cases / own, example.file):
        yield f"no case {own} runs it"
    elif status_of(cases / own) != (1 if example.is_single_domain else 0):
        yield f"the case {own} ends otherwise"
    twin = cases / f"faulty_{example.name}"
    if not (twin / "case.json").is_file() or not (twin / "model.json").is_file():
        yield f"there is no case {twin.name} with a model.json"
    elif not runs(twin, twin / "model.json"):
        yield f"the case {twin.name} does not run its model.json"
    elif (twin / "model.json").read_bytes() == example.file.read_bytes():
        yield f"the model of {twin.name} is the example itself"


def description(case: Path) -> dict[str, object]:
    file = case / "case.json"
    return json.loads(file.read_bytes()) if file.is_file() else {}


def status_of(case: Path) -> object:
    return description(case).get("status")


def runs(case: Path, model: Path) -> bool:
    """Whether a case has a model among its inputs."""
    inputs = description(case).get("inputs", {})
    copied = [each["copy"] for each in inputs.values() if "copy" in each] if isinstance(inputs, dict) else []
    return any((case / path).resolve() == model.resolve() for path in copied)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("jsv", type=Path)
    parser.add_argument("schema", type=Path)
    arguments = parser.parse_args()
    examples = load_examples()
    found = [(each.name, problem) for each in examples for problem in problems(each, arguments.jsv, arguments.schema)]
    for name, problem in found:
        print(f"{name}: {problem}")
    print(f"{len(examples)} examples, {len(found)} problems")
    return 1 if found or not examples else 0


if __name__ == "__main__":
    sys.exit(main())
