#!/usr/bin/env python3
"""Writes the inputs of the benchmarks. The same arguments give the same bytes.

    generate.py multi FILE --size BYTES [--faults SHARE]    a model of many domains, made from the examples
    generate.py single FILE --size BYTES --schema SCHEMA [--faults SHARE]
                                                            a model of one domain with long arrays
    generate.py like FILE --schema SCHEMA                   JSON of the size and depth of the schema
    generate.py references FILE --count N                   N references into an array of N names
    generate.py findings FILE --count N [--clean]           N values, each of them at fault unless clean
    generate.py findings-schema FILE                        the schema of those

Each prints what it wrote: bytes, and the number of faults of each kind.
"""

from __future__ import annotations

import argparse
import json
from pathlib import Path
from typing import Any

import scale

# Five values an item, each with a fault of another kind; the sound ones are as long and cost the parser the same.
FINDINGS_SOUND = {"depth": 12.5, "kind": "weir_in", "slope": 2.5, "number": 17, "width": 3.5}
FINDINGS_FAULTY = {"depth": True, "kind": "weir_up", "slope": -25, "number": 1.7, "height": 35}
FINDINGS_SCHEMA = {
    "type": "object",
    "required": ["BOUNDARY"],
    "properties": {
        "BOUNDARY": {
            "type": "array",
            "items": {
                "type": "object",
                "properties": {
                    "depth": {"type": "number"},
                    "kind": {"type": "string", "enum": ["weir_in", "weir_out", "gate_in"]},
                    "slope": {"type": "number", "minimum": 0},
                    "number": {"type": "integer"},
                    "width": {"type": "number"},
                },
                "required": ["depth", "kind", "slope", "number"],
                "optional": ["width"],
            },
        }
    },
}


def make_findings(count: int, clean: bool) -> scale.Data:
    item = FINDINGS_SOUND if clean else FINDINGS_FAULTY
    return {"BOUNDARY": [item] * (count // len(item))}


def write(path: Path, text: str, **facts: Any) -> None:
    data = text.encode()
    path.write_bytes(data)
    print(json.dumps({"bytes": len(data), **facts}))


def made(arguments: argparse.Namespace) -> tuple[scale.Data, dict[str, int]]:
    """What is asked for, and its faults."""
    if arguments.what == "references":
        return scale.boundaries_at_strings(arguments.count), {}
    if arguments.what == "findings":
        return make_findings(arguments.count, arguments.clean), {} if arguments.clean else {"all": arguments.count}
    if arguments.what == "findings-schema":
        return FINDINGS_SCHEMA, {}
    faults = scale.Faults(arguments.faults)
    if arguments.what == "multi":
        return faults.into(scale.multi_domain(arguments.size)), faults.made
    schema = json.loads(arguments.schema.read_text(encoding="ascii"))
    if arguments.what == "like":
        return scale.of_same_shape(schema), {}
    return faults.into(scale.single_domain(schema, arguments.size)), faults.made


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Writes the inputs of the benchmarks.")
    parser.add_argument("what", choices=["multi", "single", "like", "references", "findings", "findings-schema"])
    parser.add_argument("file", type=Path)
    parser.add_argument("--size", type=int, default=1_000_000, help="bytes of data, about (default: 1000000)")
    parser.add_argument("--schema", type=Path, help="schema of command files, for models of one domain and for like")
    parser.add_argument("--faults", type=float, default=0, help="share of the values that are at fault (default: 0)")
    parser.add_argument("--count", type=int, default=10_000)
    parser.add_argument("--clean", action="store_true")
    parsed = parser.parse_args()
    if parsed.what in ("single", "like") and parsed.schema is None:
        parser.error("this needs the schema")
    return parsed


def main() -> None:
    arguments = parse_arguments()
    document, faults = made(arguments)
    write(arguments.file, scale.text_of(document) + "\n", faults=faults)


if __name__ == "__main__":
    main()
