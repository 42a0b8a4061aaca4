#include "jsv/keywords/group_choice.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "jsv/keywords/values.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

/// The first name of a list that another list lacks; null if it lacks none.
const std::string* firstBeyond(const NameList& names, const NameList& others) {
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const Name& name) { return !contains(others, name); });
    return found == names.end() ? nullptr : found->text;
}

/// Gathers the names of alternatives and their nested groups from the schema itself. These have all been
/// applied to an object before, so that there is no fault in what is read here.
class NameGathering {
public:
    NameGathering(NameIndex& names, NameRoles& gathered) : index(names), roles(gathered) {}

    void addAlternative(const Json& alternative) {
        for (const auto& [keyword, parameter] : alternative.get_ref<const Json::object_t&>()) {
            if (keyword == "required" || keyword == "optional") {
                addList(parameter);
            } else if (keyword == "properties") {
                addMembers(parameter);
            } else if (keyword == "oneOf") {
                addGroup(parameter);
            } else if (keyword == "allOf") {
                addGroups(parameter);
            }
        }
    }

private:
    void add(const std::string& text) { roleOf(index.add(text), roles); }
    void addList(const Json& list) {
        for (const Json& text : list) {
            add(text.get_ref<const std::string&>());
        }
    }
    void addMembers(const Json& properties) {
        for (const auto& property : properties.get_ref<const Json::object_t&>()) {
            add(property.first);
        }
    }
    void addGroup(const Json& alternatives) {
        for (const Json& alternative : alternatives) {
            addAlternative(alternative);
        }
    }
    void addGroups(const Json& groups) {
        for (const Json& group : groups) {
            addGroup(group.front());
        }
    }

    NameIndex& index;
    NameRoles& roles;
};

} // namespace

bool contains(const NameList& names, const Name& name) {
    return std::any_of(names.begin(), names.end(), [&](const Name& each) { return each.id == name.id; });
}

void GroupChoice::run() {
    if (group.speaksOfMembersOnly && !site.datum.is_object()) {
        return;
    }
    if (site.walk.isThorough()) {
        applyAll();
        return;
    }
    if (!site.walk.isTrial()) {
        surfaceFaults(); // a group that is tried lies inside one that has done so
    }
    const Mark before = site.walk.mark();
    std::size_t fits = 0;
    std::size_t fitting = 0;
    forEachCandidate([&](std::size_t index) {
        if (fits < 2 && site.walk.fits(*group.alternatives[index].schema, site)) {
            ++fits;
            fitting = index;
        }
    });
    if (fits == 1) {
        takeFitting(fitting, before);
        return;
    }
    site.walk.forgetSince(before);
    if (site.walk.isTrial()) {
        site.walk.fail();
    } else if (fits == 0) {
        reportNoneFits();
    } else {
        reportSeveralFit();
    }
}

/// Lets a fault surface that lies anywhere in the alternatives where the datum leads to. Where there is none
/// to surface, the choice may leave out what cannot change it.
void GroupChoice::surfaceFaults() {
    if (!group.faultless) {
        const auto isClean = [&](const Alternative& alternative) {
            return isFaultless(*alternative.schema, site.walk.documents());
        };
        group.faultless = std::all_of(group.alternatives.begin(), group.alternatives.end(), isClean);
        site.members.refresh();
    }
    if (!*group.faultless) {
        for (const Alternative& alternative : group.alternatives) {
            site.walk.surfaceFaults(*alternative.schema, site);
        }
    }
}

/// For nothing but faults: no choice is made.
void GroupChoice::applyAll() {
    for (const Alternative& alternative : group.alternatives) {
        site.walk.applyAlternative(*alternative.schema, site);
    }
}

/// Alternatives that are not candidates cannot fit: a selector of theirs is missing or another.
template <typename Action>
void GroupChoice::forEachCandidate(Action action) const {
    const bool selects = !group.selectors.empty() && site.datum.is_object();
    const Json* const first = selects ? site.members.find(group.selectors.front()) : nullptr;
    for (std::size_t index = 0; index < group.alternatives.size(); ++index) {
        const Alternative& alternative = group.alternatives[index];
        // Most are told apart at one look.
        if (first != nullptr && !isText(*first, *alternative.selectorValues.front())) {
            continue;
        }
        if (isCandidate(alternative)) {
            action(index);
        }
    }
}

