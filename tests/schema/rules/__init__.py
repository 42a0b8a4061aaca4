"""Rules for the text of the command-file schema: each is a function from a share of the schema to its findings."""

from __future__ import annotations

import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "tools"))
