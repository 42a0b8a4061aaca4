"""Rules about single members whose schema is part of the format, and not left to whoever writes the text."""

from __future__ import annotations

from typing import Any, Iterator

from schema_nodes import Node, Role

from .base import Finding, Rule, Share

ABOVE_0 = {"minimum": 0, "exclusiveMinimum": True}

# What the keywords of members are; None stands for a keyword that must not be there.
KEYWORDS: dict[str, dict[str, Any]] = {
    "/SETUP/simulation_name": {"type": "string", "default": "RUNFILE"},
    "/SETUP/ORVAMD/multiregion": {"type": "string", "default": "unnamed_multiregion"},
    "/SETUP/ORVAHPC/PHYSICAL_PROPERTIES/gravity": {"type": "number", "default": 9.81, **ABOVE_0},
    "/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/PARAMETER/CFL": {"type": "number", "default": 0.9, **ABOVE_0},
    "/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/PARAMETER/minimum_water_depth": {
        "type": "number", "default": 0.01, "units": "[m]", **ABOVE_0,
    },
    "/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/PARAMETER/fluid_density": {"type": "number", "default": 1000},
} | {
    f"/SETUP/ORVAMD/{domain}/TIMESTEP/CFL": {
        "type": "number", "default": 1.0, "maximum": 2.0, "exclusiveMaximum": None, **ABOVE_0,
    }
    for domain in ("ORVACHAIN_1D", "ORVAPLANE_2D")
}

# All that objects require, blocks and keys.
REQUIRED = {
    "/": {"SETUP"},
    "/SETUP": {"simulation_name"},
    "/SETUP/ORVAMD": set(),
    "/SETUP/ORVAMD/ORVAPLANE_2D": {"region_name", "GEOMETRY", "HYDRAULICS", "TIMESTEP", "OUTPUT"},
}

# Values that enumerations have at least.
ENUMERATED = {
    "/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/BOUNDARY/STANDARD/type": {
        "uniform_in", "uniform_out", "weir_out_constant", "weir_out_dynamic",
    },
}
OUTPUT_FORMATS = {"ascii", "sms", "shape", "vtk", "hdf5"}


def quoted_keywords(share: Share) -> Iterator[Finding]:
    """Types, defaults, units and limits that the format fixes."""
    for node, path in _named(share, Role.PROPERTY):
        for keyword, value in KEYWORDS.get(path, {}).items():
            if node.schema.get(keyword) != value:
                yield Finding(node.pointer, f"{keyword} is {node.schema.get(keyword)!r}, to be {value!r}")


def quoted_required(share: Share) -> Iterator[Finding]:
    """What the format says an object requires; one of the two models is chosen by the simulation's block."""
    for node, path in _named(share, Role.ROOT, Role.PROPERTY, Role.ITEMS):
        if path in REQUIRED and node.type == "object" and set(node.texts("required")) != REQUIRED[path]:
            yield Finding(node.pointer, f"required are not exactly {sorted(REQUIRED[path])}")
        if path == "/SETUP" and node.schema.get("oneOf") != [{"required": ["ORVAHPC"]}, {"required": ["ORVAMD"]}]:
            yield Finding(node.pointer, "no oneOf of ['ORVAHPC'] and ['ORVAMD']")


def quoted_values(share: Share) -> Iterator[Finding]:
    """Values that the format names for an enumeration."""
    for node, path in _named(share, Role.PROPERTY):
        for value in sorted(ENUMERATED.get(path, set()) - set(node.texts("enum"))):
            yield Finding(node.pointer, f"'{value}' is not in the enumeration")
        if path.endswith("/SPECIAL_OUTPUT/format"):
            for value in sorted(OUTPUT_FORMATS ^ set(node.texts("enum"))):
                yield Finding(node.pointer, f"'{value}' is not in both the enumeration and the list of output formats")


def _named(share: Share, *roles: Role) -> Iterator[tuple[Node, str]]:
    """The nodes of some roles with the names on their paths."""
    for node in share.nodes:
        if node.role in roles:
            yield node, "/" + "/".join(node.names)


RULES: list[Rule] = [quoted_keywords, quoted_required, quoted_values]
