#!/usr/bin/env python3
"""Property tests of the validator over generated pairs of schema and data.

    run_properties.py JSV_PROGRAM [--seed N] [--count N] [--only NUMBER]

For each pair:

- run        the program ends with status 0, 1 or 2 and says nothing on standard error
- form       every line is a location and one of the thirteen messages; the report ends with one empty line
- order      report and verdict do not depend on the order of members in either text
- repeat     a second run gives the same
- removal    without an unused member that nothing depends on (`neutral_removal`), its lines are gone, and no others
- verdict    2 exactly when a line is an error, 1 when there are only warnings, 0 when there are no lines
- sorted     lines stand in the order of their escaped locations, at one location in that of the messages; none twice
- standard   without references between blocks: errors or none agrees with a draft-4 validator on the translated schema
- places     without groups and references: so do the places of the errors, kind by kind
- fault      an unknown keyword somewhere in the schema ends the run with status 3 and its place wherever the walk is
             sure to go, and else it does so or changes nothing

The draft-4 validator is that of the Debian package python3-jsonschema. Fails also when a verdict, a message, a keyword
or a property never came up, so that the generator cannot go blind unnoticed.
"""

from __future__ import annotations

import argparse
import json
import random
import re
import subprocess
import sys
import tempfile
import time
from collections import Counter
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Callable, Iterator

sys.dont_write_bytecode = True
sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "tools"))

import dialect_to_draft4  # noqa: E402
import generate  # noqa: E402

try:
    from jsonschema import Draft4Validator, SchemaError
except ImportError:
    sys.exit("The property tests need the Python package jsonschema (Debian: python3-jsonschema).")

NUMBER = r"-?\d+\.\d{6}"
WORD_LIST = r"(?:\.|: '[^\n]*'\.)"  # an empty list leaves a full stop in the colon's place
TYPE = "(?:an integer|a number|a string|an object|an array|of a different type)"
MESSAGES = {  # in the order in which the report puts them at one location
    "ConstMismatch": r"Error: This value must be equal to '[^\n]*'\.",
    "EnumMismatch": rf"Error: This value must be equal to one of the following{WORD_LIST}",
    "ExclusiveAlternatives": r"Error: Only one of the following two items is allowed: '[^\n]*', '[^\n]*'\.",
    "BelowMinimum": rf"Error: This value must be greater than or equal to {NUMBER}\.",
    "NotAboveExclusiveMinimum": rf"Error: This value must be greater than {NUMBER}\.",
    "AboveMaximum": rf"Error: This value must be less than or equal to {NUMBER}\.",
    "NotBelowExclusiveMaximum": rf"Error: This value must be less than {NUMBER}\.",
    "TypeMismatch": rf"Error: This value must be {TYPE}\.",
    "MissingRequired": r"Error: This item is required but missing\.",
    "MissingAlternative": rf"Error: One of the following items must be provided{WORD_LIST}",
    "RequiredInMismatch": r"Error: This value must match a '[^\n]*' in '[^\n]*'\.",
    "SuperfluousItem": r"Warning: The value of this item will not be used\.",
    "InvalidItem": r"Error: This item is invalid\.",
}
ISSUE_ORDER = {kind: index for index, kind in enumerate(MESSAGES)}
LINE = re.compile(r"(/.*?): ((?:Error|Warning): .*)")
STANDARD_KEYWORDS = {
    "ConstMismatch": "enum",
    "EnumMismatch": "enum",
    "InvalidItem": "enum",  # what never fits is translated alike, be it false or an empty enum
    "BelowMinimum": "minimum",
    "NotAboveExclusiveMinimum": "minimum",
    "AboveMaximum": "maximum",
    "NotBelowExclusiveMaximum": "maximum",
    "TypeMismatch": "type",
    "MissingRequired": "required",
}
KEYWORDS = frozenset(
    "type const enum minimum exclusiveMinimum maximum exclusiveMaximum required properties items requiredIn oneOf allOf"
    " $schema default format optional description autoexpand units".split()
)
UNKNOWN_KEYWORDS = ("Type", "anyOf", "minimums", "x/y", "zz")
DEFAULT_COUNT = 5000
REMOVALS_PER_PAIR = 2
SHRINK_SECONDS = 60.0
RUN_SECONDS = 30

Tokens = tuple[str, ...]


@dataclass(frozen=True)
class Finding:
    """One line of a report, taken apart."""

    line: str
    location: str  # as the report sorts it: the root is empty
    kind: str  # empty where no message matches

    def tokens(self) -> Tokens:
        return pointer_tokens(self.location)


