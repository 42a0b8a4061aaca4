"""That the checks over the examples find what they are for."""

from __future__ import annotations

import json
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

import check_independent
import check_mutants
import check_valid
import check_walks
from usage import Usage
from models import Example
from mutations import Mutation
from program import Outcome
from small_model import document, example, schema

from block_tree import make_block
from dialect_to_draft4 import translate


def small_tree() -> Any:
    blocks = [
        {"name": "STRINGS", "kind": "array", "required": False, "keys": ["name"]},
        {"name": "OUTPUT", "kind": "object", "required": True, "keys": ["file", "on"], "blocks": [
            {"name": "CFL", "kind": "value", "required": False},
        ]},
    ]
    return make_block({"name": "", "kind": "object", "required": True, "keys": ["k", "k_file"], "blocks": blocks})


class Coverage(unittest.TestCase):
    def setUp(self) -> None:
        self.usage = Usage(schema(), [example()])

    def test_keys(self) -> None:
        self.assertEqual(self.usage.keys(small_tree()), (4, ["/OUTPUT/CFL"]))

    def test_variants(self) -> None:
        group = "/properties/BOUNDARY/items/oneOf"
        self.assertEqual(self.usage.variants(), (5, [f"{group}/2/oneOf/0: fixed"]))

    def test_choices(self) -> None:
        self.assertEqual(self.usage.choices(), (6, [": k_file", ": eps", "/properties/BOUNDARY/items: q_file"]))

    def test_values(self) -> None:
        mode = "/properties/BOUNDARY/items/properties/mode"
        self.assertEqual(self.usage.values(), (5, [f"{mode}: fixed"]))

    def test_several_examples_together(self) -> None:
        other = document()
        other["BOUNDARY"][2].update(mode="fixed", height=1)
        usage = Usage(schema(), [example(), Example("other", Path("other"), other)])
        self.assertEqual(usage.variants(), (5, []))


class Mutants(unittest.TestCase):
    def setUp(self) -> None:
        made = Mutation(schema(), [example()]).mutants()
        self.mutant = next(each for each in made if each.patch[0]["path"] == "/OUTPUT/file" and len(each.expected) == 1)
        self.line = next(iter(self.mutant.expected))

    def wrong(self, verdict: int, *lines: str) -> str:
        return check_mutants.difference(self.mutant, Outcome(verdict, lines)).partition("\n")[2]

    def test_as_deserved(self) -> None:
        self.assertEqual(self.wrong(2, self.line), "")

    def test_otherwise(self) -> None:
        self.assertEqual(self.wrong(2), f"  deserved: {self.line}")
        self.assertEqual(self.wrong(2, self.line, "/: Error: Odd."), "  not deserved: /: Error: Odd.")
        self.assertEqual(self.wrong(2, self.line, self.line), "  a line stands twice")
        self.assertEqual(self.wrong(1, self.line), "  verdict 1")

    def test_verdicts(self) -> None:
        lines = {0: frozenset[str](), 1: frozenset({"/a: Warning: Odd."}), 2: frozenset({"/a: Error: Odd."})}
        for verdict, each in lines.items():
            self.assertEqual(check_mutants.verdict_of(each), verdict)

    def test_kinds_never_made(self) -> None:
        missing = check_mutants.never_made([self.mutant])
        self.assertNotIn(self.mutant.kind, missing)
        self.assertIn("renamed", missing)


class Independent(unittest.TestCase):
    def disagreement(self, changed: Any, *lines: str) -> str:
        validator = check_independent.Draft4Validator(translate(schema().text).schema)
        return check_independent.disagreement(validator, changed, Outcome(2 if lines else 0, lines))

    def test_agreement(self) -> None:
        self.assertEqual(self.disagreement(document()), "")
        self.assertEqual(self.disagreement(7, "/: Error: This value must be an object."), "")

    def test_disagreement(self) -> None:
        self.assertTrue(self.disagreement(document(), "/: Error: This value must be an object."))
        self.assertTrue(self.disagreement(7))

    def test_references_and_warnings_do_not_count(self) -> None:
        lines = ("/a: Error: This value must match a 'name' in '/STRINGS'.", "/b: Warning: Odd.")
        self.assertEqual(self.disagreement(document(), *lines), "")

    def test_sample_has_all_kinds(self) -> None:
        mutants = list(Mutation(schema(), [example()]).mutants())
        sampled = check_independent.sample(mutants)
        self.assertEqual({each.kind for each in sampled}, {each.kind for each in mutants})


