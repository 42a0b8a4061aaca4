"""Rules about what an object lists, and about the tree of the blocks."""

from __future__ import annotations

import re
from typing import Iterator

from dialect_to_draft4 import SchemaError, translate
from schema_nodes import Node, Role, escaped

from .base import Block, Finding, Rule, Share

FREE_NAME = re.compile(r"[a-z][a-z0-9_]*")
KIND_TYPES = {"object": ("object",), "array": ("array",), "array_value": ("array",)}


def dialect(share: Share) -> Iterator[Finding]:
    """Known keywords with right parameters only. Ends at the first fault, since the others may follow from it."""
    try:
        translate(share.schema)
    except SchemaError as fault:
        pointer, _, message = str(fault).partition(": ")
        yield Finding(pointer, message)


def object_nodes(share: Share) -> Iterator[Finding]:
    """An object says that it is one, what it is and which members it has; an array which elements."""
    for node in share.nodes:
        if not node.is_whole:
            continue
        if node.type == "object":
            for keyword in ("description", "properties"):
                if keyword not in node.schema and not (keyword == "description" and node.role is Role.ROOT):
                    yield Finding(node.pointer, f"an object without {keyword}")
        elif "properties" in node.schema:
            yield Finding(node.pointer, "properties of what is not of type object")
        if (node.type == "array") != ("items" in node.schema):
            yield Finding(node.pointer, "an array without items" if node.type == "array" else "items of no array")


def members_listed_once(share: Share) -> Iterator[Finding]:
    """Every member stands once in required or in optional, and nothing else stands there."""
    for node in share.nodes:
        if node.role is Role.FIX:
            continue
        listed = node.texts("required") + node.texts("optional")
        for name in sorted({each for each in listed if listed.count(each) > 1}):
            yield Finding(node.pointer, f"'{name}' is listed {listed.count(name)} times in required and optional")
        for keyword in ("required", "optional"):
            if node.schema.get(keyword) == []:
                yield Finding(node.pointer, f"{keyword} is empty: leave it out")
        if node.role is not Role.ALTERNATIVE:
            yield from _membership(node, listed)


def _membership(node: Node, listed: list[str]) -> Iterator[Finding]:
    for name in node.properties():
        if name not in listed:
            yield Finding(node.pointer, f"'{name}' is listed neither in required nor in optional")
    for name in dict.fromkeys(listed):
        if name not in node.properties():
            yield Finding(node.pointer, f"'{name}' is listed, but is no property")


def tree_members(share: Share) -> Iterator[Finding]:
    """A block has the keys and then the blocks of the tree, all of them, no others, in the tree's order."""
    for node in share.nodes:
        block = share.members_block(node)
        if block is None:
            continue
        names = list(node.properties())
        for name in block.members:
            if name not in names:
                yield Finding(node.pointer, f"'{name}' of the tree is missing")
        for name in names:
            if name not in block.members:
                yield Finding(node.pointer, f"'{name}' is not in the tree")
        yield from _order(node, [name for name in names if name in block.members], block)


def _order(node: Node, names: list[str], block: Block) -> Iterator[Finding]:
    expected = [name for name in block.members if name in names]
    for actual, wanted in zip(names, expected):
        if actual != wanted:
            yield Finding(node.pointer, f"'{actual}' stands where the tree has '{wanted}'")
            return


def tree_kinds(share: Share) -> Iterator[Finding]:
    """A block is an object or an array of objects, as in the tree; nothing else is one of the two kinds."""
    for node in share.nodes:
        block = share.block_of(node)
        if block is None or node.role is Role.ROOT:
            continue
        if node.role is Role.PROPERTY and node.type not in KIND_TYPES.get(block.kind, (node.type,)):
            yield Finding(node.pointer, f"of type {node.type}, in the tree of kind {block.kind}")
        if node.role is Role.ITEMS and block.kind == "array" and node.type != "object":
            yield Finding(node.pointer, f"elements of type {node.type} in a block that is an array of objects")


def tree_required(share: Share) -> Iterator[Finding]:
    """A block is required in its parent exactly where the tree says so."""
    for node in share.nodes:
        outer = share.members_block(node)
        for block in outer.blocks if outer else ():
            if block.name in node.properties() and block.required != (block.name in node.texts("required")):
                should = "should" if block.required else "should not"
                yield Finding(node.pointer, f"'{block.name}' {should} be required")


def free_names(share: Share) -> Iterator[Finding]:
    """Members that the tree does not know are written in lower case with underscores."""
    for node in share.nodes:
        if not node.is_whole or share.members_block(node) is not None:
            continue
        for name in node.properties():
            if not FREE_NAME.fullmatch(name):
                yield Finding(f"{node.pointer}/properties/{escaped(name)}", "not in lower case with underscores")


def autoexpand(share: Share) -> Iterator[Finding]:
    """Only blocks are opened by themselves; where one is not, nothing is said."""
    for node in share.nodes:
        if "autoexpand" not in node.schema:
            continue
        if node.schema["autoexpand"] is not True:
            yield Finding(node.pointer, "autoexpand is not true: leave it out")
        if not share.describes_block(node):
            yield Finding(node.pointer, "autoexpand of what is no block")


RULES: list[Rule] = [
    dialect,
    object_nodes,
    members_listed_once,
    tree_members,
    tree_kinds,
    tree_required,
    free_names,
    autoexpand,
]
