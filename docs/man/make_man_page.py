#!/usr/bin/env python3
"""Writes the man page of a program: a template, completed with what the program's own --help says.

    make_man_page.py PROGRAM NAME VERSION TEMPLATE OUTPUT_FILE

In the template @SYNOPSIS@, @OPTIONS@ and @VERSION@ are replaced, each alone in its line but for @VERSION@. A usage that
does not have the form of the command-line library is an error, and so is a template that leaves one of them out: a page
must not say less than the program.
"""

from __future__ import annotations

import dataclasses
import pathlib
import re
import subprocess
import sys

FLAG = re.compile(r"(?P<name>--?[A-Za-z_-]*)(?: <(?P<value>[^>]+)>)?")
OPERAND = re.compile(r"<(?P<value>[^>]+)>")
SECTIONS = re.compile(r"^USAGE: *\n(?P<usage>.*?)^Where: *\n(?P<options>.*?)\n\n\n", re.MULTILINE | re.DOTALL)
PLACEHOLDERS = ("@SYNOPSIS@", "@OPTIONS@", "@VERSION@")


class UsageError(Exception):
    """The usage is not written as expected."""


@dataclasses.dataclass(frozen=True)
class Option:
    """An option or operand: its forms as the usage writes them, and its description."""

    forms: tuple[str, ...]
    description: str


@dataclasses.dataclass(frozen=True)
class Usage:
    """What --help says: the synopsis without the program's name, and the options in their order."""

    synopsis: str
    options: tuple[Option, ...]


def help_text(program: str, name: str) -> str:
    """The output of --help; the program is called by its bare name, wherever it is."""
    done = subprocess.run(
        [name, "--help"], executable=program, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False
    )
    if done.returncode != 0:
        raise UsageError(f"{name} --help ends with status {done.returncode}: {done.stderr.strip()}")
    return done.stdout


def parse_option(block: str) -> Option:
    """An option from its lines: the forms, then the description, which is indented further."""
    first, *rest = block.splitlines()
    forms = tuple(form.strip() for form in first.split(",  "))
    if not all(FLAG.fullmatch(form) or OPERAND.fullmatch(form) for form in forms):
        raise UsageError(f"no option: {first!r}")
    if not rest or not all(line.startswith("     ") for line in rest):
        raise UsageError(f"no description: {first!r}")
    return Option(forms, " ".join(line.strip() for line in rest))


def parse_usage(text: str, name: str) -> Usage:
    """The parts of a usage that the command-line library printed."""
    found = SECTIONS.search(text)
    if not found:
        raise UsageError("no USAGE and Where sections")
    words = found["usage"].split()
    if not words or words[0] != name:
        raise UsageError(f"the usage does not begin with {name}")
    blocks = re.split(r"\n\s*\n", found["options"].strip("\n"))
    return Usage(" ".join(words[1:]), tuple(parse_option(block) for block in blocks if block.strip()))


def escaped(text: str) -> str:
    """Text such that the formatter prints it as it is; '-' stays what can be typed."""
    return text.replace("\\", "\\e").replace("-", "\\-")


def marked_up(text: str) -> str:
    """Flags bold, values and operands italic without their brackets, the rest as it is."""
    parts = re.split(r"(<[^>]+>|(?<![\w<])--?[A-Za-z_-]*)", text)
    return "".join(
        f"\\fI{escaped(part[1:-1])}\\fR"
        if part.startswith("<")
        else f"\\fB{escaped(part)}\\fR"
        if part.startswith("-")
        else escaped(part)
        for part in parts
    )


def synopsis_lines(usage: Usage, name: str) -> str:
    """The synopsis: one line a group, so that no group is torn in the middle of a line."""
    groups = re.findall(r"\[[^\]]*\](?: *\.\.\.)?|--?[A-Za-z_-]+ <[^>]+>|\S+", usage.synopsis)
    return "\n".join([f".B {escaped(name)}", *(marked_up(group).replace(" ", "\\~") for group in groups)])


def option_lines(usage: Usage) -> str:
    lines: list[str] = []
    for option in usage.options:
        lines += [".TP", ", ".join(marked_up(form) for form in option.forms)]
        lines.append(re.sub(r"^([.'])", r"\\&\1", escaped(option.description)))
    return "\n".join(lines)


def complete(template: str, usage: Usage, name: str, version: str) -> str:
    """The page from its template."""
    missing = [word for word in PLACEHOLDERS if word not in template]
    if missing:
        raise UsageError(f"the template lacks {', '.join(missing)}")
    page = template.replace("@SYNOPSIS@", synopsis_lines(usage, name)).replace("@OPTIONS@", option_lines(usage))
    return page.replace("@VERSION@", version)


def main(arguments: list[str]) -> int:
    if len(arguments) != 5:
        print(__doc__, file=sys.stderr)
        return 1
    program, name, version, template, output = arguments
    try:
        usage = parse_usage(help_text(program, name), name)
        page = complete(pathlib.Path(template).read_text(encoding="utf-8"), usage, name, version)
    except (OSError, UsageError) as error:
        print(f"man page of {name}: {error}", file=sys.stderr)
        return 1
    pathlib.Path(output).write_text(page, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
