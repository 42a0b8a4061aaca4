"""The example models, and which schema object describes which of their data."""

from __future__ import annotations

import copy
import json
import sys
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any, Iterator

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

from schema_nodes import ELEMENT, Node, escaped, top, walk  # noqa: E402

__all__ = ["ELEMENT", "Node", "escaped", "walk"]

Json = Any
Steps = tuple["str | int", ...]
Operation = dict[str, Json]
Patch = tuple[Operation, ...]


@dataclass(frozen=True)
class Example:
    """A model of the examples."""

    name: str
    file: Path
    document: Json

    @property
    def is_single_domain(self) -> bool:
        return "ORVAHPC" in self.document.get("SETUP", {})


@dataclass(frozen=True)
class Spot:
    """A datum and the schema object that describes it."""

    node: Node
    where: Steps
    value: Json
    owner: "Spot | None" = field(default=None, repr=False, compare=False)

    @property
    def pointer(self) -> str:
        return pointer(self.where)

    @property
    def member_of(self) -> "Spot | None":
        """The object that has this datum as a member."""
        return self.owner if self.owner is not None and isinstance(self.owner.value, dict) else None

    @property
    def name(self) -> str:
        return str(self.where[-1])


class Schema:
    """The schema objects that describe data of their own."""

    def __init__(self, text: dict[str, Json]) -> None:
        self.text = text
        self.root = top(text)
        self.nodes = {node.pointer: node for node in walk(self.root)}

    def spots(self, document: Json) -> Iterator[Spot]:
        """All data of a document that the schema describes, outer ones first."""
        return self._below(Spot(self.root, (), document))

    def member(self, node: Node, name: str) -> "Node | None":
        """What describes a member of an object."""
        return self.nodes.get(f"{node.pointer}/properties/{escaped(name)}")

    def _below(self, spot: Spot) -> Iterator[Spot]:
        yield spot
        if isinstance(spot.value, dict):
            for name, value in spot.value.items():
                node = self.member(spot.node, name)
                if node is not None:
                    yield from self._below(Spot(node, (*spot.where, name), value, spot))
        elif isinstance(spot.value, list) and f"{spot.node.pointer}/items" in self.nodes:
            node = self.nodes[f"{spot.node.pointer}/items"]
            for index, value in enumerate(spot.value):
                yield from self._below(Spot(node, (*spot.where, index), value, spot))


def pointer(where: Steps) -> str:
    """A place as a JSON pointer; the root is empty."""
    return "".join("/" + escaped(str(step)) for step in where)


def steps_of(text: str) -> tuple[str, ...]:
    """The names in a JSON pointer."""
    return tuple(step.replace("~1", "/").replace("~0", "~") for step in text.split("/")[1:])


def patched(document: Json, patch: Patch) -> Json:
    """A changed copy; knows the operations that the mutations use."""
    changed = {"": copy.deepcopy(document)}
    for operation in patch:
        value = operation.get("value")
        if operation["op"] in ("move", "remove"):
            holder, step = _holder(changed, operation["from" if operation["op"] == "move" else "path"])
            value = holder.pop(step)
        if operation["op"] != "remove":
            holder, step = _holder(changed, operation["path"])
            holder[step] = copy.deepcopy(value)
    return changed[""]


def _holder(changed: dict[str, Json], text: str) -> tuple[Any, Any]:
    """What holds the datum at a pointer, and under which name or index."""
    holder: Any = changed
    step: Any = ""
    for name in steps_of(text):
        holder = holder[step]
        step = int(name) if isinstance(holder, list) else name
    return holder, step


def load_schema(file: Path) -> Schema:
    return Schema(json.loads(file.read_bytes()))


def load_examples(folder: Path = ROOT / "examples") -> list[Example]:
    """The examples in the order of their names."""
    files = sorted(folder.glob("*/model.json"))
    return [Example(file.parent.name, file, json.loads(file.read_bytes())) for file in files]
