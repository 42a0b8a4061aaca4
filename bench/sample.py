"""Data that follow the generated model, without faults or with a share of them."""

from __future__ import annotations

import itertools
import json
import random
from collections import Counter
from collections.abc import Callable
from dataclasses import dataclass, field
from typing import Any

from model import Block, Key, Variant

Data = dict[str, Any]

# How many items an array of blocks gets, by the block's name.
ItemCount = Callable[[str], int]


@dataclass
class Sampler:
    """Draws blocks and values. Every value node is made faulty with the given probability.

    Faults are drawn from a sequence of their own: data with faults are otherwise the same as those without.
    """

    rng: random.Random
    fault_share: float
    item_count: ItemCount
    block_share: float = 0.5
    key_share: float = 0.5
    value_nodes: int = 0
    faults: Counter[str] = field(default_factory=Counter)
    fault_rng: random.Random = field(default_factory=lambda: random.Random(7))

    # ---- blocks

    def block(self, block: Block) -> Any:
        """An object, or for an array block as many of them as it gets."""
        if not block.is_array:
            return self.item(block, 0)
        return [self.item(block, index) for index in range(self.item_count(block.name))]

    def item(self, block: Block, index: int) -> Data:
        """One object of a block."""
        variant = self.rng.choice(block.variants) if block.variants else None
        data: Data = {}
        for key in self.chosen_keys(block, variant):
            self.add_key(data, key, block, index, variant)
        for pair in variant.pairs if variant else block.pairs:
            self.add_pair(data, block, pair)
        for nested in block.blocks:
            if nested.required or self.rng.random() < self.block_share:
                data[nested.name] = self.block(nested)
        return data

    def chosen_keys(self, block: Block, variant: Variant | None) -> list[Key]:
        halves = block.halves()
        wanted = set(variant.required) if variant else set()
        return [
            key
            for key in block.keys
            if key.name not in halves
            and (key.required or key.name in wanted or self.rng.random() < self.key_share)
        ]

    def add_key(self, data: Data, key: Key, block: Block, index: int, variant: Variant | None) -> None:
        if key.name == "name":
            self.value_nodes += 1
            data["name"] = name_of(block.name, index)
        elif key.kind == "*" and variant:
            data[key.name] = self.word(variant.value)
        else:
            self.add_plain_key(data, key, key.required or (variant is not None and key.name in variant.required))

    def add_plain_key(self, data: Data, key: Key, required: bool) -> None:
        value = self.value(key)
        if not required and self.fails("unknown member"):
            data[key.name + "_old"] = value
        elif not (required and self.fails("missing")):
            data[key.name] = value

    def add_pair(self, data: Data, block: Block, pair: str) -> None:
        name = self.rng.choice([pair, pair + "_file"])
        data[name] = self.value(key_named(block, name))
        if self.fails("both of a pair"):
            data.setdefault(pair, 1.5)
            data.setdefault(pair + "_file", "input/both.txt")

    # ---- values

    def fails(self, fault: str, weight: float = 0.5) -> bool:
        """Whether a fault of some kind is due here; `weight` is its share of the faults that a value can have."""
        failing = self.fault_rng.random() < self.fault_share * weight
        self.faults[fault] += failing
        return failing

    def value(self, key: Key) -> Any:
        if key.kind == "R":
            count = self.rng.randint(2, 6)
            return [{"region_name": self.reference("REGIONDEF"), "value": self.region_value(key)} for _ in range(count)]
        if key.kind in ("N", "I", "S"):
            return [self.scalar(key.kind, key.schema["items"]) for _ in range(self.rng.randint(2, 12))]
        if key.target:
            return self.reference(key.target)
        if "enum" in key.schema:
            return self.word(self.rng.choice(key.schema["enum"]))
        return self.scalar(key.kind, key.schema)

    def region_value(self, key: Key) -> Any:
        return self.reference(key.target) if key.target else self.scalar("", {"minimum": 0})

    def word(self, word: str) -> Any:
        self.value_nodes += 1
        return "something_else" if self.fails("value not allowed", 1) else word

    def reference(self, target: str) -> str:
        self.value_nodes += 1
        index = self.rng.randrange(self.item_count(target))
        return "nowhere" if self.fails("reference leads nowhere", 1) else name_of(target, index)

    def scalar(self, kind: str, schema: dict[str, Any]) -> Any:
        self.value_nodes += 1
        sound = self.sound_scalar(kind)
        is_number = kind in ("", "N", "i", "I")
        if self.fails("wrong type", 0.5 if is_number else 1):
            return "12.5" if is_number else 12.5
        if is_number and "minimum" in schema and self.fails("beyond a limit"):
            return -5000
        return sound

    def sound_scalar(self, kind: str) -> Any:
        if kind in ("i", "I"):
            return self.rng.randint(1, 999)
        if kind == "b":
            return self.rng.random() < 0.5
        if kind in ("s", "S"):
            return f"{self.rng.choice(NAMES)}_{self.rng.randrange(1000)}"
        if kind == "u":
            return f"input/{self.rng.choice(NAMES)}_{self.rng.randrange(1000)}.txt"
        return self.rng.randint(1, 999) if self.rng.random() < 0.2 else round(self.rng.uniform(0.001, 999), 4)


