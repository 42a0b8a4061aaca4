#!/usr/bin/env python3
"""Measures the programs against floors that nothing can go below, and prints one table.

    run.py BUILD_FOLDER [--quick] [--keep FOLDER] [--only MEASUREMENT]

BUILD_FOLDER is a Release build with the benchmarks (cmake --preset bench). README.md tells how to read the table. The
exit status is 0 when everything was measured, whether or not a target was missed.
"""

from __future__ import annotations

import argparse
import statistics
import subprocess
import sys
import tempfile
from collections.abc import Callable, Iterator
from dataclasses import dataclass
from pathlib import Path

from measure import Command, MeasureError, Runs, interleaved, output_of, run_once, stay_on_one_processor

HERE = Path(__file__).resolve().parent
TRANSLATOR = HERE.parent / "tools" / "dialect_to_draft4.py"
MEGABYTE = 1_000_000

# Program, name, and what the walk may cost of its validation: one that lists all errors is to be left far behind.
OTHERS = [("other_rapidjson", "RapidJSON", 1.0), ("other_valijson", "Valijson", 0.2)]


@dataclass
class Row:
    """One line of the table; the figure is a ratio where no unit stands in its name."""

    what: str
    figure: float
    target: float
    detail: str

    def text(self) -> str:
        verdict = "ok" if self.figure <= self.target else "MISSED"
        return f"{self.what:<72} {self.figure:>8.3f} {self.target:>7.2f}  {verdict:<6}  {self.detail}"


@dataclass
class Bench:
    """The programs, the inputs made so far, and how long to measure."""

    programs: Path
    folder: Path
    quick: bool

    # ---- programs

    def program(self, name: str) -> Path:
        folder = "app" if name == "orvante_setup" else "bench"
        return self.programs / folder / name

    def parsing(self, *files: Path) -> Command:
        return [self.program("parse_floor"), *files]

    def floor(self, schema: Path, data: Path) -> Command:
        """Parsing in the order of a validation: the allocator makes a difference of it."""
        return self.parsing(data, schema)

    def validation_and_floor(self, data: Path) -> dict[str, Command]:
        return {"validate": self.validation(self.schema(), data), "floor": self.floor(self.schema(), data)}

    def validation(self, schema: Path, data: Path) -> Command:
        return [self.program("validate_files"), schema, data]

    def setup(self, data: Path) -> Command:
        return [self.program("orvante_setup"), "-f", data, "-o", self.folder / "result.h5"]

    def stages(self, schema: Path, data: Path, repetitions: int) -> dict[str, float]:
        """Median seconds of each stage of a validation."""
        return medians([self.stages_once(schema, data) for _ in range(repetitions)])

    def stages_once(self, schema: Path, data: Path) -> dict[str, float]:
        return output_of([self.program("stages"), schema, data])

    @property
    def seconds(self) -> float:
        """Processor time to spend on one comparison."""
        return 2 if self.quick else 12

    # ---- inputs

    def generated(self, name: str, *arguments: str) -> Path:
        """An input, made by a process of its own: the memory of this one counts in the peaks of its children."""
        path = self.folder / name
        if not path.exists():
            what, *rest = arguments
            output_of([sys.executable, HERE / "generate.py", what, path, *rest])
        return path

    def schema(self) -> Path:
        return self.programs / "schema" / "command_file_schema.json"

    def data(self, kind: str, size: int, faults: float) -> Path:
        """A model of many domains or one, checked to have findings if and only if it is to."""
        name = f"{kind}_{size}_{faults}.json"
        fresh = not (self.folder / name).exists()
        options = ["--size", str(size), "--schema", str(self.schema()), "--faults", str(faults)]
        path = self.generated(name, kind, *options)
        if fresh:
            self.require_findings(self.schema(), path, faults > 0)
        return path

    def require_findings(self, schema: Path, data: Path, wanted: bool) -> int:
        """The number of findings. Data with others than they are to have would measure something else."""
        outcome = output_of([self.program("validate_files"), "--count", schema, data])
        if (outcome["verdict"] == 2) != wanted or (outcome["lines"] > 0) != wanted:
            raise MeasureError(f"{data.name}: {'no ' * wanted}findings, verdict {outcome['verdict']}")
        return max(0, outcome["lines"] - 1)  # an empty line ends the report


