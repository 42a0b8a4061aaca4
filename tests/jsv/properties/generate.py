"""Seeded generator of schemas of the dialect without faults, and of data that these schemas steer.

A schema is grown kind by kind (objects with groups, strings, numbers, arrays, anything). A datum is made from the
schemas that apply to it: one alternative of each group is taken for right, what these schemas demand is put together,
and the result is spoilt as often as the mood of the datum says. So a good share of the data fits, and the rest fails
in one or two places rather than everywhere. A fifth of the schemas is small, with data in a worse mood: they look at
values closely.

What the pairs leave out on purpose, since the report is ambiguous there: the empty member name (its location reads as
the root's), texts with line feeds or "', '", limits that print alike but differ, and negative zero. Integers stay
within 2^53, where a double holds them all.
"""

from __future__ import annotations

import random
from dataclasses import dataclass, field
from typing import Any, Iterator

Schema = Any
Datum = Any

NAMES = ("a", "b", "c", "kind", "mode", "name", "list", "d~e", "f/g", "größe", "10", "2", "type", "items")
UNKNOWN_NAMES = ("zz", "~1", "x y", "a_", "Ω", "3")
WORDS = ("on", "off", "uniform", "n1", "n2", "n3", "it's", "größe", "", "2", "10", "true")
LOOKALIKES = {"2": 2, "10": 10, "true": True, "": None}
DEFINED = ("n1", "n2", "n3")
LIMITS = (-1000, -2, -0.5, 0, 0.25, 1, 1.5, 3, 9.81, 10, 1000, 2**53)
POINTERS = ("/list",) * 4 + ("/a", "/f~1g", "/d~0e/0", "/list/0", "/list/name", "/nowhere", "/10/2", "")
TYPES = ("object", "string", "number", "integer", "array", "boolean")
DATA_PER_SCHEMA = 4
MOODS = (0.0, 0.0, 0.02, 0.05, 0.15)
SMALL_MOODS = (0.0, 0.2, 0.5)


@dataclass(frozen=True)
class Pair:
    """A schema, a datum, and the number that, with the seed, makes them again."""

    number: int
    schema: Schema
    datum: Datum


def pairs(seed: int, count: int) -> Iterator[Pair]:
    """The first `count` pairs of a seed."""
    for first in range(0, count, DATA_PER_SCHEMA):
        rng = random.Random(f"{seed}/{first}")
        small = rng.random() < 0.2
        schema = SchemaMaker(rng).schema(1) if small else SchemaMaker(rng).root()
        for number in range(first, min(first + DATA_PER_SCHEMA, count)):
            mood = rng.choice(SMALL_MOODS if small else MOODS)
            yield Pair(number, schema, DataMaker(rng, mood).root(schema))


