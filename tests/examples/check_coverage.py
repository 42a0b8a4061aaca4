#!/usr/bin/env python3
"""Checks that the examples use every key, every variant and every name of a choice of the command file's format.

    check_coverage.py SCHEMA

Prints what none of them uses, values of enumerations too; those alone do not make it fail.
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path

from usage import Usage
from models import load_examples, load_schema

from block_tree import load_tree


def show(what: str, total: int, unused: list[str]) -> None:
    print(f"{what}: {total - len(unused)} of {total} used")
    for name in unused:
        print(f"  not used: {name}")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("schema", type=Path)
    usage = Usage(load_schema(parser.parse_args().schema), load_examples())
    needed = {"keys": usage.keys(load_tree()), "variants": usage.variants(), "names of choices": usage.choices()}
    for what, (total, unused) in {**needed, "values of enumerations": usage.values()}.items():
        show(what, total, unused)
    return 1 if any(unused or not total for total, unused in needed.values()) else 0


if __name__ == "__main__":
    sys.exit(main())
