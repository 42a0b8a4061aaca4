"""Rules about the descriptions, which are the user's manual."""

from __future__ import annotations

import html.entities
import re
from typing import Iterator

from schema_nodes import Node, Role

from .base import Finding, Rule, Share
from .values import visible_text
from .variants import fixed

TAGS = frozenset("p br b i sub sup ul ol li code table tr th td a".split())
WITHOUT_END = frozenset({"br"})
ATTRIBUTES = {"a": {"href"}, "td": {"colspan", "rowspan"}, "th": {"colspan", "rowspan"}}
# Where a tag must stand directly, and what a paragraph cannot hold.
OUTER = {"li": {"ul", "ol"}, "tr": {"table"}, "th": {"tr"}, "td": {"tr"}}
ENDS_PARAGRAPH = frozenset({"p", "ul", "ol", "table"})
TOKEN = re.compile(
    r"<(/?)([A-Za-z]+)((?:\s+[a-z]+=\"[^\"<>]*\")*)\s*(/?)>|<"
    r"|&(#[0-9]+|#x[0-9A-Fa-f]+|[A-Za-z][A-Za-z0-9]*);|&"
)
ATTRIBUTE = re.compile(r"([a-z]+)=")
SHORTEST = 60


def ascii_only(share: Share) -> Iterator[Finding]:
    """What is not ASCII is written as an entity, so that every editor shows it."""
    for node in share.nodes:
        for keyword in ("description", "units"):
            value = node.schema.get(keyword)
            if isinstance(value, str) and not re.fullmatch(r"[ -~]*", value):
                yield Finding(node.pointer, f"{keyword} with a character that is not printable ASCII")


def markup(share: Share) -> Iterator[Finding]:
    """Markup is well formed and uses few tags."""
    for node in share.nodes:
        for keyword in ("description", "units"):
            value = node.schema.get(keyword)
            for fault in markup_faults(value) if isinstance(value, str) else ():
                yield Finding(node.pointer, f"{keyword}: {fault}")


def markup_faults(text: str) -> Iterator[str]:
    """What is wrong with a text's markup; up to the first tag that does not fit the others."""
    opened: list[str] = []
    for token in TOKEN.finditer(text):
        fault = _reference_fault(token) if token[0].startswith("&") else _tag_fault(token, opened)
        if fault:
            yield fault
            if fault.startswith("</"):
                return
    if opened:
        yield f"<{opened[-1]}> is never closed"


def _reference_fault(token: re.Match[str]) -> str | None:
    name = token[5]
    if name is None:
        return "a bare &: write &amp;"
    return None if name.startswith("#") or name + ";" in html.entities.html5 else f"&{name}; is no entity"


def _tag_fault(token: re.Match[str], opened: list[str]) -> str | None:
    """The fault of a tag; those that are opened are kept up to date."""
    is_end, name = token[1], token[2]
    if name is None:
        return "a bare <: write &lt;"
    if name not in TAGS:
        return f"<{name}> is not one of the tags in use"
    if is_end:
        return None if opened and opened.pop() == name else f"</{name}> closes nothing"
    fault = _start_fault(token, opened)
    if name not in WITHOUT_END:
        opened.append(name)
    return fault


def _start_fault(token: re.Match[str], opened: list[str]) -> str | None:
    name = token[2]
    if token[4] and name not in WITHOUT_END:
        return f"<{name}/> closes itself"
    for attribute in ATTRIBUTE.findall(token[3]):
        if attribute not in ATTRIBUTES.get(name, ()):
            return f"<{name}> with {attribute}"
    if name in OUTER and not OUTER[name] & set(opened[-1:]):
        return f"<{name}> outside of its list or table"
    if name in ENDS_PARAGRAPH and "p" in opened:
        return f"<{name}> inside of <p>"
    return None


def long_enough(share: Share) -> Iterator[Finding]:
    """A key cannot be explained in fewer characters."""
    for node in share.nodes:
        if share.is_value_key(node) and "description" in node.schema:
            length = len(visible_text(node.description()))
            if length < SHORTEST:
                yield Finding(node.pointer, f"a description of {length} characters")


def not_repeated(share: Share) -> Iterator[Finding]:
    """A description that fits two different keys explains neither."""
    seen: dict[str, Node] = {}
    for node in share.nodes:
        text = " ".join(visible_text(node.description()).split()).lower()
        if not text:
            continue
        first = seen.setdefault(text, node)
        if _described(first) != _described(node):
            yield Finding(node.pointer, f"the description is that of {first.pointer}")


def _described(node: Node) -> object:
    """What a description is about: a variant, or a member of that name."""
    return tuple(fixed(node).items()) if node.role is Role.ALTERNATIVE else node.name


RULES: list[Rule] = [ascii_only, markup, long_enough, not_repeated]
