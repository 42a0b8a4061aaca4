"""The tree of the command file's blocks: names, kinds, which are required, keys in their order."""

from __future__ import annotations

import json
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Iterator

BLOCK_TREE_FILE = Path(__file__).resolve().parents[1] / "tests" / "data" / "block_tree.json"


@dataclass(frozen=True)
class Block:
    """A block or, of the kinds value and array_value, a value that is written in capitals."""

    name: str
    kind: str  # object, array, value, array_value
    required: bool
    keys: tuple[str, ...]
    blocks: tuple["Block", ...]

    @property
    def holds_members(self) -> bool:
        return self.kind in ("object", "array")

    @property
    def members(self) -> tuple[str, ...]:
        """All names in their order."""
        return (*self.keys, *(block.name for block in self.blocks))

    def child(self, name: str) -> "Block | None":
        return next((block for block in self.blocks if block.name == name), None)

    def find(self, names: tuple[str, ...]) -> "Block | None":
        """The block at a path."""
        found: Block | None = self
        for name in names:
            found = found.child(name) if found else None
        return found

    def walk(self, above: tuple[str, ...] = ()) -> Iterator[tuple[tuple[str, ...], "Block"]]:
        """All blocks below, with their paths."""
        for block in self.blocks:
            path = (*above, block.name)
            yield path, block
            yield from block.walk(path)


def make_block(tree: dict[str, Any]) -> Block:
    return Block(
        tree["name"],
        tree["kind"],
        tree["required"],
        tuple(tree.get("keys", ())),
        tuple(make_block(inner) for inner in tree.get("blocks", ())),
    )


def load_tree(file: Path = BLOCK_TREE_FILE) -> Block:
    """The document itself, as a block that holds the outermost one."""
    outermost = make_block(json.loads(file.read_text(encoding="utf-8")))
    return Block("", "object", True, (), (outermost,))
