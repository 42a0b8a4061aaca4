#!/usr/bin/env python3
"""Checks the schema in the standard drafts: by their meta-schemas, and by its verdicts over examples and mutants.

    check_standard.py MUTANT_REPORTS SCHEMA DRAFT_07 DRAFT_2020_12

The verdicts are compared with ours, but for what the drafts cannot express: references between blocks, and that 3.0 is no
integer. The validator is that of the Debian package python3-jsonschema.
"""

from __future__ import annotations

import argparse
import json
import sys
from collections import Counter
from pathlib import Path
from typing import Any

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/examples"))

from check_independent import sample  # noqa: E402
from models import Example, Json, Patch, load_examples, load_schema, patched, steps_of  # noqa: E402
from mutations import Mutation  # noqa: E402
from program import Outcome, Reports  # noqa: E402

try:
    from jsonschema import Draft7Validator, Draft202012Validator
except ImportError:
    sys.exit("This test needs the Python package jsonschema (Debian: python3-jsonschema).")

VALIDATORS = {
    "http://json-schema.org/draft-07/schema#": Draft7Validator,
    "https://json-schema.org/draft/2020-12/schema": Draft202012Validator,
}
REFERENCE = "Error: This value must match a "
NO_INTEGER = ": Error: This value must be an integer."
Case = tuple[Example, Patch]


def datum(document: Json, place: str) -> Json:
    """What stands at a place of a report."""
    for step in steps_of("" if place == "/" else place):
        document = document[int(step) if isinstance(document, list) else step]
    return document


def is_error(line: str, document: Json) -> bool:
    """Whether a line tells an error that the drafts can express."""
    if ": Error: " not in line or REFERENCE in line:
        return False
    if line.endswith(NO_INTEGER):
        value = datum(document, line[: -len(NO_INTEGER)])
        return not (isinstance(value, float) and value.is_integer())
    return True


def disagreements(validator: Any, cases: list[Case], outcomes: list[Outcome], counts: Counter[bool]) -> list[str]:
    """The documents over which the verdicts differ."""
    wrong = []
    for (example, patch), outcome in zip(cases, outcomes, strict=True):
        document = patched(example.document, patch)
        ours = any(is_error(line, document) for line in outcome.lines)
        counts[ours] += 1
        if ours == validator.is_valid(document):
            wrong.append(f"{example.name} {list(patch)}: errors by jsv: {ours}\n  " + "\n  ".join(outcome.lines))
    return wrong


def faulty_twins() -> list[Case]:
    """The models of the whole-program cases that are wrong as people make them wrong."""
    files = sorted((ROOT / "tests/cases").glob("faulty_*/*.json"))
    return [(Example(file.parent.name, file, json.loads(file.read_bytes())), ()) for file in files]


def names_its_schema(example: Example, reports: Reports) -> bool:
    """Whether a model that names its schema for an editor gets our warning of that, and nothing else."""
    patch = ({"op": "add", "path": "/$schema", "value": "command_file_schema.draft-07.json"},)
    (outcome,) = reports.outcomes([(example.file, patch)])
    return outcome == Outcome(1, ("/$schema: Warning: The value of this item will not be used.",))


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("reports", "schema", "draft_07", "draft_2020_12"):
        parser.add_argument(name, type=Path)
    arguments = parser.parse_args()
    schema, examples = load_schema(arguments.schema), load_examples()
    cases: list[Case] = [(example, ()) for example in examples] + faulty_twins()
    cases += [(mutant.example, mutant.patch) for mutant in sample(list(Mutation(schema, examples).mutants()))]
    reports = Reports(arguments.reports, arguments.schema)
    outcomes = reports.outcomes((each.file, patch) for each, patch in cases)
    passed = bool(faulty_twins()) and names_its_schema(examples[0], reports)
    print(f"a model may name its schema: {passed}")
    for file, identifier in zip((arguments.draft_07, arguments.draft_2020_12), VALIDATORS, strict=True):
        translated = json.loads(file.read_bytes())
        validator = VALIDATORS[translated["$schema"]]
        validator.check_schema(translated)
        counts: Counter[bool] = Counter()
        wrong = disagreements(validator(translated), cases, outcomes, counts)
        print("\n".join(wrong))
        print(f"{file.name}: {len(cases)} documents, {counts[True]} with errors; {len(wrong)} verdicts differ")
        passed = passed and not wrong and min(counts[True], counts[False]) > 0 and translated["$schema"] == identifier
    return 0 if passed else 1


if __name__ == "__main__":
    sys.exit(main())
