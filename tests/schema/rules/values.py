"""Rules about value keys: types, units, limits, enumerations, defaults."""

from __future__ import annotations

import html
import re
from typing import Any, Iterator

from schema_nodes import Node, Role

from .base import Finding, Rule, Share

NUMERIC = ("number", "integer")
UNITS = re.compile(r"\[[^\[\]]+\]((, | or )\[[^\[\]]+\])*")  # several where a selector decides
ENUM_VALUE = re.compile(r"[a-z0-9][a-z0-9_]*")
# Pure numbers, which have no unit: by a word of their names, and those whose names are a formula's letters or the like.
PURE_WORDS = set("factor factors fac fact prefactor exponent exp coeff coef relax relaxation precision tolerance accuracy".split())
PURE_WORDS |= {"calibration", "ratio"}
PURE_NAMES = set(
    "B a1 a2 alpha b1 b2 base_vector_i base_vector_j biomass c_abutments c_m c_pier constants dry_friction espilon"
    " fraction_boundary froude_number l lambda maximum_carrying_capacity my n poleni_a power_distance power_law_b upwind"
    " value_range".split()
)
SWITCHES = ({"yes", "no"}, {"on", "off"})
LIST_ITEM = re.compile(r"<(li|td)\b[^>]*>(.*?)(?=</?(?:li|td|ul|ol|table)\b)", re.DOTALL)
LINE_TAG = re.compile(r"</?(?:p|br|ul|ol|li|table|tr|th|td)\b[^<>]*>")
TAG = re.compile(r"<[^<>]*>")
DEFAULTS_OF_REQUIRED = {("SETUP", "simulation_name")}


def visible_text(markup: str) -> str:
    """A description without its markup; what stands in lines of its own stays apart."""
    return " ".join(html.unescape(TAG.sub("", LINE_TAG.sub(" ", markup))).split())


def is_pure_number(name: str) -> bool:
    return name in PURE_NAMES or not PURE_WORDS.isdisjoint(name.split("_"))


def key_basics(share: Share) -> Iterator[Finding]:
    """A value key has a type and a description; of elements that are plain values the array's key tells all."""
    for node in share.nodes:
        if share.is_value_key(node):
            for keyword in ("type", "description"):
                if keyword not in node.schema:
                    yield Finding(node.pointer, f"a key without {keyword}")
        elif node.role is Role.ITEMS and not share.describes_block(node):
            if "type" not in node.schema:
                yield Finding(node.pointer, "elements without type")
            if node.type not in ("object", "array") and "description" in node.schema:
                yield Finding(node.pointer, "a description of elements that are plain values: say it of the array")


def units(share: Share) -> Iterator[Finding]:
    """A number has units in brackets unless its name says that it is a pure one; an integer may have; nothing else has."""
    for node in share.nodes:
        if "units" not in node.schema:
            if node.is_whole and node.type == "number" and not is_pure_number(node.name):
                yield Finding(node.pointer, "a number without units")
        elif node.type not in NUMERIC or not node.is_whole:
            yield Finding(node.pointer, "units of what is no number")
        elif not UNITS.fullmatch(str(node.schema["units"])):
            yield Finding(node.pointer, f"units {node.schema['units']!r} are not in brackets")


def limits(share: Share) -> Iterator[Finding]:
    """Limits belong to numbers, leave room between them, and are made exclusive only where they exist."""
    for node in share.nodes:
        present = [name for name in ("minimum", "maximum") if name in node.schema]
        if present and node.type not in NUMERIC:
            yield Finding(node.pointer, f"{present[0]} of what is no number")
        for name, switch in (("minimum", "exclusiveMinimum"), ("maximum", "exclusiveMaximum")):
            if switch in node.schema and name not in node.schema:
                yield Finding(node.pointer, f"{switch} without {name}")
            if node.schema.get(switch) is False:
                yield Finding(node.pointer, f"{switch} is false: leave it out")
        if len(present) == 2 and not node.schema["minimum"] < node.schema["maximum"]:
            yield Finding(node.pointer, "no room between minimum and maximum")


