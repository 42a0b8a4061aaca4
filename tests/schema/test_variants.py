"""What breaks the rules of rules/variants.py."""

from __future__ import annotations

import unittest
from typing import Any

from small_schema import BOUNDARY, RuleTest, choice, string, text, variant

GROUP = f"{BOUNDARY}/oneOf"
INFLOW, WEIR = f"{GROUP}/0", f"{GROUP}/1"
GATES = f"{WEIR}/oneOf"


class Selectors(RuleTest):
    def test_not_every_alternative_fixes_it(self) -> None:
        def change(group: list[Any]) -> None:
            group[1] = variant("gate", "crest", gate="flat")
            group.append({**variant("type", type="weir"), "oneOf": [variant("gate", gate="arc")]})

        found = self.broken(GROUP, change)
        self.assertIn(("groups_common_selector", GROUP, "not every alternative fixes 'type'"), found)

    def test_not_required_by_the_object(self) -> None:
        def change(node: dict[str, list[str]]) -> None:
            node["required"].remove("type")
            node["optional"].insert(0, "type")

        message = "the selector 'type' is not required in its object"
        self.assertEqual(self.broken(BOUNDARY, change), [("selectors_required", GROUP, message)])

    def test_inner_one_not_required_by_the_alternative_around(self) -> None:
        message = "the selector 'gate' is not required in its object"
        self.assert_breaks("selectors_required", GATES, message, at=WEIR, required=["type"], optional=["gate", "crest"])

    def test_not_required_by_its_alternative(self) -> None:
        message = "the selector 'type' is not required in the alternative"
        self.assert_breaks("selectors_required", INFLOW, message, required=["string_name"])

    def test_second_one_is_required_where_it_is_fixed(self) -> None:
        def change(group: list[Any]) -> None:
            both = [variant("type gate", "crest", type="weir", gate=gate) for gate in ("flat", "arc")]
            group[1:] = both

        self.assertEqual(self.broken(GROUP, change), [])

    def test_with_default(self) -> None:
        place = f"{BOUNDARY}/properties/gate"
        found = self.broken(place, lambda node: node.update(default="flat"))
        self.assertIn(("selectors_without_default", BOUNDARY, "the selector 'gate' has a default"), found)


class SelectorsComplete(RuleTest):
    def enumerate(self, name: str, *values: str) -> list[tuple[str, str, str]]:
        def change(node: dict[str, Any]) -> None:
            node["enum"] = list(values)
            node["description"] = text("list") + "<ul>" + "".join(f"<li>{value}</li>" for value in values) + "</ul>"

        return self.broken(f"{BOUNDARY}/properties/{name}", change)

    def test_value_without_alternative(self) -> None:
        message = "no alternative is for 'type' = 'outflow'"
        self.assertEqual(self.enumerate("type", "inflow", "weir", "outflow"), [("selectors_complete", GROUP, message)])

    def test_alternative_without_value(self) -> None:
        message = "'type' is fixed to 'weir', which its enumeration lacks"
        self.assertEqual(self.enumerate("type", "inflow"), [("selectors_complete", GROUP, message)])

    def test_value_that_no_inner_alternative_is_for(self) -> None:
        message = "no alternative is for 'gate' = 'drum'"
        self.assertEqual(self.enumerate("gate", "flat", "arc", "drum"), [("selectors_complete", GATES, message)])

    def test_values_spread_over_inner_groups(self) -> None:
        def change(group: list[Any]) -> None:
            group[0]["required"].append("gate")
            group[0]["allOf"] = [{"oneOf": group[0].pop("oneOf")}, {"oneOf": [variant("gate", gate="arc")]}]
            group[1]["oneOf"].pop()

        self.assertEqual(self.broken(GROUP, change), [])


class Alternatives(RuleTest):
    def test_variant_without_description(self) -> None:
        self.assert_breaks("alternatives_described", WEIR, "a variant without description", description=None)

    def test_keyword_that_belongs_to_the_object(self) -> None:
        self.assert_breaks("alternatives_fix_only", WEIR, "type in an alternative", type="object")

    def test_property_that_is_not_fixed(self) -> None:
        def change(node: dict[str, Any]) -> None:
            node["properties"]["crest"] = {"minimum": 1}

        found = self.broken(WEIR, change)
        self.assertIn(("alternatives_fix_only", WEIR, "'crest' is not just fixed by const"), found)

    def test_unknown_name(self) -> None:
        for keyword in ("required", "optional"):
            def change(node: dict[str, Any]) -> None:
                node[keyword] = [*node[keyword], "speed"]

            message = "'speed' is no property of the object"
            self.assertEqual(self.broken(WEIR, change), [("alternatives_names_known", WEIR, message)])


class AlternativesExclusive(RuleTest):
    def test_same_constants(self) -> None:
        found = self.broken(GROUP, lambda group: group.append(variant("type string_name", type="weir")))
        self.assertIn(("alternatives_exclusive", f"{GROUP}/2", f"fits the same data as {WEIR}"), found)

    def test_same_where_both_fix_something(self) -> None:
        def change(group: list[Any]) -> None:
            group[1] = variant("type gate", "crest", type="weir", gate="flat")
            group.append({**variant("type", "gate", type="weir"), "oneOf": [variant("gate", gate="arc")]})

        found = self.broken(GROUP, change)
        self.assertIn(("alternatives_exclusive", f"{GROUP}/2", f"fits the same data as {WEIR}"), found)

    def test_choice_met_by_meeting_another(self) -> None:
        def change(node: dict[str, Any]) -> None:
            node["oneOf"][1]["required"] = ["ORVAHPC", "ORVAMD"]

        found = self.broken("", change)
        self.assertIn(("alternatives_exclusive", "/oneOf/1", "fits the same data as /oneOf/0"), found)

    def test_choices_inside_count(self) -> None:
        def change(node: dict[str, Any]) -> None:
            node["properties"]["first"], node["properties"]["first_file"] = string("f"), string("g")
            node["optional"] += ["first", "first_file"]
            other = [{"oneOf": choice("first")}, {"required": ["crest"]}]
            node["allOf"] = [{"oneOf": node.pop("oneOf")}, {"oneOf": other}]

        found = self.broken(BOUNDARY, change)
        self.assertFalse([each for each in found if each[0] == "alternatives_exclusive"], found)


if __name__ == "__main__":
    unittest.main()
