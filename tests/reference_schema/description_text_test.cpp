#include "tools/reference/description_text.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using reference::descriptionText;
using reference::TextForm;

struct Case {
    const char* name;
    const char* html;
    const char* plain;
    const char* markdown;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.name;
}

class DescriptionText : public testing::TestWithParam<Case> {};

TEST_P(DescriptionText, IsWrittenForPlainViewers) {
    EXPECT_EQ(descriptionText(GetParam().html, TextForm::plain), GetParam().plain);
}

TEST_P(DescriptionText, IsWrittenForMarkdownViewers) {
    EXPECT_EQ(descriptionText(GetParam().html, TextForm::markdown), GetParam().markdown);
}

const Case cases[] = {
    {"Nothing", "", "", ""},
    {"Paragraphs", "<p>First.</p><p>Second.</p>", "First.\n\nSecond.", "First.\n\nSecond."},
    {"Emphasis", "<p><i>K</i> is <b>large</b>.</p>", "K is large.", "*K* is **large**."},
    {"NestedEmphasis", "<i>a <b>b</b></i>", "a b", "a **b**"},
    {"EmphasisOfNothing", "a<i></i>b", "ab", "ab"},
    {"EmphasisOfPunctuation", "<i>(x)</i>", "(x)", "(x)"},
    {"Code", "<p>See <code>a_b*c</code>.</p>", "See a_b*c.", "See `a_b*c`."},
    {"CodeWithBacktick", "<code>a`b</code>", "a`b", "``a`b``"},
    {"MarksOfMarkdown", "a_b *c* [d] 1 < 2", "a_b *c* [d] 1 < 2", R"(a\_b \*c\* \[d\] 1 \< 2)"},
    {"SpaceCollapses", "<p>  a \n b  </p>", "a b", "a b"},
    {"SpaceAroundElements", "a <i>b</i> c <i> d</i>", "a b c d", "a *b* c *d*"},
    {"Entities", "&alpha;&nbsp;&lt;&#946;&#x3B3;&le;", "α\u00A0<βγ≤", "α\u00A0\\<βγ≤"},
    {"UnknownEntities", "&nosuch; &; &#0; &#xD800; R&D", "&nosuch; &; &#0; &#xD800; R&D",
     R"(\&nosuch; \&; \&#0; \&#xD800; R\&D)"},
    {"Superscripts", "m<sup>2</sup> s<sup>-1</sup> s<sup>&minus;2</sup>", "m² s⁻¹ s⁻²", "m² s⁻¹ s⁻²"},
    {"SuperscriptFractions", "h<sup>5/3</sup>", "h^(5/3)", "h^(5/3)"},
    {"SuperscriptLetters", "x<sup>b</sup> x<sup>b&minus;1</sup>", "x^b x^(b\u22121)", "x^b x^(b\u22121)"},
    {"Subscripts", "<i>k</i><sub>St</sub> h<sub>0</sub> q<sub>x,y</sub>", "k_St h₀ q_(x,y)",
     "*k*\\_St h₀ q\\_(x,y)"},
    {"SubscriptWithin", "<i>h<sub>c</sub></i>", "h_c", "*h\\_c*"},
    {"List", "<p>Kinds.</p><ul><li>a: one</li><li>b: <i>two</i></li></ul><p>End.</p>",
     "Kinds.\n\n- a: one\n- b: two\n\nEnd.", "Kinds.\n\n- a: one\n- b: *two*\n\nEnd."},
    {"NumberedList", "<ol><li>a</li><li>b</li></ol>", "1. a\n2. b", "1. a\n2. b"},
    {"NestedList", "<ul><li>a<ul><li>b</li></ul></li><li>c</li></ul>", "- a\n   - b\n- c",
     "- a\n   - b\n- c"},
    {"ParagraphInList", "<ul><li><p>a</p></li><li>b</li></ul>", "- a\n- b", "- a\n- b"},
    {"LineBreak", "a<br>b<br/>c", "a\nb\nc", "a\\\nb\\\nc"},
    {"Link", R"(<a href="https://x/?a&amp;b">page</a>)", "page", "[page](<https://x/?a&b>)"},
    {"LinesThatLookLikeMarkup", "<p># a</p><p>- b</p><p>1. c</p>", "# a\n\n- b\n\n1. c",
     "\\# a\n\n\\- b\n\n1\\. c"},
    {"UnknownTags", R"(<span class="x">a</span>)", "a", "a"},
    {"OpenTags", "<p>a <i>b", "a b", "a *b*"},
    {"LoneBracket", "a <", "a <", "a \\<"},
};

INSTANTIATE_TEST_SUITE_P(Cases, DescriptionText, testing::ValuesIn(cases),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