class SchemaMaker:
    """Grows one schema."""

    def __init__(self, rng: random.Random) -> None:
        self._rng = rng
        self._with_references = self._often(0.3)
        self._with_groups = self._often(0.75)

    def root(self) -> Schema:
        node = self._object(3)
        if self._with_references and self._often(0.8):
            node.setdefault("properties", {})["list"] = self._definitions()
        return self._finish(node, 3)

    def schema(self, depth: int) -> Schema:
        if self._often(0.04):
            return self._often(0.5)
        makers = [self._string, self._string, self._number, self._number, self._boolean, self._anything]
        if depth > 0:
            makers += [self._object, self._object, self._object, self._array]
        return self._finish(self._rng.choice(makers)(depth), depth)

    def _often(self, share: float) -> bool:
        return self._rng.random() < share

    def _some(self, things: tuple[str, ...] | list[str], most: int, least: int = 0) -> list[str]:
        count = min(len(things), self._rng.randint(least, most))
        return self._rng.sample(list(things), count)

    def _finish(self, node: dict[str, Any], depth: int) -> dict[str, Any]:
        """Adds what any schema may carry: notes, and now and then keywords of another type."""
        for name, value in self._notes().items():
            node.setdefault(name, value)
        if self._often(0.06):
            strangers = self._rng.choice([self._limits(), {"const": "on"}, {"enum": self._some(WORDS, 3)}])
            for name, value in strangers.items():
                node.setdefault(name, value)
        if self._often(0.04):
            node.setdefault("required", self._some(NAMES, 2))
        if depth > 0 and self._often(0.03):
            node.setdefault("items", self.schema(depth - 1))
        if depth > 0 and self._with_groups and self._often(0.05):
            node.setdefault("oneOf", self._value_group(depth))
        self._repair_switches(node)
        return node

    @staticmethod
    def _repair_switches(node: dict[str, Any]) -> None:
        """A switch may be anything, unless its limit stands beside it."""
        for limit in ("minimum", "maximum"):
            switch = "exclusive" + limit.capitalize()
            if limit in node and switch in node:
                node[switch] = bool(node[switch])

    def _notes(self) -> dict[str, Any]:
        notes = {
            "description": "What this is.",
            "units": "m<sup>3</sup>/s",
            "default": self._rng.choice([1, 9.81, "RUNFILE", True]),
            "autoexpand": self._often(0.5),
            "format": "uri",
            "$schema": self._rng.choice(["dialect", 1, None, {"a": [1, {}]}]),
            "exclusiveMinimum": self._rng.choice([True, 1, "a", None]),
            "exclusiveMaximum": self._rng.choice([False, 0, {}, []]),
        }
        return {name: value for name, value in notes.items() if self._often(0.06)}

    def _anything(self, depth: int) -> dict[str, Any]:
        return {"type": self._rng.choice(TYPES)} if self._often(0.4) else {}

    def _boolean(self, depth: int) -> dict[str, Any]:
        return {"type": "boolean"}

    def _string(self, depth: int) -> dict[str, Any]:
        node: dict[str, Any] = {"type": "string"} if self._often(0.7) else {}
        if self._with_references and self._often(0.5):
            node["requiredIn"] = {
                "itemProperty": self._rng.choice(("name", "name", "a")),
                "$array_ref": self._rng.choice(POINTERS),
            }
            return node
        if self._often(0.3):
            node["const"] = self._rng.choice(WORDS)
        if self._often(0.4):
            node["enum"] = self._some(WORDS, 4, 0 if self._often(0.1) else 1)
        return node

    def _number(self, depth: int) -> dict[str, Any]:
        node: dict[str, Any] = {"type": self._rng.choice(("number", "integer"))} if self._often(0.8) else {}
        return {**node, **self._limits()}

    def _limits(self) -> dict[str, Any]:
        low, high = sorted(self._rng.sample(LIMITS, 2))
        node: dict[str, Any] = {}
        if self._often(0.7):
            node["minimum"] = low
        if self._often(0.5):
            node["maximum"] = high
        for switch in ("exclusiveMinimum", "exclusiveMaximum"):
            if self._often(0.4):
                node[switch] = self._often(0.7)
        return node

    def _array(self, depth: int) -> dict[str, Any]:
        node: dict[str, Any] = {"type": "array"} if self._often(0.8) else {}
        return {**node, "items": self.schema(depth - 1)} if self._often(0.9) else node

    def _definitions(self) -> dict[str, Any]:
        """An array whose elements define names that other strings refer to."""
        members = {"name": {"type": "string"}, "a": {}}
        items: dict[str, Any] = {"type": "object", "properties": members, "required": ["name"]}
        if self._often(0.5):
            items["optional"] = ["a"]
        return {"type": "array", "items": items}

    def _object(self, depth: int) -> dict[str, Any]:
        names = self._some(NAMES, 6, 1)
        node: dict[str, Any] = {"type": "object"} if self._often(0.85) else {}
        groups = [self._member_group(names, depth, node) for _ in range(self._group_count())]
        self._place_groups(node, groups)
        self._describe(node, names, depth)
        return node

    def _group_count(self) -> int:
        return self._rng.choice((0, 0, 1, 1, 1, 2, 3)) if self._with_groups else 0

    def _describe(self, node: dict[str, Any], names: list[str], depth: int) -> None:
        """Spreads the names over properties, required and optional."""
        properties = node.setdefault("properties", {})
        for name in names:
            if name not in properties and self._often(0.85):
                properties[name] = self.schema(depth - 1)
        in_groups = {name for group in groups_of(node) for each in group for name in each.get("required", [])}
        required = [name for name in names if self._often(0.03 if name in in_groups else 0.3)]
        optional = [name for name in names if self._often(0.4)]
        if required or self._often(0.1):
            node["required"] = required + required[: self._often(0.1)]
        if optional or self._often(0.1):
            node["optional"] = optional
        if self._often(0.1) or (not properties and self._often(0.7)):
            del node["properties"]

    def _place_groups(self, node: dict[str, Any], groups: list[list[dict[str, Any]]]) -> None:
        if groups and self._often(0.6):
            node["oneOf"] = groups.pop()
        if groups or (self._with_groups and self._often(0.04)):
            node["allOf"] = [{"oneOf": group} for group in groups]

    def _member_group(self, names: list[str], depth: int, node: dict[str, Any]) -> list[dict[str, Any]]:
        roll = self._rng.random()
        if roll < 0.35:
            return self._companions(names)
        if roll < 0.7:
            return self._variants(names, depth, node)
        return self._free_group(names, depth)

    def _companions(self, names: list[str]) -> list[dict[str, Any]]:
        """One of several members, such as a value or the file with it."""
        return [{"required": [name]} for name in self._some(names, 4, 2)]

    def _variants(self, names: list[str], depth: int, node: dict[str, Any]) -> list[dict[str, Any]]:
        """Alternatives that a selector, or two, tells apart; now and then two of them are fixed alike."""
        selectors = self._some(names, 2 if self._often(0.2) else 1, 1)
        words = self._some(WORDS, 4, 2)
        if self._often(0.2):
            words.append(words[0])
        for selector in selectors:
            node.setdefault("properties", {}).setdefault(selector, {"type": "string", "enum": sorted(set(words))})
        return [self._variant(selectors, word, names, depth) for word in words]

    def _variant(self, selectors: list[str], word: str, names: list[str], depth: int) -> dict[str, Any]:
        others = [self._rng.choice(WORDS) if self._often(0.3) else word for _ in selectors[1:]]
        fixed = {selector: {"const": value} for selector, value in zip(selectors, [word, *others])}
        variant: dict[str, Any] = {"properties": fixed}
        required = (selectors if self._often(0.85) else []) + self._some(names, 2)
        if required:
            variant["required"] = required
        if self._often(0.4):
            variant["optional"] = self._some(names, 3)
        if depth > 0 and self._often(0.2):
            self._place_groups(variant, [self._member_group(names, depth - 1, variant)])
        if self._often(0.3):
            variant["description"] = "This variant."
        return variant

    def _free_group(self, names: list[str], depth: int) -> list[dict[str, Any]]:
        count = self._rng.choice((1, 2, 2, 2, 3, 3, 4)) if self._often(0.97) else 0
        apart = self._often(0.6)
        shares = [names[index::count] if apart else names for index in range(count)]
        return [self._alternative(share or names, depth) for share in shares]

    def _alternative(self, names: list[str], depth: int) -> dict[str, Any]:
        alternative: dict[str, Any] = {}
        if self._often(0.8):
            alternative["required"] = self._some(names, 3)
        if self._often(0.4):
            alternative["optional"] = self._some(names, 3)
        if depth > 0 and self._often(0.5):
            alternative["properties"] = {name: self.schema(depth - 1) for name in self._some(names, 2)}
        if depth > 0 and self._often(0.25):
            self._place_groups(alternative, [self._member_group(names, depth - 1, alternative)])
        if self._often(0.1):
            alternative["type"] = self._rng.choice(("object", "object", "array", "string"))
        return alternative

    def _value_group(self, depth: int) -> list[Schema]:
        """A group over a datum of any type."""
        makers = [self._string, self._number, self._boolean, self._anything, self._array, self._object]
        self._rng.shuffle(makers)
        return [make(depth - 1) for make in makers[: self._rng.choice((1, 2, 2, 3))]]


