"""What breaks the rules of rules/values.py."""

from __future__ import annotations

import unittest

from small_schema import BOUNDARY, DOMAIN, FRICTION, RuleTest, listed, text
from rules.values import visible_text

CREST = f"{BOUNDARY}/properties/crest"
LAW = f"{FRICTION}/properties/type"
NAMES = f"{DOMAIN}/properties/OUTPUT/properties/names"
SWITCH = f"{DOMAIN}/properties/OUTPUT/properties/split_file"
STEPS = f"{DOMAIN}/properties/TIMESTEP/properties/max_steps"
CURVE = f"{DOMAIN}/properties/TIMESTEP/properties/Q"


class VisibleText(unittest.TestCase):
    def test_markup_within_words_goes(self) -> None:
        self.assertEqual(visible_text("m<sup>3</sup>/s &le; 1"), "m3/s \u2264 1")

    def test_items_stay_apart(self) -> None:
        self.assertEqual(visible_text("<ul><li>joint</li><li>no: apart</li></ul>"), "joint no: apart")


class KeyBasics(RuleTest):
    def test_without_description(self) -> None:
        self.assert_breaks("key_basics", STEPS, "a key without description", description=None)

    def test_without_type(self) -> None:
        self.assert_breaks("key_basics", STEPS, "a key without type", type=None)

    def test_elements_without_type(self) -> None:
        found = self.broken(f"{CURVE}/items", lambda node: node.clear())
        self.assertEqual(found, [("key_basics", f"{CURVE}/items", "elements without type")])

    def test_description_of_plain_elements(self) -> None:
        message = "a description of elements that are plain values: say it of the array"
        self.assert_breaks("key_basics", f"{CURVE}/items", message, description=text("an element"))


class Units(RuleTest):
    def test_number_without(self) -> None:
        self.assert_breaks("units", CREST, "a number without units", units=None)

    def test_elements_without(self) -> None:
        self.assert_breaks("units", f"{CURVE}/items", "a number without units", units=None)

    def test_not_in_brackets(self) -> None:
        self.assert_breaks("units", CREST, "units 'm' are not in brackets", units="m")

    def test_several(self) -> None:
        self.assertEqual(self.broken(CREST, lambda node: node.update(units="[m], [s/m<sup>1/3</sup>] or [-]")), [])

    def test_integer_with(self) -> None:
        self.assertEqual(self.broken(STEPS, lambda node: node.update(units="[s]")), [])

    def test_of_no_number(self) -> None:
        self.assert_breaks("units", LAW, "units of what is no number", units="[m]")

    def test_of_an_array(self) -> None:
        self.assert_breaks("units", CURVE, "units of what is no number", units="[m]")


class Limits(RuleTest):
    def test_of_no_number(self) -> None:
        self.assert_breaks("limits", LAW, "minimum of what is no number", minimum=0)

    def test_exclusive_without_limit(self) -> None:
        self.assert_breaks("limits", STEPS, "exclusiveMaximum without maximum", exclusiveMaximum=True)

    def test_exclusive_false(self) -> None:
        self.assert_breaks("limits", CREST, "exclusiveMinimum is false: leave it out", exclusiveMinimum=False)

    def test_no_room(self) -> None:
        self.assert_breaks("limits", STEPS, "no room between minimum and maximum", minimum=2, maximum=2)


class Enumerations(RuleTest):
    def test_of_no_string(self) -> None:
        place = f"{NAMES}/items"
        self.assert_breaks("enumerations", place, "an enumeration that is not of type string", type="boolean")

    def test_empty(self) -> None:
        self.assert_breaks("enumerations", f"{NAMES}/items", "an empty enumeration", enum=[])

    def test_value_twice(self) -> None:
        message = "'h' stands twice in the enumeration"
        self.assert_breaks("enumerations", f"{NAMES}/items", message, enum=["h", "v", "h"])

    def test_capital(self) -> None:
        description = listed("the law", "Chezy", "chezy")
        message = "'Chezy' is not in lower case with underscores"
        self.assert_breaks("enumerations", LAW, message, enum=["Chezy", "chezy"], description=description)


