#!/usr/bin/env python3
"""Translates a schema of the dialect of `jsv` to standard JSON Schema draft 4.

    dialect_to_draft4.py SCHEMA [OUTPUT]

A standard validator finds data valid against the translation exactly when `jsv` finds no error in them, with these
limits, which draft 4 cannot express:

- References between blocks (requiredIn) are dropped; their number is told on standard error.
- The standard has no warnings: members that no keyword uses are valid.
- `jsv` compares numbers as doubles: beyond 2^53 a validator with exact integers may differ.

"integer" stands as it is: in draft 4 a number with a fraction or an exponent, 3.0 too, is no integer. Validators that
follow a later draft in this respect accept 3.0.

Unlike `jsv`, which looks only at the parts of the schema that it comes by, the translation checks the whole schema. The
first fault, and a file that cannot be read or written, end it with a message and status 1.
"""

from __future__ import annotations

import argparse
import json
import math
import re
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Callable, NoReturn

DRAFT4 = "http://json-schema.org/draft-04/schema#"
TYPES = ("integer", "number", "string", "object", "array", "boolean")
MEMBERS_ONLY = frozenset(
    "required optional properties description units default autoexpand format $schema exclusiveMinimum"
    " exclusiveMaximum".split()
)
POINTER = re.compile(r"(/([^~]|~[01])*)?", re.DOTALL)

Conjuncts = list[dict[str, Any]]


class SchemaError(Exception):
    """A fault of the schema that is to be translated, with its location."""

    def __init__(self, location: "Location", message: str) -> None:
        super().__init__(f"{location.text()}: {message}")


@dataclass(frozen=True)
class Location:
    """A place in the schema, rendered as `jsv` renders it."""

    tokens: tuple[str, ...] = ()

    def __truediv__(self, token: str | int) -> "Location":
        return Location((*self.tokens, str(token)))

    def text(self) -> str:
        return "".join("/" + token.replace("~", "~0").replace("/", "~1") for token in self.tokens) or "/"


@dataclass(frozen=True)
class Translation:
    """The draft-4 schema, and how many references between blocks it lacks."""

    schema: dict[str, Any]
    dropped_references: int


def translate(schema: Any) -> Translation:
    """Translates a parsed schema; raises SchemaError for the first fault."""
    translator = _Translator()
    draft4 = translator.node(schema, Location())
    return Translation({"$schema": DRAFT4, **draft4}, translator.dropped_references)


def speaks_of_members_only(schema: dict[str, Any]) -> bool:
    """Whether a schema object says nothing about a datum that is no object."""
    groups = [schema["oneOf"]] if "oneOf" in schema else []
    groups += [element["oneOf"] for element in schema.get("allOf", [])]
    others = schema.keys() - {"oneOf", "allOf"}
    return others <= MEMBERS_ONLY and all(speaks_of_members_only(each) for group in groups for each in group)