def enumerations(share: Share) -> Iterator[Finding]:
    """An enumeration is of strings in lower case, each once."""
    for node in share.nodes:
        if "enum" not in node.schema:
            continue
        if node.type != "string":
            yield Finding(node.pointer, "an enumeration that is not of type string")
        values = node.texts("enum")
        if not values:
            yield Finding(node.pointer, "an empty enumeration")
        for value in dict.fromkeys(values):
            if values.count(value) > 1:
                yield Finding(node.pointer, f"'{value}' stands twice in the enumeration")
            if not ENUM_VALUE.fullmatch(value):
                yield Finding(node.pointer, f"'{value}' is not in lower case with underscores")


def enumerations_explained(share: Share) -> Iterator[Finding]:
    """The description has a list that names every value; for a switch any place will do."""
    for node in share.nodes:
        if "enum" not in node.schema:
            continue
        markup = _describing(node).description()
        is_switch = set(node.texts("enum")) in SWITCHES
        text = visible_text(markup if is_switch else " ".join(item[2] for item in LIST_ITEM.finditer(markup)))
        place = "the description" if is_switch else "a list of the description"
        for value in dict.fromkeys(node.texts("enum")):
            if not re.search(rf"(?<![\w]){re.escape(value)}(?![\w])", text):
                yield Finding(node.pointer, f"'{value}' is not explained in {place}")


def _describing(node: Node) -> Node:
    """The node whose description tells about a node: elements are told of with their array."""
    while node.role is Role.ITEMS and node.parent and not node.description():
        node = node.parent
    return node


def defaults_valid(share: Share) -> Iterator[Finding]:
    """A default is what the key itself allows."""
    for node in share.nodes:
        if "default" in node.schema:
            for fault in _faults(node, node.schema["default"]):
                yield Finding(node.pointer, f"the default {node.schema['default']!r} {fault}")


def _faults(node: Node, value: Any) -> Iterator[str]:
    """What keeps a plain value from being valid. What is not of a type meets no limit of its own."""
    if not _is_of_type(value, node.type):
        yield f"is not of type {node.type}"
        return
    if "enum" in node.schema and value not in node.texts("enum"):
        yield "is not in the enumeration"
    if isinstance(value, (int, float)) and not isinstance(value, bool):
        yield from _limit_faults(node.schema, value)


def _is_of_type(value: Any, name: Any) -> bool:
    is_integer = isinstance(value, int) and not isinstance(value, bool)
    return {
        "integer": is_integer,
        "number": is_integer or isinstance(value, float),
        "string": isinstance(value, str),
        "boolean": isinstance(value, bool),
    }.get(name, False)


def _limit_faults(schema: dict[str, Any], value: float) -> Iterator[str]:
    low, high = schema.get("minimum"), schema.get("maximum")
    if low is not None and (value < low or (value == low and schema.get("exclusiveMinimum") is True)):
        yield "is below the minimum"
    if high is not None and (value > high or (value == high and schema.get("exclusiveMaximum") is True)):
        yield "is above the maximum"


def defaults_not_required(share: Share) -> Iterator[Finding]:
    """What has a default need not be given: neither its object nor an alternative of that requires it."""
    for node in share.nodes:
        if not node.is_whole:
            continue
        defaults = {name for name, key in node.properties().items() if isinstance(key, dict) and "default" in key}
        defaults -= _required_all_the_same(share, node)
        alternatives = [each for group in node.groups_below() for each in group.alternatives]
        for place in (node, *alternatives):
            for name in dict.fromkeys(place.texts("required")):
                if name in defaults:
                    yield Finding(place.pointer, f"'{name}' has a default and is required")


def _required_all_the_same(share: Share, node: Node) -> set[str]:
    """Members of an object that are required although they have a default."""
    block = share.members_block(node)
    if block is None:
        return set()
    by_tree = {inner.name for inner in block.blocks if inner.required and not inner.holds_members}
    return by_tree | {name for name in block.keys if (*node.names, name) in DEFAULTS_OF_REQUIRED}


RULES: list[Rule] = [
    key_basics,
    units,
    limits,
    enumerations,
    enumerations_explained,
    defaults_valid,
    defaults_not_required,
]
