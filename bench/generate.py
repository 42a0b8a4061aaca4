#!/usr/bin/env python3
"""Writes the inputs of the benchmarks. The same arguments give the same bytes.

    generate.py schema FILE                             schema of the size and make of that of command files
    generate.py data FILE --size BYTES [--model multi|single] [--faults SHARE]
                                                        data that follow it, faulty in that share of the values
    generate.py references FILE --count N               N references into an array of N names, by the same schema
    generate.py findings FILE --count N [--clean]       N values, each of them at fault unless clean
    generate.py findings-schema FILE                    the schema of those
    generate.py --self-check                            compares the schema with what it is tuned to

Each prints what it wrote: bytes, value nodes, and the number of faults of each kind.
"""

from __future__ import annotations

import argparse
import json
import random
import sys
from pathlib import Path
from typing import Any

import model
import sample

# Items of an array in a model of many domains, where the size allows.
MOST_ITEMS = 12
# Allowed share by which the schema may differ from what it is tuned to.
TOLERANCE = 0.02


def multi_sampler(rng: random.Random, share: float, size: int) -> sample.Sampler:
    if size < sample.SMALL:
        return sample.Sampler(rng, share, lambda name: 2, block_share=0.3)
    return sample.Sampler(rng, share, lambda name: rng.randint(1, MOST_ITEMS))


def single_sampler(rng: random.Random, share: float, items: int) -> sample.Sampler:
    # Layers are the only arrays inside items of arrays; a soil has few of them.
    return sample.Sampler(rng, share, lambda name: 3 if name == "LAYER" else items, block_share=1)


def single_items(root: model.Block, seed: int, size: int) -> int:
    """How many items each array of a model of one domain needs for a size: it grows linearly with them."""
    few, many = 50, 150

    def length(items: int) -> int:
        return len(sample.text_of(sample.single_domain(root, single_sampler(random.Random(seed), 0, items))))

    return max(1, few + round((size - length(few)) * (many - few) / (length(many) - length(few))))


def make_data(arguments: argparse.Namespace) -> tuple[sample.Data, sample.Sampler]:
    root = model.make_model()
    rng = random.Random(arguments.seed)
    if arguments.model == "multi":
        sampler = multi_sampler(rng, arguments.faults, arguments.size)
        return sample.multi_domain(root, sampler, arguments.size), sampler
    sampler = single_sampler(rng, arguments.faults, single_items(root, arguments.seed, arguments.size))
    return sample.single_domain(root, sampler), sampler


def make_references(count: int, seed: int) -> sample.Data:
    """A small model of one domain with so many boundaries at so many cell strings."""
    root = model.make_model()
    setup = root.at("SETUP", "ORVAHPC")
    sampler = sample.Sampler(random.Random(seed), 0, lambda name: count if name == "STRINGDEF" else 1, 0, 0)
    domain = sampler.item(setup, 0)
    plane = domain["ORVAPLANE_2D"]
    plane["GEOMETRY"]["STRINGDEF"] = sampler.block(setup.at("ORVAPLANE_2D", "GEOMETRY", "STRINGDEF"))
    plane["GEOMETRY"]["REGIONDEF"] = sampler.block(setup.at("ORVAPLANE_2D", "GEOMETRY", "REGIONDEF"))
    boundary = setup.at("ORVAPLANE_2D", "HYDRAULICS", "BOUNDARY", "STANDARD")
    plane["HYDRAULICS"]["BOUNDARY"] = {"STANDARD": [sampler.item(boundary, index) for index in range(count)]}
    return {"SETUP": {"simulation_name": "benchmark", "ORVAHPC": domain}}


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


def make_findings(count: int, clean: bool) -> sample.Data:
    item = FINDINGS_SOUND if clean else FINDINGS_FAULTY
    return {"BOUNDARY": [item] * (count // len(item))}


def self_check(seed: int) -> int:
    """Tells where the schema is not what it is tuned to; the number of such figures."""
    counts = model.count_keywords(model.make_schema(model.make_model(), seed))
    differing = 0
    for figure, wanted in model.FIGURES.items():
        differs = abs(counts[figure] - wanted) > wanted * TOLERANCE
        differing += differs
        print(f"{figure:12} {counts[figure]:8} of {wanted:8}{'  DIFFERS' if differs else ''}")
    return differing


def write(path: Path, text: str, **facts: Any) -> None:
    data = text.encode()
    path.write_bytes(data)
    print(json.dumps({"bytes": len(data), **facts}))


def run(arguments: argparse.Namespace) -> None:
    if arguments.what == "schema":
        write(arguments.file, model.schema_text(model.make_schema(model.make_model(), arguments.seed)))
    elif arguments.what == "data":
        document, sampler = make_data(arguments)
        write(arguments.file, sample.text_of(document), value_nodes=sampler.value_nodes, faults=sampler.faults)
    elif arguments.what == "references":
        document = make_references(arguments.count, arguments.seed)
        write(arguments.file, sample.text_of(document), references=arguments.count)
    elif arguments.what == "findings":
        document = make_findings(arguments.count, arguments.clean)
        write(arguments.file, sample.text_of(document), faults={} if arguments.clean else {"all": arguments.count})
    else:
        write(arguments.file, json.dumps(FINDINGS_SCHEMA, indent=2) + "\n")


def parse_arguments(arguments: list[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Writes the inputs of the benchmarks.")
    parser.add_argument("--self-check", action="store_true", help="compare the schema with what it is tuned to")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("what", nargs="?", choices=["schema", "data", "references", "findings", "findings-schema"])
    parser.add_argument("file", nargs="?", type=Path)
    parser.add_argument("--size", type=int, default=1_000_000, help="bytes of data, about (default: 1000000)")
    parser.add_argument("--model", choices=["multi", "single"], default="multi", help="many domains, or many items")
    parser.add_argument("--faults", type=float, default=0, help="share of the values that are at fault (default: 0)")
    parser.add_argument("--count", type=int, default=10_000)
    parser.add_argument("--clean", action="store_true")
    parsed = parser.parse_args(arguments)
    if not parsed.self_check and parsed.file is None:
        parser.error("say what to write, and to which file")
    return parsed


def main() -> int:
    arguments = parse_arguments(sys.argv[1:])
    if arguments.self_check:
        return min(1, self_check(arguments.seed))
    run(arguments)
    return 0


if __name__ == "__main__":
    sys.exit(main())
