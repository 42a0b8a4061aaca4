"""Rules about keys that name files, and about values that are given either in the text or by a file."""

from __future__ import annotations

from typing import Iterator

from schema_nodes import Group, Node

from .base import Finding, Rule, Share

SUFFIX = "_file"
OTHER_FILE_KEYS = ("file", "multiFile", "connections_filename")
NOT_FILES = ("output_single_file", "history_one_file", "split_file")


def is_file_key(name: str) -> bool:
    """Whether a key's name says that it names a file."""
    return (name.endswith(SUFFIX) or name in OTHER_FILE_KEYS) and name not in NOT_FILES


def names_stored_state(node: Node) -> bool:
    """In multi-domain models the initial state comes from a stored one, which has a name and no place."""
    return node.name == "file" and node.names[-2:-1] == ("INITIAL",) and "ORVAMD" in node.names


def file_keys(share: Share) -> Iterator[Finding]:
    """Keys that name files are strings of the format uri, and no others are."""
    for node in share.nodes:
        if not share.is_value_key(node):
            if "format" in node.schema:
                yield Finding(node.pointer, "a format of what is no key")
            continue
        wanted = is_file_key(node.name)
        if wanted and node.type != "string":
            yield Finding(node.pointer, "the key of a file that is no string")
        is_uri = wanted and not names_stored_state(node)
        if is_uri != (node.schema.get("format") == "uri"):
            yield Finding(node.pointer, "the key of a file without format uri" if is_uri else "format uri of no file")


def file_pairs(share: Share) -> Iterator[Finding]:
    """A value x and its file x_file are both optional and exclude each other in a oneOf of the two."""
    for node in share.nodes:
        for name in pairs(node) if node.is_whole else ():
            for member in (name, name + SUFFIX):
                if member not in node.texts("optional"):
                    yield Finding(node.pointer, f"'{member}' of a pair is not in optional")
            if not any(is_choice(group, name) for group in node.groups_below()):
                yield Finding(node.pointer, f"no oneOf of ['{name}'] and ['{name + SUFFIX}']")
            else:
                yield from _uses_without_choice(node, name)


def pairs(node: Node) -> list[str]:
    """The values of an object that have a companion key for a file."""
    return [name for name in node.properties() if name + SUFFIX in node.properties() and name + SUFFIX not in NOT_FILES]


def is_choice(group: Group, name: str) -> bool:
    """Whether a group is the choice between a value and its file, and nothing else."""
    required = [alternative.texts("required") for alternative in group.alternatives]
    rest = {keyword for alternative in group.alternatives for keyword in alternative.schema} - {"required", "optional"}
    return required in ([[name], [name + SUFFIX]], [[name + SUFFIX], [name]]) and not rest


def _uses_without_choice(part: Node, name: str) -> Iterator[Finding]:
    """The alternatives that speak of a pair without making the two exclude each other."""
    if any(is_choice(group, name) for group in part.groups()):
        return
    for group in part.groups():
        for alternative in group.alternatives:
            spoken = {*alternative.texts("required"), *alternative.texts("optional")}
            if spoken & {name, name + SUFFIX} and not _has_choice(alternative, name):
                yield Finding(alternative.pointer, f"uses '{name}' or '{name + SUFFIX}' without a oneOf of the two")
            else:
                yield from _uses_without_choice(alternative, name)


def _has_choice(alternative: Node, name: str) -> bool:
    return any(is_choice(group, name) for group in alternative.groups_below())


RULES: list[Rule] = [file_keys, file_pairs]
