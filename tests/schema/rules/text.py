"""Rules about the text as a whole: its form and its figures."""

from __future__ import annotations

import re
from typing import Iterator

from schema_figures import figures, printed, targets
from schema_nodes import top

from .base import Finding, Rule, Share

FIRST_MEMBER = ("$schema", "./metaschema.json")


def text_form(share: Share) -> Iterator[Finding]:
    """ASCII, lines that end in CR LF, two blanks for each level: the text is the printed form of what it says."""
    if re.search(rb"[^\t\r\n -~]", share.text):
        yield Finding("", "a byte that is not printable ASCII")
    if re.search(rb"(?<!\r)\n|\r(?!\n)", share.text):
        yield Finding("", "a line that does not end in CR LF")
    if share.text.decode("ascii", "replace").replace("\r\n", "\n") != printed(share.schema).replace("\r\n", "\n"):
        yield Finding("", "the text is not the printed form of what it says")


def first_member(share: Share) -> Iterator[Finding]:
    """The whole text begins with the name of the language that it is written in, which is not repeated."""
    if share.is_whole and next(iter(share.schema.items()), None) != FIRST_MEMBER:
        yield Finding("", f"the first member is not {FIRST_MEMBER[0]}: {FIRST_MEMBER[1]}")
    for node in share.nodes:
        if "$schema" in node.schema and (node.parent or not share.is_whole):
            yield Finding(node.pointer, "$schema in an inner schema")


def whole_figures(share: Share) -> Iterator[Finding]:
    """The whole text reaches its figures."""
    if share.is_whole:
        counts = figures(top(share.schema), share.tree)
        for name, goal in targets(share.tree).items():
            if not goal.is_reached_by(counts[name]):
                yield Finding("", f"{name}: {counts[name]}, to be {goal.value} within {goal.tolerance:.0%}")


RULES: list[Rule] = [text_form, first_member, whole_figures]
