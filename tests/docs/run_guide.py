#!/usr/bin/env python3
"""Follows the user's guide, step by step, in an empty folder.

    run_guide.py MARKDOWN_FILE SHARE_FOLDER PYTHON PROGRAM...

Fenced blocks are steps, in the order of the page:

    LANGUAGE file=NAME   writes that file
    diff file=NAME       changes it: for each part (parts are separated by "@@") the lines "-" or " " must stand in the
                         file once, and are replaced by the lines "+" or " "
    console              runs each command after "$ " and compares what it writes to standard output and standard error,
                         as a terminal shows them, with the lines that follow it; empty lines at the end do not count

"cd" and "$?" go on from one command to the next. The programs are on the path, python3 is PYTHON, and SHARE_FOLDER stands
for /usr/share/orvante. A block of another kind is a fault, so is a kind of report line that no command shows, and a page
without commands.

Status: 0 all is as the page says, 1 something is not.
"""

from __future__ import annotations

import difflib
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

INSTALLED_SHARE = "/usr/share/orvante"
TIME_LIMIT = 120.0

# Each kind of line that a report can have.
REPORT_LINES = (
    r"Error: This value must be equal to '[^']*'\.$",
    r"Error: This value must be equal to one of the following: '",
    r"Error: Only one of the following two items is allowed: '",
    r"Error: This value must be greater than or equal to \d",
    r"Error: This value must be greater than \d",
    r"Error: This value must be less than or equal to \d",
    r"Error: This value must be less than \d",
    r"Error: This value must be an integer\.$",
    r"Error: This value must be a number\.$",
    r"Error: This value must be a string\.$",
    r"Error: This value must be an object\.$",
    r"Error: This value must be an array\.$",
    r"Error: This value must be of a different type\.$",
    r"Error: This item is required but missing\.$",
    r"Error: One of the following items must be provided: '",
    r"Error: This value must match a 'name' in '",
    r"Warning: The value of this item will not be used\.$",
    r"Error: This item is invalid\.$",
)


class GuideError(Exception):
    """The page is wrong, or what happens is not what it says."""


def split_blocks(page: str) -> list[tuple[int, str, str]]:
    """The fenced blocks of a page: line of the opening fence, info string, text."""
    blocks: list[tuple[int, str, str]] = []
    opened, info, lines = 0, "", list[str]()
    for number, line in enumerate(page.splitlines(), start=1):
        if opened and line == "```":
            blocks.append((opened, info, "".join(f"{part}\n" for part in lines)))
            opened = 0
        elif opened:
            lines.append(line)
        elif line.startswith("```"):
            opened, info, lines = number, line[3:].strip(), []
        elif line.startswith("    $ "):
            raise GuideError(f"line {number}: this command is in no console block, so it would not be run")
    if opened:
        raise GuideError(f"line {opened}: this block is never closed")
    return blocks


def split_commands(text: str) -> list[tuple[str, str]]:
    """Commands and what each of them shows."""
    commands: list[tuple[str, list[str]]] = []
    for line in text.splitlines():
        if line.startswith("$ "):
            commands.append((line[2:], []))
        elif not commands:
            raise GuideError("there is output before the first command")
        else:
            commands[-1][1].append(line)
    return [(command, "\n".join(shown).rstrip("\n")) for command, shown in commands]


def changed(text: str, diff: str) -> str:
    """The text with the parts of a diff applied."""
    for part in re.split(r"^@@.*\n", diff, flags=re.MULTILINE):
        lines = part.splitlines(keepends=True)
        if not all(line[0] in "+- " for line in lines):
            raise GuideError("a line of the diff begins with none of '+', '-', ' '")
        before = "".join(line[1:] for line in lines if line[0] != "+")
        after = "".join(line[1:] for line in lines if line[0] != "-")
        if not before or text.count(before) != 1:
            raise GuideError(f"these lines stand in the file {text.count(before)} times:\n{before}")
        text = text.replace(before, after)
    return text


