"""The faults made in a small model: what is changed, and what each deserves, by hand."""

from __future__ import annotations

import unittest
from typing import Any

import mutations
from models import Patch, Spot
from mutations import KINDS, Kind, Lab, Mutation, made_datum
from small_model import document, example, schema

INVALID = "/BOUNDARY/1: Error: This item is invalid."
UNUSED = "Warning: The value of this item will not be used."
MISSING = "Error: This item is required but missing."
TYPES = "Error: This value must be equal to one of the following: 'inflow', 'weir', 'gate'."


class Kinds(unittest.TestCase):
    def setUp(self) -> None:
        self.lab = Lab(schema(), [example()])
        self.spots: dict[str, Spot] = {spot.pointer: spot for spot in self.lab.spots["small"]}

    def changes(self, kind: Kind, place: str) -> list[tuple[Patch, set[str]]]:
        return [(change.patch, set(change.expected)) for change in kind(self.lab, self.spots[place])]

    def deserved(self, kind: Kind, place: str) -> list[set[str]]:
        return [expected for _, expected in self.changes(kind, place)]

    def values(self, kind: Kind, place: str) -> dict[Any, set[str]]:
        return {repr(patch[0]["value"]): expected for patch, expected in self.changes(kind, place)}

    def test_removed(self) -> None:
        self.assertEqual(self.deserved(mutations.removed, "/OUTPUT/on"), [set()])
        self.assertEqual(self.deserved(mutations.removed, "/OUTPUT/file"), [{f"/OUTPUT/file: {MISSING}"}])
        self.assertEqual(self.deserved(mutations.removed, "/BOUNDARY/1/height"), [{f"/BOUNDARY/1/height: {MISSING}"}])
        none = "/BOUNDARY/0: Error: One of the following items must be provided: 'q', 'q_file'."
        self.assertEqual(self.deserved(mutations.removed, "/BOUNDARY/0/q"), [{none}])
        self.assertEqual(self.deserved(mutations.removed, "/BOUNDARY/0"), [], "elements may be as many as one likes")

    def test_renamed(self) -> None:
        self.assertEqual(
            self.changes(mutations.renamed, "/OUTPUT"),
            [
                (
                    ({"op": "move", "from": "/OUTPUT", "path": "/OUTPUT_of_nobody"},),
                    {
                        f"/OUTPUT: {MISSING}",
                        f"/OUTPUT_of_nobody: {UNUSED}",
                        f"/OUTPUT_of_nobody/file: {UNUSED}",
                        f"/OUTPUT_of_nobody/times: {UNUSED}",
                        f"/OUTPUT_of_nobody/on: {UNUSED}",
                    },
                )
            ],
        )
        self.assertEqual(self.deserved(mutations.renamed, "/OUTPUT/times"), [{f"/OUTPUT/times_of_nobody: {UNUSED}"}])

    def test_surplus(self) -> None:
        place = "/OUTPUT/of_nobody"
        expected = {f"{each}: {UNUSED}" for each in (place, f"{place}/lost", f"{place}/LOST")}
        self.assertEqual(self.deserved(mutations.surplus, "/OUTPUT"), [expected])
        self.assertEqual(self.deserved(mutations.surplus, "/k"), [])

    def test_wrong_type(self) -> None:
        number = {"/k: Error: This value must be a number."}
        self.assertEqual(self.values(mutations.wrong_type, "/k"), {"'1.5'": number, "False": number})
        integer = {"/BOUNDARY/1/steps: Error: This value must be an integer."}
        self.assertEqual(self.values(mutations.wrong_type, "/BOUNDARY/1/steps"), {"'1'": integer, "3.0": integer})
        boolean = {"/OUTPUT/on: Error: This value must be of a different type."}
        self.assertEqual(self.deserved(mutations.wrong_type, "/OUTPUT/on"), [boolean, boolean])
        self.assertEqual(
            self.deserved(mutations.null, ""), [{"/: Error: This value must be an object."}], "the whole model"
        )

    def test_selector_of_a_wrong_type(self) -> None:
        place = "/BOUNDARY/1/type"
        expected = {INVALID, f"{place}: {TYPES}", f"{place}: Error: This value must be a string."}
        self.assertEqual(self.deserved(mutations.null, place), [expected])
        self.assertEqual(self.deserved(mutations.array_instead, place), [expected])
        self.assertEqual(
            self.deserved(mutations.object_instead, place), [expected | {f"{place}/inner: {UNUSED}"}]
        )

    def test_array_and_object_exchanged(self) -> None:
        array = {"/STRINGS: Error: This value must be an array.", f"/STRINGS/inner: {UNUSED}"}
        self.assertEqual(self.deserved(mutations.object_instead, "/STRINGS"), [array])
        self.assertEqual(
            self.deserved(mutations.array_instead, "/OUTPUT"), [{"/OUTPUT: Error: This value must be an object."}]
        )
        self.assertEqual(self.deserved(mutations.array_instead, "/STRINGS"), [])

    def test_limits(self) -> None:
        place = "/BOUNDARY/0/q"
        above = {f"{place}: Error: This value must be greater than 0.000000."}
        below = {f"{place}: Error: This value must be less than or equal to 100.000000."}
        self.assertEqual(self.values(mutations.at_limit, place), {"0": above, "100": set()})
        self.assertEqual(
            self.values(mutations.beyond_limit, place),
            {"-1e-300": above, "-1000.5": above, "100.0000001": below, "1100.5": below},
        )
        steps = self.values(mutations.beyond_limit, "/BOUNDARY/1/steps")
        self.assertEqual(list(steps), ["0", "10"], "whole numbers beside the limits")

    def test_misspelt(self) -> None:
        place = "/BOUNDARY/1/type"
        found = self.values(mutations.misspelt, place)
        self.assertEqual(found, {each: {INVALID, f"{place}: {TYPES}"} for each in ("'weir_'", "'WEIR'", "''")})
        self.assertEqual(self.values(mutations.misspelt, "/OUTPUT/file"), {})

    def test_other_value(self) -> None:
        inflow = {
            f"/BOUNDARY/1/string_name: {MISSING}",
            "/BOUNDARY/1: Error: One of the following items must be provided: 'q', 'q_file'.",
        }
        gate = {f"/BOUNDARY/1/mode: {MISSING}"}
        found = self.values(mutations.other_value, "/BOUNDARY/1/type")
        self.assertEqual(found, {"'inflow'": inflow, "'gate'": gate})

    def test_choices(self) -> None:
        self.assertEqual(
            self.changes(mutations.both_of_choice, "/BOUNDARY/0"),
            [
                (
                    ({"op": "add", "path": "/BOUNDARY/0/q_file", "value": "series.txt"},),
                    {"/BOUNDARY/0: Error: Only one of the following two items is allowed: 'q', 'q_file'."},
                )
            ],
        )
        self.assertEqual(
            self.changes(mutations.other_of_choice, "/BOUNDARY/0"),
            [
                (
                    (
                        {"op": "remove", "path": "/BOUNDARY/0/q"},
                        {"op": "add", "path": "/BOUNDARY/0/q_file", "value": "series.txt"},
                    ),
                    set(),
                )
            ],
        )
        none = "/: Error: One of the following items must be provided:"
        expected = [{f"{none} '{name}', '{name}_file'."} for name in ("k", "eps")]
        self.assertEqual(self.deserved(mutations.none_of_choice, ""), expected)
        self.assertEqual(self.changes(mutations.both_of_choice, "/BOUNDARY/1"), [], "another variant's choice")


