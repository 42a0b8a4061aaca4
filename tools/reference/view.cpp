#include "tools/reference/view.hpp"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tools/reference/site.hpp"

namespace reference {

namespace {

using List = kainjow::mustache::list;

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? std::string() : std::string(separator)) + text;
    }
    return result;
}

template <typename Items, typename MakeView>
View listOf(const Items& items, const MakeView& makeView) {
    List list;
    for (const auto& item : items) {
        list.push_back(makeView(item));
    }
    View view(list);
    return view;
}

/// Sets a text and, under "has_NAME", whether there is one: an inner list would else show the text of an
/// outer one.
void setText(View& view, const std::string& name, const std::string& text) {
    view.set(name, text);
    view.set("has_" + name, !text.empty());
}

void setList(View& view, const std::string& name, const View& list) {
    view.set("has_" + name, list.is_non_empty_list());
    view.set(name, list);
}

// ---------------------------------------------------------------- values

std::string boundText(const std::optional<Bound>& bound, std::string_view open, std::string_view closed) {
    return bound ? std::string(bound->isOpen ? open : closed) + " " + bound->value.dump() : std::string();
}

/// A member that is optional by itself may still be demanded by an alternative.
std::string presenceText(Presence presence, const std::vector<Condition>& conditions) {
    if (presence == Presence::required) {
        return "required";
    }
    const bool isDemanded = std::any_of(conditions.begin(), conditions.end(), [](const Condition& condition) {
        return condition.need != Condition::Need::allowed;
    });
    return isDemanded ? "conditional" : "optional";
}

std::string plural(const std::string& type) {
    return type.empty() ? "values" : type + "s";
}

// ---------------------------------------------------------------- conditions

std::string needText(Condition::Need need) {
    switch (need) {
        case Condition::Need::required:
            return "required";
        case Condition::Need::oneOfSeveral:
            return "one of several, of which exactly one is given";
        case Condition::Need::allowed:
            return "of use";
    }
    return {};
}

std::string selectorText(const Selector& selector) {
    return selector.first + " " + selector.second;
}

/// The selectors but the last; conditions that share them differ in one value and are told together.
std::string outerText(const std::vector<Selector>& selectors) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i + 1 < selectors.size(); ++i) {
        texts.push_back(selectorText(selectors[i]));
    }
    if (!selectors.empty()) {
        texts.push_back(selectors.back().first);
    }
    return joined(texts, ", ");
}

struct ConditionLine {
    std::string begin;
    std::vector<std::string> values;
};

ConditionLine& lineFor(std::vector<ConditionLine>& lines, const std::string& begin) {
    const auto found = std::find_if(lines.begin(), lines.end(),
                                    [&](const ConditionLine& line) { return line.begin == begin; });
    return found != lines.end() ? *found : lines.emplace_back(ConditionLine{begin, {}});
}

// ---------------------------------------------------------------- groups

View nameView(const std::string& name, const Block& block, const PagePlan& plan) {
    View view;
    view.set("name", name);
    view.set("link", plan.link(memberPath(block.path, name)));
    return view;
}

View groupView(const Group& group, const Block& block, const PagePlan& plan);

View groupsView(const std::vector<Group>& groups, const Block& block, const PagePlan& plan) {
    return listOf(groups, [&](const Group& group) { return groupView(group, block, plan); });
}

View alternativeView(const Alternative& alternative, const Block& block, const PagePlan& plan) {
    const auto names = [&](const std::string& name) { return nameView(name, block, plan); };
    View view;
    setList(view, "selectors", listOf(alternative.selectors, [](const Selector& selector) {
                View item;
                item.set("selector", selector.first);
                item.set("value", selector.second);
                return item;
            }));
    setText(view, "description", alternative.description);
    setList(view, "required", listOf(alternative.required, names));
    setList(view, "optional", listOf(alternative.optional, names));
    setList(view, "groups", groupsView(alternative.groups, block, plan));
    view.set("needs_nothing", alternative.required.empty() && alternative.groups.empty());
    return view;
}

bool isSelected(const Group& group) {
    return std::any_of(group.alternatives.begin(), group.alternatives.end(),
                       [](const Alternative& alternative) { return !alternative.selectors.empty(); });
}

std::string selectorNames(const Group& group) {
    std::vector<std::string> names;
    for (const Alternative& alternative : group.alternatives) {
        for (const Selector& selector : alternative.selectors) {
            if (std::find(names.begin(), names.end(), selector.first) == names.end()) {
                names.push_back(selector.first);
            }
        }
    }
    return joined(names, ", ");
}

View groupView(const Group& group, const Block& block, const PagePlan& plan) {
    View view;
    view.set("is_selected", isSelected(group));
    view.set("selector_names", selectorNames(group));
    view.set("alternatives", listOf(group.alternatives, [&](const Alternative& alternative) {
                 return alternativeView(alternative, block, plan);
             }));
    return view;
}

// ---------------------------------------------------------------- members

void setReference(View& view, const std::optional<Reference>& reference, const PagePlan& plan) {
    view.set("is_reference", reference.has_value());
    if (reference) {
        view.set("reference_member", reference->member);
        view.set("reference_path", reference->block);
        view.set("reference_link", plan.link(reference->block));
    }
}

