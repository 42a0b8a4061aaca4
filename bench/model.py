"""The generated model: its blocks, keys and variants, made from the outline, and the schema that describes them.

The schema is tuned to the size and the make of the schema of real command files: FIGURES says how many of what it has.
"""

from __future__ import annotations

import json
import random
import re
from collections.abc import Iterable, Iterator, Sequence
from dataclasses import dataclass, field
from typing import Any, TypeVar

from outline import OUTLINE

Schema = dict[str, Any]
T = TypeVar("T")

FIGURES = {
    "characters": 925_000,
    "description": 1451,
    "default": 411,
    "units": 321,
    "optional": 273,
    "oneOf": 125,
    "allOf": 51,
    "const": 334,
    "format": 78,
    "requiredIn": 35,
}

# So many blocks use their first pair in one variant more.
PAIRS_USED_TWICE = 12
MOST_VARIANTS = 12

# The arrays that references lead to, in the model of a single domain.
REFERENCED = {
    "STRINGDEF": "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/STRINGDEF",
    "REGIONDEF": "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/REGIONDEF",
    "MIXTURE": "/SETUP/ORVAHPC/ORVAPLANE_2D/MORPHOLOGY/BEDMATERIAL/MIXTURE",
    "SOILDEF": "/SETUP/ORVAHPC/ORVAPLANE_2D/MORPHOLOGY/BEDMATERIAL/SOILDEF",
}

UNITS = ["[m]", "[s]", "[-]", "[m/s]", "m<sup>2</sup>/s", "m<sup>3</sup>/s", "kg/m<sup>3</sup>"]
LIMITS: list[Schema] = [
    {"minimum": 0, "exclusiveMinimum": True},
    {"minimum": 0, "maximum": 1000},
    {"minimum": -1000},
    {},
]
SWITCHES = {"y": ["yes", "no"], "o": ["on", "off"]}
WORDS = (
    "uniform_in uniform_out weir_constant weir_dynamic gate_in gate_out hydrograph zero_gradient wall fixed_level"
    " rating_curve table explicit implicit constant variable strickler manning chezy upwind central index_table dry"
    " restart continue standard extended layered"
).split()
PROSE = (
    "the water depth of a cell below which it counts as dry is given by this value and bounds the velocity that follows"
    " from the discharge over its edges where the bed slope is steep small values keep the volume but need short time"
    " steps between the upstream and the downstream end of a reach sediment is moved as bed load once the shear stress"
    " exceeds the critical one for every grain class"
).split()
MARKUP = ["<i>h</i>", "<i>&tau;<sub>c</sub></i>", "m<sup>3</sup>/s", "</p><p>", "<br>", "<b>must</b>", "<code>x</code>"]


@dataclass
class Key:
    """A value key of a block. Its kind is a letter of the outline, "" for a number."""

    name: str
    kind: str
    target: str
    required: bool
    schema: Schema = field(default_factory=dict)


@dataclass
class Variant:
    """A variant of a block: the selector's value and what goes with it."""

    value: str
    required: list[str] = field(default_factory=list)
    optional: list[str] = field(default_factory=list)
    pairs: list[str] = field(default_factory=list)


@dataclass
class Block:
    """An object of the model, or an array of them."""

    name: str
    is_array: bool = False
    required: bool = False
    keys: list[Key] = field(default_factory=list)
    blocks: list[Block] = field(default_factory=list)
    pairs: list[str] = field(default_factory=list)
    variants: list[Variant] = field(default_factory=list)

    def all(self) -> Iterator[Block]:
        """The block and all that is nested in it."""
        yield self
        for block in self.blocks:
            yield from block.all()

    def at(self, *names: str) -> Block:
        """The block nested at a path."""
        block = self
        for name in names:
            block = next(each for each in block.blocks if each.name == name)
        return block

    def selector(self) -> str:
        """The name of the key that selects the variant; "" without one."""
        return next((key.name for key in self.keys if key.kind == "*"), "")

    def halves(self) -> set[str]:
        """The names that belong to pairs."""
        return {name for pair in self.pairs for name in (pair, pair + "_file")}

    def free_keys(self) -> list[Key]:
        """Keys that are required by no rule of their own."""
        halves = self.halves()
        return [key for key in self.keys if not key.required and key.name not in halves]