NAMES = ["inlet", "outlet", "weir", "gate", "dyke", "floodplain", "main_channel", "sand_bar", "bridge", "tributary"]


def name_of(array: str, index: int) -> str:
    return f"{array.lower()}_{index}"


def key_named(block: Block, name: str) -> Key:
    return next(key for key in block.keys if key.name == name)


# ---- whole models

# Below so many bytes a model of many domains has one domain only, and as many controllers as fill it.
SMALL = 100_000


def multi_domain(root: Block, sampler: Sampler, size: int) -> Data:
    """A model of many domains: kind after kind, as many as fill the size in bytes."""
    model = root.at("SETUP", "ORVAMD")
    physics = {"gravity": 9.81, "rho_fluid": 1000.0, "viscosity": 1e-06}
    data: Data = {"multiregion": "network", "PHYSICAL_PROPERTIES": physics}
    kinds = [block for block in model.blocks if block.is_array]
    if size < SMALL:
        data["ORVAPLANE_2D"] = [sampler.item(model.at("ORVAPLANE_2D"), 0)]
        kinds = [model.at("CONTROLLER")]
    document = {"SETUP": {"simulation_name": "benchmark", "ORVAMD": data}}
    written = len(text_of(document))
    for number, block in enumerate(itertools.cycle(kinds)):
        if written >= size:
            return document
        item = sampler.item(block, number // len(kinds))
        data.setdefault(block.name, []).append(item)
        written += len(text_of(item, "\n" + 8 * " "))
    return document


def single_domain(root: Block, sampler: Sampler) -> Data:
    """A model of one domain, whose arrays the sampler makes as long as it likes."""
    model = sampler.item(root.at("SETUP", "ORVAHPC"), 0)
    return {"SETUP": {"simulation_name": "benchmark", "ORVAHPC": model}}


# ---- text


def text_of(document: Data, line_start: str = "\n") -> str:
    """The document as people write it: two spaces deeper with each level, arrays of plain values on one line."""
    parts: list[str] = []
    write_value(document, line_start, parts)
    return "".join(parts) + "\n"


def write_value(value: Any, line_start: str, parts: list[str]) -> None:
    deeper = line_start + "  "
    if isinstance(value, dict) and value:
        separator = "{"
        for name, member in value.items():
            parts.append(f"{separator}{deeper}{json.dumps(name)}: ")
            write_value(member, deeper, parts)
            separator = ","
        parts.append(line_start + "}")
    elif isinstance(value, list) and any(isinstance(element, (dict, list)) for element in value):
        separator = "["
        for element in value:
            parts.append(separator + deeper)
            write_value(element, deeper, parts)
            separator = ","
        parts.append(line_start + "]")
    else:
        parts.append(json.dumps(value))
