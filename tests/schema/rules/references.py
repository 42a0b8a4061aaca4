"""Rules about names that refer to definitions elsewhere in the model."""

from __future__ import annotations

from typing import Any, Iterator

from schema_nodes import Role, split_path

from .base import Finding, Rule, Share

MODEL = ("SETUP", "ORVAHPC")
PLANE = "/SETUP/ORVAHPC/ORVAPLANE_2D"
STRINGS = f"{PLANE}/GEOMETRY/STRINGDEF"
REGIONS = f"{PLANE}/GEOMETRY/REGIONDEF"
MIXTURES = f"{PLANE}/MORPHOLOGY/BEDMATERIAL/MIXTURE"
SOILS = f"{PLANE}/MORPHOLOGY/BEDMATERIAL/SOILDEF"
DEFINITIONS = {
    "string_name": STRINGS,
    "string_name_downstream": STRINGS,
    "mixture_name": MIXTURES,
    "default_soil": SOILS,
}


def definitions_for(names: tuple[str, ...]) -> str | None:
    """The list of definitions that the key at a path refers to."""
    if names[: len(MODEL)] != MODEL:
        return None
    key, outer = names[-1], names[-2]
    if key == "region_name" and outer in ("SOURCE", "regions"):
        return REGIONS
    if key.startswith("soil") and names[-3:-1] == ("SOIL_ASSIGNMENT", "regions"):
        return SOILS
    return DEFINITIONS.get(key)


def references(share: Share) -> Iterator[Finding]:
    """Names of the single-domain model refer to their definitions, and nothing else refers to anything."""
    for node in share.nodes:
        wanted = definitions_for(node.names) if node.role is Role.PROPERTY and len(node.names) > 1 else None
        reference = node.schema.get("requiredIn")
        if reference is None:
            if wanted:
                yield Finding(node.pointer, f"no requiredIn to {wanted}")
        elif not wanted:
            yield Finding(node.pointer, "requiredIn of what refers to no definition")
        elif reference != {"itemProperty": "name", "$array_ref": wanted}:
            yield Finding(node.pointer, f"requiredIn does not refer to the names in {wanted}")


def references_in_regions(share: Share) -> Iterator[Finding]:
    """A list of values by regions says for which region each is; one of soils, which soil."""
    for node in share.nodes:
        if node.role is not Role.ITEMS or node.name != "regions" or node.names[: len(MODEL)] != MODEL:
            continue
        if "region_name" not in node.properties():
            yield Finding(node.pointer, "elements without region_name")
        if node.names[-2] == "SOIL_ASSIGNMENT" and not any(name.startswith("soil") for name in node.properties()):
            yield Finding(node.pointer, "elements without the name of a soil")


def references_lead_somewhere(share: Share) -> Iterator[Finding]:
    """A reference leads to an array of the schema whose elements have the member that is compared."""
    for node in share.nodes:
        reference = node.schema.get("requiredIn")
        if isinstance(reference, dict) and not _leads_to_definitions(share, reference):
            yield Finding(node.pointer, f"{reference.get('$array_ref')} is no array of items with the member compared")


def _leads_to_definitions(share: Share, reference: dict[str, Any]) -> bool:
    names = split_path(str(reference.get("$array_ref")))
    member = reference.get("itemProperty")
    if names[: len(share.at)] == share.at:
        lists = (node for node in share.nodes if node.role is Role.ITEMS and node.names == names)
        return any(member in node.properties() for node in lists)
    block = share.tree.find(names)
    return block is not None and block.kind == "array" and member in block.keys


RULES: list[Rule] = [references, references_in_regions, references_lead_somewhere]