@dataclass
class Demands:
    """What the schemas that apply to one datum ask of it."""

    types: list[str] = field(default_factory=list)
    words: list[list[str]] = field(default_factory=list)
    limits: list[tuple[str, float, bool]] = field(default_factory=list)
    references: int = 0
    properties: dict[str, list[Schema]] = field(default_factory=dict)
    required: list[str] = field(default_factory=list)
    optional: list[str] = field(default_factory=list)
    avoided: set[str] = field(default_factory=set)
    items: list[Schema] = field(default_factory=list)

    def kind(self) -> str | None:
        """The type that suits the demands best; None where any does."""
        if self.types:
            return self.types[0]
        if self.words or self.references:
            return "string"
        if self.limits:
            return "number"
        if self.properties or self.required or self.optional:
            return "object"
        return "array" if self.items else None

    def satisfied_by(self, number: float) -> bool:
        return all(_within(number, limit) for limit in self.limits)


def _within(number: float, limit: tuple[str, float, bool]) -> bool:
    side, bound, exclusive = limit
    if number == bound:
        return not exclusive
    return number > bound if side == "minimum" else number < bound


class DataMaker:
    """Makes one datum for a schema; `mood` is the share of decisions that go wrong on purpose."""

    def __init__(self, rng: random.Random, mood: float) -> None:
        self._rng = rng
        self._mood = mood
        self._unknown = rng.choice((0.0, 0.0, 0.4))

    def root(self, schema: Schema) -> Datum:
        return self._datum([schema])

    def _wrong(self) -> bool:
        return self._rng.random() < self._mood

    def _often(self, share: float) -> bool:
        return self._rng.random() < share

    def _datum(self, schemas: list[Schema]) -> Datum:
        demands = Demands()
        for schema in schemas:
            if isinstance(schema, dict):
                self._gather(schema, demands)
        kind = demands.kind()
        if kind is None or (self._wrong() and self._often(0.5)):
            return self.anything(2)
        makers = {
            "object": self._object,
            "string": self._string,
            "number": self._number,
            "integer": self._integer,
            "array": self._array,
        }
        return makers[kind](demands) if kind in makers else self._often(0.5)

    def _gather(self, schema: dict[str, Any], demands: Demands) -> None:
        if "type" in schema:
            demands.types.append(schema["type"])
        if "const" in schema:
            demands.words.append([schema["const"]])
        if "enum" in schema:
            demands.words.append(schema["enum"])
        demands.references += "requiredIn" in schema
        for side in ("minimum", "maximum"):
            if side in schema:
                demands.limits.append((side, schema[side], schema.get("exclusive" + side.capitalize()) is True))
        for name, member in schema.get("properties", {}).items():
            demands.properties.setdefault(name, []).append(member)
        demands.required += schema.get("required", [])
        demands.optional += schema.get("optional", [])
        if "items" in schema:
            demands.items.append(schema["items"])
        for group in groups_of(schema):
            self._gather_group(group, demands)

    def _gather_group(self, group: list[dict[str, Any]], demands: Demands) -> None:
        """Takes one alternative for right, now and then none, and what the others require for unwanted."""
        if not group:
            return
        chosen = self._rng.choice(group)
        none = self._often(2 * self._mood)
        for alternative in group:
            if none or alternative is not chosen:
                demands.avoided.update(alternative.get("required", []))
        if not none:
            self._gather(chosen, demands)

    def _object(self, demands: Demands) -> dict[str, Datum]:
        names = dict.fromkeys([*demands.required, *demands.properties, *demands.optional, *sorted(demands.avoided)])
        result = {name: self._member(name, demands) for name in names if self._present(name, demands)}
        while self._often(max(self._unknown, self._mood)):
            result[self._rng.choice(UNKNOWN_NAMES + NAMES)] = self.anything(2)
        return result

    def _present(self, name: str, demands: Demands) -> bool:
        if self._wrong():
            return self._often(0.5)
        if name in demands.required:
            return True
        return name not in demands.avoided and self._often(0.6)

    def _member(self, name: str, demands: Demands) -> Datum:
        return self._datum(demands.properties[name]) if name in demands.properties else self.anything(1)

    def _string(self, demands: Demands) -> Datum:
        if demands.words:
            common = [word for word in demands.words[0] if all(word in words for words in demands.words)]
            word = self._rng.choice(common or demands.words[0] or WORDS)
            return self._distorted(word) if self._wrong() else word
        return self._rng.choice(DEFINED if self._often(0.6) else WORDS)

    def _distorted(self, word: str) -> Datum:
        """Something that is nearly the word."""
        if word in LOOKALIKES and self._often(0.6):
            return LOOKALIKES[word]
        return self._rng.choice([word.upper(), word.title(), word + " ", word[:-1]])

    def _near(self, demands: Demands) -> list[float]:
        """Numbers on the limits and beside them."""
        bounds = [bound for _, bound, _ in demands.limits] or [0, 7]
        steps = (0, 0.5, -0.5, 1, -1)
        return [bound + step for bound in bounds for step in steps if abs(bound + step) <= 2**53]

    def _number(self, demands: Demands) -> float | int:
        number = self._pick(self._near(demands), demands)
        if number == int(number) and self._often(0.4):
            return int(number)
        return float(number)

    def _integer(self, demands: Demands) -> float | int:
        if self._wrong():
            return float(self._pick(self._near(demands), demands))
        return int(self._pick([number for number in self._near(demands) if number == int(number)], demands))

    def _pick(self, numbers: list[float], demands: Demands) -> float:
        numbers = numbers or [0]
        bounds = [number for number in numbers if number in {bound for _, bound, _ in demands.limits}]
        if bounds and self._often(2 * self._mood):
            return self._rng.choice(bounds)
        fitting = [number for number in numbers if demands.satisfied_by(number)]
        return self._rng.choice(numbers if self._wrong() or not fitting else fitting)

    def _array(self, demands: Demands) -> list[Datum]:
        elements = range(self._rng.choice((0, 1, 2, 3, 3, 12 if self._often(0.1) else 2)))
        return [self._datum(demands.items) if demands.items else self.anything(1) for _ in elements]

    def anything(self, depth: int) -> Datum:
        """A value that no schema steers."""
        scalars = [True, False, None, 0, 2, -7, 3.0, 0.25, 2**53, -(2**53), 1e300, *self._rng.sample(WORDS, 3)]
        if depth == 0 or self._often(0.7):
            return self._rng.choice(scalars)
        if self._often(0.5):
            return [self.anything(depth - 1) for _ in range(self._rng.randint(0, 3))]
        names = self._rng.sample(NAMES + UNKNOWN_NAMES, self._rng.randint(0, 3))
        return {name: self.anything(depth - 1) for name in names}


def groups_of(schema: dict[str, Any]) -> list[list[dict[str, Any]]]:
    """The one-of groups of a schema object, those under allOf included."""
    groups = [schema["oneOf"]] if "oneOf" in schema else []
    return groups + [element["oneOf"] for element in schema.get("allOf", [])]
