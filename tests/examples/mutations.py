"""Faults made in the example models, each with the lines that it deserves.

A kind of fault is a function from a datum to changes: what is changed, and what the rules say about it. Some changes
are no faults, and deserve nothing: a number at a limit that is not excluded, another value of an enumeration, the other
name of a choice. They keep the rules from being stricter than they are.
"""

from __future__ import annotations

import random
import re
from collections import Counter
from dataclasses import dataclass
from typing import Callable, Iterator

import oracle
from models import Example, Json, Node, Operation, Patch, Schema, Spot, patched, pointer, walk
from oracle import NOTHING, Lines, Undetermined, line

STRANGE = "of_nobody"  # a name that no schema object knows
SEED = 1
INDEX = re.compile(r"/\d+(?=[/:])")


@dataclass(frozen=True)
class Change:
    """A patch and what it deserves, but for references that lose what they refer to."""

    patch: Patch
    expected: Lines
    variation: str = ""  # tells changes of one kind to one datum apart


@dataclass(frozen=True)
class Mutant:
    """A changed example and the lines of its report."""

    kind: str
    example: Example
    node: Node
    patch: Patch
    expected: Lines

    @property
    def document(self) -> Json:
        return patched(self.example.document, self.patch)


class Lab:
    """What the kinds of faults need to know: the rules of groups, and values that fit."""

    def __init__(self, schema: Schema, examples: list[Example]) -> None:
        self.schema = schema
        self.groups = oracle.Groups()
        self.spots = {example.name: list(schema.spots(example.document)) for example in examples}
        self._samples: dict[str, Json] = {}
        for each in (spot for spots in self.spots.values() for spot in spots):
            self._samples.setdefault(each.node.pointer, each.value)
        self._arrays = {ref["$array_ref"]: ref["itemProperty"] for ref in _references(schema.root)}
        self._referring = {node.pointer for node in schema.nodes.values() if any(_references(node))}

    def sample(self, node: Node) -> Json:
        """A datum that the schema object accepts."""
        return self._samples[node.pointer] if node.pointer in self._samples else made_datum(node)

    def can_break_references(self, spot: Spot) -> bool:
        """Whether a change to a datum can take references, or what they refer to."""
        place = spot.pointer + "/"
        near = any(place.startswith(array + "/") or (array + "/").startswith(place) for array in self._arrays)
        return near or spot.node.pointer in self._referring

    def definitions(self, spot: Spot) -> list[tuple[int, str]]:
        """The elements that references can mean, each with the member that they are meant by."""
        member = self._arrays.get(spot.pointer)
        return [(index, member) for index in range(len(spot.value))] if member is not None else []

    def around(self, spot: Spot, **members: Json) -> Lines:
        """What the groups of the object around a member find when members are set, or left out where None."""
        owner = spot.member_of
        if owner is None:
            return NOTHING
        return self.inside(owner, **members)

    def inside(self, owner: Spot, **members: Json) -> Lines:
        """What the groups of an object find when members are set, or left out where None."""
        changed = {name: value for name, value in {**owner.value, **members}.items() if value is not None}
        return self.groups.findings(owner.node, owner.where, changed)


def _references(node: Node) -> Iterator[dict[str, str]]:
    return (each.schema["requiredIn"] for each in walk(node) if "requiredIn" in each.schema)


def made_datum(node: Node) -> Json:
    """A datum that a schema object without members accepts."""
    schema = node.schema
    if "default" in schema:
        return schema["default"]
    if "enum" in schema:
        return schema["enum"][0]
    if schema["type"] in ("number", "integer"):
        return _made_number(node)
    return {"string": "series.txt", "boolean": True, "array": []}[schema["type"]]


def _made_number(node: Node) -> int:
    """Whole, so that it suits both types."""
    least, most = node.schema.get("minimum"), node.schema.get("maximum")
    if least is not None:
        return int(least) + 1
    return int(most) - 1 if most is not None else 1


def set_to(spot: Spot, value: Json) -> Operation:
    return {"op": "replace", "path": spot.pointer, "value": value}


def removal(spot: Spot) -> Operation:
    return {"op": "remove", "path": spot.pointer}


def addition(owner: Spot, name: str, value: Json) -> Operation:
    return {"op": "add", "path": pointer((*owner.where, name)), "value": value}


def absent(lab: Lab, spot: Spot) -> Lines:
    """What a member deserves that is not there."""
    owner = spot.member_of
    assert owner is not None
    required = spot.name in owner.node.texts("required")
    own = frozenset({line(spot.where, oracle.MISSING)}) if required else NOTHING
    return own | lab.around(spot, **{spot.name: None})


def is_selector(lab: Lab, spot: Spot) -> bool:
    """Whether alternatives fix a member."""
    owner = spot.member_of
    return owner is not None and any(
        spot.name in oracle.consts(each) for group in owner.node.groups_below() for each in group.alternatives
    )


