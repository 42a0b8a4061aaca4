"""Running programs and measuring what they take of the processor and of memory."""

from __future__ import annotations

import json
import os
import statistics
import subprocess
from collections.abc import Mapping, Sequence
from dataclasses import dataclass, field
from pathlib import Path
from typing import Any

Command = Sequence[str | Path]


class MeasureError(Exception):
    """A program did not do what it was to do: nothing was measured."""


@dataclass
class Runs:
    """What the runs of one command took."""

    seconds: list[float] = field(default_factory=list)
    kilobytes: list[int] = field(default_factory=list)

    @property
    def cpu(self) -> float:
        """Median of the processor time in seconds, user and system."""
        return statistics.median(self.seconds)

    @property
    def peak(self) -> float:
        """Median of the peak memory in megabytes."""
        return statistics.median(self.kilobytes) / 1024


def stay_on_one_processor() -> None:
    """Keeps this process and those that it starts on one processor: one may be slower than another for minutes."""
    if hasattr(os, "sched_setaffinity"):
        os.sched_setaffinity(0, {min(os.sched_getaffinity(0))})


def run_once(command: Command, runs: Runs) -> None:
    """Runs a command with its output thrown away."""
    arguments = [str(argument) for argument in command]
    quiet = [(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)]
    process = os.posix_spawn(arguments[0], arguments, os.environ, file_actions=quiet)
    _, status, usage = os.wait4(process, 0)
    if os.waitstatus_to_exitcode(status) != 0:
        raise MeasureError(f"{' '.join(arguments)} ended with status {os.waitstatus_to_exitcode(status)}")
    runs.seconds.append(usage.ru_utime + usage.ru_stime)
    runs.kilobytes.append(usage.ru_maxrss)


def interleaved(commands: Mapping[str, Command], seconds: float, fewest: int = 5, most: int = 101) -> dict[str, Runs]:
    """Runs commands in turn, so that all of them meet the same disturbances, for so many seconds of processor time."""
    measured = {name: Runs() for name in commands}
    spent = 0.0
    for repetition in range(most):
        if repetition >= fewest and spent >= seconds:
            break
        for name, command in commands.items():
            run_once(command, measured[name])
            spent += measured[name].seconds[-1]
    return measured


def output_of(command: Command) -> Any:
    """The JSON that a program prints."""
    finished = subprocess.run([str(argument) for argument in command], stdout=subprocess.PIPE, text=True, check=False)
    if finished.returncode != 0:
        raise MeasureError(f"{' '.join(map(str, command))} ended with status {finished.returncode}")
    return json.loads(finished.stdout)