class _Translator:
    """Translates node by node; a keyword becomes conjuncts, schemas that must all hold."""

    def __init__(self) -> None:
        self.dropped_references = 0
        self._keywords: dict[str, Callable[[dict[str, Any], Location], Conjuncts]] = {
            "type": self._type,
            "const": self._const,
            "enum": self._enum,
            "minimum": lambda node, where: self._limit(node, where, "minimum", "exclusiveMinimum"),
            "maximum": lambda node, where: self._limit(node, where, "maximum", "exclusiveMaximum"),
            "required": self._required,
            "properties": self._properties,
            "items": lambda node, where: [{"items": self.node(node["items"], where)}],
            "oneOf": self._one_of,
            "allOf": self._all_of,
            "requiredIn": self._required_in,
            "optional": self._optional,
            "default": self._default,
            "format": self._format,
            "description": lambda node, where: self._drop_string(node["description"], where),
            "units": lambda node, where: self._drop_string(node["units"], where),
            "autoexpand": self._autoexpand,
            "$schema": lambda node, where: [],
            "exclusiveMinimum": lambda node, where: [],
            "exclusiveMaximum": lambda node, where: [],
        }

    def node(self, schema: Any, where: Location) -> dict[str, Any]:
        if isinstance(schema, bool):
            return {} if schema else {"not": {}}
        if not isinstance(schema, dict):
            raise SchemaError(where, "A schema must be defined by either an object or a boolean.")
        conjuncts: Conjuncts = []
        for name in sorted(schema, key=str.encode):
            if name not in self._keywords:
                raise SchemaError(where / name, f"The keyword '{name}' is not supported.")
            conjuncts += self._keywords[name](schema, where / name)
        return _conjunction(conjuncts)

    def _type(self, node: dict[str, Any], where: Location) -> Conjuncts:
        if _string(node["type"], where) not in TYPES:
            raise SchemaError(where, "The provided type is invalid.")
        return [{"type": node["type"]}]

    def _const(self, node: dict[str, Any], where: Location) -> Conjuncts:
        return [{"enum": [_string(node["const"], where)]}]

    def _enum(self, node: dict[str, Any], where: Location) -> Conjuncts:
        words = _strings(node["enum"], where)
        return [{"enum": words} if words else {"not": {}}]

    def _limit(self, node: dict[str, Any], where: Location, limit: str, switch: str) -> Conjuncts:
        conjunct = {limit: node[limit]}
        if switch in node:
            if not isinstance(node[switch], bool):
                raise SchemaError(Location(where.tokens[:-1]) / switch, "This keyword requires a boolean parameter.")
            conjunct[switch] = node[switch]
        if not _is_number(node[limit]):
            _wrong_type(where, "a number")
        return [conjunct]

    def _required(self, node: dict[str, Any], where: Location) -> Conjuncts:
        names = _strings(node["required"], where)
        return [{"required": names}] if names else []

    def _optional(self, node: dict[str, Any], where: Location) -> Conjuncts:
        _strings(node["optional"], where)
        return []

    def _properties(self, node: dict[str, Any], where: Location) -> Conjuncts:
        members = _object(node["properties"], where)
        return [{"properties": {name: self.node(schema, where / name) for name, schema in members.items()}}]

    def _one_of(self, node: dict[str, Any], where: Location) -> Conjuncts:
        return [self._group(node["oneOf"], where)]

    def _all_of(self, node: dict[str, Any], where: Location) -> Conjuncts:
        groups = []
        for index, element in enumerate(_array(node["allOf"], where)):
            place = where / index
            if len(_object(element, place)) != 1:
                raise SchemaError(place, "Only single items are supported.")
            if "oneOf" not in element:
                raise SchemaError(place, "Only a single 'oneOf' item is supported here.")
            groups.append(self._group(element["oneOf"], place / "oneOf"))
        return [{"allOf": groups}] if groups else []

    def _group(self, alternatives: Any, where: Location) -> dict[str, Any]:
        for index, alternative in enumerate(_array(alternatives, where)):
            _object(alternative, where / index)
        translated = [self.node(alternative, where / index) for index, alternative in enumerate(alternatives)]
        if not translated:
            return {"not": {"type": "object"}}
        if all(speaks_of_members_only(alternative) for alternative in alternatives):
            return {"anyOf": [{"not": {"type": "object"}}, {"oneOf": translated}]}
        return {"oneOf": translated}

    def _required_in(self, node: dict[str, Any], where: Location) -> Conjuncts:
        parameter = _object(node["requiredIn"], where)
        for name in ("itemProperty", "$array_ref"):
            if name not in parameter:
                raise SchemaError(where, "The schema is invalid.")
            _string(parameter[name], where / name)
        if not POINTER.fullmatch(parameter["$array_ref"]):
            raise SchemaError(where / "$array_ref", "This JSON pointer is invalid.")
        self.dropped_references += 1
        return []

    def _default(self, node: dict[str, Any], where: Location) -> Conjuncts:
        if not isinstance(node["default"], (bool, int, float, str)):
            raise SchemaError(where, "Only string, numeric, and boolean default values are supported.")
        return []

    def _format(self, node: dict[str, Any], where: Location) -> Conjuncts:
        if _string(node["format"], where) != "uri":
            raise SchemaError(where, "Only the 'uri' format is currently supported.")
        return []

    def _autoexpand(self, node: dict[str, Any], where: Location) -> Conjuncts:
        if not isinstance(node["autoexpand"], bool):
            _wrong_type(where, "an boolean")  # this article is how jsv words it
        return []

    def _drop_string(self, value: Any, where: Location) -> Conjuncts:
        _string(value, where)
        return []


