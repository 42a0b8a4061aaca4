#!/usr/bin/env python3
"""Counts what the command-file schema consists of, beside what it is to reach.

    schema_figures.py [--at PATH] [--depth N] SCHEMA

The first table is that of the text. The second has a line for each block down to a depth (of the path, 3 if
not given otherwise); an outer block's line includes those of the blocks inside it. With --at the text is the schema of
the block at that path, such as /SETUP/ORVAMD/ORVASUB, and the characters are counted as they will be in the whole.
"""

from __future__ import annotations

import argparse
import json
import sys
from collections import Counter
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Iterator

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parent))

from block_tree import Block, load_tree  # noqa: E402
from schema_nodes import Node, Role, split_path, top, walk  # noqa: E402

COUNTED_KEYWORDS = ("description", "default", "units", "optional", "allOf", "const", "requiredIn")
SWITCHES = {"yes/no": {"yes", "no"}, "on/off": {"on", "off"}}


@dataclass(frozen=True)
class Target:
    """What a figure is to reach, and how far off it may be as a share of that."""

    value: int
    tolerance: float = 0.0

    def is_reached_by(self, count: int) -> bool:
        return abs(count - self.value) <= self.tolerance * self.value


def targets(tree: Block) -> dict[str, Target]:
    """The figures of the finished text, in the order in which they are shown."""
    blocks = [block for _, block in tree.walk()]
    return {
        "description": Target(1451, 0.05),
        "default": Target(411, 0.05),
        "units": Target(321, 0.05),
        "optional": Target(273, 0.05),
        "oneOf": Target(125, 0.05),
        "allOf": Target(51, 0.05),
        "const": Target(334, 0.05),
        "uri": Target(78),
        "requiredIn": Target(35),
        "yes/no": Target(35),
        "on/off": Target(26),
        "characters": Target(925_396, 0.05),
        "keys": Target(sum(len(block.keys) for block in blocks)),
        "blocks": Target(len(blocks)),
    }


def figures(node: Node, tree: Block) -> Counter[str]:
    """The figures of a node and all inside it; whatever does not occur counts 0."""
    counts: Counter[str] = Counter()
    for each in walk(node):
        counts.update(name for name in COUNTED_KEYWORDS if name in each.schema)
        counts["oneOf"] += len(each.groups())
        counts["uri"] += each.schema.get("format") == "uri"
        for name, values in SWITCHES.items():
            counts[name] += set(each.texts("enum")) == values
        counts.update(_tree_figures(each, tree))
    counts["characters"] = len(printed_at(node.schema, depth_of(node, tree)))
    return counts


def _tree_figures(node: Node, tree: Block) -> Iterator[str]:
    """Whether a node is a key or a block of the tree."""
    if node.role is not Role.PROPERTY or not node.names:
        return
    if tree.find(node.names):
        yield "blocks"
    else:
        parent = tree.find(node.names[:-1])
        if parent and node.name in parent.keys:
            yield "keys"


def depth_of(node: Node, tree: Block) -> int:
    """How deep the text of a node is nested in the whole: a member stands in "properties", a list's item in "items"."""
    outer = (tree.find(node.names[:length]) for length in range(1, len(node.names)))
    return 2 * len(node.names) + sum(block is not None and block.kind == "array" for block in outer)


def printed(schema: Any) -> str:
    """The text as the program carries it."""
    return json.dumps(schema, indent=2, ensure_ascii=True).replace("\n", "\r\n")


def printed_at(schema: Any, depth: int) -> str:
    """The text as it stands inside the whole; nothing is added before its first line."""
    return printed(schema).replace("\n", "\n" + "  " * depth)


def blocks_to_depth(node: Node, tree: Block, depth: int) -> list[Node]:
    """The nodes of blocks down to a depth, outer ones first."""
    return [
        each
        for each in walk(node)
        if each.role is Role.PROPERTY and tree.find(each.names) and len(each.names) <= depth
    ]


def total_table(counts: Counter[str], goals: dict[str, Target], is_whole: bool) -> Iterator[str]:
    for name, goal in goals.items():
        within = f" within {goal.tolerance:.0%}" if goal.tolerance else ""
        mark = "  not reached" if is_whole and not goal.is_reached_by(counts[name]) else ""
        yield f"{name:<12}{counts[name]:>9}  of {goal.value}{within}{mark}"


def block_table(nodes: list[Node], tree: Block, names: list[str]) -> Iterator[str]:
    rows = [["/".join(node.names), figures(node, tree)] for node in nodes]
    width = max((len(path) for path, _ in rows), default=0)
    yield " " * width + "".join(f"{name:>12}" for name in names)
    for path, counts in rows:
        yield f"{path:<{width}}" + "".join(f"{counts[name]:>12}" for name in names)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--at", default="", metavar="PATH", help="path of the block that the text describes")
    parser.add_argument("--depth", type=int, default=3, help="how deep the blocks are that get a line")
    parser.add_argument("schema", type=Path)
    arguments = parser.parse_args()
    tree = load_tree()
    node = top(json.loads(arguments.schema.read_text(encoding="ascii")), split_path(arguments.at))
    goals = targets(tree)
    print("\n".join(total_table(figures(node, tree), goals, not node.names)), end="\n\n")
    depth = max(arguments.depth, len(node.names) + 1)
    print("\n".join(block_table(blocks_to_depth(node, tree, depth), tree, list(goals))))
    return 0


if __name__ == "__main__":
    sys.exit(main())
