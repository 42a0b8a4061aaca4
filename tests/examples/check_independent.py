#!/usr/bin/env python3
"""Checks that a standard validator finds errors in the same examples and mutants as we do.

    check_independent.py MUTANT_REPORTS SCHEMA [--all]

All mutants take five minutes: without --all a sample of each kind is tried.
The schema is translated to draft 4; references between blocks, which that cannot express, are left out on both sides.
The validator is that of the Debian package python3-jsonschema.
"""

from __future__ import annotations

import argparse
import random
import sys
from collections import Counter
from pathlib import Path

from models import ROOT, Example, Json, Patch, load_examples, load_schema, patched
from mutations import SEED, Mutant, Mutation
from program import Outcome, Reports

from dialect_to_draft4 import translate

try:
    from jsonschema import Draft4Validator
except ImportError:
    sys.exit("This test needs the Python package jsonschema (Debian: python3-jsonschema).")

PER_KIND = 40
REFERENCE = "Error: This value must match a "


def has_errors(outcome: Outcome) -> bool:
    """Whether there are errors but for references that lead nowhere."""
    return any(": Error: " in each and REFERENCE not in each for each in outcome.lines)


def sample(mutants: list[Mutant]) -> list[Mutant]:
    """Some mutants of each kind."""
    kinds: dict[str, list[Mutant]] = {}
    for mutant in mutants:
        kinds.setdefault(mutant.kind, []).append(mutant)
    choice = random.Random(SEED)
    return [mutant for group in kinds.values() for mutant in choice.sample(group, min(PER_KIND, len(group)))]


def disagreement(validator: Draft4Validator, document: Json, outcome: Outcome) -> str:
    """How the verdicts differ; empty if they agree."""
    ours, theirs = has_errors(outcome), not validator.is_valid(document)
    if ours == theirs:
        return ""
    return f"errors by jsv: {ours}, by the standard validator: {theirs}\n  " + "\n  ".join(outcome.lines)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("reports", type=Path)
    parser.add_argument("schema", type=Path)
    parser.add_argument("--all", action="store_true", help="try all mutants, not a sample")
    arguments = parser.parse_args()
    schema, examples = load_schema(arguments.schema), load_examples()
    translation = translate(schema.text)
    Draft4Validator.check_schema(translation.schema)
    tried: list[tuple[Example, Patch]] = [(example, ()) for example in examples]
    mutants = list(Mutation(schema, examples).mutants())
    tried += [(mutant.example, mutant.patch) for mutant in (mutants if arguments.all else sample(mutants))]
    outcomes = Reports(arguments.reports, arguments.schema).outcomes((each.file, patch) for each, patch in tried)
    counts, wrong = compare(Draft4Validator(translation.schema), tried, outcomes)
    print("\n".join(wrong))
    print(f"{len(tried)} documents, {counts[True]} with errors; {len(wrong)} verdicts differ")
    print(f"references not compared: {translation.dropped_references}")
    return 0 if not wrong and counts[True] and counts[False] else 1


def compare(
    validator: Draft4Validator, tried: list[tuple[Example, Patch]], outcomes: list[Outcome]
) -> tuple[Counter[bool], list[str]]:
    """How many documents have errors and have none, and which verdicts differ."""
    counts: Counter[bool] = Counter()
    wrong = []
    for (example, patch), outcome in zip(tried, outcomes, strict=True):
        counts[has_errors(outcome)] += 1
        problem = disagreement(validator, patched(example.document, patch), outcome)
        if problem:
            wrong.append(f"{example.file.relative_to(ROOT)} {list(patch)}: {problem}")
    return counts, wrong


if __name__ == "__main__":
    sys.exit(main())
