"""Tests of tools/dialect_to_draft4.py: each rule of the translation, the faults of schemas, the command line."""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

sys.dont_write_bytecode = True
TOOL = Path(__file__).resolve().parents[2] / "tools" / "dialect_to_draft4.py"
sys.path.insert(0, str(TOOL.parent))

from dialect_to_draft4 import SchemaError, parse, speaks_of_members_only, translate  # noqa: E402

DRAFT4 = "http://json-schema.org/draft-04/schema#"
NOT_OBJECT = {"not": {"type": "object"}}
A_OR_B = [{"required": ["a"]}, {"required": ["b"]}]


def draft4(schema: Any) -> dict[str, Any]:
    """The translation without the mark of the draft, which every one carries."""
    result = dict(translate(schema).schema)
    mark = result.pop("$schema")
    assert mark == DRAFT4, mark
    return result


class DroppedKeywords(unittest.TestCase):
    def test_words_without_effect(self) -> None:
        for name, value in {
            "description": "x",
            "units": "m",
            "default": 1,
            "format": "uri",
            "optional": ["a", "a"],
            "autoexpand": True,
        }.items():
            with self.subTest(name):
                self.assertEqual(draft4({name: value, "type": "string"}), {"type": "string"})

    def test_mark_of_the_dialect(self) -> None:
        self.assertEqual(translate({"$schema": {"any": 1}}).schema, {"$schema": DRAFT4})

    def test_mark_in_a_nested_schema(self) -> None:
        self.assertEqual(draft4({"items": {"$schema": "x"}}), {"items": {}})

    def test_references_are_dropped_and_counted(self) -> None:
        reference = {"requiredIn": {"itemProperty": "name", "$array_ref": "/list"}}
        schema = {"properties": {"a": reference, "b": {"items": reference}}, "oneOf": [reference, {}]}
        translation = translate(schema)
        self.assertEqual(translation.dropped_references, 3)
        self.assertEqual(translation.schema["properties"], {"a": {}, "b": {"items": {}}})

    def test_names_of_members_are_no_keywords(self) -> None:
        members = {"description": {"type": "string"}, "requiredIn": {}, "$schema": {}, "optional": {}}
        self.assertEqual(draft4({"properties": members}), {"properties": members})


class Values(unittest.TestCase):
    def test_boolean_schemas(self) -> None:
        self.assertEqual(draft4(True), {})
        self.assertEqual(draft4(False), {"not": {}})
        self.assertEqual(draft4({"properties": {"a": True, "b": False}}), {"properties": {"a": {}, "b": {"not": {}}}})
        self.assertEqual(draft4({"items": False}), {"items": {"not": {}}})

    def test_types_stand_as_they_are(self) -> None:
        for name in ("integer", "number", "string", "object", "array", "boolean"):
            with self.subTest(name):
                self.assertEqual(draft4({"type": name}), {"type": name})

    def test_const_becomes_enum_of_one(self) -> None:
        self.assertEqual(draft4({"const": "uniform"}), {"enum": ["uniform"]})

    def test_const_beside_enum_holds_too(self) -> None:
        self.assertEqual(draft4({"enum": ["a", "b"], "const": "c"}), {"enum": ["c"], "allOf": [{"enum": ["a", "b"]}]})

    def test_repetitions_in_enum_are_removed(self) -> None:
        self.assertEqual(draft4({"enum": ["b", "a", "b"]}), {"enum": ["b", "a"]})

    def test_empty_enum_never_fits(self) -> None:
        self.assertEqual(draft4({"enum": []}), {"not": {}})

    def test_limits(self) -> None:
        self.assertEqual(draft4({"minimum": 0, "maximum": 1.5}), {"minimum": 0, "maximum": 1.5})

    def test_exclusive_limits_stay_beside_their_limit(self) -> None:
        for side in ("minimum", "maximum"):
            switch = "exclusive" + side.capitalize()
            for value in (True, False):
                with self.subTest(side, value=value):
                    self.assertEqual(draft4({side: 2, switch: value}), {side: 2, switch: value})

    def test_exclusive_limits_alone_are_dropped(self) -> None:
        self.assertEqual(draft4({"exclusiveMinimum": True, "exclusiveMaximum": "anything"}), {})
        self.assertEqual(draft4({"maximum": 1, "exclusiveMinimum": 7}), {"maximum": 1})

    def test_property_that_is_called_like_a_limit(self) -> None:
        schema = {"properties": {"minimum": {}, "exclusiveMinimum": {"type": "number"}}}
        self.assertEqual(draft4(schema), schema)


