#!/usr/bin/env python3
"""Runs the examples of the page on the schema dialect through the program jsv.

    run_examples.py JSV_PROGRAM MARKDOWN_FILE

An example is three fenced blocks with nothing but blank lines between them: "json schema", "json data", and either
"report verdict=N" (the lines of the report, without the empty line that closes it) or "fault" (text of the exception).
The page is at fault where a json, report or fault block belongs to no example, where a keyword has no section of its
own, and where such a section has no example whose schema uses the keyword.

Status: 0 all is well, 1 something is not.
"""

from __future__ import annotations

import dataclasses
import difflib
import itertools
import json
import pathlib
import re
import subprocess
import sys
import tempfile

KEYWORDS = (
    "$schema",
    "allOf",
    "autoexpand",
    "const",
    "default",
    "description",
    "enum",
    "exclusiveMaximum",
    "exclusiveMinimum",
    "format",
    "items",
    "maximum",
    "minimum",
    "oneOf",
    "optional",
    "properties",
    "required",
    "requiredIn",
    "type",
    "units",
)
FAULT_STATUS = 3
TIME_LIMIT = 60.0

HEADING = re.compile(r"(#{1,6}) (.*)")
REPORT_INFO = re.compile(r"report verdict=([012])")


@dataclasses.dataclass(frozen=True)
class Block:
    """A fenced block: info string, text, line of its opening fence, the keyword section around it."""

    info: str
    text: str
    line: int
    section: str
    follows: bool  # only blank lines stand between the block before and this one

    @property
    def is_part_of_example(self) -> bool:
        return self.info.split(" ")[0] in ("json", "report", "fault")


@dataclasses.dataclass(frozen=True)
class Outcome:
    """What a run of jsv shows to the outside."""

    status: int
    stdout: str
    stderr: str


@dataclasses.dataclass(frozen=True)
class Example:
    """Schema, data, and what jsv has to make of them."""

    schema: str
    data: str
    expected: Outcome
    line: int
    section: str

    def uses(self, keyword: str) -> bool:
        return json.dumps(keyword) in self.schema


class PageError(Exception):
    """The page cannot be split into blocks."""


def section_after(heading: re.Match[str], section: str) -> str:
    """The keyword section that holds after a heading; sections of keywords have headings of level 3, in backticks."""
    if len(heading[1]) > 3:
        return section
    name = heading[2].strip()
    return name[1:-1] if len(heading[1]) == 3 and re.fullmatch(r"`[^`]+`", name) else ""


def split_blocks(page: str) -> tuple[list[Block], list[str]]:
    """The fenced blocks of a page, and the keyword sections in their order."""
    blocks: list[Block] = []
    sections: list[str] = []
    section, follows, opened, info = "", False, 0, ""
    text: list[str] = []
    for number, line in enumerate(page.splitlines(), start=1):
        if opened:
            if line.rstrip() == "```":
                blocks.append(Block(info, "".join(f"{part}\n" for part in text), opened, section, follows))
                opened, follows = 0, True
            else:
                text.append(line)
        elif line.startswith("```"):
            opened, info, text = number, line[3:].strip(), []
        elif line.strip():
            follows = False
            heading = HEADING.fullmatch(line)
            if heading:
                section = section_after(heading, section)
                if section and len(heading[1]) == 3:
                    sections.append(section)
    if opened:
        raise PageError(f"line {opened}: this block is never closed")
    return blocks, sections


def expected_outcome(block: Block) -> Outcome | str:
    """What the third block of an example demands, or what is wrong with the block."""
    if block.info == "fault":
        if not block.text.strip():
            return "a fault needs its text"
        return Outcome(FAULT_STATUS, "", f" -> {block.text}")
    verdict = REPORT_INFO.fullmatch(block.info)
    if not verdict:
        return f'"{block.info}" is neither "report verdict=N" nor "fault"'
    if (verdict[1] == "0") != (block.text == ""):
        return "a report is empty when the verdict is 0, and only then"
    return Outcome(int(verdict[1]), f"{block.text}\n" if block.text else "", "")


