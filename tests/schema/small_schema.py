"""A small tree of blocks and a schema for it in which no rule finds anything; tests break one thing at a time."""

from __future__ import annotations

import copy
import unittest
from typing import Any, Callable

from check_schema import ALL_RULES, findings
from rules.base import Share

from block_tree import Block, make_block
from schema_figures import printed

Schema = dict[str, Any]
Found = list[tuple[str, str, str]]


def block(
    name: str, kind: str = "object", required: bool = False, keys: str = "", blocks: list[Any] | None = None
) -> Schema:
    return {"name": name, "kind": kind, "required": required, "keys": keys.split(), "blocks": blocks or []}


def tree() -> Block:
    plane = [
        block("GEOMETRY", required=True, keys="mesh_file", blocks=[
            block("STRINGDEF", "array", keys="name"),
            block("REGIONDEF", "array", keys="name"),
        ]),
        block("FRICTION", keys="type regions"),
        block("BOUNDARY", "array", keys="string_name type gate discharge discharge_file crest"),
    ]
    domain = [
        block("INITIAL", required=True, keys="file"),
        block("OUTPUT", keys="split_file names"),
        block("TIMESTEP", keys="max_steps", blocks=[block("CFL", "value", required=True), block("Q", "array_value")]),
    ]
    models = [
        block("ORVAHPC", blocks=[block("ORVAPLANE_2D", required=True, blocks=plane)]),
        block("ORVAMD", blocks=[block("PLANE", "array", blocks=domain)]),
    ]
    setup = block("SETUP", required=True, keys="simulation_name", blocks=models)
    return Block("", "object", True, (), (make_block(setup),))


def text(subject: str) -> str:
    """A description that is long enough and fits nothing else."""
    return f"<p>The words about {subject} say what it is, how it is used and which values make sense.</p>"


def listed(subject: str, *values: str) -> str:
    return text(subject) + "<ul>" + "".join(f"<li>{value}: what it does</li>" for value in values) + "</ul>"


def thing(subject: str, properties: Schema, required: str = "", **more: Any) -> Schema:
    """An object that requires some of its properties; the others are optional."""
    lists = {
        "required": [name for name in properties if name in required.split()],
        "optional": [name for name in properties if name not in required.split()],
    }
    filled = {keyword: names for keyword, names in lists.items() if names}
    return {"type": "object", "description": text(subject), "properties": properties, **filled, **more}


def many(items: Schema) -> Schema:
    return {"type": "array", "items": items}


def string(subject: str, **more: Any) -> Schema:
    return {"type": "string", "description": text(subject), **more}


def reference(target: str) -> Schema:
    return {"requiredIn": {"itemProperty": "name", "$array_ref": f"/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/{target}"}}


def variant(required: str, optional: str = "", **consts: str) -> Schema:
    alternative: Schema = {"description": text("variant " + " ".join(consts.values()))}
    alternative["properties"] = {name: {"const": value} for name, value in consts.items()}
    alternative["required"] = required.split()
    return {**alternative, "optional": optional.split()} if optional else alternative


def choice(name: str) -> list[Schema]:
    return [{"required": [name]}, {"required": [f"{name}_file"]}]


def boundary() -> Schema:
    crest = {"type": "number", "units": "[m]", "minimum": 0, "maximum": 1, "default": 0.5, "description": text("crest")}
    values = {
        "string_name": string("the cross-section", **reference("STRINGDEF")),
        "type": {"type": "string", "enum": ["inflow", "weir"], "description": listed("the kind", "inflow", "weir")},
        "gate": {"type": "string", "enum": ["flat", "arc"], "description": listed("the gate", "flat", "arc")},
        "discharge": {"type": "number", "units": "[m<sup>3</sup>/s]", "description": text("the discharge")},
        "discharge_file": string("the file of the discharge", format="uri"),
        "crest": crest,
    }
    inner = [variant("gate", gate="flat"), variant("gate", gate="arc")]
    variants = [
        {**variant("string_name type", type="inflow"), "oneOf": choice("discharge")},
        {**variant("type gate", "crest", type="weir"), "oneOf": inner},
    ]
    return thing("the boundary", values, "string_name type", oneOf=variants)