template <typename Member>
void setPlace(View& view, const Member& member, const PagePlan& plan) {
    view.set("name", member.name);
    view.set("path", member.path.empty() ? "/" : member.path);
    view.set("fragment", fragmentOf(member.path));
    view.set("link", plan.link(member.path));
    view.set("presence", presenceText(member.presence, member.conditions));
    setList(view, "conditions", listOf(conditionTexts(member.conditions), [](const std::string& text) {
                View item;
                item.set("condition", text);
                return item;
            }));
}

View keyView(const Key& key, const PagePlan& plan) {
    View view;
    setPlace(view, key, plan);
    view.set("type", typeText(key.facts));
    setText(view, "unit", key.facts.units.value_or(""));
    setText(view, "default", key.facts.defaultValue ? key.facts.defaultValue->dump() : "");
    setText(view, "range", rangeText(key.facts));
    setList(view, "allowed", listOf(key.facts.allowed, [](const std::string& value) {
                View item;
                item.set("value", value);
                return item;
            }));
    view.set("is_unlimited", rangeText(key.facts).empty() && key.facts.allowed.empty());
    setReference(view, key.facts.reference, plan);
    setText(view, "description", key.description);
    setText(view, "element_description", key.elementDescription);
    return view;
}

View innerBlockView(const Block& block, const PagePlan& plan) {
    View view;
    setPlace(view, block, plan);
    view.set("is_array", block.isArray);
    return view;
}

/// The way from the root to a path, each step a link.
View stepsView(const std::string& path, const PagePlan& plan) {
    List steps;
    for (std::size_t end = path.find('/', 1); !path.empty(); end = path.find('/', end + 1)) {
        const std::string step = path.substr(0, end);
        View view;
        view.set("name", step.substr(step.rfind('/') + 1));
        view.set("link", plan.link(step));
        view.set("is_last", end == std::string::npos);
        steps.push_back(view);
        if (end == std::string::npos) {
            break;
        }
    }
    View list(steps);
    return list;
}

bool hasVariants(const Block& block) {
    return std::any_of(block.groups.begin(), block.groups.end(), isSelected);
}

} // namespace

std::string typeText(const Facts& facts) {
    const std::string element = facts.isFile             ? "file name"
                                : !facts.allowed.empty() ? "choice"
                                : facts.reference        ? "reference"
                                                         : facts.type;
    if (facts.arrayDepth == 0) {
        return element.empty() ? "any value" : element;
    }
    std::string text = "array of ";
    for (int i = 1; i < facts.arrayDepth; ++i) {
        text += "arrays of ";
    }
    return text + plural(element);
}

std::string rangeText(const Facts& facts) {
    std::vector<std::string> texts;
    for (const std::string& text :
         {boundText(facts.lower, ">", "\u2265"), boundText(facts.upper, "<", "\u2264")}) {
        if (!text.empty()) {
            texts.push_back(text);
        }
    }
    return joined(texts, " and ");
}

std::vector<std::string> conditionTexts(const std::vector<Condition>& conditions) {
    std::vector<ConditionLine> lines;
    for (const Condition& condition : conditions) {
        const std::string outer = outerText(condition.selectors);
        std::string begin = needText(condition.need) + (outer.empty() ? "" : " with " + outer);
        ConditionLine& line = lineFor(lines, begin);
        if (!condition.selectors.empty()) {
            line.values.push_back(condition.selectors.back().second);
        }
    }
    std::vector<std::string> texts;
    texts.reserve(lines.size());
    for (const ConditionLine& line : lines) {
        texts.push_back(line.begin + (line.values.empty() ? "" : " " + joined(line.values, ", ")));
    }
    return texts;
}

View blockView(const Block& block, const PagePlan& plan) {
    View view;
    setPlace(view, block, plan);
    view.set("is_root", block.path.empty());
    view.set("is_array", block.isArray);
    view.set("is_opened", block.isOpenedByEditors);
    view.set("steps", stepsView(block.path, plan));
    setText(view, "description", block.description);
    setText(view, "entry_description", block.entryDescription);
    setList(view, "inner_blocks",
            listOf(block.blocks, [&](const Block& inner) { return innerBlockView(inner, plan); }));
    setList(view, "keys", listOf(block.keys, [&](const Key& key) { return keyView(key, plan); }));
    setList(view, "groups", groupsView(block.groups, block, plan));
    view.set("group_heading", hasVariants(block) ? "Variants and choices" : "Choices");
    setList(view, "referred_from", listOf(block.referredFrom, [&](const std::string& path) {
                View item;
                item.set("path", path);
                item.set("link", plan.link(path));
                return item;
            }));
    view.set("snippet", block.snippet);
    return view;
}

View treeView(const Block& block, const PagePlan& plan) {
    View view;
    view.set("name", block.name);
    view.set("path", block.path.empty() ? "/" : block.path);
    view.set("link", plan.link(block.path));
    view.set("is_array", block.isArray);
    setList(view, "children",
            listOf(block.blocks, [&](const Block& inner) { return treeView(inner, plan); }));
    return view;
}

} // namespace reference