def megabytes(path: Path) -> float:
    return path.stat().st_size / MEGABYTE


def medians(runs: list[dict[str, float]]) -> dict[str, float]:
    return {stage: statistics.median(run[stage] for run in runs) for stage in runs[0]}


def milliseconds(*seconds: float) -> str:
    return " / ".join(f"{each * 1000:.2f}" for each in seconds) + " ms"


# ---- the measurements


def validations(bench: Bench) -> Iterator[Row]:
    """Validation of files, and its walk alone, against parsing."""
    large = 10 if bench.quick else 50
    for size in (1, large):
        for kind in ("multi", "single"):
            for faults in (0, 0.01):
                data = bench.data(kind, size * MEGABYTE, faults)
                label = f"{size} MB, {kind} domain, {'1 %' if faults else 'no'} faults"
                runs = interleaved(bench.validation_and_floor(data), bench.seconds)
                validate, floor = runs["validate"].cpu, runs["floor"].cpu
                yield Row(f"validate / parse floor: {label}", validate / floor, 1.4, milliseconds(validate, floor))
                yield walk_row(bench, data, label, 5 if size > 1 else 101)


def walk_row(bench: Bench, data: Path, label: str, repetitions: int) -> Row:
    floors = Runs()
    runs = []
    for _ in range(repetitions):  # in turn: both are to meet the same disturbances
        run_once(bench.floor(bench.schema(), data), floors)
        runs.append(bench.stages_once(bench.schema(), data))
    floor = floors.cpu
    stages = medians(runs)
    parsing = stages["parse_data"] + stages["parse_schema"]
    detail = (
        f"{milliseconds(stages['walk'], floor)}; parsing alone {milliseconds(parsing)},"
        f" bare visit of the data {milliseconds(stages['visit'])}"
    )
    return Row(f"walk / parse floor: {label}", stages["walk"] / floor, 0.2, detail)


def peak_memory(bench: Bench) -> Iterator[Row]:
    """Peak memory of a validation against that of parsing."""
    size = 10 if bench.quick else 50
    for faults in (0, 0.01):
        data = bench.data("multi", size * MEGABYTE, faults)
        runs = interleaved(bench.validation_and_floor(data), 0, fewest=3)
        validate, floor = runs["validate"].peak, runs["floor"].peak
        label = f"peak memory, validate / parse floor: {size} MB, {'1 %' if faults else 'no'} faults"
        yield Row(label, validate / floor, 1.25, f"{validate:.0f} / {floor:.0f} MB")


def linearity(bench: Bench) -> Iterator[Row]:
    """Growth of the cost per megabyte of data; what is there without data is taken off."""
    large = 10 if bench.quick else 50
    smallest, small, big = (bench.data("multi", size, 0) for size in (10_000, MEGABYTE, large * MEGABYTE))
    for name, what in (("validate", bench.validation), ("parse floor", bench.floor)):
        commands = {str(data): what(bench.schema(), data) for data in (smallest, small, big)}
        runs = interleaved(commands, bench.seconds, fewest=7)
        base = runs[str(smallest)].cpu
        costs = [(runs[str(data)].cpu - base) / (megabytes(data) - megabytes(smallest)) for data in (big, small)]
        label = f"{name}, cost per MB of data: {large} MB / 1 MB"
        yield Row(label, costs[0] / costs[1], 1.5, milliseconds(*costs) + " per MB")


def findings(bench: Bench) -> Iterator[Row]:
    """Cost of a finding: the time beyond that of data of the same make and size without faults."""
    few, many = 10_000, 100_000 if bench.quick else 1_000_000
    schema = bench.generated("findings_schema.json", "findings-schema")
    costs = {}
    for count in (many, few):
        faulty = bench.generated(f"findings_{count}.json", "findings", "--count", str(count))
        clean = bench.generated(f"no_findings_{count}.json", "findings", "--count", str(count), "--clean")
        found = bench.require_findings(schema, faulty, True)
        bench.require_findings(schema, clean, False)
        commands = {"faulty": bench.validation(schema, faulty), "clean": bench.validation(schema, clean)}
        runs = interleaved(commands, bench.seconds)
        costs[count] = (runs["faulty"].cpu - runs["clean"].cpu) / found
    detail = " / ".join(f"{costs[count] * 1e6:.3f}" for count in (many, few)) + " us each"
    yield Row(f"cost of a finding: {many:,} findings / {few:,}", costs[many] / costs[few], 1.5, detail)


