#pragma once

#include <string>
#include <string_view>

namespace reference {

/// What a description is written for: viewers that show characters as they are, or viewers that render
/// Markdown.
enum class TextForm { plain, markdown };

/// The text of a description in HTML: entities decoded, tags gone, paragraphs parted by an empty line, list
/// elements as lines that begin with "- " (or their number), sub- and superscripts in Unicode where it has
/// them and else as x_St and x^(1/2). In Markdown emphasis and code are kept, and all else that Markdown
/// would take for markup is escaped. Tags and entities that are not known lose their meaning, not their text.
std::string descriptionText(std::string_view html, TextForm form);

} // namespace reference
