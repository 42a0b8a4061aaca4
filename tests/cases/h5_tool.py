"""HDF5 chores that need h5py, run as a process of its own by the runner of the cases.

    h5_tool.py describe FILE TEXT_FILE   print what FILE holds as JSON; write its model text to TEXT_FILE
    h5_tool.py create FILE               make FILE with a data set that the program would never write
    h5_tool.py hold FILE                 keep FILE open for writing until standard input ends
"""

from __future__ import annotations

import fcntl
import json
import sys
from pathlib import Path
from typing import Any

import h5py

MODEL_PATH = "/.config/model"


def describe_string_type(dataset: h5py.Dataset) -> dict[str, Any]:
    stored_type = dataset.id.get_type()
    if not isinstance(stored_type, h5py.h5t.TypeStringID):
        return {"string": False}
    return {
        "string": True,
        "variable_length": bool(stored_type.is_variable_str()),
        "null_terminated": stored_type.get_strpad() == h5py.h5t.STR_NULLTERM,
        "utf8": stored_type.get_cset() == h5py.h5t.CSET_UTF8,
    }


def describe(path: Path, text_path: Path) -> None:
    found: dict[str, Any] = {"groups": [], "datasets": {}, "attributes": 0}

    def visit(name: str, node: h5py.HLObject) -> None:
        found["attributes"] += len(node.attrs)
        if isinstance(node, h5py.Dataset):
            scalar = node.id.get_space().get_simple_extent_type() == h5py.h5s.SCALAR
            found["datasets"]["/" + name] = {"scalar": scalar, **describe_string_type(node)}
        else:
            found["groups"].append("/" + name)

    with h5py.File(path, "r") as file:
        found["attributes"] += len(file.attrs)
        file.visititems(visit)
        if found["datasets"].get(MODEL_PATH, {}).get("string"):
            text = file[MODEL_PATH][()]
            text_path.write_bytes(text if isinstance(text, bytes) else text.encode())
    print(json.dumps(found))


def create(path: Path) -> None:
    with h5py.File(path, "w") as file:
        file["/RESULTS/water_depth"] = [0.5, 1.5, 2.5]
        file["/.config/model"] = "an earlier model"


def is_locked(path: Path) -> bool:
    with path.open("rb") as other:
        try:
            fcntl.flock(other, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            return True
    return False


def hold(path: Path) -> None:
    with h5py.File(path, "r+"):
        if not is_locked(path):
            sys.exit(f"HDF5 does not lock {path.name} here: nothing would keep the program from opening it")
        print("held", flush=True)
        sys.stdin.read()


def main() -> None:
    chores = {"describe": describe, "create": create, "hold": hold}
    chores[sys.argv[1]](*map(Path, sys.argv[2:]))


if __name__ == "__main__":
    main()
