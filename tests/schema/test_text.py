"""What breaks the rules of rules/text.py, the figures themselves, and the command line of the checker."""

from __future__ import annotations

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

from check_schema import findings
from rules.base import Share
from rules.text import RULES
from small_schema import DOMAIN, at, schema, share_of, tree

from block_tree import load_tree
from schema_figures import Target, figures, printed, printed_at, targets
from schema_nodes import top, walk

CHECKER = Path(__file__).resolve().parent / "check_schema.py"


def found(share: Share) -> list[tuple[str, str, str]]:
    return [(rule, each.pointer, each.message) for rule, each in findings(share, RULES)]


class TextForm(unittest.TestCase):
    GOOD = printed(schema()).encode()

    def test_printed_form(self) -> None:
        self.assertEqual(found(share_of(schema(), self.GOOD)), [])

    def assert_fault(self, content: bytes, *messages: str) -> None:
        self.assertNotEqual(content, self.GOOD)
        self.assertEqual(found(share_of(schema(), content)), [("text_form", "", each) for each in messages])

    def test_other_line_ends(self) -> None:
        self.assert_fault(self.GOOD.replace(b"\r\n", b"\n"), "a line that does not end in CR LF")
        self.assert_fault(self.GOOD.replace(b"\r\n", b"\n", 1), "a line that does not end in CR LF")

    def test_other_indentation(self) -> None:
        self.assert_fault(self.GOOD.replace(b"  ", b"    "), "the text is not the printed form of what it says")

    def test_line_end_at_the_end(self) -> None:
        self.assert_fault(self.GOOD + b"\r\n", "the text is not the printed form of what it says")

    def test_byte_that_is_not_ascii(self) -> None:
        both = ("a byte that is not printable ASCII", "the text is not the printed form of what it says")
        self.assert_fault(self.GOOD.replace(b"words", "w\u00f6rter".encode()), *both)
        self.assert_fault(self.GOOD + b"\0", *both)


class FirstMember(unittest.TestCase):
    def whole(self, value: dict[str, Any]) -> list[tuple[str, str, str]]:
        share = Share(printed(value).encode(), value, (), tree())
        return [each for each in found(share) if each[0] == "first_member"]

    def test_as_it_is_to_be(self) -> None:
        self.assertEqual(self.whole({"$schema": "./metaschema.json", "type": "object"}), [])

    def test_not_first_another_or_none(self) -> None:
        message = "the first member is not $schema: ./metaschema.json"
        for value in ({"type": "object", "$schema": "./metaschema.json"}, {"$schema": "other.json"}, {}):
            self.assertEqual(self.whole(value), [("first_member", "", message)])

    def test_in_an_inner_schema(self) -> None:
        broken = schema()
        at(broken, DOMAIN)["$schema"] = "./metaschema.json"
        self.assertEqual(found(share_of(broken)), [("first_member", DOMAIN, "$schema in an inner schema")])


class Figures(unittest.TestCase):
    def test_of_the_small_schema(self) -> None:
        counts = figures(top(schema(), ("SETUP",)), tree())
        del counts["characters"]
        self.assertEqual(
            +counts,
            {
                # 13 blocks and the elements of "regions"; 16 keys and 2 of those elements; 2 values in capitals;
                # 4 variants.
                "description": 13 + 1 + 16 + 2 + 2 + 4,
                "default": 5,
                "units": 5,
                "optional": 10,
                "oneOf": 4,
                "const": 4,
                "uri": 2,
                "requiredIn": 2,
                "yes/no": 1,
                "keys": 16,
                "blocks": 15,
            },
        )

    def test_groups_inside_of_conjunctions_count(self) -> None:
        groups = {"allOf": [{"oneOf": [{"oneOf": []}]}, {"oneOf": []}], "oneOf": []}
        counts = figures(top(groups), tree())
        self.assertEqual((counts["oneOf"], counts["allOf"]), (4, 1))

    def test_switches_in_either_order(self) -> None:
        values = (["off", "on"], ["on", "off"], ["no", "yes"], ["yes"], ["on", "off", "yes"])
        properties = {str(index): {"enum": enum} for index, enum in enumerate(values)}
        counts = figures(top({"properties": properties}), tree())
        self.assertEqual((counts["on/off"], counts["yes/no"]), (2, 1))

    def test_names_of_properties_are_no_keywords(self) -> None:
        counts = figures(top({"properties": {"units": {}, "default": {}, "optional": {}}}), tree())
        self.assertEqual((counts["units"], counts["default"], counts["optional"]), (0, 0, 0))

    def test_characters_are_those_inside_the_whole(self) -> None:
        whole = {"type": "object", "properties": {"SETUP": schema()}}
        text = printed(whole)
        for node in walk(top(whole)):
            if node.role.name == "PROPERTY" and tree().find(node.names):
                depth = 2 * len(node.names) + ("PLANE" in node.names[:-1])
                count = figures(node, tree())["characters"]
                self.assertEqual(count, len(printed_at(node.schema, depth)), node.pointer)
                self.assertIn(printed_at(node.schema, depth), text, node.pointer)

    def test_goals(self) -> None:
        goals = targets(load_tree())
        self.assertEqual((goals["keys"].value, goals["blocks"].value), (986, 201))
        self.assertTrue(Target(100, 0.05).is_reached_by(95))
        self.assertTrue(Target(100, 0.05).is_reached_by(105))
        self.assertFalse(Target(100, 0.05).is_reached_by(94))
        self.assertFalse(Target(100, 0.05).is_reached_by(106))
        self.assertFalse(Target(35).is_reached_by(36))

    def test_whole_text_that_does_not_reach_them(self) -> None:
        share = Share(b"", {"$schema": "./metaschema.json", "properties": {"SETUP": schema()}}, (), load_tree())
        messages = [message for rule, _, message in found(share) if rule == "whole_figures"]
        self.assertIn("uri: 2, to be 78 within 0%", messages)
        self.assertIn("const: 4, to be 334 within 5%", messages)
        self.assertEqual(len(messages), len(targets(load_tree())))


class CommandLine(unittest.TestCase):
    def run_with(self, content: str, *arguments: str) -> subprocess.CompletedProcess[str]:
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder, "schema.json")
            file.write_bytes(content.encode())
            command = [sys.executable, str(CHECKER), *arguments, str(file)]
            return subprocess.run(command, capture_output=True, text=True, check=False)

    AT = ("--at", "/SETUP/ORVAMD/ORVAPLANE_2D/VEGETATION/INITIAL/B")
    BIOMASS = {
        "type": "number",
        "units": "[-]",
        "description": "Biomass at the beginning, as a share of the largest that the ground can carry.",
    }

    def test_share_without_findings(self) -> None:
        done = self.run_with(printed(self.BIOMASS), *self.AT)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", "0 findings\n"))

    def test_finding(self) -> None:
        done = self.run_with(printed({**self.BIOMASS, "units": "-"}), *self.AT)
        expected = (1, "units  /  units '-' are not in brackets\n", "1 findings\n")
        self.assertEqual((done.returncode, done.stdout, done.stderr), expected)

    def test_no_json(self) -> None:
        done = self.run_with("{")
        self.assertEqual((done.returncode, done.stdout), (2, ""))

    def test_member_twice(self) -> None:
        done = self.run_with('{"type": "object", "type": "object"}')
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn("the member 'type' stands twice in one object", done.stderr)

    def test_unknown_block(self) -> None:
        done = self.run_with("{}", "--at", "/SETUP/NOWHERE")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertIn("there is no block /SETUP/NOWHERE", done.stderr)


if __name__ == "__main__":
    unittest.main()