class Members(unittest.TestCase):
    def test_required(self) -> None:
        self.assertEqual(draft4({"required": ["b", "a"]}), {"required": ["b", "a"]})

    def test_empty_required_is_dropped(self) -> None:
        self.assertEqual(draft4({"required": []}), {})

    def test_repetitions_in_required_are_removed(self) -> None:
        self.assertEqual(draft4({"required": ["a", "b", "a"]}), {"required": ["a", "b"]})

    def test_properties_and_items_are_translated_within(self) -> None:
        schema = {"properties": {"a": {"items": {"const": "x", "units": "m"}}}}
        self.assertEqual(draft4(schema), {"properties": {"a": {"items": {"enum": ["x"]}}}})

    def test_input_stays_as_it_was(self) -> None:
        schema = {"properties": {"a": {"const": "x"}}, "oneOf": [{"required": ["a", "a"]}, {"enum": []}]}
        before = json.dumps(schema)
        translate(schema)
        self.assertEqual(json.dumps(schema), before)


class Groups(unittest.TestCase):
    def test_group_about_members_is_skipped_on_other_data(self) -> None:
        self.assertEqual(draft4({"oneOf": A_OR_B}), {"anyOf": [NOT_OBJECT, {"oneOf": A_OR_B}]})

    def test_group_about_the_datum_is_not_skipped(self) -> None:
        values = [{"type": "object"}, {"const": "x"}, {"enum": []}, {"minimum": 0}, {"maximum": 0}]
        for alternative in [*values, {"items": {}}]:
            with self.subTest(alternative=alternative):
                schema = {"oneOf": [{"required": ["a"]}, alternative]}
                self.assertEqual(draft4(schema), {"oneOf": [{"required": ["a"]}, draft4(alternative)]})

    def test_dropped_reference_still_speaks_of_the_datum(self) -> None:
        reference = {"requiredIn": {"itemProperty": "name", "$array_ref": ""}}
        self.assertEqual(draft4({"oneOf": [reference, {"required": ["a"]}]}), {"oneOf": [{}, {"required": ["a"]}]})

    def test_words_that_speak_of_members_only(self) -> None:
        silent = {
            "required": ["a"],
            "optional": ["a"],
            "properties": {"a": {"type": "string"}},
            "description": "x",
            "units": "m",
            "default": 1,
            "autoexpand": True,
            "format": "uri",
            "$schema": 1,
            "exclusiveMinimum": 1,
            "exclusiveMaximum": 1,
        }
        for name, value in silent.items():
            with self.subTest(name):
                self.assertTrue(speaks_of_members_only({name: value}))
                self.assertIn("anyOf", draft4({"oneOf": [{name: value}]}))

    def test_nested_groups_decide_for_the_outer_one(self) -> None:
        self.assertTrue(speaks_of_members_only({"oneOf": [{"oneOf": A_OR_B}], "allOf": [{"oneOf": A_OR_B}]}))
        self.assertFalse(speaks_of_members_only({"oneOf": [{"oneOf": [{"type": "string"}]}]}))
        self.assertFalse(speaks_of_members_only({"allOf": [{"oneOf": A_OR_B}, {"oneOf": [{"const": "x"}]}]}))

    def test_nested_group_is_skipped_on_its_own(self) -> None:
        schema = {"oneOf": [{"oneOf": A_OR_B}, {"type": "array"}]}
        self.assertEqual(draft4(schema), {"oneOf": [{"anyOf": [NOT_OBJECT, {"oneOf": A_OR_B}]}, {"type": "array"}]})

    def test_empty_group_refuses_objects_alone(self) -> None:
        self.assertEqual(draft4({"oneOf": []}), NOT_OBJECT)
        self.assertEqual(draft4({"allOf": [{"oneOf": []}]}), {"allOf": [NOT_OBJECT]})

    def test_empty_group_beside_an_empty_enum(self) -> None:
        self.assertEqual(draft4({"oneOf": [], "enum": []}), {"not": {}, "allOf": [NOT_OBJECT]})

    def test_all_of_is_a_conjunction_of_groups(self) -> None:
        schema = {"allOf": [{"oneOf": A_OR_B}, {"oneOf": [{"type": "object"}]}]}
        self.assertEqual(
            draft4(schema), {"allOf": [{"anyOf": [NOT_OBJECT, {"oneOf": A_OR_B}]}, {"oneOf": [{"type": "object"}]}]}
        )

    def test_empty_all_of_is_dropped(self) -> None:
        self.assertEqual(draft4({"allOf": []}), {})

    def test_all_of_keeps_its_groups_beside_clashing_keywords(self) -> None:
        schema = {"allOf": [{"oneOf": [{"type": "string"}]}], "const": "a", "enum": ["a"]}
        self.assertEqual(
            draft4(schema), {"allOf": [{"oneOf": [{"type": "string"}]}, {"enum": ["a"]}], "enum": ["a"]}
        )


