#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "jsv/annotation_collection.hpp"
#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"
#include "jsv/walk.hpp"

namespace jsv {

/// The choice of one alternative of a group for a datum, and what is told where none is chosen.
///
/// A group passes exactly when exactly one alternative fits, that is, gives no error. Where none fits, the
/// choice goes by the members that tell the alternatives apart and by the names that the alternatives require
/// and the data has, so that the findings of the alternative that was meant are reported.
class GroupChoice {
public:
    GroupChoice(AlternativeGroup& alternatives, const Place& groupPlace, const Site& groupSite)
        : group(alternatives), place(groupPlace), site(groupSite) {}

    /// Applies the group to the datum.
    void run();

private:
    using Indices = std::vector<std::size_t>;
    using Mark = Walk::Mark;

    /// What applying an alternative gives: its findings and the names that it accounts for.
    struct Outcome {
        std::size_t alternative;
        std::unique_ptr<AnnotationCollection> findings;
        std::vector<const NameRoles*> names;
        /// Names that it requires and not all candidates require, in order.
        NameList own;
        /// How many of them the data has.
        std::size_t present = 0;
    };
    using Outcomes = std::vector<Outcome>;

    void surfaceFaults();
    void applyAll();

    template <typename Action>
    void forEachCandidate(Action action) const;
    [[nodiscard]] bool isCandidate(const Alternative& alternative) const;

    void takeFitting(std::size_t index, const Mark& before);
    void reportSeveralFit();
    void reportNoneFits();
    void reportNoCandidate();

    [[nodiscard]] Outcome outcomeOf(std::size_t index) const;
    void settle(Outcomes outcomes);
    /// The candidates among which the choice goes on; none where it has ended.
    [[nodiscard]] Outcomes narrow(Outcomes outcomes);
    bool reportCommonFindings(const Outcomes& outcomes);
    void findOwnNames(Outcomes& outcomes) const;
    void reportNonePresent(const Outcomes& outcomes, bool errorReported);
    void reportAllPresent(const Outcomes& outcomes);
    void choose(const Outcome& outcome);
    void chooseNone();

    void reportInvalid();
    void traceChoice(std::size_t index);
    [[nodiscard]] const NameRoles& allNames();

    AlternativeGroup& group;
    const Place& place;
    const Site& site;
};

/// Whether a name is in a list; both belong to one index.
[[nodiscard]] bool contains(const NameList& names, const Name& name);

} // namespace jsv