@dataclass(frozen=True)
class Outcome:
    """What one run of the program gave."""

    status: int
    report: str
    messages: str

    def findings(self) -> list[Finding]:
        return [parse_line(line) for line in self.report.split("\n") if line]


def parse_line(line: str) -> Finding:
    match = LINE.fullmatch(line)
    if match is None:
        return Finding(line, "", "")
    location, message = match.groups()
    kinds = [kind for kind, text in MESSAGES.items() if re.fullmatch(text, message)]
    return Finding(line, "" if location == "/" else location, kinds[0] if len(kinds) == 1 else "")


class Program:
    """The program under test, with the two files that it is given."""

    def __init__(self, path: str, folder: str) -> None:
        self._path = path
        self._schema = Path(folder) / "schema.json"
        self._data = Path(folder) / "data.json"

    def run(self, schema: Any, datum: Any) -> Outcome:
        self._schema.write_text(text_of(schema), encoding="utf-8")
        self._data.write_text(text_of(datum), encoding="utf-8")
        command = [self._path, str(self._schema), str(self._data)]
        try:
            done = subprocess.run(command, capture_output=True, timeout=RUN_SECONDS, check=False)
            return Outcome(done.returncode, done.stdout.decode(), done.stderr.decode("utf-8", "replace"))
        except subprocess.TimeoutExpired:
            return Outcome(-1, "", f"no end after {RUN_SECONDS} s")
        except UnicodeDecodeError as error:
            return Outcome(-1, "", f"the report is no UTF-8 text: {error}")


def text_of(value: Any) -> str:
    return json.dumps(value, ensure_ascii=False)


def pointer(tokens: Tokens) -> str:
    return "".join("/" + token.replace("~", "~0").replace("/", "~1") for token in tokens)


def pointer_tokens(text: str) -> Tokens:
    return tuple(token.replace("~1", "/").replace("~0", "~") for token in text.split("/")[1:])


@dataclass
class Trial:
    """A pair with its outcome and what checking it has to be counted."""

    program: Program
    schema: Any
    datum: Any
    outcome: Outcome
    counts: Counter[str]

    def again(self, schema: Any, datum: Any) -> Outcome:
        return self.program.run(schema, datum)


def children(schema: dict[str, Any]) -> Iterator[Tokens]:
    """The places, below a schema object, of the schemas that stand in it."""
    yield from (("properties", name) for name in schema.get("properties", {}))
    yield from (("items",) for _ in range("items" in schema))
    yield from alternative_places(schema)


def alternative_places(schema: dict[str, Any]) -> Iterator[Tokens]:
    yield from (("oneOf", str(index)) for index in range(len(schema.get("oneOf", []))))
    for number, element in enumerate(schema.get("allOf", [])):
        yield from (("allOf", str(number), "oneOf", str(index)) for index in range(len(element["oneOf"])))


def places(schema: Any, where: Tokens = ()) -> Iterator[Tokens]:
    """The places of the schema objects of a schema, its own first."""
    if isinstance(schema, dict):
        yield where
        for child in children(schema):
            yield from places(at(schema, child), where + child)


def sub_schemas(schema: Any) -> Iterator[dict[str, Any]]:
    return (at(schema, place) for place in places(schema))


def alternatives_below(schema: Any) -> Iterator[dict[str, Any]]:
    """The schema itself and the alternatives of its groups, nested ones too: all that may look at one datum."""
    if isinstance(schema, dict):
        yield schema
        for group in generate.groups_of(schema):
            for alternative in group:
                yield from alternatives_below(alternative)


def uses(schema: Any, *keywords: str) -> bool:
    return any(keyword in each for each in sub_schemas(schema) for keyword in keywords)


def shuffled(value: Any, rng: random.Random) -> Any:
    """The same value with the members of all its objects in another order."""
    if isinstance(value, list):
        return [shuffled(each, rng) for each in value]
    if not isinstance(value, dict):
        return value
    names = list(value)
    rng.shuffle(names)
    return {name: shuffled(value[name], rng) for name in names}


def at(datum: Any, tokens: Tokens) -> Any:
    for token in tokens:
        datum = datum[int(token)] if isinstance(datum, list) else datum[token]
    return datum


