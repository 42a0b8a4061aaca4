"""What of the command file's format no example uses."""

from __future__ import annotations

from typing import Iterator

from models import Example, Json, Node, Schema, Spot
from oracle import Alternatives, Groups, consts

from block_tree import Block

Path = tuple[str, ...]


def all_keys(tree: Block) -> list[Path]:
    """The keys of the format, and the values that are written in capitals."""
    keys = [(*path, key) for path, block in tree.walk() for key in block.keys]
    return keys + [path for path, block in tree.walk() if not block.holds_members]


def used_paths(value: Json, path: Path = ()) -> Iterator[Path]:
    """The paths of all members, without the steps into arrays."""
    for each in value if isinstance(value, list) else ():
        yield from used_paths(each, path)
    for name, each in value.items() if isinstance(value, dict) else ():
        yield (*path, name)
        yield from used_paths(each, (*path, name))


class Usage:
    """What the examples use."""

    def __init__(self, schema: Schema, examples: list[Example]) -> None:
        self._schema = schema
        self._groups = Groups()
        self._paths = {path for example in examples for path in used_paths(example.document)}
        spots = [spot for example in examples for spot in schema.spots(example.document)]
        self._variants = {variant for spot in spots for variant in self._variants_of(spot)}
        self._members = {(spot.node.pointer, name) for spot in spots for name in members_of(spot)}
        self._values = {(spot.node.pointer, spot.value) for spot in spots if isinstance(spot.value, str)}

    def keys(self, tree: Block) -> tuple[int, list[str]]:
        """How many keys there are, and those that no example uses."""
        keys = all_keys(tree)
        return len(keys), ["/" + "/".join(key) for key in keys if key not in self._paths]

    def variants(self) -> tuple[int, list[str]]:
        """Alternatives that selectors choose."""
        found = [each for owner in self._owners() for group in self._groups.below(owner) for each in named(group)]
        return len(found), [name for pointer, name in found if pointer not in self._variants]

    def choices(self) -> tuple[int, list[str]]:
        """Names of which one is to be given, such as a value or its file."""
        found = dict.fromkeys(
            (owner.pointer, name)
            for owner in self._owners()
            for group in self._groups.below(owner)
            if group.is_choice
            for name in group.names
        )
        return len(found), [f"{owner}: {name}" for owner, name in found if (owner, name) not in self._members]

    def values(self) -> tuple[int, list[str]]:
        """Values of enumerations."""
        nodes = [node for node in self._schema.nodes.values() if node.is_whole]
        found = [(node.pointer, value) for node in nodes for value in node.texts("enum")]
        return len(found), [f"{pointer}: {value}" for pointer, value in found if (pointer, value) not in self._values]

    def _owners(self) -> list[Node]:
        return [node for node in self._schema.nodes.values() if node.is_whole and node.groups()]

    def _variants_of(self, spot: Spot) -> Iterator[str]:
        if isinstance(spot.value, dict):
            for group in self._groups.reached(spot.node, spot.value):
                meant = group.meant(spot.value)
                if meant is not None:
                    yield meant.pointer


def members_of(spot: Spot) -> list[str]:
    return list(spot.value) if isinstance(spot.value, dict) else []


def named(group: Alternatives) -> list[tuple[str, str]]:
    """The variants of a group: the place of each, and the place with what it fixes."""
    variants = () if group.is_choice else group.nodes
    return [(each.pointer, f"{each.pointer}: {' '.join(consts(each).values())}") for each in variants]
