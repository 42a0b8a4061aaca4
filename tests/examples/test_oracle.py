"""What the rules say about groups, values and references, by hand for a small schema."""

from __future__ import annotations

import unittest
from typing import Any

import oracle
from models import Schema
from small_model import choice, document, schema, thing, variant

BOUNDARY = "/properties/BOUNDARY/items"
PLACE = ("BOUNDARY", 0)


class GroupFindings(unittest.TestCase):
    def found(self, **members: Any) -> set[str]:
        small = schema()
        return set(oracle.Groups().findings(small.nodes[BOUNDARY], PLACE, members))

    def test_nothing_where_one_alternative_fits(self) -> None:
        self.assertEqual(self.found(type="inflow", string_name="upper", q=1), set())
        self.assertEqual(self.found(type="weir", height=1, q=3), set(), "the name of another variant")
        self.assertEqual(self.found(type="gate", mode="fixed", height=2), set())

    def test_variant_lacks_what_it_requires(self) -> None:
        self.assertEqual(self.found(type="weir"), {"/BOUNDARY/0/height: Error: This item is required but missing."})

    def test_selector_missing(self) -> None:
        self.assertEqual(self.found(height=1), {"/BOUNDARY/0/type: Error: This item is required but missing."})

    def test_selector_of_no_variant(self) -> None:
        for value in ("Weir", 1, [None]):
            self.assertEqual(self.found(type=value, height=1), {"/BOUNDARY/0: Error: This item is invalid."})

    def test_none_and_both_of_a_choice_inside_a_variant(self) -> None:
        none = "/BOUNDARY/0: Error: One of the following items must be provided: 'q', 'q_file'."
        both = "/BOUNDARY/0: Error: Only one of the following two items is allowed: 'q', 'q_file'."
        self.assertEqual(self.found(type="inflow", string_name="upper"), {none})
        self.assertEqual(self.found(type="inflow", string_name="upper", q_file="f", q=1), {both})

    def test_variant_inside_a_variant(self) -> None:
        self.assertEqual(
            self.found(type="gate", mode="fixed"), {"/BOUNDARY/0/height: Error: This item is required but missing."}
        )
        self.assertEqual(self.found(type="gate", mode="x"), {"/BOUNDARY/0: Error: This item is invalid."})
        self.assertEqual(self.found(type="gate"), {"/BOUNDARY/0/mode: Error: This item is required but missing."})

    def test_all_groups_of_an_all_of_speak(self) -> None:
        small = schema()
        found = oracle.Groups().findings(small.root, (), {"eps": 1, "eps_file": "f"})
        self.assertEqual(
            set(found),
            {
                "/: Error: One of the following items must be provided: 'k', 'k_file'.",
                "/: Error: Only one of the following two items is allowed: 'eps', 'eps_file'.",
            },
        )