def is_member(datum: Any, tokens: Tokens) -> bool:
    """Whether a location is that of a member of an object."""
    try:
        return bool(tokens) and tokens[-1] in at(datum, tokens[:-1]) and isinstance(at(datum, tokens[:-1]), dict)
    except (KeyError, IndexError, ValueError, TypeError):
        return False


def without(datum: Any, tokens: Tokens) -> Any:
    """A copy of the data without the member at a location."""
    first, rest = tokens[0], tokens[1:]
    if isinstance(datum, list):
        return [without(each, rest) if str(index) == first else each for index, each in enumerate(datum)]
    if not rest:
        return {name: each for name, each in datum.items() if name != first}
    return {name: without(each, rest) if name == first else each for name, each in datum.items()}


def schemas_at(schema: Any, datum: Any, tokens: Tokens) -> list[Any]:
    """The schemas that a walk may apply at a data location, whichever alternatives it chooses."""
    schemas = [schema]
    for token in tokens:
        lookers = [each for parent in schemas for each in alternatives_below(parent)]
        if isinstance(datum, list):
            schemas = [each["items"] for each in lookers if "items" in each]
            datum = datum[int(token)]
        else:
            schemas = [each["properties"][token] for each in lookers if token in each.get("properties", {})]
            datum = datum[token]
    return schemas


def walked_once(schema: Any, datum: Any, tokens: Tokens) -> bool:
    """Whether one schema alone is applied on every step to a location, none of them by way of an alternative."""
    for depth, token in enumerate(tokens):
        parents = schemas_at(schema, datum, tokens[:depth])
        if len(parents) != 1 or not isinstance(parents[0], dict):
            return False
        is_array = isinstance(at(datum, tokens[:depth]), list)
        direct = "items" in parents[0] if is_array else token in parents[0].get("properties", {})
        if not direct:
            return False
    return len(schemas_at(schema, datum, tokens)) == 1


def read_by_reference(schema: Any, tokens: Tokens) -> bool:
    """Whether a requiredIn may read the member: it lies on the way to the array, or in an element of it."""
    for each in sub_schemas(schema):
        if "requiredIn" not in each:
            continue
        array = pointer_tokens(each["requiredIn"]["$array_ref"])
        if array[: len(tokens)] == tokens or tokens[: len(array)] == array:
            return True
    return False


def neutral_removal(schema: Any, datum: Any, tokens: Tokens, errors: bool) -> bool:
    """Whether removing an unused member must leave all findings outside it as they are.

    Findings depend on a member through requiredIn (`read_by_reference`), and through `required` and `properties` of
    the schemas that may look at the object that holds it. `optional` only accounts for names. So a member is neutral

    1. when none of these names it. Where one does, it stands in an alternative that was not chosen, and without the
       member that alternative may fit, or the choice may fall otherwise. It still is neutral

    2. when there are no errors, so that every group has exactly one alternative that fits; the object is walked once
       (so that the warning stems from the walk in question, in which no fitting alternative requires the member); and
       the member is named by `required` of alternatives only, none of them nested. For then those that fit do not
       require it and go on to fit, and those that do not fit have one reason more.
    """
    if read_by_reference(schema, tokens):
        return False
    parents, name = schemas_at(schema, datum, tokens[:-1]), tokens[-1]
    if not any(names_member(each, name) for parent in parents for each in alternatives_below(parent)):
        return True
    if errors or not walked_once(schema, datum, tokens[:-1]):
        return False
    outer = [each for group in generate.groups_of(parents[0]) for each in group]
    nested = [inner for each in outer for inner in alternatives_below(each) if inner is not each]
    return (
        not any(name in each.get("properties", {}) for each in outer)
        and not any(names_member(each, name) for each in [parents[0], *nested])
    )


def names_member(schema: dict[str, Any], name: str) -> bool:
    return name in schema.get("required", []) or name in schema.get("properties", {})


def sure_places(schema: Any, datum: Any, where: Tokens = ()) -> Iterator[Tokens]:
    """The places of the schema objects that a walk over the data must come by, whatever fits.

    It applies every alternative of a group in full. Only a datum that is no object may have it skip a group.
    """
    if not isinstance(schema, dict):
        return
    yield where
    if isinstance(datum, list) and "items" in schema:
        for each in datum:
            yield from sure_places(schema["items"], each, where + ("items",))
    if isinstance(datum, dict):
        for name in schema.get("properties", {}).keys() & datum.keys():
            yield from sure_places(schema["properties"][name], datum[name], where + ("properties", name))
        for place in alternative_places(schema):
            yield from sure_places(at(schema, place), datum, where + place)


