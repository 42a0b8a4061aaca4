"""What a fault deserves: the lines of the report, said by the rules of the dialect keyword by keyword.

This is no validator. It starts from data in which nothing is found and tells what one change adds. Groups of
alternatives are those of the command file: either each alternative fixes the same selectors, or each requires a single
name and says no more. For any other group the outcome is `Undetermined`.
"""

from __future__ import annotations

from dataclasses import dataclass
from functools import cached_property
from typing import Any, Iterable, Iterator

from models import Json, Node, Schema, Steps, pointer

UNUSED = "Warning: The value of this item will not be used."
MISSING = "Error: This item is required but missing."
INVALID = "Error: This item is invalid."
TYPE_PHRASES = {
    "integer": "an integer",
    "number": "a number",
    "string": "a string",
    "object": "an object",
    "array": "an array",
    "boolean": "of a different type",
}

Lines = frozenset[str]
NOTHING: Lines = frozenset()


class Undetermined(Exception):
    """A group of alternatives whose outcome the rules for the usual groups do not tell."""


def line(where: Steps, message: str) -> str:
    return f"{pointer(where) or '/'}: {message}"


def listed(names: Iterable[str]) -> str:
    return ", ".join(f"'{name}'" for name in names)


def type_mismatch(node: Node) -> str:
    return f"Error: This value must be {TYPE_PHRASES[node.schema['type']]}."


def enum_mismatch(node: Node) -> str:
    return f"Error: This value must be equal to one of the following: {listed(node.schema['enum'])}."


def reference_mismatch(node: Node) -> str:
    reference = node.schema["requiredIn"]
    return f"Error: This value must match a '{reference['itemProperty']}' in '{reference['$array_ref']}'."


def limit_mismatch(node: Node, keyword: str) -> str:
    """For a number beyond a limit, or at one that is excluded."""
    excluded = node.schema.get("exclusive" + keyword.capitalize(), False)
    side = "greater" if keyword == "minimum" else "less"
    relation = f"{side} than" if excluded else f"{side} than or equal to"
    return f"Error: This value must be {relation} {float(node.schema[keyword]):f}."


def both_given(first: str, second: str) -> str:
    return f"Error: Only one of the following two items is allowed: {listed([first, second])}."


def none_given(names: Iterable[str]) -> str:
    return f"Error: One of the following items must be provided: {listed(names)}."


def wrong_kind(node: Node, where: Steps) -> Lines:
    """For a datum of a wrong type that is no object: each keyword that looks at it speaks."""
    found = {line(where, type_mismatch(node))}
    if "enum" in node.schema:
        found.add(line(where, enum_mismatch(node)))
    if "requiredIn" in node.schema:
        found.add(line(where, reference_mismatch(node)))
    return frozenset(found)


def unused_members(where: Steps, value: Json) -> Lines:
    """The members of an object in which nothing is described."""
    names = value if isinstance(value, dict) else ()
    return frozenset(line((*where, name), UNUSED) for name in names)


def missing_members(node: Node, where: Steps, members: dict[str, Json]) -> Lines:
    return frozenset(line((*where, name), MISSING) for name in node.texts("required") if name not in members)


@dataclass(frozen=True)
class Alternatives:
    """A group and what its alternatives fix."""

    pointer: str
    nodes: tuple[Node, ...]

    @cached_property
    def selectors(self) -> tuple[str, ...]:
        """What every alternative fixes."""
        fixed = [consts(each) for each in self.nodes]
        return tuple(name for name in fixed[0] if all(name in each for each in fixed)) if fixed else ()

    @cached_property
    def is_choice(self) -> bool:
        """Whether nothing is fixed: a choice between names."""
        return not any(consts(each) for each in self.nodes)

    @cached_property
    def names(self) -> tuple[str, ...]:
        """What the alternatives require, in their order."""
        return tuple(dict.fromkeys(name for node in self.nodes for name in node.texts("required")))

    @cached_property
    def is_usual(self) -> bool:
        """Whether this is one of the shapes for which the rules are told here."""
        if self.selectors:
            require_all = all(set(self.selectors) <= set(each.texts("required")) for each in self.nodes)
            return require_all and all(len(consts(each)) == len(each.properties()) for each in self.nodes)
        single = all(len(each.texts("required")) == 1 for each in self.nodes)
        bare = all(set(each.schema) <= {"required", "optional", "description"} for each in self.nodes)
        return single and bare and len(self.names) == len(self.nodes) > 0

    def candidates(self, members: dict[str, Json]) -> list[Node]:
        """The alternatives with the selectors of the data."""
        return [each for each in self.nodes if all(members.get(name) == consts(each)[name] for name in self.selectors)]

    def meant(self, members: dict[str, Json]) -> Node | None:
        """The variant that data without fault have chosen; none in a choice between names."""
        if self.is_choice:
            return None
        fixed = [each for each in self.nodes if consts(each).items() <= texts_of(members).items()]
        fixed = [each for each in fixed if set(each.texts("required")) <= members.keys()]
        return fixed[0] if len(fixed) == 1 else None