class Faults(unittest.TestCase):
    FAULTS = [
        (None, "/: A schema must be defined by either an object or a boolean."),
        ({"properties": {"a": 1}}, "/properties/a: A schema must be defined by either an object or a boolean."),
        ({"items": []}, "/items: A schema must be defined by either an object or a boolean."),
        ({"not": {}}, "/not: The keyword 'not' is not supported."),
        ({"x/~": 1}, "/x~1~0: The keyword 'x/~' is not supported."),
        ({"type": "null"}, "/type: The provided type is invalid."),
        ({"type": ["string"]}, "/type: This keyword requires a string parameter."),
        ({"const": 1}, "/const: This keyword requires a string parameter."),
        ({"enum": "a"}, "/enum: This keyword requires an array parameter."),
        ({"enum": ["a", 1]}, "/enum: The schema is invalid."),
        ({"minimum": "0"}, "/minimum: This keyword requires a number parameter."),
        ({"minimum": True}, "/minimum: This keyword requires a number parameter."),
        ({"maximum": 0, "exclusiveMaximum": 1}, "/exclusiveMaximum: This keyword requires a boolean parameter."),
        ({"required": "a"}, "/required: This keyword requires an array parameter."),
        ({"required": [1]}, "/required: The schema is invalid."),
        ({"optional": {}}, "/optional: This keyword requires an array parameter."),
        ({"optional": [None]}, "/optional: The schema is invalid."),
        ({"properties": []}, "/properties: This keyword requires an object parameter."),
        ({"oneOf": {}}, "/oneOf: This keyword requires an array parameter."),
        ({"oneOf": [{}, True]}, "/oneOf/1: This keyword requires an object parameter."),
        ({"allOf": [[]]}, "/allOf/0: This keyword requires an object parameter."),
        ({"allOf": [{"oneOf": [], "required": ["x"]}]}, "/allOf/0: Only single items are supported."),
        ({"allOf": [{}]}, "/allOf/0: Only single items are supported."),
        ({"allOf": [{"anyOf": []}]}, "/allOf/0: Only a single 'oneOf' item is supported here."),
        ({"allOf": [{"oneOf": 1}]}, "/allOf/0/oneOf: This keyword requires an array parameter."),
        ({"requiredIn": "a"}, "/requiredIn: This keyword requires an object parameter."),
        ({"requiredIn": {"$array_ref": "/a"}}, "/requiredIn: The schema is invalid."),
        ({"requiredIn": {"itemProperty": "a"}}, "/requiredIn: The schema is invalid."),
        (
            {"requiredIn": {"itemProperty": 1, "$array_ref": ""}},
            "/requiredIn/itemProperty: This keyword requires a string parameter.",
        ),
        (
            {"requiredIn": {"itemProperty": "a", "$array_ref": "a"}},
            "/requiredIn/$array_ref: This JSON pointer is invalid.",
        ),
        (
            {"requiredIn": {"itemProperty": "a", "$array_ref": "/~2"}},
            "/requiredIn/$array_ref: This JSON pointer is invalid.",
        ),
        ({"default": None}, "/default: Only string, numeric, and boolean default values are supported."),
        ({"default": [1]}, "/default: Only string, numeric, and boolean default values are supported."),
        ({"format": "date"}, "/format: Only the 'uri' format is currently supported."),
        ({"format": 1}, "/format: This keyword requires a string parameter."),
        ({"description": 1}, "/description: This keyword requires a string parameter."),
        ({"units": []}, "/units: This keyword requires a string parameter."),
        ({"autoexpand": 1}, "/autoexpand: This keyword requires an boolean parameter."),
    ]

    def test_every_fault_is_told_with_its_place(self) -> None:
        for schema, message in self.FAULTS:
            with self.subTest(schema=schema):
                with self.assertRaises(SchemaError) as caught:
                    translate(schema)
                self.assertEqual(str(caught.exception), message)

    def test_the_first_fault_in_order_of_names_counts(self) -> None:
        with self.assertRaisesRegex(SchemaError, "^/enum: "):
            translate({"type": "null", "enum": 1})

    def test_strict_parsing(self) -> None:
        for text in (b"", b"NaN", b"[Infinity]", b"1e999", b'"\\ud800"', b'"\xff"', b"{} {}"):
            with self.subTest(text=text):
                with self.assertRaises(ValueError):
                    parse(text)
        self.assertEqual(parse('\ufeff{"a": 1e300}'.encode()), {"a": 1e300})


