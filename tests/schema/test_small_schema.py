"""The small schema of the tests is without findings, or they would prove nothing."""

from __future__ import annotations

import unittest

from small_schema import RuleTest


class SmallSchema(RuleTest):
    def test_nothing_is_found(self) -> None:
        self.assertEqual(self.broken("", lambda node: None), [])


if __name__ == "__main__":
    unittest.main()
