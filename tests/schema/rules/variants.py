"""Rules about groups of alternatives: variants that a selector chooses, and choices between keys."""

from __future__ import annotations

import itertools
from typing import Iterator

from schema_nodes import Group, Node

from .base import Finding, Rule, Share


def fixed(alternative: Node) -> dict[str, str]:
    """The selectors that an alternative fixes, and to what."""
    members = alternative.properties().items()
    return {name: fix["const"] for name, fix in members if isinstance(fix, dict) and "const" in fix}


def selectors(group: Group) -> list[str]:
    """All selectors of a group."""
    return list(dict.fromkeys(name for each in group.alternatives for name in fixed(each)))


def common_selectors(group: Group) -> list[str]:
    """The selectors that every alternative fixes."""
    return [name for name in selectors(group) if all(name in fixed(each) for each in group.alternatives)]


def owners(share: Share) -> Iterator[Node]:
    """The nodes that groups belong to, with those inside alternatives."""
    return (node for node in share.nodes if node.is_whole and node.groups())


def names_of(alternative: Node) -> list[str]:
    return list(dict.fromkeys(alternative.texts("required") + alternative.texts("optional")))


def _required_around(group: Group, owner: Node) -> set[str]:
    """What the owner and the alternatives around a group require."""
    names = set(owner.texts("required"))
    around = group.alternatives[0].parent if group.alternatives else None
    while around is not None and around is not owner:
        names |= set(around.texts("required"))
        around = around.parent
    return names


def groups_common_selector(share: Share) -> Iterator[Finding]:
    """Where selectors tell the alternatives apart, each alternative fixes the first of them."""
    for owner in owners(share):
        for group in owner.groups_below():
            if selectors(group) and not common_selectors(group):
                yield Finding(group.pointer, f"not every alternative fixes '{selectors(group)[0]}'")


def selectors_required(share: Share) -> Iterator[Finding]:
    """A selector is required where its group stands, and in each alternative that fixes it."""
    for owner in owners(share):
        for group in owner.groups_below():
            for name in common_selectors(group):
                if name not in _required_around(group, owner):
                    yield Finding(group.pointer, f"the selector '{name}' is not required in its object")
            for alternative in group.alternatives:
                for name in fixed(alternative):
                    if name not in alternative.texts("required"):
                        yield Finding(alternative.pointer, f"the selector '{name}' is not required in the alternative")


def selectors_without_default(share: Share) -> Iterator[Finding]:
    """What a selector says must be said by the user."""
    for owner in owners(share):
        names = dict.fromkeys(name for group in owner.groups_below() for name in selectors(group))
        for name in names:
            if "default" in _property(owner, name):
                yield Finding(owner.pointer, f"the selector '{name}' has a default")


def selectors_complete(share: Share) -> Iterator[Finding]:
    """A group of an object has an alternative for each value of its selector, and none for other values. One inside an
    alternative may leave values out that stand in other groups."""
    for owner in owners(share):
        groups = list(owner.groups_below())
        outermost = {group.pointer for group in owner.groups()}
        for group in groups:
            for name in selectors(group):
                values = _enumerated(owner, name)
                for value in sorted(_consts([group], name) - values):
                    yield Finding(group.pointer, f"'{name}' is fixed to '{value}', which its enumeration lacks")
                told = _consts([group] if group.pointer in outermost else groups, name)
                for value in sorted(values - told):
                    yield Finding(group.pointer, f"no alternative is for '{name}' = '{value}'")


def _property(owner: Node, name: str) -> dict[str, object]:
    value = owner.properties().get(name)
    return value if isinstance(value, dict) else {}


def _enumerated(owner: Node, name: str) -> set[str]:
    values = _property(owner, name).get("enum")
    return {each for each in values if isinstance(each, str)} if isinstance(values, list) else set()


def _consts(groups: list[Group], name: str) -> set[str]:
    alternatives = (alternative for group in groups for alternative in group.alternatives)
    return {str(fixed(each)[name]) for each in alternatives if name in fixed(each)}


def alternatives_described(share: Share) -> Iterator[Finding]:
    """A variant says what it is; a mere choice between keys does not."""
    for owner in owners(share):
        for group in owner.groups_below():
            for alternative in group.alternatives:
                if fixed(alternative) and not alternative.description():
                    yield Finding(alternative.pointer, "a variant without description")


def alternatives_fix_only(share: Share) -> Iterator[Finding]:
    """An alternative says what it fixes, requires and may use; all else is said by the object itself."""
    allowed = {"description", "properties", "required", "optional", "oneOf", "allOf"}
    for owner in owners(share):
        for group in owner.groups_below():
            for alternative in group.alternatives:
                for keyword in alternative.schema.keys() - allowed:
                    yield Finding(alternative.pointer, f"{keyword} in an alternative")
                for name, fix in alternative.properties().items():
                    if not isinstance(fix, dict) or list(fix) != ["const"]:
                        yield Finding(alternative.pointer, f"'{name}' is not just fixed by const")


def alternatives_names_known(share: Share) -> Iterator[Finding]:
    """An alternative speaks of members that its object describes."""
    for owner in owners(share):
        for group in owner.groups_below():
            for alternative in group.alternatives:
                for name in dict.fromkeys([*alternative.properties(), *names_of(alternative)]):
                    if name not in owner.properties():
                        yield Finding(alternative.pointer, f"'{name}' is no property of the object")


def alternatives_exclusive(share: Share) -> Iterator[Finding]:
    """No two variants fit the same data, and no choice between keys is met by meeting another one."""
    for owner in owners(share):
        for group in owner.groups_below():
            for one, other in itertools.combinations(group.alternatives, 2):
                if _fit_together(one, other):
                    yield Finding(other.pointer, f"fits the same data as {one.pointer}")


def _fit_together(one: Node, other: Node) -> bool:
    first, second = fixed(one), fixed(other)
    if any(first[name] != second[name] for name in first.keys() & second.keys()):
        return False
    if first or second:
        return True
    needs, others_needs = _needs(one), _needs(other)
    return needs <= others_needs or others_needs <= needs


def _needs(alternative: Node) -> set[str]:
    """What makes an alternative fit: what it requires, and the names of the choices inside it."""
    inner = (each for group in alternative.groups_below() for each in group.alternatives)
    return set(alternative.texts("required")).union(*(each.texts("required") for each in inner))


RULES: list[Rule] = [
    groups_common_selector,
    selectors_required,
    selectors_without_default,
    selectors_complete,
    alternatives_described,
    alternatives_fix_only,
    alternatives_names_known,
    alternatives_exclusive,
]