def references(bench: Bench) -> Iterator[Row]:
    """References into a long list of names."""
    few, many = 1_000, 10_000
    walks = {}
    for count in (few, many):
        data = bench.generated(f"references_{count}.json", "references", "--count", str(count))
        bench.require_findings(bench.schema(), data, False)
        walks[count] = bench.stages(bench.schema(), data, 11 if bench.quick else 21)["walk"]
    command = bench.validation(bench.schema(), data)
    seconds = interleaved({"validate": command}, bench.seconds / 4)["validate"].cpu
    yield Row(f"validate, {many:,} references into {many:,} names, in seconds", seconds, 1.0, milliseconds(seconds))
    growth = walks[many] / many / (walks[few] / few)
    label = f"walk, cost of a reference: {many:,} into {many:,} / {few:,} into {few:,}"
    yield Row(label, growth, 1.5, milliseconds(walks[many], walks[few]))


def whole_program(bench: Bench) -> Iterator[Row]:
    """The program from its start to its end: it parses the schema once and the data three times."""
    large = 10 if bench.quick else 50
    small, big = (bench.data("multi", size, 0) for size in (10_000, large * MEGABYTE))
    yield program_row(bench, small, "10 KB", 1.25)
    yield program_row(bench, big, f"{large} MB", 4.2, with_file=False)


def program_row(bench: Bench, data: Path, label: str, target: float, with_file: bool = True) -> Row:
    commands: dict[str, Command] = {
        "program": bench.setup(data),
        "parse": bench.floor(bench.schema(), data),
        "file": [bench.program("file_floor"), data, bench.folder / "floor.h5"],
        "start": [bench.program("orvante_setup"), "--version"],
    }
    runs = {name: each.cpu for name, each in interleaved(commands, bench.seconds).items()}
    floor = runs["parse"] + (runs["file"] if with_file else 0)
    what = "parse + file floor" if with_file else "parse floor"
    stages = bench.stages(bench.schema(), data, 21 if with_file else 5)
    split = (
        f"start {milliseconds(runs['start'])}, schema {milliseconds(stages['parse_schema'])},"
        f" data three times {milliseconds(stages['parse_data'])}, walk {milliseconds(stages['walk'])},"
        f" HDF5 process {milliseconds(runs['file'])}"
    )
    detail = f"{milliseconds(runs['program'], floor)}; {split}"
    return Row(f"program / {what}: {label}", runs["program"] / floor, target, detail)


def schema_text(bench: Bench) -> Iterator[Row]:
    """Parsing the schema against parsing other JSON of its size and depth."""
    like = bench.generated("like.json", "like", "--schema", str(bench.schema()))
    runs = interleaved({"schema": bench.parsing(bench.schema()), "like": bench.parsing(like)}, bench.seconds)
    schema, other = runs["schema"].cpu, runs["like"].cpu
    yield Row("parsing the schema / JSON of its size and depth", schema / other, 1.1, milliseconds(schema, other))


def writing(bench: Bench) -> Iterator[Row]:
    """The layer over HDF5 against bare calls of the library."""
    sizes = {"10 KB": (10_000, 401), "10 MB": (10 * MEGABYTE, 11)}
    if not bench.quick:
        sizes["100 MB"] = (100 * MEGABYTE, 11)
    for label, (size, repetitions) in sizes.items():
        times = output_of([bench.program("write"), str(size), str(repetitions), bench.folder])
        layer, bare = times["layer"], times["bare"]
        yield Row(f"h5io / bare HDF5: text of {label}", layer / bare, 1.1, milliseconds(layer, bare))


def queries(bench: Bench) -> Iterator[Row]:
    """One query of the command-file reader in a large document against the same in a small one."""
    sizes = {"10 KB": 10_000, "1 MB": MEGABYTE}
    large = "10 MB" if bench.quick else "100 MB"
    sizes[large] = int(large.split()[0]) * MEGABYTE
    files = {label: bench.data("multi", size, 0) for label, size in sizes.items()}
    options = ["--benchmark_format=json", "--benchmark_repetitions=5", "--benchmark_enable_random_interleaving=true"]
    report = output_of([bench.program("reader_query"), *options, "--benchmark_min_time=0.1", *files.values()])
    rows = [each for each in report["benchmarks"] if each.get("aggregate_name") == "median"]
    times = {each["run_name"]: each["cpu_time"] for each in rows}
    for query in ("getString", "getString indexed", "hasPaths"):
        small, middle, big = (times[f"{query}:{files[label]}"] for label in ("10 KB", "1 MB", large))
        detail = f"{big:.0f} / {small:.0f} ns, 1 MB {middle:.0f} ns"
        yield Row(f"query {query}: {large} / 10 KB", big / small, 3.0, detail)


