"""The schema objects of a schema of the command file, each with its places in the schema and in the data."""

from __future__ import annotations

import enum
from dataclasses import dataclass, field
from typing import Any, Iterator

ELEMENT = "*"


class Role(enum.Enum):
    """What a schema object is for."""

    ROOT = "the whole text"
    PROPERTY = "a member of an object"
    ITEMS = "the elements of an array"
    ALTERNATIVE = "one of a group of alternatives"
    FIX = "a member as an alternative fixes it"


@dataclass(frozen=True)
class Group:
    """Alternatives of which one must fit: a oneOf, alone or inside an allOf."""

    pointer: str
    alternatives: tuple["Node", ...]


@dataclass(frozen=True)
class Node:
    """A schema object."""

    schema: dict[str, Any]
    pointer: str
    path: tuple[str, ...]  # in the data; ELEMENT stands for the elements of an array
    role: Role
    parent: "Node | None" = field(default=None, repr=False, compare=False)

    @property
    def name(self) -> str:
        """The member's name; that of the array for its elements."""
        return next((step for step in reversed(self.path) if step != ELEMENT), "")

    @property
    def names(self) -> tuple[str, ...]:
        """The path without the steps from arrays to their elements."""
        return tuple(step for step in self.path if step != ELEMENT)

    @property
    def type(self) -> Any:
        return self.schema.get("type")

    @property
    def is_whole(self) -> bool:
        """Whether this describes a datum of its own, and is not a part of another node's description."""
        return self.role not in (Role.ALTERNATIVE, Role.FIX)

    def texts(self, keyword: str) -> list[str]:
        """A list of texts, without what is no text."""
        value = self.schema.get(keyword)
        return [each for each in value if isinstance(each, str)] if isinstance(value, list) else []

    def properties(self) -> dict[str, Any]:
        value = self.schema.get("properties")
        return value if isinstance(value, dict) else {}

    def description(self) -> str:
        value = self.schema.get("description")
        return value if isinstance(value, str) else ""

    def groups(self) -> list[Group]:
        """The groups that stand in this object itself."""
        found = self._group("/oneOf", self.schema.get("oneOf"))
        conjuncts = self.schema.get("allOf")
        for index, conjunct in enumerate(conjuncts if isinstance(conjuncts, list) else []):
            if isinstance(conjunct, dict):
                found += self._group(f"/allOf/{index}/oneOf", conjunct.get("oneOf"))
        return found

    def groups_below(self) -> Iterator[Group]:
        """The groups of this object and those inside their alternatives, outer ones first."""
        for group in self.groups():
            yield group
            for alternative in group.alternatives:
                yield from alternative.groups_below()

    def _group(self, step: str, alternatives: Any) -> list[Group]:
        if not isinstance(alternatives, list):
            return []
        pointer = self.pointer + step
        nodes = (
            Node(each, f"{pointer}/{index}", self.path, Role.ALTERNATIVE, self)
            for index, each in enumerate(alternatives)
            if isinstance(each, dict)
        )
        return [Group(pointer, tuple(nodes))]

    def inner(self) -> Iterator["Node"]:
        """The schema objects directly inside this one."""
        role = Role.FIX if self.role in (Role.ALTERNATIVE, Role.FIX) else Role.PROPERTY
        for name, schema in self.properties().items():
            if isinstance(schema, dict):
                yield Node(schema, f"{self.pointer}/properties/{escaped(name)}", (*self.path, name), role, self)
        items = self.schema.get("items")
        if isinstance(items, dict):
            yield Node(items, f"{self.pointer}/items", (*self.path, ELEMENT), Role.ITEMS, self)
        for group in self.groups():
            yield from group.alternatives


def escaped(name: str) -> str:
    """A name as a step of a JSON pointer."""
    return name.replace("~", "~0").replace("/", "~1")


def walk(node: Node) -> Iterator[Node]:
    """A schema object and all that are inside it."""
    yield node
    for inner in node.inner():
        yield from walk(inner)


def top(schema: dict[str, Any], at: tuple[str, ...] = ()) -> Node:
    """The outermost node of a text that describes the block at a path of the data."""
    return Node(schema, "", at, Role.PROPERTY if at else Role.ROOT)


def split_path(text: str) -> tuple[str, ...]:
    """The names in a path such as /SETUP/ORVAMD."""
    return tuple(part for part in text.split("/") if part)
