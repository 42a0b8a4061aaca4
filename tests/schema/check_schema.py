#!/usr/bin/env python3
"""Checks the text of the command-file schema against the rules by which it is written.

    check_schema.py [--at PATH] SCHEMA

Each finding is a line: the rule, the place in the schema, what is wrong. With --at the text is the schema of the block
at that path of the data, such as /SETUP/ORVAMD/ORVASUB, and what holds of the whole text only is not checked.

Status: 0 nothing found, 1 something found, 2 no JSON.
"""

from __future__ import annotations

import argparse
import json
import sys
from collections import Counter
from pathlib import Path
from typing import Any, Iterator

sys.dont_write_bytecode = True

from rules import descriptions, files, quoted, references, structure, text, values, variants  # noqa: E402
from rules.base import Finding, Rule, Share  # noqa: E402

from block_tree import load_tree  # noqa: E402
from schema_nodes import split_path  # noqa: E402

ALL_RULES: list[Rule] = [
    rule
    for module in (structure, values, variants, files, references, quoted, descriptions, text)
    for rule in module.RULES
]


def findings(share: Share, rules: list[Rule] | None = None) -> Iterator[tuple[str, Finding]]:
    """The findings of all rules, each with the name of its rule."""
    for rule in ALL_RULES if rules is None else rules:
        for finding in rule(share):
            yield rule.__name__, finding


def unique_members(pairs: list[tuple[str, Any]]) -> dict[str, Any]:
    """An object whose members all have names of their own."""
    repeated = [name for name, count in Counter(name for name, _ in pairs).items() if count > 1]
    if repeated:
        raise ValueError(f"the member '{repeated[0]}' stands twice in one object")
    return dict(pairs)


def load_share(file: Path, at: str) -> Share:
    """A text and what it says."""
    content = file.read_bytes()
    schema = json.loads(content, object_pairs_hook=unique_members)
    if not isinstance(schema, dict):
        raise ValueError("this is no object")
    return Share(content, schema, split_path(at), load_tree())


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--at", default="", metavar="PATH", help="path of the block that the text describes")
    parser.add_argument("schema", type=Path)
    arguments = parser.parse_args()
    try:
        share = load_share(arguments.schema, arguments.at)
    except (OSError, ValueError) as fault:
        print(f"{arguments.schema}: {fault}", file=sys.stderr)
        return 2
    if share.at and share.tree.find(share.at) is None:
        parser.error(f"there is no block {arguments.at}")
    found = list(findings(share))
    for rule, finding in found:
        print(f"{rule}  {finding.pointer or '/'}  {finding.message}")
    print(f"{len(found)} findings", file=sys.stderr)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