def friction() -> Schema:
    friction_value = {"type": "number", "units": "[-]", "minimum": 0, "exclusiveMinimum": True}
    values = {
        "region_name": string("the region", **reference("REGIONDEF")),
        "friction": {**friction_value, "description": text("roughness")},
    }
    regions = {**many(thing("one region", values, "region_name friction")), "description": text("the list of regions")}
    laws = {"type": "string", "enum": ["strickler", "chezy"], "default": "chezy"}
    laws["description"] = listed("the law", "strickler", "chezy")
    return thing("friction", {"type": laws, "regions": regions})


def domain() -> Schema:
    switch = {"type": "string", "enum": ["yes", "no"], "default": "no"}
    switch["description"] = text("one file for each output, yes, or one for all, no,")
    names = {**many({"type": "string", "enum": ["h", "v"]}), "description": listed("the values", "h", "v")}
    cfl = {"type": "number", "units": "[-]", "default": 1.0, "maximum": 2, "description": text("the CFL number")}
    steps = {"type": "integer", "description": text("the number of steps")}
    curve = {**many({"type": "number", "units": "[m]"}), "description": text("the curve Q")}
    blocks = {
        "INITIAL": thing("the beginning", {"file": string("the stored state")}, "file", autoexpand=True),
        "OUTPUT": thing("the output", {"split_file": switch, "names": names}),
        "TIMESTEP": thing("time", {"max_steps": steps, "CFL": cfl, "Q": curve}, "CFL"),
    }
    return thing("the domain", blocks, "INITIAL")


def schema() -> Schema:
    geometry = {
        "mesh_file": string("the file of the mesh", format="uri"),
        "STRINGDEF": many(thing("a string", {"name": string("the name of the string")}, "name")),
        "REGIONDEF": many(thing("a region", {"name": string("the name of the region")}, "name")),
    }
    plane = {
        "GEOMETRY": thing("the geometry", geometry, "mesh_file"),
        "FRICTION": friction(),
        "BOUNDARY": many(boundary()),
    }
    models = {
        "simulation_name": string("the run", default="RUNFILE"),
        "ORVAHPC": thing("one domain", {"ORVAPLANE_2D": thing("the plane", plane, "GEOMETRY")}, "ORVAPLANE_2D"),
        "ORVAMD": thing("many domains", {"PLANE": many(domain())}),
    }
    which = [{"required": ["ORVAHPC"]}, {"required": ["ORVAMD"]}]
    return thing("the model", models, "simulation_name", oneOf=which)


PLANE = "/properties/ORVAHPC/properties/ORVAPLANE_2D"
GEOMETRY = f"{PLANE}/properties/GEOMETRY"
FRICTION = f"{PLANE}/properties/FRICTION"
BOUNDARY = f"{PLANE}/properties/BOUNDARY/items"
DOMAIN = "/properties/ORVAMD/properties/PLANE/items"


def at(node: Any, pointer: str) -> Any:
    """What stands at a pointer."""
    for step in pointer.split("/")[1:]:
        node = node[int(step) if isinstance(node, list) else step]
    return node


def share_of(broken: Schema, content: bytes | None = None) -> Share:
    return Share(printed(broken).encode() if content is None else content, broken, ("SETUP",), tree())


class RuleTest(unittest.TestCase):
    """A test that breaks the small schema and tells all that is found then."""

    maxDiff = None

    def broken(self, pointer: str, change: Callable[[Any], None]) -> Found:
        """What all rules find after a change to what stands at a pointer."""
        copied = copy.deepcopy(schema())
        change(at(copied, pointer))
        return [(rule, found.pointer, found.message) for rule, found in findings(share_of(copied), ALL_RULES)]

    def assert_breaks(self, rule: str, place: str, message: str, *, at: str | None = None, **members: Any) -> None:
        """Exactly one finding after members were set; None removes one. The change is made where the finding is."""

        def change(node: Schema) -> None:
            for name, value in members.items():
                if value is None:
                    del node[name]
                else:
                    node[name] = value

        self.assertEqual(self.broken(place if at is None else at, change), [(rule, place, message)])
