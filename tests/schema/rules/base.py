"""What all rules work on, and what they give."""

from __future__ import annotations

from dataclasses import dataclass
from functools import cached_property
from typing import Any, Callable, Iterator

from block_tree import Block
from schema_nodes import Node, Role, top, walk


@dataclass(frozen=True)
class Finding:
    """Something that breaks a rule, and where in the schema."""

    pointer: str
    message: str


@dataclass(frozen=True)
class Share:
    """A text that describes the block at a path of the data; the whole schema where the path is empty."""

    text: bytes
    schema: dict[str, Any]
    at: tuple[str, ...]
    tree: Block

    @cached_property
    def nodes(self) -> list[Node]:
        return list(walk(top(self.schema, self.at)))

    @property
    def is_whole(self) -> bool:
        return not self.at

    def block_of(self, node: Node) -> Block | None:
        """The block of the tree that a node describes; also for the elements of a block that is an array."""
        return self.tree.find(node.names) if node.is_whole else None

    def members_block(self, node: Node) -> Block | None:
        """The block whose members a node lists: that of an object, or of the elements of an array."""
        block = self.block_of(node)
        if block is None or not block.holds_members:
            return None
        is_elements = node.role is Role.ITEMS
        return block if is_elements == (block.kind == "array") else None

    def is_value_key(self, node: Node) -> bool:
        """Whether a node describes a member that is no block: a key, or a value in capitals."""
        return node.role is Role.PROPERTY and not self.describes_block(node)

    def describes_block(self, node: Node) -> bool:
        """Whether a node describes a block, or the elements of one that is an array."""
        block = self.block_of(node)
        return block is not None and block.holds_members


Rule = Callable[[Share], Iterator[Finding]]