def _conjunction(conjuncts: Conjuncts) -> dict[str, Any]:
    """One schema object for all conjuncts; what would replace a member already there goes under allOf."""
    result: dict[str, Any] = {}
    clashing: Conjuncts = []
    for conjunct in conjuncts:
        if conjunct.keys() & result.keys():
            clashing.append(conjunct)
        else:
            result.update(conjunct)
    if clashing:
        result["allOf"] = result.get("allOf", []) + clashing
    return result


def _wrong_type(where: Location, wanted: str) -> NoReturn:
    raise SchemaError(where, f"This keyword requires {wanted} parameter.")


def _is_number(value: Any) -> bool:
    return isinstance(value, (int, float)) and not isinstance(value, bool)


def _string(value: Any, where: Location) -> str:
    return value if isinstance(value, str) else _wrong_type(where, "a string")


def _object(value: Any, where: Location) -> dict[str, Any]:
    return value if isinstance(value, dict) else _wrong_type(where, "an object")


def _array(value: Any, where: Location) -> list[Any]:
    return value if isinstance(value, list) else _wrong_type(where, "an array")


def _strings(value: Any, where: Location) -> list[str]:
    """The strings of an array, each once: draft 4 allows no repetition."""
    if not all(isinstance(element, str) for element in _array(value, where)):
        raise SchemaError(where, "The schema is invalid.")
    return list(dict.fromkeys(value))


def _refuse_constant(text: str) -> NoReturn:
    raise ValueError(f"{text} is no JSON value")


def _finite(text: str) -> float:
    value = float(text)
    if math.isinf(value):
        raise ValueError(f"the number {text} is out of range")
    return value


def parse(data: bytes) -> Any:
    """Parses JSON as strictly as jsv does: Python lets NaN, numbers out of range and lone surrogates pass."""
    value = json.loads(data.decode("utf-8-sig"), parse_constant=_refuse_constant, parse_float=_finite)
    json.dumps(value, ensure_ascii=False).encode()
    return value


def _arguments(argv: list[str] | None) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Translates a schema of the dialect of jsv to JSON Schema draft 4.")
    parser.add_argument("schema", type=Path, metavar="SCHEMA", help="file with the schema of the dialect")
    parser.add_argument("output", type=Path, metavar="OUTPUT", nargs="?", help="default: standard output")
    return parser.parse_args(argv)


def _write(text: str, output: Path | None) -> None:
    if output is None:
        sys.stdout.buffer.write(text.encode())
        sys.stdout.buffer.flush()
    else:
        output.write_bytes(text.encode())


def main(argv: list[str] | None = None) -> int:
    arguments = _arguments(argv)
    try:
        translation = translate(parse(arguments.schema.read_bytes()))
        _write(json.dumps(translation.schema, indent=2) + "\n", arguments.output)
    except SchemaError as error:
        print(f" -> {arguments.schema}: the schema has a fault: {error}", file=sys.stderr)
        return 1
    except ValueError as error:
        print(f" -> {arguments.schema}: this is no JSON text: {error}", file=sys.stderr)
        return 1
    except RecursionError:
        print(f" -> {arguments.schema}: the schema is nested too deep", file=sys.stderr)
        return 1
    except OSError as error:
        print(f" -> {error.filename or 'standard output'}: {error.strerror}", file=sys.stderr)
        return 1
    print(f" -> dropped references between blocks (requiredIn): {translation.dropped_references}", file=sys.stderr)
    return 0


if __name__ == "__main__":
    sys.exit(main())
