#!/usr/bin/env python3
"""Checks that walks over the examples, their faulty twins and mutants come by every schema object of the text.

    check_walks.py MUTANT_REPORTS SCHEMA

An alternative counts when it is chosen. Of the mutants those are walked that choose otherwise than the examples do.
"""

from __future__ import annotations

import argparse
import json
import sys
from pathlib import Path

from models import ROOT, Patch, Schema, load_examples, load_schema
from mutations import Mutation, other_of_choice, other_value
from program import Reports

CHOOSING = (other_value.__name__, other_of_choice.__name__)


def faulty_models(cases: Path = ROOT / "tests" / "cases") -> list[Path]:
    """The faulty twins that are JSON texts."""
    return [file for file in sorted(cases.glob("faulty_*/model.json")) if is_json(file)]


def is_json(file: Path) -> bool:
    try:
        json.loads(file.read_bytes())
    except ValueError:
        return False
    return True


def unreached(schema: Schema, reached: set[str]) -> list[str]:
    """The schema objects that no walk comes by, without those inside others that are not reached either."""
    missing = [node for node in schema.nodes.values() if node.pointer not in reached]
    return [node.pointer for node in missing if node.parent is None or node.parent.pointer in reached]


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("reports", type=Path)
    parser.add_argument("schema", type=Path)
    arguments = parser.parse_args()
    schema, examples = load_schema(arguments.schema), load_examples()
    requests: list[tuple[Path, Patch]] = [(example.file, ()) for example in examples]
    requests += [(file, ()) for file in faulty_models()]
    choosing = [mutant for mutant in Mutation(schema, examples).mutants() if mutant.kind in CHOOSING]
    requests += [(mutant.example.file, mutant.patch) for mutant in choosing]
    reached = Reports(arguments.reports, arguments.schema).places(requests)
    missing = unreached(schema, reached)
    for place in missing:
        print(f"never reached: {place or '/'}")
    strange = sorted(reached - schema.nodes.keys())
    for place in strange:
        print(f"reached, but no schema object of the text: {place}")
    print(f"{len(requests)} walks, {len(reached)} of {len(schema.nodes)} schema objects reached")
    return 1 if missing or strange else 0


if __name__ == "__main__":
    sys.exit(main())