class Terminal:
    """A folder in which files are written and commands run, one after the other."""

    def __init__(self, folder: pathlib.Path, share: str, programs: dict[str, str]) -> None:
        self.folder = folder / "home"
        self.folder.mkdir()
        self.share = share
        self.state = folder / "working_folder"
        self.status = 0
        bin_folder = folder / "bin"
        bin_folder.mkdir()
        for name, path in programs.items():
            wrapper = bin_folder / name
            wrapper.write_text(f'#!/bin/bash\nexec -a {shlex.quote(name)} {shlex.quote(path)} "$@"\n', encoding="utf-8")
            wrapper.chmod(0o755)
        self.environment = dict(os.environ, PATH=f"{bin_folder}:{os.environ['PATH']}", LC_ALL="C.UTF-8")

    def run(self, command: str) -> str:
        """Runs a command and gives what a terminal would show."""
        script = (
            f"cd {shlex.quote(str(self.folder))}\n(exit {self.status})\n"
            f"{command.replace(INSTALLED_SHARE, self.share)}\n"
            f"status=$?; pwd -P > {shlex.quote(str(self.state))}; exit $status"
        )
        done = subprocess.run(
            ["bash", "-c", script],
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            env=self.environment,
            timeout=TIME_LIMIT,
            check=False,
        )
        self.status = done.returncode
        self.folder = pathlib.Path(self.state.read_text(encoding="utf-8").rstrip("\n"))
        return done.stdout.decode(errors="replace").rstrip("\n")


def follow_console(terminal: Terminal, text: str) -> list[str]:
    """Runs the commands of a block; gives them."""
    commands = split_commands(text)
    for command, expected in commands:
        actual = terminal.run(command)
        if actual != expected:
            lines = difflib.unified_diff(expected.splitlines(), actual.splitlines(), "page", "run", lineterm="", n=2)
            raise GuideError("\n".join([f"$ {command}", *lines]))
    return [command for command, _ in commands]


def follow_block(terminal: Terminal, info: str, text: str) -> list[str]:
    """Does what a block says; gives the commands that it has run."""
    language, _, name = info.partition(" file=")
    if info == "console":
        return follow_console(terminal, text)
    if not re.fullmatch(r"[a-z]+", language) or not re.fullmatch(r"[\w.]+", name):
        raise GuideError(f'"{info}" is no kind of step')
    file = terminal.folder / name
    if language == "diff":
        file.write_text(changed(file.read_text(encoding="utf-8"), text), encoding="utf-8")
    else:
        file.write_text(text, encoding="utf-8")
    return []


def lacking_lines(blocks: list[tuple[int, str, str]]) -> list[str]:
    """The kinds of report lines that no console block shows."""
    shown = "".join(text for _, info, text in blocks if info == "console")
    return [line for line in REPORT_LINES if not re.search(f"^/\\S*: {line}", shown, re.MULTILINE)]


def follow(page: str, share: str, programs: dict[str, str]) -> list[str]:
    """Follows a page; gives the commands that it has run."""
    blocks = split_blocks(page)
    lacking = lacking_lines(blocks)
    if lacking:
        raise GuideError("no command shows: " + "; ".join(lacking))
    commands: list[str] = []
    with tempfile.TemporaryDirectory() as folder:
        terminal = Terminal(pathlib.Path(folder).resolve(), share, programs)
        for line, info, text in blocks:
            try:
                commands += follow_block(terminal, info, text)
            except (GuideError, OSError) as error:
                raise GuideError(f"line {line}: {error}") from error
    if not commands:
        raise GuideError("there is no command")
    return commands


def main(arguments: list[str]) -> int:
    if len(arguments) < 4:
        print(__doc__, file=sys.stderr)
        return 1
    page, share, python, *paths = arguments
    programs = {pathlib.Path(path).name: path for path in paths} | {"python3": python}
    try:
        commands = follow(pathlib.Path(page).read_text(encoding="utf-8"), share, programs)
    except GuideError as error:
        print(f"{page}: {error}")
        return 1
    print(f"{len(commands)} commands, all as the page says")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
