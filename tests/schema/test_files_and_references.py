"""What breaks the rules of rules/files.py and rules/references.py."""

from __future__ import annotations

import unittest
from typing import Any

from small_schema import BOUNDARY, DOMAIN, FRICTION, GEOMETRY, RuleTest, choice, reference, string

CREST = f"{BOUNDARY}/properties/crest"
DISCHARGE_FILE = f"{BOUNDARY}/properties/discharge_file"
INFLOW, WEIR = f"{BOUNDARY}/oneOf/0", f"{BOUNDARY}/oneOf/1"
STRING_NAME = f"{BOUNDARY}/properties/string_name"
REGION = f"{FRICTION}/properties/regions/items"


class FileKeys(RuleTest):
    def test_without_format(self) -> None:
        message = "the key of a file without format uri"
        for place in (f"{GEOMETRY}/properties/mesh_file", DISCHARGE_FILE):
            self.assert_breaks("file_keys", place, message, format=None)

    def test_no_string(self) -> None:
        place = f"{GEOMETRY}/properties/mesh_file"
        self.assert_breaks("file_keys", place, "the key of a file that is no string", type="boolean")

    def test_format_of_another_key(self) -> None:
        place = f"{GEOMETRY}/properties/REGIONDEF/items/properties/name"
        self.assert_breaks("file_keys", place, "format uri of no file", format="uri")

    def test_format_of_a_switch(self) -> None:
        place = f"{DOMAIN}/properties/OUTPUT/properties/split_file"
        self.assert_breaks("file_keys", place, "format uri of no file", format="uri")

    def test_format_of_a_stored_state(self) -> None:
        place = f"{DOMAIN}/properties/INITIAL/properties/file"
        self.assert_breaks("file_keys", place, "format uri of no file", format="uri")

    def test_format_of_elements(self) -> None:
        place = f"{DOMAIN}/properties/OUTPUT/properties/names/items"
        self.assert_breaks("file_keys", place, "a format of what is no key", format="uri")

    def test_other_names_of_files(self) -> None:
        for name in ("file", "multiFile", "connections_filename"):
            def change(node: dict[str, Any]) -> None:
                node["properties"][name] = string("another file")
                node["optional"] = [name]

            place = f"{GEOMETRY}/properties/REGIONDEF/items"
            found = ("file_keys", f"{place}/properties/{name}", "the key of a file without format uri")
            self.assertIn(found, self.broken(place, change))


class FilePairs(RuleTest):
    def test_no_choice(self) -> None:
        message = "no oneOf of ['discharge'] and ['discharge_file']"
        self.assert_breaks("file_pairs", BOUNDARY, message, at=INFLOW, oneOf=None)

    def test_choice_among_three(self) -> None:
        three = [*choice("discharge"), {"required": ["gate"]}]
        message = "no oneOf of ['discharge'] and ['discharge_file']"
        self.assert_breaks("file_pairs", BOUNDARY, message, at=INFLOW, oneOf=three)

    def test_choice_that_requires_more(self) -> None:
        more = [{"required": ["discharge"]}, {"required": ["discharge_file", "gate"]}]
        message = "no oneOf of ['discharge'] and ['discharge_file']"
        self.assert_breaks("file_pairs", BOUNDARY, message, at=INFLOW, oneOf=more)

    def test_choice_that_may_use_more(self) -> None:
        more = [{"required": ["discharge"], "optional": ["gate"]}, {"required": ["discharge_file"]}]
        self.assertEqual(self.broken(INFLOW, lambda node: node.update(oneOf=more)), [])

    def test_choice_of_the_object(self) -> None:
        def change(node: dict[str, Any]) -> None:
            group = node.pop("oneOf")
            del group[0]["oneOf"]
            node["allOf"] = [{"oneOf": group}, {"oneOf": choice("discharge")}]

        self.assertEqual(self.broken(BOUNDARY, change), [])

    def test_required_by_the_object(self) -> None:
        def change(node: dict[str, Any]) -> None:
            node["required"].append("discharge")
            node["optional"].remove("discharge")

        message = "'discharge' of a pair is not in optional"
        self.assertEqual(self.broken(BOUNDARY, change), [("file_pairs", BOUNDARY, message)])

    def test_another_variant_without_the_choice(self) -> None:
        message = "uses 'discharge' or 'discharge_file' without a oneOf of the two"
        self.assert_breaks("file_pairs", WEIR, message, optional=["crest", "discharge_file"])


class References(RuleTest):
    def test_missing(self) -> None:
        target = "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/STRINGDEF"
        self.assert_breaks("references", STRING_NAME, f"no requiredIn to {target}", requiredIn=None)

    def test_missing_in_a_list_of_regions(self) -> None:
        target = "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/REGIONDEF"
        place = f"{REGION}/properties/region_name"
        self.assert_breaks("references", place, f"no requiredIn to {target}", requiredIn=None)

    def test_to_other_definitions(self) -> None:
        target = "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/STRINGDEF"
        message = f"requiredIn does not refer to the names in {target}"
        self.assert_breaks("references", STRING_NAME, message, **reference("REGIONDEF"))

    def test_of_another_key(self) -> None:
        place = f"{GEOMETRY}/properties/mesh_file"
        message = "requiredIn of what refers to no definition"
        self.assert_breaks("references", place, message, **reference("STRINGDEF"))

    def test_in_the_other_model(self) -> None:
        place = f"{DOMAIN}/properties/INITIAL/properties/file"
        message = "requiredIn of what refers to no definition"
        self.assert_breaks("references", place, message, **reference("STRINGDEF"))

    def test_regions_without_name(self) -> None:
        def change(node: dict[str, Any]) -> None:
            del node["properties"]["region_name"]
            node["required"].remove("region_name")

        message = "elements without region_name"
        self.assertEqual(self.broken(REGION, change), [("references_in_regions", REGION, message)])

    def test_to_a_list_that_lacks_the_member(self) -> None:
        place = f"{GEOMETRY}/properties/STRINGDEF/items"

        def change(node: dict[str, Any]) -> None:
            del node["properties"]["name"], node["required"]

        message = "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY/STRINGDEF is no array of items with the member compared"
        self.assertIn(("references_lead_somewhere", STRING_NAME, message), self.broken(place, change))

    def test_to_no_list(self) -> None:
        message = "/SETUP/ORVAHPC/ORVAPLANE_2D/GEOMETRY is no array of items with the member compared"
        found = self.broken(STRING_NAME, lambda node: node["requiredIn"].update({"$array_ref": message.split()[0]}))
        self.assertIn(("references_lead_somewhere", STRING_NAME, message), found)


if __name__ == "__main__":
    unittest.main()
