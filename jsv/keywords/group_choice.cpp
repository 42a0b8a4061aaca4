#include "jsv/keywords/group_choice.hpp"

#include <algorithm>
#include <limits>
#include <numeric>
#include <string>
#include <utility>

#include "jsv/walk.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

/// The first name of a list that another list lacks; null if it lacks none.
const std::string* firstBeyond(const NameList& names, const NameList& others) {
    const auto found = std::find_if(names.begin(), names.end(),
                                    [&](const std::string* name) { return !contains(others, *name); });
    return found == names.end() ? nullptr : *found;
}

const Json* memberOf(const Json& datum, const std::string& name) {
    const auto member = datum.find(name);
    return member == datum.end() ? nullptr : &*member;
}

// The names of all alternatives are gathered from the schema itself, which has been walked before: it has no
// fault.

void addNames(const Json& list, NameTable& names) {
    for (const Json& name : list) {
        names.push_back({&name.get_ref<const std::string&>(), false});
    }
}

void addNamesOfAlternatives(const Json& alternatives, NameTable& names);

void addNamesOf(const Json& alternative, NameTable& names) {
    for (const auto& [keyword, parameter] : alternative.get_ref<const Json::object_t&>()) {
        if (keyword == "required" || keyword == "optional") {
            addNames(parameter, names);
        } else if (keyword == "properties") {
            for (const auto& property : parameter.get_ref<const Json::object_t&>()) {
                names.push_back({&property.first, false});
            }
        } else if (keyword == "oneOf") {
            addNamesOfAlternatives(parameter, names);
        } else if (keyword == "allOf") {
            for (const Json& group : parameter) {
                addNamesOfAlternatives(group.front(), names);
            }
        }
    }
}

void addNamesOfAlternatives(const Json& alternatives, NameTable& names) {
    for (const Json& alternative : alternatives) {
        addNamesOf(alternative, names);
    }
}

const NameTable& allNamesOf(AlternativeGroup& group) {
    if (!group.allNames) {
        group.allNames.emplace();
        for (const Alternative& alternative : group.alternatives) {
            addNamesOf(alternative.schema->value(), *group.allNames);
        }
        sortNames(*group.allNames);
    }
    return *group.allNames;
}

} // namespace

bool contains(const NameList& names, const std::string& name) {
    return std::any_of(names.begin(), names.end(), [&](const std::string* each) { return *each == name; });
}

void GroupChoice::run() {
    if (group.speaksOfMembersOnly && !site.datum.is_object()) {
        return;
    }
    surfaceFaults();
    if (site.walk.isProbe()) {
        runProbe();
        return;
    }
    const Indices among = candidates();
    const Indices fits = fitting(among, std::numeric_limits<std::size_t>::max());
    if (fits.size() == 1) {
        applyFitting(fits.front());
    } else if (fits.empty()) {
        reportNoneFits(among);
    } else {
        reportSeveralFit(fits);
    }
}

/// All alternatives are applied, so that a fault in any of them surfaces. Where there is none to surface, the
/// choice may leave out what cannot change it.
void GroupChoice::surfaceFaults() {
    if (!group.faultless) {
        group.faultless = std::all_of(group.alternatives.begin(), group.alternatives.end(),
                                      [&](const Alternative& alternative) {
                                          return isFaultless(*alternative.schema, site.walk.documents());
                                      });
    }
    if (*group.faultless) {
        return;
    }
    for (const Alternative& alternative : group.alternatives) {
        Walk probe = site.walk.probe(true);
        probe.applyKeywords(*alternative.schema, site.datum, site.place);
    }
}

void GroupChoice::runProbe() {
    if (fitting(candidates(), 2).size() != 1) {
        site.walk.fail();
    }
}

GroupChoice::Indices GroupChoice::candidates() const {
    Indices indices;
    const auto addIfCandidate = [&](std::size_t index) {
        if (isCandidate(group.alternatives[index])) {
            indices.push_back(index);
        }
    };
    const bool selects = !group.selectors.names.empty() && site.datum.is_object();
    const Json* const first = selects ? memberOf(site.datum, *group.selectors.names.front()) : nullptr;
    if (first == nullptr) {
        for (std::size_t index = 0; index < group.alternatives.size(); ++index) {
            addIfCandidate(index);
        }
    } else if (first->is_string()) {
        const auto named = group.selectors.byValue.find(first->get_ref<const std::string&>());
        if (named != group.selectors.byValue.end()) {
            std::for_each(named->second.begin(), named->second.end(), addIfCandidate);
        }
    }
    return indices;
}

