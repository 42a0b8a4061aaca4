"""What breaks the rules of rules/structure.py."""

from __future__ import annotations

import unittest

from small_schema import BOUNDARY, DOMAIN, FRICTION, GEOMETRY, RuleTest, many, string, thing

OUTPUT = f"{DOMAIN}/properties/OUTPUT"
TIMESTEP = f"{DOMAIN}/properties/TIMESTEP"
REGION = f"{FRICTION}/properties/regions/items"


class Dialect(RuleTest):
    def test_unknown_keyword(self) -> None:
        self.assert_breaks(
            "dialect", f"{GEOMETRY}/pattern", "The keyword 'pattern' is not supported.", at=GEOMETRY, pattern="a"
        )

    def test_wrong_parameter(self) -> None:
        place = f"{BOUNDARY}/properties/string_name/requiredIn"
        found = self.broken(place, lambda node: node.pop("itemProperty"))
        self.assertIn(("dialect", place, "The schema is invalid."), found)


class ObjectNodes(RuleTest):
    def test_without_description(self) -> None:
        self.assert_breaks("object_nodes", GEOMETRY, "an object without description", description=None)

    def test_elements_without_description(self) -> None:
        self.assert_breaks("object_nodes", REGION, "an object without description", description=None)

    def test_without_properties(self) -> None:
        found = self.broken(GEOMETRY, lambda node: node.pop("properties"))
        self.assertIn(("object_nodes", GEOMETRY, "an object without properties"), found)

    def test_properties_of_another_type(self) -> None:
        place = f"{OUTPUT}/properties/names"
        self.assert_breaks(
            "object_nodes", place, "properties of what is not of type object",
            properties={"a": string("a")}, optional=["a"],
        )

    def test_array_without_items(self) -> None:
        self.assert_breaks("object_nodes", f"{OUTPUT}/properties/names", "an array without items", items=None)

    def test_items_of_no_array(self) -> None:
        place = f"{TIMESTEP}/properties/max_steps"
        self.assert_breaks("object_nodes", place, "items of no array", items={"type": "integer"})


class MembersListedOnce(RuleTest):
    def test_in_neither(self) -> None:
        message = "'names' is listed neither in required nor in optional"
        self.assert_breaks("members_listed_once", OUTPUT, message, optional=["split_file"])

    def test_in_both(self) -> None:
        message = "'file' is listed 2 times in required and optional"
        self.assert_breaks("members_listed_once", f"{DOMAIN}/properties/INITIAL", message, optional=["file"])

    def test_twice_in_one(self) -> None:
        message = "'names' is listed 2 times in required and optional"
        self.assert_breaks("members_listed_once", OUTPUT, message, optional=["split_file", "names", "names"])

    def test_twice_in_an_alternative(self) -> None:
        message = "'crest' is listed 2 times in required and optional"
        self.assert_breaks("members_listed_once", f"{BOUNDARY}/oneOf/1", message, optional=["crest", "crest"])

    def test_no_property(self) -> None:
        message = "'speed' is listed, but is no property"
        self.assert_breaks("members_listed_once", OUTPUT, message, optional=["split_file", "names", "speed"])

    def test_empty_list(self) -> None:
        self.assert_breaks("members_listed_once", OUTPUT, "required is empty: leave it out", required=[])


class TreeMembers(RuleTest):
    def change_members(self, pointer: str, names: list[str]) -> list[tuple[str, str, str]]:
        """All findings after a block got other optional members, those that it lacks as strings."""

        def change(node: dict[str, object]) -> None:
            old = node["properties"]
            assert isinstance(old, dict)
            node["properties"] = {name: old.get(name, string(name)) for name in names}
            node["optional"] = names

        return self.broken(pointer, change)

    def test_missing(self) -> None:
        found = self.change_members(OUTPUT, ["split_file"])
        self.assertEqual(found, [("tree_members", OUTPUT, "'names' of the tree is missing")])

    def test_not_in_the_tree(self) -> None:
        found = self.change_members(OUTPUT, ["split_file", "speed", "names"])
        self.assertEqual(found, [("tree_members", OUTPUT, "'speed' is not in the tree")])

    def test_another_spelling(self) -> None:
        found = self.change_members(OUTPUT, ["split_file", "Names"])
        self.assertEqual(
            found,
            [
                ("tree_members", OUTPUT, "'names' of the tree is missing"),
                ("tree_members", OUTPUT, "'Names' is not in the tree"),
            ],
        )

    def test_another_order(self) -> None:
        found = self.change_members(OUTPUT, ["names", "split_file"])
        self.assertEqual(found, [("tree_members", OUTPUT, "'names' stands where the tree has 'split_file'")])

    def test_block_before_key(self) -> None:
        def change(node: dict[str, dict[str, object]]) -> None:
            steps = node["properties"].pop("max_steps")
            node["properties"]["max_steps"] = steps

        message = "'CFL' stands where the tree has 'max_steps'"
        self.assertEqual(self.broken(TIMESTEP, change), [("tree_members", TIMESTEP, message)])