class EnumerationsExplained(RuleTest):
    def test_value_left_out(self) -> None:
        message = "'chezy' is not explained in a list of the description"
        self.assert_breaks("enumerations_explained", LAW, message, description=listed("the law", "strickler"))

    def test_value_outside_of_the_list(self) -> None:
        description = text("chezy") + listed("the law", "strickler")
        message = "'chezy' is not explained in a list of the description"
        self.assert_breaks("enumerations_explained", LAW, message, description=description)

    def test_value_inside_of_a_longer_word(self) -> None:
        description = listed("the law", "strickler", "chezy_rough")
        message = "'chezy' is not explained in a list of the description"
        self.assert_breaks("enumerations_explained", LAW, message, description=description)

    def test_elements_are_explained_by_their_array(self) -> None:
        message = "'v' is not explained in a list of the description"
        self.assert_breaks(
            "enumerations_explained", f"{NAMES}/items", message, at=NAMES, description=listed("the values", "h")
        )

    def test_switch_needs_no_list_but_both_values(self) -> None:
        message = "'no' is not explained in the description"
        self.assert_breaks("enumerations_explained", SWITCH, message, description=text("one file for each, yes,"))

    def test_table_counts_as_list(self) -> None:
        table = "<table><tr><td><code>strickler</code></td></tr><tr><td>chezy</td></tr></table>"
        self.assertEqual(self.broken(LAW, lambda node: node.update(description=text("the law") + table)), [])

    def test_list_inside_of_a_list(self) -> None:
        inner = "<ul><li>strickler<ul><li>rough</li><li>chezy</li></ul></li></ul>"
        self.assertEqual(self.broken(LAW, lambda node: node.update(description=text("the law") + inner)), [])


class Defaults(RuleTest):
    def test_not_in_the_enumeration(self) -> None:
        self.assert_breaks("defaults_valid", LAW, "the default 'manning' is not in the enumeration", default="manning")

    def test_of_another_type(self) -> None:
        for default in (1.5, True, "1"):
            message = f"the default {default!r} is not of type integer"
            self.assert_breaks("defaults_valid", STEPS, message, default=default)

    def test_integer_is_a_number(self) -> None:
        self.assertEqual(self.broken(CREST, lambda node: node.update(default=1)), [])

    def test_below_the_minimum(self) -> None:
        self.assert_breaks("defaults_valid", CREST, "the default -0.1 is below the minimum", default=-0.1)

    def test_above_the_maximum(self) -> None:
        self.assert_breaks("defaults_valid", CREST, "the default 1.1 is above the maximum", default=1.1)

    def test_at_an_exclusive_limit(self) -> None:
        message = "the default 0 is below the minimum"
        self.assert_breaks("defaults_valid", CREST, message, default=0, exclusiveMinimum=True)
        message = "the default 1 is above the maximum"
        self.assert_breaks("defaults_valid", CREST, message, default=1, exclusiveMaximum=True)

    def test_at_an_inclusive_limit(self) -> None:
        for limit in (0, 1):
            self.assertEqual(self.broken(CREST, lambda node: node.update(default=limit)), [])

    def test_required_by_its_object(self) -> None:
        message = "'type' has a default and is required"
        self.assert_breaks("defaults_not_required", FRICTION, message, required=["type"], optional=["regions"])

    def test_required_by_an_alternative(self) -> None:
        message = "'crest' has a default and is required"
        place = f"{BOUNDARY}/oneOf/1"
        required = ["type", "gate", "crest"]
        self.assert_breaks("defaults_not_required", place, message, required=required, optional=None)


class VisibleText(unittest.TestCase):
    def test_markup_is_gone(self) -> None:
        self.assertEqual(visible_text("<p>a &lt; <i>b</i><sub>c</sub> &amp; &tau;</p>"), "a < bc & \u03c4")


if __name__ == "__main__":
    unittest.main()
