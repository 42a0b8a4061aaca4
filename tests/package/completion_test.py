#!/usr/bin/env python3
"""The completion of orvante_setup in real shells: all options of --help, none else, and files where files belong.

    completion_test.py COMPLETION_FOLDER ORVANTE_SETUP
"""

from __future__ import annotations

import os
import pty
import re
import select
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

from usage import flags, tool

FOLDER, PROGRAM = sys.argv[1:]
BASH, ZSH = tool("bash"), tool("zsh")
TIME_LIMIT = 30.0

# Gives what bash would offer for the words; the last of them is being written.
BASH_SCRIPT = """
source "$1/orvante_setup.bash" || exit
shift
[[ $(complete -p orvante_setup) == *'-F _orvante_setup orvante_setup' ]] || exit
COMP_WORDS=(orvante_setup "$@") COMP_CWORD=$# COMPREPLY=()
_orvante_setup
((${#COMPREPLY[@]} == 0)) || printf '%s\\n' "${COMPREPLY[@]}"
"""

# Ctrl-B writes the line as it is, between marks.
ZSH_SETTINGS = """
PS1='READY> '
unset zle_bracketed_paste
fpath=({folder} $fpath)
autoload -Uz compinit
compinit -D -u
zstyle ':completion:*' list-separator '##'
setopt no_beep
LISTMAX=1000
show_line() {{ zle -I; print -r -- "[[[$BUFFER]]]" }}
zle -N show_line
bindkey '^B' show_line
"""


class WorkingFolder(unittest.TestCase):
    """A folder with files of several kinds."""

    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name).resolve()
        (self.folder / "models").mkdir()
        for name in ("reach.json", "two words.json", "result.h5", "notes.txt"):
            (self.folder / name).touch()


class Bash(WorkingFolder):
    def offers(self, *words: str) -> set[str]:
        done = subprocess.run(
            [BASH, "--norc", "-c", BASH_SCRIPT, "bash", str(Path(FOLDER).resolve()), *words],
            cwd=self.folder, capture_output=True, text=True, check=True, timeout=TIME_LIMIT,
        )
        self.assertEqual(done.stderr, "")
        lines = done.stdout.splitlines()
        self.assertEqual(len(lines), len(set(lines)), lines)
        return set(lines)

    def test_options_are_those_of_the_usage(self) -> None:
        self.assertEqual(self.offers("-"), flags(PROGRAM))

    def test_options_that_begin_so(self) -> None:
        self.assertEqual(self.offers("--out"), {"--output"})
        self.assertEqual(self.offers("-f", "a.json", "--v"), {"--version"})

    def test_command_files(self) -> None:
        for option in ("-f", "--file"):
            self.assertEqual(self.offers(option, ""), {"models", "reach.json", "two words.json"})

    def test_result_files(self) -> None:
        for option in ("-o", "--output", "-a", "--archive"):
            self.assertEqual(self.offers(option, ""), {"models", "result.h5"})
        self.assertEqual(self.offers("-o", "re"), {"result.h5"})

    def test_numbers(self) -> None:
        self.assertEqual(self.offers("-l", ""), set())
        self.assertIn("1", self.offers("--nthreads", ""))


class Zsh(WorkingFolder):
    """Types into an interactive shell and looks at what it shows."""

    def typed(self, text: str) -> tuple[str, str]:
        """What the shell lists after the text and Tab, and what the line is then."""
        settings = ZSH_SETTINGS.format(folder=str(Path(FOLDER).resolve()).replace(" ", "\\ "))
        with tempfile.TemporaryDirectory() as home:
            Path(home, ".zshrc").write_text(settings, encoding="utf-8")
            process, terminal = pty.fork()
            if process == 0:
                os.chdir(self.folder)
                os.environ.update(ZDOTDIR=home, TERM="dumb", LC_ALL="C.UTF-8", COLUMNS="120", LINES="50")
                os.execv(ZSH, [ZSH, "-d", "-i"])
            try:
                self.read_until(terminal, r"READY> ")
                os.write(terminal, text.encode() + b"\t\x02")
                shown = self.read_until(terminal, r"\[\[\[.*\]\]\]")
            finally:
                os.close(terminal)
                os.waitpid(process, 0)
        listed, _, line = shown.partition("[[[")
        return listed, line.partition("]]]")[0]

    def read_until(self, terminal: int, pattern: str) -> str:
        end, text = time.monotonic() + TIME_LIMIT, ""
        while not re.search(pattern, text):
            ready, _, _ = select.select([terminal], [], [], max(0.0, end - time.monotonic()))
            if not ready:
                self.fail(f"the shell does not show {pattern!r}: {text!r}")
            text += re.sub(r"\x1b\[[?\d;]*[a-zA-Z]", "", os.read(terminal, 65536).decode(errors="replace"))
        return text

    def test_options_are_those_of_the_usage(self) -> None:
        listed, _ = self.typed("orvante_setup -")
        offered = set(re.findall(r"(?<!\S)(--?[a-z_]+)(?!\S)", listed.partition("\n")[2].partition("READY>")[0]))
        self.assertEqual(offered, flags(PROGRAM) - {"--"})

    def test_option_that_begins_so(self) -> None:
        self.assertEqual(self.typed("orvante_setup --ou")[1], "orvante_setup --output ")

    def test_command_file(self) -> None:
        self.assertEqual(self.typed("orvante_setup -f r")[1], "orvante_setup -f reach.json ")
        self.assertEqual(self.typed("orvante_setup --file two")[1], "orvante_setup --file two\\ words.json ")

    def test_result_file(self) -> None:
        self.assertEqual(self.typed("orvante_setup -f reach.json -o r")[1], "orvante_setup -f reach.json -o result.h5 ")

    def test_option_that_was_given(self) -> None:
        listed, _ = self.typed("orvante_setup -o a.h5 --")
        self.assertNotIn("--output", listed.partition("\n")[2])
        self.assertIn("--file", listed.partition("\n")[2])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