class TreeKinds(RuleTest):
    def test_object_instead_of_array(self) -> None:
        place = f"{GEOMETRY}/properties/REGIONDEF"

        def change(node: dict[str, object]) -> None:
            node["REGIONDEF"] = thing("a region", {"name": string("the name of the region")}, "name")

        self.assertIn(
            ("tree_kinds", place, "of type object, in the tree of kind array"),
            self.broken(f"{GEOMETRY}/properties", change),
        )

    def test_array_instead_of_object(self) -> None:
        def change(node: dict[str, object]) -> None:
            node["OUTPUT"] = many(node["OUTPUT"])  # type: ignore[arg-type]

        self.assertIn(
            ("tree_kinds", OUTPUT, "of type array, in the tree of kind object"),
            self.broken(f"{DOMAIN}/properties", change),
        )

    def test_elements_that_are_no_objects(self) -> None:
        place = f"{GEOMETRY}/properties/REGIONDEF"
        found = self.broken(place, lambda node: node.update(items={"type": "string"}))
        message = "elements of type string in a block that is an array of objects"
        self.assertIn(("tree_kinds", f"{place}/items", message), found)

    def test_value_that_is_to_be_an_array(self) -> None:
        place = f"{TIMESTEP}/properties/Q"
        self.assert_breaks(
            "tree_kinds", place, "of type string, in the tree of kind array_value", type="string", items=None
        )


class TreeRequired(RuleTest):
    def test_block_that_should_be(self) -> None:
        message = "'INITIAL' should be required"
        optional = ["INITIAL", "OUTPUT", "TIMESTEP"]
        self.assert_breaks("tree_required", DOMAIN, message, required=None, optional=optional)

    def test_block_that_should_not_be(self) -> None:
        message = "'OUTPUT' should not be required"
        required = ["INITIAL", "OUTPUT"]
        self.assert_breaks("tree_required", DOMAIN, message, required=required, optional=["TIMESTEP"])

    def test_value_in_capitals(self) -> None:
        optional = ["max_steps", "CFL", "Q"]
        self.assert_breaks("tree_required", TIMESTEP, "'CFL' should be required", required=None, optional=optional)


class FreeNames(RuleTest):
    def test_capital(self) -> None:
        message = "not in lower case with underscores"
        members = {"regionName": string("a name with a capital")}
        self.assert_breaks(
            "free_names", f"{TIMESTEP}/properties/max_steps/properties/regionName", message,
            at=f"{TIMESTEP}/properties/max_steps", type="object", properties=members, optional=["regionName"],
        )


class Autoexpand(RuleTest):
    def test_of_a_key(self) -> None:
        place = f"{GEOMETRY}/properties/mesh_file"
        self.assert_breaks("autoexpand", place, "autoexpand of what is no block", autoexpand=True)

    def test_of_the_elements_of_a_key(self) -> None:
        self.assert_breaks("autoexpand", REGION, "autoexpand of what is no block", autoexpand=True)

    def test_false(self) -> None:
        self.assert_breaks("autoexpand", GEOMETRY, "autoexpand is not true: leave it out", autoexpand=False)

    def test_array_block_or_its_elements(self) -> None:
        for place in (BOUNDARY, BOUNDARY.removesuffix("/items")):
            self.assertEqual(self.broken(place, lambda node: node.update(autoexpand=True)), [])


if __name__ == "__main__":
    unittest.main()
