#!/usr/bin/env python3
"""Tests of the program jsv from outside: arguments, files, the two streams, exit status, hostile inputs.

    run_tests.py JSV_PROGRAM [UNITTEST ARGUMENTS]

Whatever the input, the program must end by itself: a signal shows as a negative status, a hang as a time-out.
"""

from __future__ import annotations

import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

TIME_LIMIT = 30.0
DEEP = 300_000
FAULT = 3

program = ""


class JsvTest(unittest.TestCase):
    """A folder for the files of one test, and ways to run the program."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_program(
        self, *arguments: str | pathlib.Path, standard_input: bytes = b""
    ) -> subprocess.CompletedProcess[bytes]:
        done = subprocess.run(
            [program, *map(str, arguments)],
            cwd=self.folder,
            input=standard_input,
            capture_output=True,
            timeout=TIME_LIMIT,
            check=False,
        )
        self.assertIn(done.returncode, (0, 1, 2, 3), f"not an exit status of jsv; standard error: {done.stderr[-500:]!r}")
        return done

    def write(self, name: str, text: str | bytes) -> pathlib.Path:
        path = self.folder / name
        path.write_bytes(text.encode() if isinstance(text, str) else text)
        return path

    def validate(self, schema: str | bytes, data: str | bytes) -> subprocess.CompletedProcess[bytes]:
        return self.run_program(self.write("schema.json", schema), self.write("data.json", data))

    def assert_outcome(
        self, done: subprocess.CompletedProcess[bytes], status: int, output: str = "", error: str = ""
    ) -> None:
        actual = (done.returncode, done.stdout.decode(), done.stderr.decode())
        self.assertEqual(actual, (status, output, error))

    def assert_refused(self, done: subprocess.CompletedProcess[bytes], beginning: str) -> None:
        """Status 3, no word on standard output, one message with this beginning on standard error."""
        self.assertEqual((done.returncode, done.stdout), (FAULT, b""))
        self.assertTrue(done.stderr.startswith(f" -> {beginning}".encode()), done.stderr[:500])
        self.assertTrue(done.stderr.endswith(b"\n"), done.stderr[-500:])
        self.assertEqual(done.stderr.count(b"\n"), 1, done.stderr[:500])


class Verdicts(JsvTest):
    """The report and the verdict as exit status."""

    def test_nothing_found(self) -> None:
        self.assert_outcome(self.validate('{"type": "object"}', "{}"), 0)

    def test_warning_only(self) -> None:
        self.assert_outcome(
            self.validate('{"properties": {"a": true}}', '{"a": 1, "b": 2}'),
            1,
            "/b: Warning: The value of this item will not be used.\n\n",
        )

    def test_error_only(self) -> None:
        self.assert_outcome(
            self.validate('{"required": ["a"]}', "{}"),
            2,
            "/a: Error: This item is required but missing.\n\n",
        )

    def test_error_and_warning(self) -> None:
        self.assert_outcome(
            self.validate('{"required": ["b"], "properties": {"c": {"type": "boolean"}}}', '{"a": 1, "c": 0}'),
            2,
            "/a: Warning: The value of this item will not be used.\n"
            "/b: Error: This item is required but missing.\n"
            "/c: Error: This value must be of a different type.\n\n",
        )

    def test_schema_true(self) -> None:
        self.assert_outcome(self.validate("true", "[1, {}]"), 0)

    def test_schema_false(self) -> None:
        self.assert_outcome(self.validate("false", "null"), 2, "/: Error: This item is invalid.\n\n")

    def test_names_are_not_quoted_in_the_report(self) -> None:
        self.assert_outcome(
            self.validate('{"required": ["Höhe \\"Pegel\\"", "a/b", "m~n"]}', "{}"),
            2,
            '/Höhe "Pegel": Error: This item is required but missing.\n'
            "/a~1b: Error: This item is required but missing.\n"
            "/m~0n: Error: This item is required but missing.\n\n",
        )


class SchemaFaults(JsvTest):
    """A fault of the schema: status 3, its text alone on standard error, nothing on standard output."""

    def test_at_the_root(self) -> None:
        self.assert_outcome(
            self.validate("[]", "{}"), FAULT, error=" -> /: A schema must be defined by either an object or a boolean.\n"
        )

    def test_unknown_keyword(self) -> None:
        self.assert_outcome(
            self.validate('{"properties": {"a": {"title": "A"}}}', '{"a": 1}'),
            FAULT,
            error=" -> /properties/a/title: The keyword 'title' is not supported.\n",
        )

    def test_wrong_parameter(self) -> None:
        self.assert_outcome(
            self.validate('{"autoexpand": "yes"}', "{}"),
            FAULT,
            error=" -> /autoexpand: This keyword requires an boolean parameter.\n",
        )

    def test_findings_before_the_fault_are_not_printed(self) -> None:
        self.assert_outcome(
            self.validate('{"required": ["a"], "type": "objekt"}', "{}"),
            FAULT,
            error=" -> /type: The provided type is invalid.\n",
        )

    def test_fault_off_the_way(self) -> None:
        self.assert_outcome(self.validate('{"properties": {"a": {"title": "A"}}}', "{}"), 0)


class Texts(JsvTest):
    """Files whose text is no JSON."""

    DATA = "Parsing the JSON data file failed: [json.exception."
    SCHEMA = "Parsing the JSON schema file failed: [json.exception."

    def test_data_not_parsable(self) -> None:
        self.assert_refused(self.validate("true", '{"a": 1'), self.DATA)

    def test_schema_not_parsable(self) -> None:
        self.assert_refused(self.validate("{type: object}", "{}"), self.SCHEMA)

    def test_data_comes_before_schema(self) -> None:
        self.assert_refused(self.validate("{", "}"), self.DATA)

    def test_data_empty(self) -> None:
        self.assert_refused(self.validate("true", ""), self.DATA)

    def test_schema_empty(self) -> None:
        self.assert_refused(self.validate("", "{}"), self.SCHEMA)

    def test_data_blank(self) -> None:
        self.assert_refused(self.validate("true", " \r\n\t\n"), self.DATA)

    def test_data_with_comment(self) -> None:
        self.assert_refused(self.validate("true", "{} // nothing"), self.DATA)

    def test_text_after_the_data(self) -> None:
        self.assert_refused(self.validate("true", "{} {}"), self.DATA)

    def test_data_not_utf8(self) -> None:
        self.assert_refused(self.validate("true", b'{"name": "M\xfchlbach"}'), self.DATA)

    def test_schema_not_utf8(self) -> None:
        self.assert_refused(self.validate(b'{"description": "M\xfchlbach"}', "{}"), self.SCHEMA)

    def test_data_in_utf16(self) -> None:
        self.assert_refused(self.validate("true", '{"a": 1}'.encode("utf-16")), self.DATA)

    def test_number_too_large_in_data(self) -> None:
        self.assert_refused(self.validate("true", "[1e999]"), self.DATA)

    def test_number_too_large_in_schema(self) -> None:
        self.assert_refused(self.validate('{"maximum": 1e999}', "1"), self.SCHEMA)

    def test_windows_line_ends(self) -> None:
        self.assert_outcome(self.validate('{\r\n"type": "object"\r\n}\r\n', "{\r\n}\r\n"), 0)


class Files(JsvTest):
    """Files that are not there, or are none."""

    def setUp(self) -> None:
        super().setUp()
        self.file = self.write("true.json", "true")

    def test_schema_missing(self) -> None:
        self.assert_outcome(
            self.run_program("no schema.json", self.file), FAULT, error=" -> file not found: no schema.json\n"
        )

    def test_data_missing(self) -> None:
        path = self.folder / "no folder" / "data.json"
        self.assert_outcome(self.run_program(self.file, path), FAULT, error=f" -> file not found: {path}\n")

    def test_schema_is_a_folder(self) -> None:
        self.assert_outcome(
            self.run_program(self.folder, self.file), FAULT, error=f" -> file not found: {self.folder}\n"
        )

    def test_data_is_a_folder(self) -> None:
        self.assert_outcome(
            self.run_program(self.file, self.folder), FAULT, error=f" -> file not found: {self.folder}\n"
        )

    def test_name_empty(self) -> None:
        self.assert_outcome(self.run_program(self.file, ""), FAULT, error=" -> file not found: \n")

    def test_one_file_as_both(self) -> None:
        self.assert_outcome(self.run_program(self.file, self.file), 0)

    def test_name_with_blank_and_umlaut(self) -> None:
        data = self.write("Mühle am Bach.json", "false")
        self.assert_outcome(self.run_program(self.file, data), 0)

    def test_data_through_a_pipe(self) -> None:
        count = 1_000_000
        text = b"[" + b"0," * count + b'"0"]'
        schema = self.write("schema.json", '{"items": {"type": "integer"}}')
        self.assert_outcome(
            self.run_program(schema, "/dev/stdin", standard_input=text),
            2,
            f"/{count}: Error: This value must be an integer.\n\n",
        )

    def test_input_files_stay_as_they_are(self) -> None:
        schema, data = '{"properties": {"a": {"default": 1}}}', '{ "b":2 }'
        self.assertEqual(self.validate(schema, data).returncode, 1)
        texts = [(self.folder / name).read_text(encoding="utf-8") for name in ("schema.json", "data.json")]
        self.assertEqual(texts, [schema, data])
        self.assertEqual(sorted(os.listdir(self.folder)), ["data.json", "schema.json", "true.json"])


class Arguments(JsvTest):
    """The command line."""

    def assert_wrong_use(self, *arguments: str | pathlib.Path) -> None:
        done = self.run_program(*arguments)
        self.assertEqual((done.returncode, done.stdout), (FAULT, b""))
        self.assertNotEqual(done.stderr.strip(), b"")

    def test_none(self) -> None:
        self.assert_wrong_use()

    def test_one(self) -> None:
        self.assert_wrong_use(self.write("true.json", "true"))

    def test_three(self) -> None:
        file = self.write("true.json", "true")
        self.assert_wrong_use(file, file, file)

    def test_unknown_option(self) -> None:
        self.assert_wrong_use("--frobnicate")

    def test_help(self) -> None:
        done = self.run_program("--help")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertRegex(done.stdout.decode(), "(?s)jsv.*SCHEMA_FILE.*DATA_FILE")

    def test_version(self) -> None:
        done = self.run_program("--version")
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertRegex(done.stdout.decode(), r"\bv4\.2\.0\b")


def nested(opening: str, middle: str, closing: str, depth: int = DEEP) -> str:
    return opening * depth + middle + closing * depth


class HostileInputs(JsvTest):
    """Depth and mass."""

    def test_deep_data_under_a_schema_of_its_root(self) -> None:
        self.assert_outcome(self.validate('{"type": "array"}', nested("[", "", "]")), 0)

    def test_deep_data_of_the_wrong_type(self) -> None:
        self.assert_outcome(
            self.validate('{"type": "object"}', nested("[", "", "]")),
            2,
            "/: Error: This value must be an object.\n\n",
        )

    def test_deep_data_that_is_not_described(self) -> None:
        self.assert_outcome(
            self.validate('{"properties": {}}', nested('{"a":', "1", "}")),
            1,
            "/a: Warning: The value of this item will not be used.\n"
            "/a/a: Warning: The value of this item will not be used.\n\n",
        )

    def test_deep_data_that_a_name_may_not_match(self) -> None:
        data = '{"names":' + nested("[", "", "]") + ',"name":"a"}'
        reference = '{"requiredIn":{"itemProperty":"n","$array_ref":"/names"}}'
        schema = f'{{"properties":{{"names":true,"name":{reference}}}}}'
        self.assert_outcome(
            self.validate(schema, data), 2, "/name: Error: This value must match a 'n' in '/names'.\n\n"
        )

    def test_deep_schema_off_the_way(self) -> None:
        self.assert_outcome(self.validate(nested('{"properties":{"a":', "true", "}}"), "{}"), 0)

    def assert_too_deep(self, schema: str, data: str) -> None:
        done = self.validate(schema, data)
        self.assert_refused(done, "/")
        self.assertIn(b"nested more than", done.stderr)

    def test_deep_properties_and_data(self) -> None:
        self.assert_too_deep(nested('{"properties":{"a":', "true", "}}"), nested('{"a":', "1", "}"))

    def test_deep_items_and_data(self) -> None:
        self.assert_too_deep(nested('{"items":', "true", "}"), nested("[", "", "]"))

    def test_deep_groups(self) -> None:
        self.assert_too_deep(nested('{"oneOf":[', '{"type":"object"}', "]}"), "{}")

    def test_deep_conjunctions(self) -> None:
        self.assert_too_deep(nested('{"allOf":[{"oneOf":[', '{"type":"object"}', "]}]}"), "{}")

    def test_deep_groups_on_a_number(self) -> None:
        """The groups have nothing to say about a number; whether their depth is noticed all the same is open."""
        schema = nested('{"oneOf":[', '{"required":["a"]}', "]}")
        if self.validate(schema, "1").returncode == FAULT:
            self.assert_too_deep(schema, "1")
        else:
            self.assert_outcome(self.validate(schema, "1"), 0)

    def test_deep_parameter_without_effect(self) -> None:
        self.assert_outcome(self.validate('{"$schema":' + nested("[", "", "]") + "}", "{}"), 0)

    def test_time_does_not_double_with_each_inner_group(self) -> None:
        schema = nested('{"oneOf":[{"required":["z"]},', '{"required":["a","b"]}', "]}", depth=40)
        start = time.monotonic()
        done = self.validate(schema, '{"a":1}')
        self.assertLess(time.monotonic() - start, 10.0)
        self.assert_outcome(done, 2, "/: Error: This item is invalid.\n\n")

    def test_time_does_not_double_with_each_inner_group_around_a_fault_off_the_way(self) -> None:
        innermost = '{"required":["a","b"],"properties":{"q":{"title":1}}}'
        schema = nested('{"oneOf":[{"required":["z"]},', innermost, "]}", depth=40)
        self.assert_outcome(self.validate(schema, '{"a":1}'), 2, "/: Error: This item is invalid.\n\n")

    def test_deepest_schema(self) -> None:
        schema = nested('{"properties":{"a":', '{"type":"string"}', "}}", depth=500)
        self.assert_outcome(
            self.validate(schema, nested('{"a":', "1", "}", depth=500)),
            2,
            "/a" * 500 + ": Error: This value must be a string.\n\n",
        )

    def test_schema_below_the_deepest(self) -> None:
        schema = nested('{"properties":{"a":', '{"type":"string"}', "}}", depth=501)
        self.assert_outcome(
            self.validate(schema, nested('{"a":', "1", "}", depth=501)),
            FAULT,
            error=" -> " + "/properties/a" * 501 + ": The schema is nested more than 500 schemas deep: flatten it.\n",
        )

    def test_fifty_thousand_findings(self) -> None:
        count = 50_000
        done = self.validate('{"items": {"type": "integer"}}', "[" + ",".join(['"x"'] * count) + "]")
        indices = sorted(str(index) for index in range(count))
        report = "".join(f"/{index}: Error: This value must be an integer.\n" for index in indices)
        self.assertEqual((done.returncode, done.stderr), (2, b""))
        self.assertTrue(done.stdout.decode() == report + "\n", "the report is not the one expected")

    def test_fifty_thousand_warnings(self) -> None:
        names = [f"n{index}" for index in range(50_000)]
        done = self.validate("{}", "{" + ",".join(f'"{name}":0' for name in names) + "}")
        report = "".join(f"/{name}: Warning: The value of this item will not be used.\n" for name in sorted(names))
        self.assertEqual((done.returncode, done.stderr), (1, b""))
        self.assertTrue(done.stdout.decode() == report + "\n", "the report is not the one expected")

    def test_long_texts(self) -> None:
        word = "w" * 1_000_000
        self.assert_outcome(
            self.validate(f'{{"const": "{word}"}}', '"v"'), 2, f"/: Error: This value must be equal to '{word}'.\n\n"
        )


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    program = os.path.abspath(sys.argv.pop(1))
    unittest.main()