def with_member(value: Any, tokens: Tokens, name: str) -> Any:
    """A copy of a schema in which the object at a place has one member more."""
    if not tokens:
        return {**value, name: True}
    if isinstance(value, list):
        return [with_member(each, tokens[1:], name) if str(i) == tokens[0] else each for i, each in enumerate(value)]
    return {key: with_member(each, tokens[1:], name) if key == tokens[0] else each for key, each in value.items()}


def check_run(trial: Trial, rng: random.Random) -> str | None:
    if trial.outcome.status not in (0, 1, 2):
        return f"status {trial.outcome.status}: {trial.outcome.messages.strip()}"
    return f"standard error: {trial.outcome.messages}" if trial.outcome.messages else None


def check_form(trial: Trial, rng: random.Random) -> str | None:
    report = trial.outcome.report
    lines = report.split("\n")
    if report and (lines[-2:] != ["", ""] or "" in lines[:-2]):
        return "the report is not lines followed by one empty line"
    odd = [finding.line for finding in trial.outcome.findings() if not finding.kind]
    return f"a line of no known form: {odd[0]!r}" if odd else None


def check_order(trial: Trial, rng: random.Random) -> str | None:
    schema, datum = shuffled(trial.schema, rng), shuffled(trial.datum, rng)
    trial.counts["order"] += text_of(schema) != text_of(trial.schema) or text_of(datum) != text_of(trial.datum)
    outcome = trial.again(schema, datum)
    if outcome == trial.outcome:
        return None
    return f"with members in another order:\n{text_of(schema)}\n{text_of(datum)}\n{outcome.status}\n{outcome.report}"


def check_repeat(trial: Trial, rng: random.Random) -> str | None:
    trial.counts["repeat"] += 1
    outcome = trial.again(trial.schema, trial.datum)
    return None if outcome == trial.outcome else f"the second time: {outcome.status}\n{outcome.report}"


def check_removal(trial: Trial, rng: random.Random) -> str | None:
    findings = trial.outcome.findings()
    errors = any(finding.kind != "SuperfluousItem" for finding in findings)
    unused = [finding for finding in findings if finding.kind == "SuperfluousItem"]
    nowhere = [finding.line for finding in unused if not is_member(trial.datum, finding.tokens())]
    if nowhere:
        return f"an unused member that the data lack: {nowhere[0]}"
    neutral = [each for each in unused if neutral_removal(trial.schema, trial.datum, each.tokens(), errors)]
    for finding in rng.sample(neutral, min(REMOVALS_PER_PAIR, len(neutral))):
        trial.counts["removal"] += 1
        problem = removal_problem(trial, finding, findings)
        if problem:
            return problem
    return None


def removal_problem(trial: Trial, removed: Finding, findings: list[Finding]) -> str | None:
    datum = without(trial.datum, removed.tokens())
    below = removed.location + "/"
    expected = [
        each.line for each in findings if each.location != removed.location and not each.location.startswith(below)
    ]
    outcome = trial.again(trial.schema, datum)
    lines = [each.line for each in outcome.findings()]
    if lines == expected:
        return None
    return f"without {removed.location}, lines that should be the same:\n" + "\n".join(lines)


def check_verdict(trial: Trial, rng: random.Random) -> str | None:
    trial.counts["verdict"] += 1
    lines = [line for line in trial.outcome.report.split("\n") if line]
    errors = sum(": Error: " in line for line in lines)
    expected = 2 if errors else 1 if lines else 0
    return None if trial.outcome.status == expected else f"verdict {trial.outcome.status}, by the lines {expected}"


def check_sorted(trial: Trial, rng: random.Random) -> str | None:
    findings = trial.outcome.findings()
    trial.counts["sorted"] += len(findings) > 1
    if len({finding.line for finding in findings}) != len(findings):
        return "a line stands twice"
    keys = [(finding.location.encode(), ISSUE_ORDER.get(finding.kind, -1)) for finding in findings]
    return None if keys == sorted(keys) else "the lines are not in order"


def check_standard(trial: Trial, rng: random.Random) -> str | None:
    if uses(trial.schema, "requiredIn"):
        return None
    trial.counts["standard"] += 1
    draft4 = dialect_to_draft4.translate(trial.schema).schema
    try:
        Draft4Validator.check_schema(draft4)
    except SchemaError as error:
        return f"the translated schema is no draft-4 schema: {error.message}"
    valid = Draft4Validator(draft4).is_valid(trial.datum)
    if valid == (trial.outcome.status != 2):
        return None
    return f"the draft-4 validator finds the data {'valid' if valid else 'invalid'}"