class Walks(unittest.TestCase):
    def test_outermost_places_that_are_not_reached(self) -> None:
        reached = set(schema().nodes) - {"/properties/OUTPUT", "/properties/OUTPUT/properties/file", "/properties/k"}
        self.assertEqual(check_walks.unreached(schema(), reached), ["/properties/OUTPUT", "/properties/k"])
        self.assertEqual(check_walks.unreached(schema(), set(schema().nodes)), [])
        self.assertEqual(check_walks.unreached(schema(), set()), [""])

    def test_faulty_models_that_are_json(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (("faulty_a", "{}"), ("faulty_b", "{"), ("example_c", "{}")):
                (Path(folder) / name).mkdir()
                (Path(folder) / name / "model.json").write_text(text, encoding="utf-8")
            self.assertEqual(check_walks.faulty_models(Path(folder)), [Path(folder) / "faulty_a" / "model.json"])


class Valid(unittest.TestCase):
    """An example in a folder of its own, and a program in the place of jsv."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.cases = self.root / "tests" / "cases"

    def write(self, path: str, text: str) -> Path:
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file

    def jsv(self, status: int = 0, text: str = "") -> Path:
        file = self.write("jsv", f"#!{sys.executable}\nprint({text!r}, end='')\nraise SystemExit({status})\n")
        file.chmod(0o755)
        return file

    def example(self, block: str = "ORVAMD") -> Example:
        model = {"SETUP": {block: {}}}
        return Example("reach", self.write("examples/reach/model.json", json.dumps(model)), model)

    def add_case(self, name: str, status: int, model: str) -> None:
        description = {"status": status, "inputs": {"model.json": {"copy": model}}}
        self.write(f"tests/cases/{name}/case.json", json.dumps(description))

    def add_everything(self) -> None:
        self.write("examples/reach/README.md", "A reach.")
        self.add_case("example_reach", 0, "../../../examples/reach/model.json")
        self.add_case("faulty_reach", 1, "model.json")
        self.write("tests/cases/faulty_reach/model.json", "{}")

    def problems(self, example: Example, jsv: Path) -> list[str]:
        return list(check_valid.problems(example, jsv, self.root / "schema.json", self.cases))

    def test_nothing_missing(self) -> None:
        self.add_everything()
        self.assertEqual(self.problems(self.example(), self.jsv()), [])

    def test_findings(self) -> None:
        self.add_everything()
        self.assertEqual(self.problems(self.example(), self.jsv(1, "odd")), ["jsv ends with status 1: odd"])
        self.assertEqual(self.problems(self.example(), self.jsv(0, "odd")), ["jsv ends with status 0: odd"])

    def test_everything_missing(self) -> None:
        missing = [
            "there is no README.md",
            "no case example_reach runs it",
            "there is no case faulty_reach with a model.json",
        ]
        self.assertEqual(self.problems(self.example(), self.jsv()), missing)

    def test_single_domain_is_refused(self) -> None:
        self.add_everything()
        model = self.example("ORVAHPC")
        self.assertEqual(self.problems(model, self.jsv()), ["no case reach_refused runs it"])
        self.add_case("reach_refused", 0, "../../../examples/reach/model.json")
        self.assertEqual(self.problems(model, self.jsv()), ["the case reach_refused ends otherwise"])
        self.add_case("reach_refused", 1, "../../../examples/reach/model.json")
        self.assertEqual(self.problems(model, self.jsv()), [])

    def test_cases_of_another_model(self) -> None:
        self.add_everything()
        self.add_case("example_reach", 0, "../../../examples/other/model.json")
        self.add_case("faulty_reach", 1, "../../../examples/reach/model.json")
        wrong = ["no case example_reach runs it", "the case faulty_reach does not run its model.json"]
        self.assertEqual(self.problems(self.example(), self.jsv()), wrong)

    def test_twin_without_fault(self) -> None:
        self.add_everything()
        model = self.example()
        self.write("tests/cases/faulty_reach/model.json", model.file.read_text(encoding="utf-8"))
        self.assertEqual(self.problems(model, self.jsv()), ["the model of faulty_reach is the example itself"])


if __name__ == "__main__":
    unittest.main()
