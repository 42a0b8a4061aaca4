#pragma once

#include <kainjow/mustache.hpp>

#include "tools/reference/manual_model.hpp"
#include "tools/reference/pages.hpp"

namespace reference {

using View = kainjow::mustache::data;

/// What the template of a page fills in for one of its blocks.
[[nodiscard]] View blockView(const Block& block, const PagePlan& plan);

/// What the template of the block tree fills in for a block and those below it.
[[nodiscard]] View treeView(const Block& block, const PagePlan& plan);

/// "number", "array of numbers", "file name" and so on, in words.
[[nodiscard]] std::string typeText(const Facts& facts);

/// "> 0 and ≤ 2" in UTF-8; empty where there are no limits.
[[nodiscard]] std::string rangeText(const Facts& facts);

/// "required with type weir" and so on; conditions of a kind are put together.
[[nodiscard]] std::vector<std::string> conditionTexts(const std::vector<Condition>& conditions);

} // namespace reference