/// Whether all selectors of the data are those of the alternative; one that the data lacks need not be
/// required.
bool GroupChoice::isCandidate(const Alternative& alternative) const {
    if (!site.datum.is_object()) {
        return true;
    }
    const NameList& names = group.selectors;
    for (std::size_t selector = 0; selector < names.size(); ++selector) {
        const Json* const member = site.members.find(names[selector]);
        const bool equal = member == nullptr ? !contains(alternative.required, names[selector])
                                             : isText(*member, *alternative.selectorValues[selector]);
        if (!equal) {
            return false;
        }
    }
    return true;
}

/// The trial of the alternative has left its warnings and names; traces are left by applying it once more.
void GroupChoice::takeFitting(std::size_t index, const Mark& before) {
    if (site.walk.keepsTraces() && !site.walk.isTrial()) {
        site.walk.forgetSince(before);
        site.walk.applyAlternative(*group.alternatives[index].schema, site);
        traceChoice(index);
    }
    site.walk.handOnHeld();
}

void GroupChoice::reportSeveralFit() {
    chooseNone();
    const Mark before = site.walk.mark();
    Indices fits;
    forEachCandidate([&](std::size_t index) {
        if (site.walk.fits(*group.alternatives[index].schema, site)) {
            fits.push_back(index);
        }
    });
    site.walk.forgetSince(before);
    for (std::size_t i = 0; i < fits.size() && site.datum.is_object(); ++i) {
        for (std::size_t j = i + 1; j < fits.size(); ++j) {
            const NameList& one = group.alternatives[fits[i]].required;
            const NameList& other = group.alternatives[fits[j]].required;
            const std::string* const first = firstBeyond(one, other);
            const std::string* const second = firstBeyond(other, one);
            if (first != nullptr && second != nullptr) {
                site.walk.report(site.place, [&] { return ExclusiveAlternatives{*first, *second}; });
                return;
            }
        }
    }
    reportInvalid();
}

void GroupChoice::reportNoneFits() {
    Outcomes outcomes;
    forEachCandidate([&](std::size_t index) { outcomes.push_back(outcomeOf(index)); });
    if (outcomes.empty() && !group.alternatives.empty()) {
        chooseNone();
        reportNoCandidate();
        return;
    }
    settle(std::move(outcomes));
}

/// The data's selectors are those of no alternative.
void GroupChoice::reportNoCandidate() {
    bool reported = false;
    for (const Name& selector : group.selectors) {
        const bool isRequired =
            std::any_of(group.alternatives.begin(), group.alternatives.end(),
                        [&](const Alternative& each) { return contains(each.required, selector); });
        if (isRequired && !site.members.has(selector)) {
            site.walk.report(Place(site.place, *selector.text), [] { return MissingRequired(); });
            reported = true;
        }
    }
    if (!reported) {
        reportInvalid();
    }
}

GroupChoice::Outcome GroupChoice::outcomeOf(std::size_t index) const {
    Outcome outcome{index, std::make_unique<AnnotationCollection>(site.walk.keepsTraces()), {}, {}, 0};
    Walk walk = site.walk.into(*outcome.findings);
    walk.applyAlternative(*group.alternatives[index].schema, {walk, site.datum, site.place, site.members});
    outcome.names = walk.accountedNames();
    return outcome;
}

void GroupChoice::settle(Outcomes outcomes) {
    if (outcomes.size() == 1) {
        choose(outcomes.front());
        return;
    }
    while (!outcomes.empty()) {
        outcomes = narrow(std::move(outcomes));
    }
    if (group.alternatives.empty()) {
        site.walk.report(site.place, [] { return MissingAlternative(); });
    }
}

GroupChoice::Outcomes GroupChoice::narrow(Outcomes outcomes) {
    const bool errorReported = reportCommonFindings(outcomes);
    if (!site.datum.is_object()) {
        chooseNone();
        if (!errorReported) {
            reportInvalid();
        }
        return {};
    }
    findOwnNames(outcomes);
    const auto byPresent = [](const Outcome& a, const Outcome& b) { return a.present < b.present; };
    const std::size_t most = std::max_element(outcomes.begin(), outcomes.end(), byPresent)->present;
    if (most == 0) {
        chooseNone();
        reportNonePresent(outcomes, errorReported);
        return {};
    }
    Outcomes leaders;
    const auto leads = [&](const Outcome& each) { return each.present == most; };
    if (std::all_of(outcomes.begin(), outcomes.end(), leads)) {
        chooseNone();
        reportAllPresent(outcomes);
        return {};
    }
    std::copy_if(std::make_move_iterator(outcomes.begin()), std::make_move_iterator(outcomes.end()),
                 std::back_inserter(leaders), leads);
    if (leaders.size() == 1) {
        choose(leaders.front());
        return {};
    }
    return leaders;
}

