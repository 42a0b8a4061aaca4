"""Models as large as wanted, made from the examples: their domains over and over, or one domain with long arrays."""

from __future__ import annotations

import itertools
import json
import random
from collections.abc import Iterator
from pathlib import Path
from typing import Any

Data = dict[str, Any]
Reference = tuple[str, ...]

EXAMPLES = Path(__file__).resolve().parent.parent / "examples"
DOMAINS = ("ORVACHAIN_1D", "ORVAPLANE_2D", "ORVASUB")


def example_models(block: str) -> list[Data]:
    """The examples' models of a kind, in the order of their names."""
    texts = [path.read_text(encoding="utf-8") for path in sorted(EXAMPLES.glob("*/model.json"))]
    models = [json.loads(text)["SETUP"] for text in texts]
    return [model[block] for model in models if block in model]


def command_file(block: str, model: Data) -> Data:
    return {"SETUP": {"simulation_name": "benchmark", block: model}}


def text_of(value: Any, indent: str = "") -> str:
    """Text as people print it: indented, lists of plain values on one line."""
    inner = indent + "  "
    if isinstance(value, dict) and value:
        members = (f"{inner}{json.dumps(name)}: {text_of(member, inner)}" for name, member in value.items())
        return "{\n" + ",\n".join(members) + f"\n{indent}}}"
    if isinstance(value, list) and any(isinstance(element, (dict, list)) for element in value):
        return "[\n" + ",\n".join(inner + text_of(element, inner) for element in value) + f"\n{indent}]"
    return json.dumps(value)


# ---- many domains


def multi_domain(size: int) -> Data:
    """Domains of all kinds in turn until the text has that size; each under a name of its own."""
    models = example_models("ORVAMD")
    in_turn = [(kind, domain) for kind in DOMAINS for model in models for domain in model.get(kind, [])]
    random.Random(1).shuffle(in_turn)
    if size < 100_000:
        in_turn = [min(in_turn, key=lambda entry: len(text_of(entry[1])))]
    result: Data = {"multiregion": "benchmark", **{kind: [] for kind, _ in in_turn}}
    length = len(text_of(command_file("ORVAMD", result)))
    for number, (kind, domain) in enumerate(itertools.cycle(in_turn)):
        result[kind].append({**domain, "region_name": f"{domain['region_name']}_{number}"})
        length += len(text_of(result[kind][-1], " " * 8)) + len(",\n") + 8
        if length >= size:
            return command_file("ORVAMD", result)
    raise AssertionError("a cycle has no end")


# ---- one domain


def with_blocks_of(model: Data, other: Data) -> Data:
    """The model with the blocks that it lacks and the other has."""
    joined = dict(model)
    for name, value in other.items():
        if not name.isupper():
            continue
        if name not in model:
            joined[name] = value
        elif isinstance(value, dict):
            joined[name] = with_blocks_of(model[name], value)
    return joined


def references_of(schema: Data, path: Reference = ()) -> Iterator[tuple[Reference, Reference]]:
    """Paths of the values that refer to names, array elements left out, with those of the arrays referred to."""
    if "requiredIn" in schema:
        yield path, tuple(schema["requiredIn"]["$array_ref"].strip("/").split("/"))
    for name, member in schema.get("properties", {}).items():
        yield from references_of(member, (*path, name))
    if "items" in schema:
        yield from references_of(schema["items"], path)


class Widener:
    """Makes the arrays of a model as long as wanted, its names unique and its references lead to them."""

    def __init__(self, schema: Data, items: int) -> None:
        self.references = dict(references_of(schema))
        self.definitions = set(self.references.values())
        self.items = items
        self.rng = random.Random(1)

    def widened(self, value: Any, path: Reference = (), inside_items: bool = False) -> Any:
        if path in self.references:
            return self.name_in(self.references[path], self.rng.randrange(self.items))
        if isinstance(value, dict):
            return {name: self.widened(member, (*path, name), inside_items) for name, member in value.items()}
        if isinstance(value, list) and value and isinstance(value[0], dict):
            count = len(value) if inside_items else self.items
            return [self.item(value[number % len(value)], path, number) for number in range(count)]
        return value

    def item(self, item: Data, path: Reference, number: int) -> Data:
        widened = self.widened(item, path, inside_items=True)
        return {**widened, "name": self.name_in(path, number)} if path in self.definitions else widened

    @staticmethod
    def name_in(path: Reference, number: int) -> str:
        return f"{path[-1].lower()}_{number}"


def single_domain(schema: Data, size: int) -> Data:
    """One domain with all blocks of the examples and arrays of so many items that the text has about that size."""
    models = example_models("ORVAHPC")
    joined = models[0]
    for model in models[1:]:
        joined = with_blocks_of(joined, model)
    whole = command_file("ORVAHPC", joined)

    def of_items(items: int) -> Data:
        return Widener(schema, items).widened(whole)

    few, many = 50, 150
    lengths = {items: len(text_of(of_items(items))) for items in (few, many)}
    per_item = (lengths[many] - lengths[few]) / (many - few)
    return of_items(max(1, few + round((size - lengths[few]) / per_item)))


def boundaries_at_strings(count: int) -> Data:
    """A small model of one domain with so many boundaries at so many cell strings."""
    strings = [{"name": f"stringdef_{number}", "upstream_direction": "left"} for number in range(count)]
    boundaries = [{"string_name": string["name"], "type": "zero_gradient_out"} for string in strings]
    plane = {
        "GEOMETRY": {"mesh_file": "reach.2dm", "STRINGDEF": strings},
        "HYDRAULICS": {
            "PARAMETER": {"CFL": 0.9},
            "INITIAL": {"type": "dry"},
            "BOUNDARY": {"STANDARD": boundaries},
        },
    }
    return command_file("ORVAHPC", {"PHYSICAL_PROPERTIES": {}, "ORVAPLANE_2D": plane})


def of_same_shape(value: Any) -> Any:
    """JSON of the same size and depth as other JSON, with names and texts that mean nothing."""
    if isinstance(value, dict):
        members = enumerate(value.items())
        return {str(number).rjust(len(name), "m"): of_same_shape(member) for number, (name, member) in members}
    if isinstance(value, list):
        return [of_same_shape(element) for element in value]
    return "x" * len(value) if isinstance(value, str) else value


# ---- faults


class Faults:
    """Puts faults into a share of the plain members of a model's objects."""

    def __init__(self, share: float) -> None:
        self.share = share
        self.rng = random.Random(1)
        self.made = {"wrong type": 0, "unknown member": 0, "missing": 0, "beyond any limit": 0}

    def into(self, model: Data) -> Data:
        if self.share == 0:
            return model
        faulty = json.loads(json.dumps(model))  # repeated domains share their parts: each is to be spoiled once
        for block in faulty["SETUP"].values():
            self._spoil(block)
        return faulty

    def _spoil(self, value: Any) -> None:
        if isinstance(value, list):
            for element in value:
                self._spoil(element)
        elif isinstance(value, dict):
            for name, member in list(value.items()):
                if isinstance(member, (dict, list)):
                    self._spoil(member)
                elif self.rng.random() < self.share:
                    self._spoil_member(value, name)

    def _spoil_member(self, owner: Data, name: str) -> None:
        kind = self.rng.choice(list(self.made))
        if kind == "beyond any limit" and isinstance(owner[name], str):
            kind = "wrong type"
        self.made[kind] += 1
        member = owner.pop(name)
        if kind == "wrong type":
            owner[name] = 7 if isinstance(member, str) else "7"
        elif kind == "unknown member":
            owner[name + "x"] = member
        elif kind == "beyond any limit":
            owner[name] = -1e30
