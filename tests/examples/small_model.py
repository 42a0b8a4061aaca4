"""A small schema in which all shapes of groups occur, and a model that fits it."""

from __future__ import annotations

from pathlib import Path

from models import Example, Json, Schema


def thing(properties: dict[str, Json], required: str = "", **more: Json) -> dict[str, Json]:
    optional = [name for name in properties if name not in required.split()]
    return {"type": "object", "required": required.split(), "optional": optional, "properties": properties, **more}


def many(items: Json) -> dict[str, Json]:
    return {"type": "array", "items": items}


def variant(required: str, optional: str = "", **consts: str) -> dict[str, Json]:
    fixes = {name: {"const": value} for name, value in consts.items()}
    return {"required": required.split(), "optional": optional.split(), "properties": fixes}


def choice(*names: str) -> list[Json]:
    return [{"required": [name]} for name in names]


STRING = {"type": "string"}
FILE = {"type": "string", "format": "uri"}
REFERENCE = {"type": "string", "requiredIn": {"itemProperty": "name", "$array_ref": "/STRINGS"}}


def boundary() -> dict[str, Json]:
    members = {
        "type": {"type": "string", "enum": ["inflow", "weir", "gate"]},
        "mode": {"type": "string", "enum": ["free", "fixed"]},
        "string_name": REFERENCE,
        "q": {"type": "number", "minimum": 0, "exclusiveMinimum": True, "maximum": 100},
        "q_file": FILE,
        "height": {"type": "number", "minimum": -2.5},
        "steps": {"type": "integer", "minimum": 1, "maximum": 9},
    }
    inflow = {**variant("type string_name", type="inflow"), "oneOf": choice("q", "q_file")}
    modes = [variant("mode height", mode="fixed"), variant("mode", mode="free")]
    gate = {**variant("type mode", type="gate"), "oneOf": modes}
    return thing(members, "type", oneOf=[inflow, variant("type height", "steps", type="weir"), gate])


def schema_text() -> dict[str, Json]:
    output = thing({"file": FILE, "times": many({"type": "number"}), "on": {"type": "boolean"}}, "file")
    members = {
        "STRINGS": many(thing({"name": STRING}, "name")),
        "BOUNDARY": many(boundary()),
        "OUTPUT": output,
        "k": {"type": "number"},
        "k_file": FILE,
        "eps": {"type": "number", "default": 0.5},
        "eps_file": FILE,
    }
    groups = [{"oneOf": choice("k", "k_file")}, {"oneOf": choice("eps", "eps_file")}]
    return thing(members, "OUTPUT", allOf=groups)


def document() -> dict[str, Json]:
    return {
        "STRINGS": [{"name": "upper"}, {"name": "lower"}],
        "BOUNDARY": [
            {"type": "inflow", "string_name": "upper", "q": 20.5},
            {"type": "weir", "height": 1, "steps": 3},
            {"type": "gate", "mode": "free"},
        ],
        "OUTPUT": {"file": "out.h5", "times": [1, 2.5], "on": True},
        "k": 1e-3,
        "eps_file": "eps.txt",
    }


def schema() -> Schema:
    return Schema(schema_text())


def example(file: Path = Path("small/model.json")) -> Example:
    return Example("small", file, document())