def evenly(items: Sequence[T], count: int) -> list[T]:
    """So many of the items, evenly spread."""
    count = min(count, len(items))
    return [items[i * len(items) // count] for i in range(count)]


# ---- from the outline to blocks


def parse_key(text: str) -> Key:
    name, _, kind = text.partition(":")
    kind, _, target = kind.partition("@")
    is_reference = bool(target) and not kind
    required = is_reference or kind == "*" or name in ("name", "region_name", "simulation_name")
    return Key(name, "s" if is_reference else kind, target, required)


def parse_block(head: str, keys: Iterable[str]) -> Block:
    block = Block(head.rstrip("!").removesuffix("[]"), "[]" in head, head.endswith("!"), [parse_key(k) for k in keys])
    names = {key.name for key in block.keys}
    block.pairs = [key.name for key in block.keys if key.name + "_file" in names]
    return block


def parse_outline(text: str) -> Block:
    """The root block with everything that the outline says."""
    path = [Block("")]
    for line in re.sub(r"\n *& ", " ", text).splitlines():
        head, *keys = line.split()
        depth = (len(line) - len(line.lstrip())) // 2
        block = parse_block(head, keys)
        del path[depth + 1 :]
        path[-1].blocks.append(block)
        path.append(block)
    return path[0]


# ---- what the outline leaves open


def add_variants(root: Block) -> None:
    """Gives every block with a selector its variants, more where there are more keys to choose from."""
    blocks = [block for block in root.all() if block.selector()]
    for position, block in enumerate(blocks):
        block.variants = [Variant(WORDS[position % len(WORDS)]) for _ in range(max(2, len(block.pairs) + 1))]
    missing = FIGURES["const"] - sum(len(block.variants) for block in blocks)
    by_size = sorted(blocks, key=lambda block: -len(block.keys))
    while missing > 0:
        growing = [block for block in by_size if len(block.variants) < min(MOST_VARIANTS, 2 + len(block.keys))]
        for block in growing[:missing]:
            block.variants.append(Variant(""))
        missing -= len(growing[:missing])
    with_pairs = 0
    for position, block in enumerate(blocks):
        fill_variants(block, position, with_pairs < PAIRS_USED_TWICE)
        with_pairs += bool(block.pairs)


def fill_variants(block: Block, position: int, use_pair_twice: bool) -> None:
    free = [key.name for key in block.free_keys()]
    pairs = block.pairs + block.pairs[:1] * use_pair_twice
    for index, variant in enumerate(block.variants):
        variant.value = WORDS[(position + index) % len(WORDS)]
        variant.pairs = pairs[index : index + 1]
        own = [free[(2 * index + step) % len(free)] for step in range(3)] if free else []
        own = list(dict.fromkeys(own))
        variant.required, variant.optional = own[: index % 3], own[index % 3 :]
    # The last variant takes the pairs that are left over.
    block.variants[-1].pairs += pairs[len(block.variants) :]


def add_key_schemas(root: Block) -> None:
    """Gives every key its schema, and decides which of those without default are required."""
    keys = [key for block in root.all() for key in block.keys]
    for position, key in enumerate(keys):
        key.schema = schema_of_key(key, position)
    for position, key in enumerate(evenly([key for key in keys if key.kind == ""], FIGURES["units"])):
        key.schema["units"] = UNITS[position % len(UNITS)]
    free = [key for block in root.all() for key in block.free_keys()]
    for key in evenly([key for key in free if key.kind in ("", "i", "b", "e", "y", "o")], FIGURES["default"]):
        key.schema["default"] = default_of(key)
    for key in [key for key in free if "default" not in key.schema and key.kind not in ("u", "s")][::3]:
        key.required = True


def schema_of_key(key: Key, position: int) -> Schema:
    limits = LIMITS[position % len(LIMITS)]
    if key.kind == "R":
        return {"type": "array", "description": "", "items": schema_of_region(key)}
    if key.kind in ("N", "I", "S"):
        element = {"N": "number", "I": "integer", "S": "string"}[key.kind]
        items: Schema = {"type": element} if key.kind == "S" else {"type": element, **limits}
        return {"type": "array", "description": "", "items": items}
    if key.kind == "b":
        return {"type": "boolean", "description": ""}
    if key.kind == "u":
        return {"type": "string", "description": "", "format": "uri"}
    if key.target:
        return reference_schema(key.target)
    if key.kind in SWITCHES:
        return {"type": "string", "description": "", "enum": SWITCHES[key.kind]}
    if key.kind == "e":
        first = position % len(WORDS)
        return {"type": "string", "description": "", "enum": (WORDS + WORDS)[first : first + 3 + position % 4]}
    if key.kind in ("s", "*"):
        return {"type": "string", "description": ""}
    return {"type": "integer" if key.kind == "i" else "number", "description": "", **limits}


def reference_schema(target: str) -> Schema:
    reference = {"itemProperty": "name", "$array_ref": REFERENCED[target]}
    return {"type": "string", "description": "", "requiredIn": reference}


def schema_of_region(key: Key) -> Schema:
    """What the array `regions` consists of: regions with a value, or with the name of another item."""
    value = reference_schema(key.target) if key.target else {"type": "number", "description": "", **LIMITS[0]}
    properties = {"region_name": reference_schema("REGIONDEF"), "value": value}
    return {"type": "object", "description": "", "properties": properties, "required": list(properties)}


def default_of(key: Key) -> Any:
    if "enum" in key.schema:
        return key.schema["enum"][0]
    return {"": 0.5, "i": 3, "b": True}[key.kind]


# ---- the schema


def block_schema(block: Block) -> Schema:
    """The schema of a block, without the choices between variants."""
    members: list[Key | Block] = [*block.keys, *block.blocks]
    schema: Schema = {
        "type": "object",
        "description": "",
        "properties": {key.name: key.schema for key in block.keys}
        | {nested.name: block_schema(nested) for nested in block.blocks},
        "required": [member.name for member in members if member.required],
        "optional": [member.name for member in members if not member.required],
    }
    schema = {keyword: value for keyword, value in schema.items() if value != []}
    if block.variants:
        schema["properties"][block.selector()]["enum"] = [variant.value for variant in block.variants]
        schema["oneOf"] = [alternative(block, variant) for variant in block.variants]
    elif block.pairs:
        schema["allOf"] = [either(pair) for pair in block.pairs]
    elif block.name == "SETUP":
        schema["oneOf"] = [{"required": [nested.name]} for nested in block.blocks]
    return {"type": "array", "description": "", "items": schema} if block.is_array else schema


def alternative(block: Block, variant: Variant) -> Schema:
    schema: Schema = {
        "description": "",
        "properties": {block.selector(): {"const": variant.value}},
        "required": [block.selector(), *variant.required],
    }
    if variant.optional:
        schema["optional"] = variant.optional
    if variant.pairs:
        schema["allOf"] = [either(pair) for pair in variant.pairs]
    return schema


def either(pair: str) -> Schema:
    return {"oneOf": [{"required": [pair]}, {"required": [pair + "_file"]}]}


def schema_objects(schema: Schema) -> Iterator[Schema]:
    """A schema and all schemas inside it, but for those that only say what is required."""
    yield schema
    for nested in schema.get("properties", {}).values():
        yield from schema_objects(nested)
    if "items" in schema:
        yield from schema_objects(schema["items"])
    for group in [schema.get("oneOf", []), *(each["oneOf"] for each in schema.get("allOf", []))]:
        for nested in group:
            yield from schema_objects(nested)


def thin_out(alternatives: list[Schema], keyword: str, excess: int) -> None:
    """Takes a keyword from so many of the alternatives."""
    for schema in evenly([each for each in alternatives if keyword in each], max(0, excess)):
        del schema[keyword]


def prose(rng: random.Random, length: int) -> str:
    """A description in HTML, of about so many characters."""
    words = ["<p>"]
    characters = 7
    while characters < length:
        word = rng.choice(MARKUP) if rng.random() < 0.05 else rng.choice(PROSE)
        words.append(word)
        characters += len(word) + 1
    return " ".join(words) + "</p>"


def write_descriptions(root_schema: Schema, rng: random.Random) -> None:
    """Fills the empty descriptions so that the whole text gets its size; most are short, some very long."""
    described = [schema for schema in schema_objects(root_schema) if "description" in schema]
    room = FIGURES["characters"] - len(schema_text(root_schema))
    weights = [rng.lognormvariate(0, 0.8) for _ in described]
    for schema, weight in zip(described, weights):
        schema["description"] = prose(rng, round(room * weight / sum(weights)) - 3)


def schema_text(schema: Schema) -> str:
    return json.dumps(schema, indent=2).replace("\n", "\r\n") + "\r\n"


def make_model() -> Block:
    """The root block, complete."""
    root = parse_outline(OUTLINE)
    root.blocks[0].required = True
    add_key_schemas(root)
    add_variants(root)
    return root


def make_schema(root: Block, seed: int) -> Schema:
    """The schema of the whole model."""
    schema = {"$schema": "./metaschema.json", **block_schema(root)}
    everything = list(schema_objects(schema))
    alternatives = [each for each in everything if "type" not in each]
    for keyword in ("description", "optional"):
        thin_out(alternatives, keyword, sum(keyword in each for each in everything) - FIGURES[keyword])
    write_descriptions(schema, random.Random(seed))
    return schema


def count_keywords(schema: Schema) -> dict[str, int]:
    """How many the schema has of what FIGURES lists."""
    objects = list(schema_objects(schema))
    counts = {keyword: sum(keyword in each for each in objects) for keyword in FIGURES if keyword != "characters"}
    counts["oneOf"] += sum(len(each["allOf"]) for each in objects if "allOf" in each)
    return {"characters": len(schema_text(schema)), **counts}