def put(lab: Lab, spot: Spot, value: Json, own: Lines = NOTHING, variation: str = "") -> Change:
    """A datum replaced, with what it deserves itself and what the groups around it then find."""
    if is_selector(lab, spot):
        own = own | lab.around(spot, **{spot.name: value if value is not None else [None]})  # null is a member, too
    return Change((set_to(spot, value),), own, variation)


def removed(lab: Lab, spot: Spot) -> Iterator[Change]:
    if spot.member_of is not None:
        yield Change((removal(spot),), absent(lab, spot))


def renamed(lab: Lab, spot: Spot) -> Iterator[Change]:
    if spot.member_of is None:
        return
    where = (*spot.where[:-1], f"{spot.name}_{STRANGE}")
    unused = frozenset({line(where, oracle.UNUSED)}) | oracle.unused_members(where, spot.value)
    move = {"op": "move", "from": spot.pointer, "path": pointer(where)}
    yield Change((move,), absent(lab, spot) | unused)


def surplus(lab: Lab, spot: Spot) -> Iterator[Change]:
    if isinstance(spot.value, dict):
        where = (*spot.where, STRANGE)
        inner = {"lost": 1, "LOST": {"below": 2}}
        unused = frozenset({line(where, oracle.UNUSED)}) | oracle.unused_members(where, inner)
        yield Change((addition(spot, STRANGE, inner),), unused)


def wrong_type(lab: Lab, spot: Spot) -> Iterator[Change]:
    others: dict[str, list[Json]] = {
        "string": [1.5, True],
        "number": ["1.5", False],
        "integer": ["1"],
        "boolean": ["true", 1],
        "object": ["text", 7],
        "array": ["text", 7],
    }
    values = list(others[spot.node.schema["type"]])
    if spot.node.schema["type"] == "integer":
        values.append(float(spot.value))  # 3.0 is no integer, and as far within the limits as 3 is
    for value in values:
        yield put(lab, spot, value, oracle.wrong_kind(spot.node, spot.where), variation=type(value).__name__)


def null(lab: Lab, spot: Spot) -> Iterator[Change]:
    yield put(lab, spot, None, oracle.wrong_kind(spot.node, spot.where))


def object_instead(lab: Lab, spot: Spot) -> Iterator[Change]:
    if spot.node.schema["type"] != "object":
        value = {"inner": 1}
        own = oracle.wrong_kind(spot.node, spot.where) | oracle.unused_members(spot.where, value)
        yield put(lab, spot, value, own)


def array_instead(lab: Lab, spot: Spot) -> Iterator[Change]:
    if spot.node.schema["type"] != "array":
        yield put(lab, spot, [spot.value], oracle.wrong_kind(spot.node, spot.where))


def beyond_limit(lab: Lab, spot: Spot) -> Iterator[Change]:
    for keyword, sign in (("minimum", -1), ("maximum", 1)):
        if keyword not in spot.node.schema:
            continue
        limit = spot.node.schema[keyword]
        own = frozenset({line(spot.where, oracle.limit_mismatch(spot.node, keyword))})
        for step in (1,) if spot.node.schema["type"] == "integer" else (abs(limit) * 1e-9 or 1e-300, 1000.5):
            yield put(lab, spot, limit + sign * step, own, variation=f"{keyword} {step}")


def at_limit(lab: Lab, spot: Spot) -> Iterator[Change]:
    for keyword in ("minimum", "maximum"):
        if keyword not in spot.node.schema:
            continue
        excluded = spot.node.schema.get("exclusive" + keyword.capitalize(), False)
        own = frozenset({line(spot.where, oracle.limit_mismatch(spot.node, keyword))}) if excluded else NOTHING
        yield put(lab, spot, spot.node.schema[keyword], own, variation=keyword)


def misspelt(lab: Lab, spot: Spot) -> Iterator[Change]:
    if "enum" not in spot.node.schema:
        return
    own = frozenset({line(spot.where, oracle.enum_mismatch(spot.node))})
    for value in (spot.value + "_", spot.value.swapcase(), ""):
        if value not in spot.node.schema["enum"]:
            yield put(lab, spot, value, own, variation="empty" if not value else value[-1:])


def other_value(lab: Lab, spot: Spot) -> Iterator[Change]:
    """Another value of an enumeration: another variant, where it is a selector."""
    for value in spot.node.schema.get("enum", []):
        if value != spot.value:
            yield put(lab, spot, value, variation=value)


def choices(lab: Lab, spot: Spot) -> Iterator[tuple[Spot, str, Node, str]]:
    """The choices between names that an object makes: the member it has, another one, its node, the group."""
    if not isinstance(spot.value, dict):
        return
    for group in lab.groups.reached(spot.node, spot.value):
        present = [name for name in group.names if name in spot.value] if group.is_choice else []
        for name in present:
            own = lab.schema.member(spot.node, name)
            assert own is not None
            for other in group.names:
                node = lab.schema.member(spot.node, other)
                if other != name and node is not None:
                    yield Spot(own, (*spot.where, name), spot.value[name], spot), other, node, group.pointer