def make_example(schema: Block, data: Block, third: Block) -> Example | str:
    """The example made of three blocks, or what is wrong with them."""
    if (schema.info, data.info) != ("json schema", "json data"):
        return f'expected "json schema" and "json data", not "{schema.info}" and "{data.info}"'
    if not (data.follows and third.follows):
        return "there is something between the blocks of an example"
    expected = expected_outcome(third)
    if isinstance(expected, str):
        return expected
    return Example(schema.text, data.text, expected, schema.line, schema.section)


def from_next_schema(parts: list[Block]) -> list[Block]:
    """The blocks from the next one that begins an example."""
    return list(itertools.dropwhile(lambda block: block.info != "json schema", parts))


def collect_examples(blocks: list[Block]) -> tuple[list[Example], list[str]]:
    """The examples of a page, and the faults found on the way."""
    examples: list[Example] = []
    faults: list[str] = []
    parts = [block for block in blocks if block.is_part_of_example]
    while len(parts) >= 3:
        made = make_example(*parts[:3])
        if isinstance(made, Example):
            examples.append(made)
            del parts[:3]
        else:
            faults.append(f"line {parts[0].line}: {made}")
            parts = from_next_schema(parts[1:])
    faults.extend(f"line {block.line}: this block belongs to no example" for block in parts)
    return examples, faults


def coverage_faults(examples: list[Example], sections: list[str]) -> list[str]:
    """What the page as a whole leaves out."""
    faults: list[str] = []
    if len(examples) < len(KEYWORDS):
        faults.append(f"{len(examples)} examples for {len(KEYWORDS)} keywords")
    for keyword in KEYWORDS:
        if sections.count(keyword) != 1:
            faults.append(f"{sections.count(keyword)} sections for the keyword {keyword}, not one")
        elif not any(example.section == keyword and example.uses(keyword) for example in examples):
            faults.append(f"no example in the section of the keyword {keyword} uses it")
    faults.extend(f"the section {name} is for no keyword" for name in sections if name not in KEYWORDS)
    return faults


def run(program: str, example: Example) -> Outcome:
    """Runs jsv over an example. A signal shows as a negative status."""
    with tempfile.TemporaryDirectory() as folder:
        schema, data = pathlib.Path(folder, "schema.json"), pathlib.Path(folder, "data.json")
        schema.write_bytes(example.schema.encode())
        data.write_bytes(example.data.encode())
        done = subprocess.run(
            [program, str(schema), str(data)],
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=TIME_LIMIT,
            check=False,
        )
    return Outcome(done.returncode, done.stdout.decode(errors="replace"), done.stderr.decode(errors="replace"))


def differences(expected: Outcome, actual: Outcome) -> list[str]:
    """The differences between two outcomes as lines to print; empty when there are none."""
    lines: list[str] = []
    if expected.status != actual.status:
        lines.append(f"  status: expected {expected.status}, got {actual.status}")
    for name in ("stdout", "stderr"):
        before, after = getattr(expected, name), getattr(actual, name)
        if before != after:
            lines.append(f"  {name}:")
            pair = (before.splitlines(keepends=True), after.splitlines(keepends=True))
            lines.extend(f"    {line!r}" for line in difflib.unified_diff(*pair, "expected", "actual", lineterm="", n=9))
    return lines


def failures(program: str, page: str, examples: list[Example]) -> list[str]:
    """Runs all the examples and describes those that come out differently."""
    found: list[str] = []
    for example in examples:
        lines = differences(example.expected, run(program, example))
        if lines:
            found.append("\n".join([f"{page}:{example.line}: the example comes out differently", *lines]))
    return found


def main(arguments: list[str]) -> int:
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 1
    program, page = arguments
    try:
        blocks, sections = split_blocks(pathlib.Path(page).read_text(encoding="utf-8"))
    except PageError as error:
        print(f"{page}: {error}")
        return 1
    examples, faults = collect_examples(blocks)
    faults += coverage_faults(examples, sections)
    problems = [f"{page}: {fault}" for fault in faults] + failures(program, page, examples)
    for problem in problems:
        print(problem)
    print(f"{len(examples)} examples, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