def others(bench: Bench) -> Iterator[Row]:
    """Independent validators, those that were built, on the translated schema and sound data."""
    translation = bench.folder / "draft4.json"
    for name, label, target in OTHERS:
        program = bench.program(name)
        if not program.exists():
            print(f"{label}: not built, its headers were not found", flush=True)
            continue
        if not translation.exists():
            translate(bench.schema(), translation)
        for size in ("10 KB", "1 MB"):
            data = bench.data("multi", 10_000 if size == "10 KB" else MEGABYTE, 0)
            yield from other_rows(bench, [program, translation, data], data, f"{label}, {size}", target)


def translate(schema: Path, translation: Path) -> None:
    command = [sys.executable, TRANSLATOR, schema, translation]
    finished = subprocess.run(command, capture_output=True, text=True, check=False)
    if finished.returncode != 0:
        raise MeasureError(f"{TRANSLATOR.name} failed: {finished.stderr.strip()}")


def other_rows(bench: Bench, command: Command, data: Path, label: str, target: float) -> Iterator[Row]:
    """One validator against the walk, both from parsed schema and data on, and against the whole program."""
    if not output_of(command)["valid"]:
        raise MeasureError(f"{label}: finds {data.name} invalid")
    repetitions = 5 if bench.quick else 15
    ours, theirs = [], []
    for _ in range(repetitions):
        ours.append(output_of([bench.program("stages"), bench.schema(), data])["walk"])
        seconds = output_of(command)["seconds"]
        theirs.append(seconds["compile"] + seconds["validate"])  # the walk compiles as it goes
    walk, other = statistics.median(ours), statistics.median(theirs)
    yield Row(f"walk / {label}: parsed data", walk / other, target, milliseconds(walk, other))
    program = bench.setup(data)  # stores a result, which the others do not
    runs = interleaved({"ours": program, "theirs": command}, bench.seconds / 2)
    ratio = runs["ours"].cpu / runs["theirs"].cpu
    yield Row(f"program / {label}: whole process", ratio, 1.0, milliseconds(runs["ours"].cpu, runs["theirs"].cpu))


MEASUREMENTS: dict[str, Callable[[Bench], Iterator[Row]]] = {
    "validations": validations,
    "memory": peak_memory,
    "linearity": linearity,
    "findings": findings,
    "references": references,
    "program": whole_program,
    "schema": schema_text,
    "writing": writing,
    "queries": queries,
    "others": others,
}


def parse_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Measures the programs and prints one table.")
    parser.add_argument("build_folder", type=Path, help="a Release build with the benchmarks")
    parser.add_argument("--quick", action="store_true", help="smaller inputs and fewer repetitions: figures are rough")
    parser.add_argument("--keep", type=Path, metavar="FOLDER", help="keep the inputs there, use those that are there")
    parser.add_argument("--only", choices=MEASUREMENTS, action="append", help="measure only this; may be repeated")
    return parser.parse_args()


def print_table(bench: Bench, chosen: list[str]) -> None:
    print(f"{'what':<72} {'figure':>8} {'target':>7}  {'':<6}  medians")
    for name in chosen:
        for row in MEASUREMENTS[name](bench):
            print(row.text(), flush=True)


def main() -> int:
    arguments = parse_arguments()
    stay_on_one_processor()
    with tempfile.TemporaryDirectory(prefix="orvante_bench_") as temporary:
        folder = arguments.keep or Path(temporary)
        folder.mkdir(parents=True, exist_ok=True)
        bench = Bench(arguments.build_folder, folder, arguments.quick)
        try:
            print_table(bench, arguments.only or list(MEASUREMENTS))
        except (MeasureError, OSError) as failure:
            print(f"run.py: {failure}", file=sys.stderr)
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