def texts_of(members: dict[str, Json]) -> dict[str, str]:
    return {name: value for name, value in members.items() if isinstance(value, str)}


def consts(alternative: Node) -> dict[str, str]:
    """What an alternative fixes and says no more about."""
    fixes = {name: fix for name, fix in alternative.properties().items() if isinstance(fix, dict)}
    return {name: fix["const"] for name, fix in fixes.items() if list(fix) == ["const"]}


class Groups:
    """The groups of a schema, each looked at once."""

    def __init__(self) -> None:
        self._known: dict[str, tuple[Alternatives, ...]] = {}

    def of(self, node: Node) -> tuple[Alternatives, ...]:
        """The groups that stand in a schema object itself."""
        if node.pointer not in self._known:
            groups = node.groups()
            self._known[node.pointer] = tuple(Alternatives(each.pointer, each.alternatives) for each in groups)
        return self._known[node.pointer]

    def below(self, node: Node) -> Iterator[Alternatives]:
        """The groups of a schema object and those inside their alternatives."""
        for group in self.of(node):
            yield group
            for alternative in group.nodes:
                yield from self.below(alternative)

    def reached(self, node: Node, members: dict[str, Json]) -> Iterator[Alternatives]:
        """The groups of an object without fault and, in turn, those inside the variants that it has chosen."""
        for group in self.of(node):
            yield group
            meant = group.meant(members)
            if meant is not None:
                yield from self.reached(meant, members)

    def findings(self, node: Node, where: Steps, members: dict[str, Json]) -> Lines:
        """What the groups of an object find in its members."""
        found: set[str] = set()
        for group in self.of(node):
            if not group.is_usual:
                raise Undetermined(group.pointer)
            found |= self._choice(group, where, members) if group.is_choice else self._variant(group, where, members)
        return frozenset(found)

    def _variant(self, group: Alternatives, where: Steps, members: dict[str, Json]) -> Lines:
        """Selectors tell which alternative is meant: what it finds is found. Else they themselves are at fault."""
        candidates = group.candidates(members)
        if not candidates:
            absent = [name for name in group.selectors if name not in members]
            return frozenset(line((*where, name), MISSING) for name in absent) or frozenset({line(where, INVALID)})
        outcomes = [self._alternative(each, where, members) for each in candidates]
        return outcomes[0] if len(outcomes) == 1 else self._several(group, candidates, where, outcomes)

    def _alternative(self, node: Node, where: Steps, members: dict[str, Json]) -> Lines:
        found = missing_members(node, where, members) | self.findings(node, where, members)
        for name, value in consts(node).items():
            if name in members and members[name] != value:
                found |= {line((*where, name), f"Error: This value must be equal to '{value}'.")}
        return found

    @staticmethod
    def _several(group: Alternatives, candidates: list[Node], where: Steps, outcomes: list[Lines]) -> Lines:
        """With the same selectors and the same names required, only what is found by all is certain."""
        fitting = outcomes.count(NOTHING)
        if fitting == 1:
            return NOTHING
        if fitting > 1 or len({frozenset(each.texts("required")) for each in candidates}) > 1:
            raise Undetermined(group.pointer)
        return frozenset.intersection(*outcomes) or frozenset({line(where, INVALID)})

    @staticmethod
    def _choice(group: Alternatives, where: Steps, members: dict[str, Json]) -> Lines:
        """Of the names of a choice one must be there, and no more."""
        present = [name for name in group.names if name in members]
        if len(present) == 1:
            return NOTHING
        return frozenset({line(where, both_given(*present[:2]) if present else none_given(group.names))})


def dangling(schema: Schema, document: Any) -> Lines:
    """The references of a document that lead nowhere."""
    found = set()
    for spot in schema.spots(document):
        reference = spot.node.schema.get("requiredIn")
        if reference is not None and spot.value not in defined_names(document, reference):
            found.add(line(spot.where, reference_mismatch(spot.node)))
    return frozenset(found)


def defined_names(document: Any, reference: dict[str, str]) -> list[str]:
    """The names that a reference can mean: nothing where there is no array."""
    target = document
    for name in reference["$array_ref"].split("/")[1:]:
        target = target.get(name) if isinstance(target, dict) else None
    elements = target if isinstance(target, list) else []
    names = [each.get(reference["itemProperty"]) for each in elements if isinstance(each, dict)]
    return [name for name in names if isinstance(name, str)]
