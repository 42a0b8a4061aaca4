#!/usr/bin/env python3
"""Checks that the schema in the standard drafts keeps what the schema says to people.

    check_content.py SCHEMA TRANSLATED...

Each schema object that describes data is looked up in the translation by its place. Its description must be there word for
word, without tags, entities and superfluous space, with its unit; its default, its type, its limits and its values must be
there too. What a variant is about must stand with a value of its selector.
"""

from __future__ import annotations

import html
import json
import re
import sys
from pathlib import Path
from typing import Any, Iterator

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))

from schema_nodes import Node, top, walk  # noqa: E402

Json = Any
UNMARKED = re.compile(r"[\W_]+")
SMALL = str.maketrans("⁰¹²³⁴⁵⁶⁷⁸⁹₀₁₂₃₄₅₆₇₈₉", "01234567890123456789")
LIMITS = {"minimum": "exclusiveMinimum", "maximum": "exclusiveMaximum"}


def bare(text: str) -> str:
    """Letters and digits alone, which no way of writing sub- and superscripts, lists and emphasis changes."""
    return UNMARKED.sub("", text.translate(SMALL))


def bare_html(text: str) -> str:
    return bare(html.unescape(re.sub(r"<[^>]*>", " ", text)))


def faults(node: dict[str, Json], translated: dict[str, Json]) -> Iterator[str]:
    """What the translation of a schema object lacks."""
    for form in ("description", "markdownDescription"):
        text = translated.get(form, "")
        if not bare(text).startswith(bare_html(node.get("description", ""))):
            yield f"{form} is {text!r}"
        if "units" in node and f"Unit{bare_html(node['units'])}" not in bare(text):
            yield f"{form} lacks the unit {node['units']}"
        if "default" in node and bare(f"Default{json.dumps(node['default'])}") not in bare(text):
            yield f"{form} lacks the default {node['default']}"
        if re.search(r"</?[a-z]+>|&[a-z]+;", text.replace("\\", "")):
            yield f"{form} has markup of HTML: {text!r}"
    for keyword in ("type", "default", "enum"):
        if node.get(keyword) != translated.get(keyword):
            yield f"{keyword} is {translated.get(keyword)!r}"
    for limit, exclusive in LIMITS.items():
        place = exclusive if node.get(exclusive) else limit
        other = limit if node.get(exclusive) else exclusive
        if node.get(limit) != translated.get(place) or other in translated:
            yield f"{place} is {translated.get(place)!r}"
    if len(translated.get("enumDescriptions", node.get("enum", []))) != len(node.get("enum", [])):
        yield "the values and their descriptions differ in number"


def alternatives(node: dict[str, Json]) -> Iterator[dict[str, Json]]:
    """The alternatives of all groups of an object, nested ones too."""
    for group in [node.get("oneOf", [])] + [each["oneOf"] for each in node.get("allOf", [])]:
        for alternative in group:
            yield alternative
            yield from alternatives(alternative)


def variant_faults(node: dict[str, Json], translated: dict[str, Json]) -> Iterator[str]:
    """Descriptions of variants that no value of their selectors has."""
    for alternative in alternatives(node):
        wanted = bare_html(alternative.get("description", ""))
        fixed = {name: each["const"] for name, each in alternative.get("properties", {}).items() if "const" in each}
        if wanted and not any(wanted in text for text in value_texts(translated, fixed)):
            yield f"the description of the variant {fixed} is missing"


def value_texts(translated: dict[str, Json], fixed: dict[str, str]) -> Iterator[str]:
    for name, value in fixed.items():
        key = translated["properties"][name]
        index = key["enum"].index(value)
        yield bare(key["enumDescriptions"][index])


def at(translated: Json, node: Node) -> Json:
    """The translation of a schema object: keys and elements stand where they stood."""
    for step in node.pointer.split("/")[1:]:
        translated = translated[step.replace("~1", "/").replace("~0", "~")]
    return translated


def main(arguments: list[str]) -> int:
    schema = json.loads(Path(arguments[0]).read_bytes())
    nodes = [node for node in walk(top(schema)) if node.is_whole]
    wrong = []
    for file in arguments[1:]:
        translated = json.loads(Path(file).read_bytes())
        for node in nodes:
            problems = [*faults(node.schema, at(translated, node)), *variant_faults(node.schema, at(translated, node))]
            wrong += [f"{Path(file).name} {node.pointer}: {problem}" for problem in problems]
    print("\n".join(wrong[:50]))
    print(f"{len(nodes)} schema objects, {len(arguments) - 1} translations; {len(wrong)} faults")
    return 0 if len(nodes) > 1000 and len(arguments) > 1 and not wrong else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