class CommandLine(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_tool(self, text: str, *more: str) -> subprocess.CompletedProcess[str]:
        schema = self.folder / "schema.json"
        schema.write_text(text, encoding="utf-8")
        return self.run_with(str(schema), *more)

    def run_with(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run([sys.executable, str(TOOL), *arguments], capture_output=True, text=True, check=False)

    def test_translation_on_standard_output(self) -> None:
        done = self.run_tool('{"const": "größe", "units": "m"}')
        self.assertEqual(json.loads(done.stdout), {"$schema": DRAFT4, "enum": ["größe"]})
        self.assertEqual(done.stderr, " -> dropped references between blocks (requiredIn): 0\n")
        self.assertEqual(done.returncode, 0)

    def test_translation_in_a_file(self) -> None:
        output = self.folder / "draft4.json"
        done = self.run_tool('{"requiredIn": {"itemProperty": "name", "$array_ref": "/a"}}', str(output))
        self.assertEqual(json.loads(output.read_text(encoding="utf-8")), {"$schema": DRAFT4})
        self.assertEqual(done.stdout, "")
        self.assertEqual(done.stderr, " -> dropped references between blocks (requiredIn): 1\n")
        self.assertEqual(done.returncode, 0)

    def assert_refused(self, done: subprocess.CompletedProcess[str], message: str) -> None:
        self.assertEqual(done.returncode, 1)
        self.assertEqual(done.stdout, "")
        self.assertRegex(done.stderr, f"^ -> [^\n]*{message}[^\n]*\n$")

    def test_fault_of_the_schema(self) -> None:
        self.assert_refused(self.run_tool('{"properties": {"a": {"x": 1}}}'), "/properties/a/x: The keyword 'x'")

    def test_fault_leaves_the_output_alone(self) -> None:
        output = self.folder / "draft4.json"
        self.assert_refused(self.run_tool('{"type": "null"}', str(output)), "/type: The provided type is invalid.")
        self.assertFalse(output.exists())

    def test_no_json(self) -> None:
        self.assert_refused(self.run_tool('{"type": '), "this is no JSON text")

    def test_nested_too_deep(self) -> None:
        self.assert_refused(self.run_tool('{"items":' * 100_000 + "{}" + "}" * 100_000), "nested too deep")

    def test_missing_file(self) -> None:
        self.assert_refused(self.run_with(str(self.folder / "none.json")), "none.json: No such file or directory")

    def test_output_that_cannot_be_written(self) -> None:
        self.assert_refused(self.run_tool("{}", str(self.folder / "none" / "out.json")), "out.json: No such file")


if __name__ == "__main__":
    unittest.main()