class References(unittest.TestCase):
    def expected(self, kind: Kind) -> list[tuple[Patch, set[str]]]:
        made = Mutation(schema(), [example()]).mutants()
        return [(mutant.patch, set(mutant.expected)) for mutant in made if mutant.kind == kind.__name__]

    def test_references_and_definitions(self) -> None:
        lost = {"/BOUNDARY/0/string_name: Error: This value must match a 'name' in '/STRINGS'."}
        place = "/BOUNDARY/0/string_name"
        self.assertIn(
            (({"op": "replace", "path": place, "value": "upper_"},), lost), self.expected(mutations.reference_nowhere)
        )
        self.assertEqual(
            self.expected(mutations.definition_removed),
            [(({"op": "remove", "path": "/STRINGS/0"},), lost), (({"op": "remove", "path": "/STRINGS/1"},), set())],
        )
        self.assertEqual(
            self.expected(mutations.definition_renamed),
            [
                (({"op": "replace", "path": "/STRINGS/0/name", "value": "upper_"},), lost),
                (({"op": "replace", "path": "/STRINGS/1/name", "value": "lower_"},), set()),
            ],
        )

    def test_definitions_lost_with_what_is_around_them(self) -> None:
        lost = "/BOUNDARY/0/string_name: Error: This value must match a 'name' in '/STRINGS'."
        moved = [each for patch, each in self.expected(mutations.renamed) if patch[0]["from"] == "/STRINGS"]
        self.assertEqual(moved, [{lost, f"/STRINGS_of_nobody: {UNUSED}"}])


class AllMutants(unittest.TestCase):
    def test_every_kind_and_every_schema_object_that_is_reached(self) -> None:
        mutants = list(Mutation(schema(), [example()]).mutants())
        self.assertEqual({mutant.kind for mutant in mutants}, {kind.__name__ for kind in KINDS})
        reached = {spot.node.pointer for spot in schema().spots(document())}
        self.assertEqual({mutant.node.pointer for mutant in mutants}, reached)

    def test_each_changes_the_model(self) -> None:
        for mutant in Mutation(schema(), [example()]).mutants():
            self.assertNotEqual(repr(mutant.document), repr(document()), mutant.patch)

    def test_same_seed_same_mutants(self) -> None:
        first, second = (
            [(mutant.kind, mutant.patch) for mutant in Mutation(schema(), [example()], seed=5).mutants()] for _ in "ab"
        )
        self.assertEqual(first, second)

    def test_made_data(self) -> None:
        node = schema().nodes["/properties/BOUNDARY/items"].properties()
        member = {name: schema().nodes[f"/properties/BOUNDARY/items/properties/{name}"] for name in node}
        self.assertEqual([made_datum(member[name]) for name in ("type", "q", "height", "steps")], ["inflow", 1, -1, 2])
        self.assertEqual(made_datum(schema().nodes["/properties/eps"]), 0.5)


if __name__ == "__main__":
    unittest.main()