class OtherGroups(unittest.TestCase):
    def of(self, *alternatives: Any) -> oracle.Groups:
        members = {name: {"type": "string"} for name in "abcd"}
        self.small = Schema(thing(members, oneOf=list(alternatives)))
        return oracle.Groups()

    def found(self, alternatives: list[Any], **members: str) -> set[str]:
        groups = self.of(*alternatives)
        return set(groups.findings(self.small.root, (), members))

    def assert_undetermined(self, *alternatives: Any, **members: str) -> None:
        with self.assertRaises(oracle.Undetermined):
            self.found(list(alternatives), **members)

    def test_undetermined_shapes(self) -> None:
        self.assert_undetermined(variant("a", a="x"), variant("b", a="y"))
        self.assert_undetermined({"required": ["a", "b"]}, {"required": ["c"]})
        self.assert_undetermined({"required": ["a"]}, {"required": ["a"]})
        self.assert_undetermined({"required": ["a"]}, {"required": ["b"], "properties": {"c": False}})
        self.assert_undetermined(variant("a", a="x"), {"required": ["a"]})
        self.assert_undetermined()

    def test_variants_that_selectors_do_not_tell_apart(self) -> None:
        self.assert_undetermined(variant("a b", a="x"), variant("a c", a="x"), a="x")
        self.assert_undetermined(variant("a", a="x"), variant("a b", a="x"), a="x", b="y")
        self.assertEqual(self.found([variant("a b", a="x"), variant("a c", a="x")], a="x", b="y"), set())

    def test_variants_told_apart_by_a_constant_that_others_lack(self) -> None:
        group = [variant("a b c", a="x", b="1"), variant("a b c", a="x", b="2"), variant("a", a="y")]
        self.assertEqual(self.found(group, a="x", b="2", c=""), set())
        self.assertEqual(self.found(group, a="y", b="3"), set())
        self.assertEqual(self.found(group, a="x", b="2"), {"/c: Error: This item is required but missing."})
        self.assertEqual(self.found(group, a="x", c=""), {"/b: Error: This item is required but missing."})
        self.assertEqual(self.found(group, a="x", b="3", c=""), {"/: Error: This item is invalid."})
        self.assertEqual(self.found(group, b="3"), {"/a: Error: This item is required but missing."})

    def test_the_variant_that_is_meant(self) -> None:
        weirs = [variant("a b", a="x", b="1"), variant("a b", a="x", b="2")]
        (told,) = self.of(*weirs, variant("a c", a="y"), variant("a d", a="y")).of(self.small.root)
        members = [{"a": "x", "b": "2"}, {"a": "y", "d": ""}, {"a": "y"}, {"a": 1, "b": "2"}]
        meant = [told.meant(each) for each in members]
        self.assertEqual([each and each.pointer for each in meant], ["/oneOf/1", "/oneOf/3", None, None])

    def test_three_names(self) -> None:
        found = self.of(*choice("a", "b", "c")).findings(self.small.root, (), {"b": "", "c": ""})
        self.assertEqual(set(found), {"/: Error: Only one of the following two items is allowed: 'b', 'c'."})

    def test_several_selectors(self) -> None:
        groups = self.of(variant("a b", a="x", b="x"), variant("a b c", a="x", b="y"))
        self.assertEqual(set(groups.findings(self.small.root, (), {"a": "x", "b": "y", "c": ""})), set())
        missing = {f"/{name}: Error: This item is required but missing." for name in "ab"}
        self.assertEqual(set(groups.findings(self.small.root, (), {})), missing)
        lacking = {"/a: Error: This item is required but missing."}
        self.assertEqual(set(groups.findings(self.small.root, (), {"b": "z"})), lacking)

    def test_second_constant_of_one_variant(self) -> None:
        groups = self.of(variant("a", a="x", d="z"), variant("a", a="y"))
        wrong = {"/d: Error: This value must be equal to 'z'."}
        self.assertEqual(set(groups.findings(self.small.root, (), {"a": "x", "d": "y"})), wrong)
        self.assertEqual(set(groups.findings(self.small.root, (), {"a": "y", "d": "y"})), set())


class Values(unittest.TestCase):
    def member(self, name: str) -> Any:
        return schema().nodes[f"{BOUNDARY}/properties/{name}"]

    def test_limits(self) -> None:
        limit = oracle.limit_mismatch
        self.assertEqual(limit(self.member("q"), "minimum"), "Error: This value must be greater than 0.000000.")
        self.assertEqual(
            limit(self.member("q"), "maximum"), "Error: This value must be less than or equal to 100.000000."
        )
        self.assertEqual(
            limit(self.member("height"), "minimum"), "Error: This value must be greater than or equal to -2.500000."
        )

    def test_every_keyword_speaks_of_a_wrong_type(self) -> None:
        self.assertEqual(
            set(oracle.wrong_kind(self.member("type"), ("t",))),
            {
                "/t: Error: This value must be a string.",
                "/t: Error: This value must be equal to one of the following: 'inflow', 'weir', 'gate'.",
            },
        )
        self.assertEqual(
            set(oracle.wrong_kind(self.member("string_name"), ("s",))),
            {
                "/s: Error: This value must be a string.",
                "/s: Error: This value must match a 'name' in '/STRINGS'.",
            },
        )

    def test_members_of_an_object_that_is_not_used(self) -> None:
        unused = {"/x/a: Warning: The value of this item will not be used."}
        self.assertEqual(set(oracle.unused_members(("x",), {"a": {"b": 1}})), unused)
        self.assertEqual(set(oracle.unused_members(("x",), [1])), set())


class References(unittest.TestCase):
    def test_that_lead_somewhere_and_nowhere(self) -> None:
        model = document()
        self.assertEqual(set(oracle.dangling(schema(), model)), set())
        lost = {"/BOUNDARY/0/string_name: Error: This value must match a 'name' in '/STRINGS'."}
        for strings in ([{"name": "lower"}], [{"Name": "upper"}], ["upper"], {"name": "upper"}, None, []):
            self.assertEqual(set(oracle.dangling(schema(), {**model, "STRINGS": strings})), lost)
        del model["STRINGS"]
        self.assertEqual(set(oracle.dangling(schema(), model)), lost)


if __name__ == "__main__":
    unittest.main()
