#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>

#include "jsv/annotation.hpp"

namespace jsv {

/// Where a walk puts its findings.
class AbstractAnnotationCollection {
public:
    AbstractAnnotationCollection(const AbstractAnnotationCollection&) = delete;
    AbstractAnnotationCollection(AbstractAnnotationCollection&&) = delete;
    AbstractAnnotationCollection& operator=(const AbstractAnnotationCollection&) = delete;
    AbstractAnnotationCollection& operator=(AbstractAnnotationCollection&&) = delete;
    virtual ~AbstractAnnotationCollection() = default;

    virtual void add(Location location, Issue issue) = 0;

    /// Whether traces are of use here; a walk does not make those that would be thrown away.
    [[nodiscard]] bool keepsTraces() const { return traces; }

protected:
    explicit AbstractAnnotationCollection(bool keepsTraces) : traces(keepsTraces) {}

private:
    bool traces;
};

/// The findings in their order, equal ones once.
class AnnotationCollection : public AbstractAnnotationCollection {
public:
    using Annotations = std::set<Annotation>;

    explicit AnnotationCollection(bool keepsTraces = true) : AbstractAnnotationCollection(keepsTraces) {}

    void add(Location location, Issue issue) override;

    /// How many findings are of a severity.
    [[nodiscard]] std::size_t count(Severity severity) const;
    /// The line of every finding, each ended by a line feed.
    [[nodiscard]] std::string report() const;

    [[nodiscard]] Annotations::const_iterator begin() const { return annotations.begin(); }
    [[nodiscard]] Annotations::const_iterator end() const { return annotations.end(); }

private:
    Annotations annotations;
    // A walk meets most places in their order: the next finding mostly belongs behind the last one.
    Annotations::const_iterator next = annotations.end();
};

/// Accepts errors and warnings.
class IssueFilter {
public:
    /// Whether a trace can be accepted.
    static constexpr bool acceptsTraces = false;

    [[nodiscard]] bool operator()(const Annotation& annotation) const {
        return severityOf(annotation.issue) < Severity::Info;
    }
};

/// Keeps what the filter accepts: a predicate over an annotation that says in `acceptsTraces` whether it can
/// accept traces.
template <typename Filter>
class FilteredAnnotationCollection : public AnnotationCollection, public Filter {
public:
    FilteredAnnotationCollection() : AnnotationCollection(Filter::acceptsTraces) {}

    void add(Location location, Issue issue) override {
        Annotation annotation{std::move(location), std::move(issue)};
        if (Filter::operator()(annotation)) {
            AnnotationCollection::add(std::move(annotation.location), std::move(annotation.issue));
        }
    }
};

} // namespace jsv
