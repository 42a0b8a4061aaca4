"""Which schema object describes which datum, and changed copies."""

from __future__ import annotations

import unittest

from models import patched, pointer, steps_of
from small_model import document, schema


class Spots(unittest.TestCase):
    def test_each_datum_has_its_schema_object(self) -> None:
        found = {spot.pointer: spot.node.pointer for spot in schema().spots(document())}
        self.assertEqual(found[""], "")
        self.assertEqual(found["/BOUNDARY/1"], "/properties/BOUNDARY/items")
        self.assertEqual(found["/BOUNDARY/1/height"], "/properties/BOUNDARY/items/properties/height")
        self.assertEqual(found["/OUTPUT/times/1"], "/properties/OUTPUT/properties/times/items")
        self.assertEqual(len(found), 26)

    def test_what_is_not_described_is_left_out(self) -> None:
        changed = {"odd": {"file": "x"}, "OUTPUT": [1], "STRINGS": {"name": "a"}}
        self.assertEqual([spot.pointer for spot in schema().spots(changed)], ["", "/OUTPUT", "/STRINGS"])

    def test_members_know_their_object_and_elements_have_none(self) -> None:
        spots = {spot.pointer: spot for spot in schema().spots(document())}
        height = spots["/BOUNDARY/1/height"].member_of
        self.assertEqual(height and height.pointer, "/BOUNDARY/1")
        self.assertIsNone(spots["/BOUNDARY/1"].member_of)
        self.assertIsNone(spots[""].member_of)


class Patches(unittest.TestCase):
    def test_operations(self) -> None:
        document = {"a": [1, {"b": 2}], "c/d": 3}
        operations = [
            ({"op": "remove", "path": "/a/0"}, {"a": [{"b": 2}], "c/d": 3}),
            ({"op": "replace", "path": "/a/1/b", "value": None}, {"a": [1, {"b": None}], "c/d": 3}),
            ({"op": "add", "path": "/a/1/x", "value": [0]}, {"a": [1, {"b": 2, "x": [0]}], "c/d": 3}),
            ({"op": "move", "from": "/c~1d", "path": "/e"}, {"a": [1, {"b": 2}], "e": 3}),
            ({"op": "replace", "path": "", "value": 7}, 7),
        ]
        for operation, expected in operations:
            self.assertEqual(patched(document, (operation,)), expected)
        self.assertEqual(document, {"a": [1, {"b": 2}], "c/d": 3}, "the original is left as it is")

    def test_pointers_escape(self) -> None:
        self.assertEqual(pointer(("a/b", 0, "~")), "/a~1b/0/~0")
        self.assertEqual(steps_of("/a~1b/0/~0"), ("a/b", "0", "~"))
        self.assertEqual(pointer(()), "")


if __name__ == "__main__":
    unittest.main()