/// Reports the findings that every candidate gives; tells whether there is an error among them.
bool GroupChoice::reportCommonFindings(const Outcomes& outcomes) {
    bool errorReported = false;
    const auto& first = *outcomes.front().findings;
    for (const Annotation& annotation : first) {
        const bool isCommon = std::all_of(outcomes.begin() + 1, outcomes.end(), [&](const Outcome& other) {
            return std::binary_search(other.findings->begin(), other.findings->end(), annotation);
        });
        if (isCommon) {
            site.walk.takeOver(annotation);
            errorReported = errorReported || severityOf(annotation.issue) == Severity::Error;
        }
    }
    return errorReported;
}

void GroupChoice::findOwnNames(Outcomes& outcomes) const {
    const auto allRequire = [&](const Name& name) {
        return std::all_of(outcomes.begin(), outcomes.end(), [&](const Outcome& each) {
            return contains(group.alternatives[each.alternative].required, name);
        });
    };
    for (Outcome& outcome : outcomes) {
        outcome.own.clear();
        outcome.present = 0;
        for (const Name& name : group.alternatives[outcome.alternative].required) {
            if (!allRequire(name)) {
                outcome.own.push_back(name);
                outcome.present += site.members.has(name) ? 1U : 0U;
            }
        }
    }
}

void GroupChoice::reportNonePresent(const Outcomes& outcomes, bool errorReported) {
    NameList names;
    for (const Outcome& outcome : outcomes) {
        if (outcome.own.empty()) {
            if (!errorReported) {
                reportInvalid();
            }
            return;
        }
        if (!contains(names, outcome.own.front())) {
            names.push_back(outcome.own.front());
        }
    }
    MissingAlternative missing;
    std::transform(names.begin(), names.end(), std::back_inserter(missing.names),
                   [](const Name& name) { return *name.text; });
    site.walk.report(site.place, [&] { return missing; });
}

void GroupChoice::reportAllPresent(const Outcomes& outcomes) {
    const auto isPresent = [&](const Name& name) { return site.members.has(name); };
    const NameList& firstOwn = outcomes.front().own;
    const NameList& firstRequired = group.alternatives[outcomes.front().alternative].required;
    const Name first = *std::find_if(firstOwn.begin(), firstOwn.end(), isPresent);
    for (const Outcome& outcome : outcomes) {
        for (const Name& name : outcome.own) {
            if (isPresent(name) && !contains(firstRequired, name)) {
                site.walk.report(site.place, [&] { return ExclusiveAlternatives{*first.text, *name.text}; });
                return;
            }
        }
    }
}

void GroupChoice::choose(const Outcome& outcome) {
    for (const Annotation& annotation : *outcome.findings) {
        site.walk.takeOver(annotation);
    }
    for (const NameRoles* names : outcome.names) {
        site.walk.account(*names);
    }
    traceChoice(outcome.alternative);
}

/// An error is not to be followed by warnings about the members that it is about.
void GroupChoice::chooseNone() {
    if (site.datum.is_object()) {
        site.walk.account(allNames());
    }
}

const NameRoles& GroupChoice::allNames() {
    if (!group.allNames) {
        NameRoles roles;
        for (const Alternative& alternative : group.alternatives) {
            NameGathering(alternative.schema->names(), roles).addAlternative(alternative.schema->value());
        }
        group.allNames = std::move(roles);
        site.members.refresh();
    }
    return *group.allNames;
}

void GroupChoice::reportInvalid() {
    site.walk.report(site.place, [] { return InvalidItem(); });
}

void GroupChoice::traceChoice(std::size_t index) {
    site.walk.trace(site.place, [&] { return AlternativeTrace{place.location().text(), index}; });
}

} // namespace jsv
