#!/usr/bin/env python3
"""Checks that each fault made in the examples gives the lines that it deserves, at their places, and no others.

    check_mutants.py MUTANT_REPORTS JSV_PROGRAM SCHEMA

A few of the mutants also go through the program jsv, whose report and status must be the same.
"""

from __future__ import annotations

import argparse
import json
import random
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path

from models import Example, load_examples, load_schema
from mutations import KINDS, SEED, Mutant, Mutation, describe
from program import Outcome, Reports

SHOWN = 20
RUNS_OF_JSV = 40


def sound_examples(reports: Reports, examples: list[Example]) -> tuple[list[Example], list[str]]:
    """The examples in which nothing is found, and what is wrong with the others: no fault can be told from theirs."""
    outcomes = reports.outcomes((example.file, ()) for example in examples)
    sound = [example for example, outcome in zip(examples, outcomes, strict=True) if not outcome.lines]
    others = [f"{each.name} is at fault itself: its mutants are left out" for each in examples if each not in sound]
    return sound, others


def verdict_of(lines: frozenset[str]) -> int:
    if any(": Error: " in each for each in lines):
        return 2
    return 1 if lines else 0


def difference(mutant: Mutant, outcome: Outcome) -> str:
    """What is wrong with the outcome of a mutant; empty if nothing."""
    expected, found = set(mutant.expected), set(outcome.lines)
    wrong = [f"  deserved: {each}" for each in sorted(expected - found)]
    wrong += [f"  not deserved: {each}" for each in sorted(found - expected)]
    if len(found) < len(outcome.lines):
        wrong.append("  a line stands twice")
    if outcome.verdict != verdict_of(mutant.expected):
        wrong.append(f"  verdict {outcome.verdict}")
    return "\n".join([describe(mutant), *wrong]) if wrong else ""


def jsv_difference(jsv: Path, schema: Path, mutant: Mutant, outcome: Outcome) -> str:
    """What the program says otherwise than the library did; empty if nothing."""
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder) / "model.json"
        file.write_text(json.dumps(mutant.document), encoding="utf-8")
        command = [str(jsv), str(schema), str(file)]
        done = subprocess.run(command, capture_output=True, text=True, encoding="utf-8", check=False)
    text = "".join(f"{each}\n" for each in outcome.lines)
    same = (done.returncode, done.stdout) == (outcome.verdict, text + "\n" if text else "")
    return "" if same else f"{describe(mutant)}\n  jsv ends with {done.returncode}:\n{done.stdout}{done.stderr}"


def never_made(mutants: list[Mutant]) -> list[str]:
    """The kinds of faults of which there is none."""
    made = {mutant.kind for mutant in mutants}
    return [kind.__name__ for kind in KINDS if kind.__name__ not in made]


def summary(mutants: list[Mutant], left_out: Counter[str]) -> str:
    counts = Counter(mutant.kind for mutant in mutants)
    harmless = sum(not mutant.expected for mutant in mutants)
    several = sum(len(mutant.expected) > 1 for mutant in mutants)
    nodes = len({mutant.node.pointer for mutant in mutants})
    return (
        f"{len(mutants)} mutants of {nodes} schema objects; {harmless} deserve nothing, {several} more than one line\n"
        + "".join(f"  {kind}: {count}\n" for kind, count in counts.most_common())
        + f"left out, what groups find in them being undetermined: {left_out.total()} {dict(left_out) or ''}"
    )


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("reports", "jsv", "schema"):
        parser.add_argument(name, type=Path)
    arguments = parser.parse_args()
    reports = Reports(arguments.reports, arguments.schema)
    sound, wrong = sound_examples(reports, load_examples())
    mutation = Mutation(load_schema(arguments.schema), sound)
    mutants = list(mutation.mutants())
    outcomes = reports.outcomes((mutant.example.file, mutant.patch) for mutant in mutants)
    pairs = list(zip(mutants, outcomes, strict=True))
    few = random.Random(SEED).sample(pairs, min(RUNS_OF_JSV, len(pairs)))
    differences = [difference(*pair) for pair in pairs]
    differences += [jsv_difference(arguments.jsv, arguments.schema, *pair) for pair in few]
    wrong += [each for each in differences if each]
    print(summary(mutants, mutation.left_out))
    print("\n".join(wrong[:SHOWN]))
    missing = never_made(mutants)
    print(f"{len(wrong)} wrong outcomes; kinds never made: {', '.join(missing) or 'none'}")
    return 1 if wrong or missing else 0


if __name__ == "__main__":
    sys.exit(main())