def check_places(trial: Trial, rng: random.Random) -> str | None:
    if uses(trial.schema, "requiredIn", "oneOf", "allOf"):
        return None
    validator = Draft4Validator(dialect_to_draft4.translate(trial.schema).schema)
    expected = {place for error in validator.iter_errors(trial.datum) for place in places_of(error)}
    errors = [finding for finding in trial.outcome.findings() if finding.kind != "SuperfluousItem"]
    given = {(error.location, STANDARD_KEYWORDS.get(error.kind, error.kind)) for error in errors}
    trial.counts["places"] += bool(expected)
    return None if given == expected else f"the draft-4 validator finds errors at {sorted(expected)}"


def check_fault(trial: Trial, rng: random.Random) -> str | None:
    candidates = sorted(places(trial.schema))
    if not candidates:
        return None
    place, name = rng.choice(candidates), rng.choice(UNKNOWN_KEYWORDS)
    sure = place in sure_places(trial.schema, trial.datum)
    trial.counts["fault"] += sure
    text = f" -> {pointer(place + (name,))}: The keyword '{name}' is not supported.\n"
    outcome = trial.again(with_member(trial.schema, place, name), trial.datum)
    if outcome == Outcome(3, "", text) or (outcome == trial.outcome and not sure):
        return None
    return f"with {pointer(place + (name,))}: {outcome.status}\n{outcome.report}{outcome.messages}"


def places_of(error: Any) -> list[tuple[str, str]]:
    where = tuple(str(token) for token in error.absolute_path)
    if error.validator != "required":
        return [(pointer(where), "enum" if error.validator == "not" else error.validator)]
    missing = [name for name in error.validator_value if name not in error.instance]
    return [(pointer(where + (name,)), "required") for name in missing]


Check = Callable[[Trial, random.Random], "str | None"]
CHECKS: dict[str, Check] = {
    "run": check_run,
    "form": check_form,
    "order": check_order,
    "repeat": check_repeat,
    "removal": check_removal,
    "verdict": check_verdict,
    "sorted": check_sorted,
    "standard": check_standard,
    "places": check_places,
    "fault": check_fault,
}
COUNTED = ("order", "repeat", "removal", "verdict", "sorted", "standard", "places", "fault")


def choices(trial: Trial) -> random.Random:
    """The source of the shuffles and choices of a check: the same for the same pair."""
    return random.Random(text_of([trial.schema, trial.datum]))


def problem_of(check: str, program: Program, schema: Any, datum: Any, counts: Counter[str]) -> str | None:
    """Runs one check on a pair anew."""
    trial = Trial(program, schema, datum, program.run(schema, datum), counts)
    if check != "run" and check_run(trial, choices(trial)):
        return None
    return CHECKS[check](trial, choices(trial))


def reductions(value: Any) -> Iterator[Any]:
    """Values one step smaller, the largest steps first: a part instead of the whole, a part less, a part reduced."""
    if isinstance(value, (dict, list)):
        parts = list(value.items()) if isinstance(value, dict) else list(enumerate(value))
        yield from (part for _, part in parts)
        for key, _ in parts:
            yield rebuilt(value, {name: part for name, part in parts if name != key})
        for key, part in parts:
            for smaller in reductions(part):
                yield rebuilt(value, {name: smaller if name == key else other for name, other in parts})
    elif value not in (0, True, False, None) and isinstance(value, (int, float)):
        yield 0
        yield 1
    elif isinstance(value, str) and len(value) > 1:
        yield "a"
        yield value[:1]


def rebuilt(like: Any, parts: dict[Any, Any]) -> Any:
    return parts if isinstance(like, dict) else list(parts.values())


def shrink(check: str, program: Program, schema: Any, datum: Any) -> tuple[Any, Any]:
    """The smallest pair, found greedily within a time limit, that fails the same check."""
    end = time.monotonic() + SHRINK_SECONDS
    changed = True
    while changed and time.monotonic() < end:
        changed = False
        for smaller in smaller_pairs(schema, datum):
            if time.monotonic() > end:
                break
            if still_fails(check, program, *smaller):
                schema, datum = smaller
                changed = True
                break
    return schema, datum


