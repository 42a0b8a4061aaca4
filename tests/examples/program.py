"""The program mutant_reports: many changed documents, validated in one process."""

from __future__ import annotations

import json
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Iterable

from models import Patch


@dataclass(frozen=True)
class Outcome:
    """The verdict over one document, and the lines of the report."""

    verdict: int
    lines: tuple[str, ...]


@dataclass(frozen=True)
class Reports:
    """The program and the schema that it is given."""

    program: Path
    schema: Path

    def outcomes(self, requests: Iterable[tuple[Path, Patch]]) -> list[Outcome]:
        """The outcome of each document, in their order."""
        return [Outcome(each["verdict"], tuple(each["report"])) for each in self._run(requests)]

    def places(self, requests: Iterable[tuple[Path, Patch]]) -> set[str]:
        """The schema objects that the walks over the documents come by."""
        return set(self._run(requests, "--places")[-1]["places"])

    def _run(self, requests: Iterable[tuple[Path, Patch]], *options: str) -> list[dict[str, object] | dict]:
        text = "".join(json.dumps({"file": str(file), "patch": patch}) + "\n" for file, patch in requests)
        command = [str(self.program), str(self.schema), *options]
        done = subprocess.run(command, input=text, capture_output=True, text=True, encoding="utf-8", check=False)
        if done.returncode != 0:
            raise RuntimeError(f"{self.program.name} ended with status {done.returncode}: {done.stderr.strip()}")
        return [json.loads(each) for each in done.stdout.splitlines()]
