"""What breaks the rules of rules/descriptions.py."""

from __future__ import annotations

import unittest

from rules.descriptions import markup_faults
from small_schema import BOUNDARY, DOMAIN, GEOMETRY, RuleTest, string, text

STEPS = f"{DOMAIN}/properties/TIMESTEP/properties/max_steps"
MESH = f"{GEOMETRY}/properties/mesh_file"


class Descriptions(RuleTest):
    def test_not_ascii(self) -> None:
        message = "description with a character that is not printable ASCII"
        self.assert_breaks("ascii_only", STEPS, message, description=text("the \u03c4 of the bed"))

    def test_line_end(self) -> None:
        message = "description with a character that is not printable ASCII"
        self.assert_breaks("ascii_only", STEPS, message, description=text("the\nbed"))

    def test_units_not_ascii(self) -> None:
        message = "units with a character that is not printable ASCII"
        self.assert_breaks("ascii_only", f"{BOUNDARY}/properties/crest", message, units="[\u00b0]")

    def test_markup(self) -> None:
        message = "description: <p> is never closed"
        self.assert_breaks("markup", STEPS, message, description=text("steps").removesuffix("</p>"))

    def test_markup_of_units(self) -> None:
        message = "units: <sup> is never closed"
        self.assert_breaks("markup", f"{BOUNDARY}/properties/crest", message, units="[m<sup>2]")

    def test_too_short(self) -> None:
        short = f"<p>{'a' * 28} &tau; {'b' * 28}</p>"
        self.assert_breaks("long_enough", STEPS, "a description of 59 characters", description=short)
        self.assertEqual(self.broken(STEPS, lambda node: node.update(description=short + "<br>.")), [])

    def test_repeated_for_another_key(self) -> None:
        message = f"the description is that of {MESH}"
        again = text("the file of the mesh").replace("<p>", "<p><b>").replace("</p>", "</b></p>")
        self.assert_breaks("not_repeated", STEPS, message, description=again)

    def test_repeated_for_another_variant(self) -> None:
        message = f"the description is that of {BOUNDARY}/oneOf/0"
        self.assert_breaks("not_repeated", f"{BOUNDARY}/oneOf/1", message, description=text("variant inflow"))

    def test_repeated_for_a_key_of_the_same_name(self) -> None:
        place = f"{GEOMETRY}/properties/REGIONDEF/items/properties/name"
        found = self.broken(place, lambda node: node.update(string("the name of the string")))
        self.assertEqual(found, [])


class Markup(unittest.TestCase):
    GOOD = (
        "",
        "plain > text; &tau; &#964; &#x3c4; &nbsp;",
        "<p>a<br>b<br/>c</p><ul><li>d <sub>e</sub></li><li>f<ol><li>g</li></ol></li></ul>",
        '<table><tr><th colspan="2">a</th></tr><tr><td>b</td><td><a href="#c">d</a></td></tr></table>',
    )
    BAD = (
        ("a < b", "a bare <: write &lt;"),
        ("a <3", "a bare <: write &lt;"),
        ("a & b", "a bare &: write &amp;"),
        ("a &tau b", "a bare &: write &amp;"),
        ("&taugh;", "&taugh; is no entity"),
        ("<div>a</div>", "<div> is not one of the tags in use"),
        ("<P>a</P>", "<P> is not one of the tags in use"),
        ("<p>a", "<p> is never closed"),
        ("a</p>", "</p> closes nothing"),
        ("<b><i>a</b></i>", "</b> closes nothing"),
        ("a</br>", "</br> closes nothing"),
        ("<p/>", "<p/> closes itself"),
        ("<li>a</li>", "<li> outside of its list or table"),
        ("<ul><b><li>a</li></b></ul>", "<li> outside of its list or table"),
        ("<table><td>a</td></table>", "<td> outside of its list or table"),
        ("<p><p>a</p></p>", "<p> inside of <p>"),
        ("<p>a<ul><li>b</li></ul></p>", "<ul> inside of <p>"),
        ('<p class="x">a</p>', "<p> with class"),
    )

    def test_without_fault(self) -> None:
        for markup in self.GOOD:
            with self.subTest(markup):
                self.assertEqual(list(markup_faults(markup)), [])

    def test_faults(self) -> None:
        for markup, fault in self.BAD:
            with self.subTest(markup):
                self.assertEqual(next(markup_faults(markup)), fault)


if __name__ == "__main__":
    unittest.main()
