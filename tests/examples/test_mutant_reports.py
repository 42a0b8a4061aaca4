"""The program mutant_reports: outcomes of changed documents, and the schema objects that walks come by.

    test_mutant_reports.py MUTANT_REPORTS
"""

from __future__ import annotations

import json
import sys
import tempfile
import unittest
from pathlib import Path

import check_mutants
from models import Patch, pointer
from mutations import Mutation
from program import Outcome, Reports
from small_model import document, example, schema, schema_text


class MutantReports(unittest.TestCase):
    program = Path()

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.schema = Path(folder.name) / "schema.json"
        self.model = Path(folder.name) / "model.json"
        self.schema.write_text(json.dumps(schema_text()), encoding="utf-8")
        self.model.write_text(json.dumps(document()), encoding="utf-8")
        self.reports = Reports(self.program, self.schema)

    def removal(self, *steps: str | int) -> tuple[Path, Patch]:
        return self.model, ({"op": "remove", "path": pointer(steps)},)

    def test_outcomes_in_their_order(self) -> None:
        strange: Patch = ({"op": "add", "path": "/odd", "value": {"a": 1}},)
        found = self.reports.outcomes([(self.model, ()), self.removal("OUTPUT", "file"), (self.model, strange)])
        unused = "Warning: The value of this item will not be used."
        self.assertEqual(
            found,
            [
                Outcome(0, ()),
                Outcome(2, ("/OUTPUT/file: Error: This item is required but missing.",)),
                Outcome(1, (f"/odd: {unused}", f"/odd/a: {unused}")),
            ],
        )

    def test_places(self) -> None:
        boundary = "/properties/BOUNDARY/items"
        every = set(schema().nodes)
        not_reached = {
            f"{boundary}/properties/q_file",
            f"{boundary}/oneOf/0/oneOf/1",
            f"{boundary}/oneOf/2/oneOf/0",
            f"{boundary}/oneOf/2/oneOf/0/properties/mode",
            "/properties/k_file",
            "/properties/eps",
            "/allOf/0/oneOf/1",
            "/allOf/1/oneOf/0",
        }
        self.assertEqual(self.reports.places([(self.model, ())]), every - not_reached)

    def test_places_of_several_walks_together(self) -> None:
        self.assertNotIn("/properties/OUTPUT", self.reports.places([self.removal("OUTPUT")]))
        together = self.reports.places([self.removal("OUTPUT"), self.removal("STRINGS")])
        self.assertLessEqual({"/properties/OUTPUT", "/properties/STRINGS/items"}, together)

    def test_members_that_the_schema_does_not_know_are_no_places(self) -> None:
        strange: Patch = ({"op": "add", "path": "/odd", "value": {"a": 1}},)
        self.assertEqual(self.reports.places([(self.model, strange)]), self.reports.places([(self.model, ())]))

    def test_an_alternative_not_chosen_is_no_place(self) -> None:
        neither = self.reports.places([self.removal("k")])
        self.assertFalse({"/allOf/0/oneOf/0", "/allOf/0/oneOf/1"} & neither)

    def test_mutants_of_the_small_model(self) -> None:
        mutants = list(Mutation(schema(), [example(self.model)]).mutants())
        outcomes = self.reports.outcomes((self.model, mutant.patch) for mutant in mutants)
        wrong = [check_mutants.difference(*pair) for pair in zip(mutants, outcomes, strict=True)]
        self.assertEqual([each for each in wrong if each], [])

    def test_examples_at_fault_themselves(self) -> None:
        faulty = self.model.with_name("faulty.json")
        faulty.write_text(json.dumps({**document(), "k": "text"}), encoding="utf-8")
        sound, wrong = check_mutants.sound_examples(self.reports, [example(faulty), example(self.model)])
        self.assertEqual([each.file for each in sound], [self.model])
        self.assertEqual(wrong, ["small is at fault itself: its mutants are left out"])

    def test_failures_are_told(self) -> None:
        with self.assertRaisesRegex(RuntimeError, "file not found: nowhere.json"):
            self.reports.outcomes([(Path("nowhere.json"), ())])
        self.schema.write_text('{"odd": 1}', encoding="utf-8")
        with self.assertRaisesRegex(RuntimeError, "The keyword 'odd' is not supported."):
            self.reports.outcomes([(self.model, ())])


if __name__ == "__main__":
    MutantReports.program = Path(sys.argv.pop(1)).resolve()
    unittest.main()