def smaller_pairs(schema: Any, datum: Any) -> Iterator[tuple[Any, Any]]:
    size = len(text_of(schema)) + len(text_of(datum))
    steps = [(each, datum) for each in reductions(schema)] + [(schema, each) for each in reductions(datum)]
    for smaller in steps:
        if len(text_of(smaller[0])) + len(text_of(smaller[1])) < size:
            yield smaller


def still_fails(check: str, program: Program, schema: Any, datum: Any) -> bool:
    try:
        dialect_to_draft4.translate(schema)
    except dialect_to_draft4.SchemaError:
        return False
    return problem_of(check, program, schema, datum, Counter()) is not None


def count_outcome(pair: generate.Pair, outcome: Outcome, counts: Counter[str]) -> None:
    counts["pairs"] += 1
    counts[f"verdict {outcome.status}"] += 1
    counts.update(f"finding {finding.kind}" for finding in outcome.findings())
    counts.update(f"keyword {name}" for name in {name for each in sub_schemas(pair.schema) for name in each})


def test_pair(pair: generate.Pair, program: Program, counts: Counter[str]) -> list[str]:
    """The names of the checks that fail."""
    trial = Trial(program, pair.schema, pair.datum, program.run(pair.schema, pair.datum), counts)
    count_outcome(pair, trial.outcome, counts)
    if check_run(trial, choices(trial)):
        return ["run"]
    return [name for name, check in CHECKS.items() if check(trial, choices(trial))]


def describe_failure(check: str, pair: generate.Pair, seed: int, program: Program) -> str:
    schema, datum = shrink(check, program, pair.schema, pair.datum)
    outcome = program.run(schema, datum)
    problem = problem_of(check, program, schema, datum, Counter())
    return (
        f"FAILED {check}: --seed {seed} --only {pair.number}; the smallest pair found:\n"
        f"schema  {text_of(schema)}\ndata    {text_of(datum)}\nstatus  {outcome.status}\n"
        f"{outcome.report.rstrip()}\n{outcome.messages.rstrip()}\nproblem {problem}\n"
    )


def missing_coverage(counts: Counter[str]) -> list[str]:
    wanted = [f"verdict {verdict}" for verdict in (0, 1, 2)]
    wanted += [f"finding {kind}" for kind in MESSAGES]
    wanted += [f"keyword {keyword}" for keyword in sorted(KEYWORDS)]
    return [name for name in [*wanted, *COUNTED] if counts[name] == 0]


def print_summary(counts: Counter[str], failures: Counter[str], seconds: float) -> None:
    pairs = counts["pairs"]
    print(f"{pairs} pairs in {seconds:.1f} s")
    for verdict in (0, 1, 2):
        count = counts[f"verdict {verdict}"]
        print(f"  verdict {verdict}: {count} ({100 * count / max(pairs, 1):.1f} %)")
    for heading in ("finding", "keyword"):
        names = sorted(name for name in counts if name.startswith(heading))
        print(f"  {heading}s: " + ", ".join(f"{name.split(' ', 1)[1]} {counts[name]}" for name in names))
    print("  checked: " + ", ".join(f"{name} {counts[name]}" for name in COUNTED))
    print("  failed: " + (", ".join(f"{name} {count}" for name, count in failures.items()) or "none"))


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Property tests of the validator.")
    parser.add_argument("program", metavar="JSV_PROGRAM")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=DEFAULT_COUNT)
    parser.add_argument("--only", type=int, metavar="NUMBER", help="check this pair of the seed alone")
    return parser.parse_args()


def chosen_pairs(options: argparse.Namespace) -> Iterator[generate.Pair]:
    if options.only is None:
        return generate.pairs(options.seed, options.count)
    return (pair for pair in generate.pairs(options.seed, options.only + 1) if pair.number == options.only)


def main() -> int:
    options = arguments()
    counts: Counter[str] = Counter()
    failures: Counter[str] = Counter()
    start = time.monotonic()
    with tempfile.TemporaryDirectory() as folder:
        program = Program(options.program, folder)
        for pair in chosen_pairs(options):
            for check in test_pair(pair, program, counts):
                failures[check] += 1
                if failures[check] == 1:
                    print(describe_failure(check, pair, options.seed, program))
    print_summary(counts, failures, time.monotonic() - start)
    missing = [] if options.only is not None else missing_coverage(counts)
    for name in missing:
        print(f"never came up: {name}")
    return 1 if failures or missing else 0


if __name__ == "__main__":
    sys.exit(main())