/// Whether all selectors of the data are those of the alternative; one that the data lacks need not be
/// required.
bool GroupChoice::isCandidate(const Alternative& alternative) const {
    if (!site.datum.is_object()) {
        return true;
    }
    const NameList& names = group.selectors.names;
    for (std::size_t selector = 0; selector < names.size(); ++selector) {
        const Json* const member = memberOf(site.datum, *names[selector]);
        const bool equal = member == nullptr ? !contains(alternative.required, *names[selector])
                                             : *member == *alternative.selectorValues[selector];
        if (!equal) {
            return false;
        }
    }
    return true;
}

GroupChoice::Indices GroupChoice::fitting(const Indices& among, std::size_t atMost) const {
    Indices fits;
    for (const std::size_t index : among) {
        Walk probe = site.walk.probe(false);
        probe.applyKeywords(*group.alternatives[index].schema, site.datum, site.place);
        if (!probe.hasFailed()) {
            fits.push_back(index);
            if (fits.size() == atMost) {
                break;
            }
        }
    }
    return fits;
}

void GroupChoice::applyFitting(std::size_t index) {
    SchemaNode& schema = *group.alternatives[index].schema;
    site.walk.applyKeywords(schema, site.datum, site.place);
    site.walk.account(schema.ownNames());
    traceChoice(index);
}

void GroupChoice::reportSeveralFit(const Indices& fits) {
    chooseNone();
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

void GroupChoice::reportNoneFits(const Indices& among) {
    if (among.empty() && !group.alternatives.empty()) {
        chooseNone();
        reportNoCandidate();
        return;
    }
    Outcomes outcomes;
    for (const std::size_t index : among) {
        outcomes.push_back(outcomeOf(index));
    }
    settle(std::move(outcomes));
}

/// The data's selectors are those of no alternative.
void GroupChoice::reportNoCandidate() {
    bool reported = false;
    for (const std::string* selector : group.selectors.names) {
        const bool isRequired =
            std::any_of(group.alternatives.begin(), group.alternatives.end(),
                        [&](const Alternative& each) { return contains(each.required, *selector); });
        if (isRequired && !dataHas(*selector)) {
            site.walk.report(Place(site.place, *selector), [] { return MissingRequired(); });
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
    SchemaNode& schema = *group.alternatives[index].schema;
    walk.applyKeywords(schema, site.datum, site.place);
    walk.account(schema.ownNames());
    outcome.names = walk.accountedTables();
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
    const auto allRequire = [&](const std::string& name) {
        return std::all_of(outcomes.begin(), outcomes.end(), [&](const Outcome& each) {
            return contains(group.alternatives[each.alternative].required, name);
        });
    };
    for (Outcome& outcome : outcomes) {
        outcome.own.clear();
        outcome.present = 0;
        for (const std::string* name : group.alternatives[outcome.alternative].required) {
            if (!allRequire(*name)) {
                outcome.own.push_back(name);
                outcome.present += dataHas(*name) ? 1U : 0U;
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
        if (!contains(names, *outcome.own.front())) {
            names.push_back(outcome.own.front());
        }
    }
    MissingAlternative missing;
    std::transform(names.begin(), names.end(), std::back_inserter(missing.names),
                   [](const std::string* name) { return *name; });
    site.walk.report(site.place, [&] { return missing; });
}

void GroupChoice::reportAllPresent(const Outcomes& outcomes) {
    const auto isPresent = [&](const std::string* name) { return dataHas(*name); };
    const NameList& firstOwn = outcomes.front().own;
    const NameList& firstRequired = group.alternatives[outcomes.front().alternative].required;
    const std::string* const first = *std::find_if(firstOwn.begin(), firstOwn.end(), isPresent);
    for (const Outcome& outcome : outcomes) {
        for (const std::string* name : outcome.own) {
            if (isPresent(name) && !contains(firstRequired, *name)) {
                site.walk.report(site.place, [&] { return ExclusiveAlternatives{*first, *name}; });
                return;
            }
        }
    }
}

void GroupChoice::choose(const Outcome& outcome) {
    for (const Annotation& annotation : *outcome.findings) {
        site.walk.takeOver(annotation);
    }
    for (const NameTable* names : outcome.names) {
        site.walk.account(*names);
    }
    traceChoice(outcome.alternative);
}

/// An error is not to be followed by warnings about the members that it is about.
void GroupChoice::chooseNone() {
    site.walk.account(allNamesOf(group));
}

void GroupChoice::reportInvalid() {
    site.walk.report(site.place, [] { return InvalidItem(); });
}

void GroupChoice::traceChoice(std::size_t index) {
    site.walk.trace(site.place, [&] { return AlternativeTrace{place.location().text(), index}; });
}

bool GroupChoice::dataHas(const std::string& name) const {
    return site.datum.is_object() && site.datum.find(name) != site.datum.end();
}

} // namespace jsv