def both_of_choice(lab: Lab, spot: Spot) -> Iterator[Change]:
    for _, other, node, group in choices(lab, spot):
        value = lab.sample(node)
        yield Change((addition(spot, other, value),), lab.inside(spot, **{other: value}), f"{group} {other}")


def none_of_choice(lab: Lab, spot: Spot) -> Iterator[Change]:
    for given, _, _, group in choices(lab, spot):
        yield Change((removal(given),), absent(lab, given), group)


def other_of_choice(lab: Lab, spot: Spot) -> Iterator[Change]:
    for given, other, node, group in choices(lab, spot):
        value = lab.sample(node)
        required = given.name in spot.node.texts("required")
        own = frozenset({line(given.where, oracle.MISSING)}) if required else NOTHING
        found = own | lab.inside(spot, **{given.name: None, other: value})
        yield Change((removal(given), addition(spot, other, value)), found, f"{group} {other}")


def reference_nowhere(lab: Lab, spot: Spot) -> Iterator[Change]:
    """What the reference deserves is told with all the others that lead nowhere."""
    if "requiredIn" in spot.node.schema:
        for value in (spot.value + "_", ""):
            yield Change((set_to(spot, value),), NOTHING, "empty" if not value else "")


def definition_removed(lab: Lab, spot: Spot) -> Iterator[Change]:
    for index, _ in lab.definitions(spot):
        yield Change(({"op": "remove", "path": pointer((*spot.where, index))},), NOTHING, str(index))


def definition_renamed(lab: Lab, spot: Spot) -> Iterator[Change]:
    for index, member in lab.definitions(spot):
        path = pointer((*spot.where, index, member))
        value = spot.value[index][member] + "_"
        yield Change(({"op": "replace", "path": path, "value": value},), NOTHING, str(index))


Kind = Callable[[Lab, Spot], Iterator[Change]]
KINDS: tuple[Kind, ...] = (
    removed,
    renamed,
    surplus,
    wrong_type,
    null,
    object_instead,
    array_instead,
    beyond_limit,
    at_limit,
    misspelt,
    other_value,
    both_of_choice,
    none_of_choice,
    other_of_choice,
    reference_nowhere,
    definition_removed,
    definition_renamed,
)


class Mutation:
    """All mutants of some examples, the same for the same seed.

    Of the data that one schema object describes, alike in the variants that they and the objects around them are, one
    is taken. So each schema object that the examples reach is there, in each variant.
    """

    def __init__(self, schema: Schema, examples: list[Example], seed: int = SEED) -> None:
        self._lab = Lab(schema, examples)
        self._examples = {example.name: example for example in examples}
        self._order = random.Random(seed)
        self.left_out: Counter[str] = Counter()

    def mutants(self) -> Iterator[Mutant]:
        made: set[tuple[str, ...]] = set()
        for example, spot in self.places():
            for kind in KINDS:
                for change in self._changes(kind, spot):
                    own = self._own(example.name, spot)
                    key = (spot.node.pointer, own, kind.__name__, change.variation, *self._alike(change))
                    if key not in made:
                        made.add(key)
                        yield self._mutant(kind, example, spot, change)

    def places(self) -> list[tuple[Example, Spot]]:
        """One datum of each schema object in each variant, taken at random."""
        spots = [(name, spot) for name, all_spots in self._lab.spots.items() for spot in all_spots]
        self._order.shuffle(spots)
        chosen: dict[tuple[str, ...], tuple[Example, Spot]] = {}
        for name, spot in spots:
            key = (spot.node.pointer, self._own(name, spot), *self.variants(spot))
            if key not in chosen:
                chosen[key] = (self._examples[name], spot)
        return list(chosen.values())

    def _own(self, example: str, spot: Spot) -> str:
        """Definitions are taken from each example, since what a fault in them deserves is all around them."""
        return example if self._lab.definitions(spot) else ""

    def variants(self, spot: Spot) -> tuple[str, ...]:
        """The alternatives that a datum and the object around it have chosen."""
        objects = [each for each in (spot, spot.member_of) if each is not None and isinstance(each.value, dict)]
        meant = [
            group.meant(each.value) for each in objects for group in self._lab.groups.reached(each.node, each.value)
        ]
        return tuple(each.pointer for each in meant if each is not None)

    @staticmethod
    def _alike(change: Change) -> tuple[str, ...]:
        """What a change deserves, without the places in arrays."""
        return tuple(sorted(INDEX.sub("/*", each) for each in change.expected))

    def _changes(self, kind: Kind, spot: Spot) -> Iterator[Change]:
        try:
            yield from kind(self._lab, spot)
        except Undetermined:
            self.left_out[kind.__name__] += 1

    def _mutant(self, kind: Kind, example: Example, spot: Spot, change: Change) -> Mutant:
        expected = change.expected
        if self._lab.can_break_references(spot):
            changed = patched(example.document, change.patch)
            expected = expected | oracle.dangling(self._lab.schema, changed)
        return Mutant(kind.__name__, example, spot.node, change.patch, expected)


def describe(mutant: Mutant) -> str:
    return f"{mutant.kind} in {mutant.example.name}: {list(mutant.patch)}"

