"""What breaks the rules of rules/quoted.py: the members that the format fixes, put at their places."""

from __future__ import annotations

import unittest
from typing import Any

from rules import quoted
from rules.base import Share
from small_schema import RuleTest

from block_tree import load_tree

CFL = {"type": "number", "default": 1.0, "minimum": 0, "exclusiveMinimum": True, "maximum": 2.0}
PLANE = ["region_name", "GEOMETRY", "HYDRAULICS", "TIMESTEP", "OUTPUT"]


def found(schema: dict[str, Any], at: str) -> list[tuple[str, str]]:
    share = Share(b"", schema, tuple(at.split("/")[1:]), load_tree())
    return [(rule.__name__, finding.message) for rule in quoted.RULES for finding in rule(share)]


class Keywords(unittest.TestCase):
    AT = "/SETUP/ORVAMD/ORVAPLANE_2D/TIMESTEP/CFL"

    def test_as_they_are_to_be(self) -> None:
        self.assertEqual(found(CFL, self.AT), [])
        self.assertEqual(found({**CFL, "default": 1}, self.AT), [])

    def test_another_place(self) -> None:
        self.assertEqual(found({}, "/SETUP/ORVAMD/ORVAPLANE_2D/TIMESTEP"), [])

    def test_other_values(self) -> None:
        self.assertEqual(found({**CFL, "default": 0.9}, self.AT), [("quoted_keywords", "default is 0.9, to be 1.0")])
        self.assertEqual(found({**CFL, "maximum": 1}, self.AT), [("quoted_keywords", "maximum is 1, to be 2.0")])

    def test_exclusive_or_not(self) -> None:
        inclusive = {**CFL, "exclusiveMinimum": False}
        self.assertEqual(found(inclusive, self.AT), [("quoted_keywords", "exclusiveMinimum is False, to be True")])
        exclusive = {**CFL, "exclusiveMaximum": True}
        self.assertEqual(found(exclusive, self.AT), [("quoted_keywords", "exclusiveMaximum is True, to be None")])

    def test_every_place_is_one_of_the_tree(self) -> None:
        tree = load_tree()
        for path in (*quoted.KEYWORDS, *quoted.ENUMERATED):
            outer = tree.find(tuple(path.split("/")[1:-1]))
            self.assertIsNotNone(outer, path)
            self.assertIn(path.split("/")[-1], outer.members if outer else ())


class Required(unittest.TestCase):
    AT = "/SETUP/ORVAMD/ORVAPLANE_2D"

    def test_as_it_is_to_be(self) -> None:
        self.assertEqual(found({"type": "array", "items": {"type": "object", "required": PLANE}}, self.AT), [])

    def test_more_or_less(self) -> None:
        message = "required are not exactly ['GEOMETRY', 'HYDRAULICS', 'OUTPUT', 'TIMESTEP', 'region_name']"
        for names in (PLANE[1:], [*PLANE, "MORPHOLOGY"]):
            schema = {"type": "array", "items": {"type": "object", "required": names}}
            self.assertEqual(found(schema, self.AT), [("quoted_required", message)])

    def test_nothing(self) -> None:
        self.assertEqual(found({"type": "object"}, "/SETUP/ORVAMD"), [])
        schema = {"type": "object", "required": ["COUPLINGS"]}
        self.assertEqual(found(schema, "/SETUP/ORVAMD"), [("quoted_required", "required are not exactly []")])


class Models(RuleTest):
    def test_no_choice_between_them(self) -> None:
        self.assert_breaks("quoted_required", "", "no oneOf of ['ORVAHPC'] and ['ORVAMD']", oneOf=None)


class Values(unittest.TestCase):
    def test_kinds_of_boundary(self) -> None:
        place = "/SETUP/ORVAHPC/ORVAPLANE_2D/HYDRAULICS/BOUNDARY/STANDARD/type"
        values = ["uniform_in", "wall", "uniform_out", "weir_out_dynamic"]
        expected = [("quoted_values", "'weir_out_constant' is not in the enumeration")]
        self.assertEqual(found({"enum": values}, place), expected)
        self.assertEqual(found({"enum": [*values, "weir_out_constant"]}, place), [])

    def test_formats_of_output(self) -> None:
        for domain in ("ORVASUB", "ORVAPLANE_2D"):
            place = f"/SETUP/ORVAMD/{domain}/OUTPUT/SPECIAL_OUTPUT/format"
            formats = ["ascii", "hdf5", "shape", "sms", "vtk"]
            self.assertEqual(found({"enum": formats}, place), [])
            message = "is not in both the enumeration and the list of output formats"
            self.assertEqual(found({"enum": formats[1:]}, place), [("quoted_values", f"'ascii' {message}")])
            self.assertEqual(found({"enum": [*formats, "csv"]}, place), [("quoted_values", f"'csv' {message}")])


if __name__ == "__main__":
    unittest.main()
