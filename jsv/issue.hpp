#pragma once

#include <cstddef>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

#include "jsv/schema_type.hpp"

namespace jsv {

enum class Severity : int { Error = 0, Warning = 1, Info = 2 };

// Every kind of finding is declared with its severity and its payload. Of the errors and warnings the report
// tells, worded in issue_text; the traces of severity Info record what a walk did, for programs that build on
// it, and are never reported.

/// The datum is not the one required text.
struct ConstMismatch {
    static constexpr Severity severity = Severity::Error;
    std::string required;
    [[nodiscard]] auto payload() const { return std::tie(required); }
};

/// The datum is none of the allowed texts, which stand in the order of the schema.
struct EnumMismatch {
    static constexpr Severity severity = Severity::Error;
    std::vector<std::string> allowed;
    [[nodiscard]] auto payload() const { return std::tie(allowed); }
};

/// Two members are there of which only one may be.
struct ExclusiveAlternatives {
    static constexpr Severity severity = Severity::Error;
    std::string first;
    std::string second;
    [[nodiscard]] auto payload() const { return std::tie(first, second); }
};

struct BelowMinimum {
    static constexpr Severity severity = Severity::Error;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct NotAboveExclusiveMinimum {
    static constexpr Severity severity = Severity::Error;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct AboveMaximum {
    static constexpr Severity severity = Severity::Error;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct NotBelowExclusiveMaximum {
    static constexpr Severity severity = Severity::Error;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct TypeMismatch {
    static constexpr Severity severity = Severity::Error;
    SchemaType required;
    [[nodiscard]] auto payload() const { return std::tie(required); }
};

struct MissingRequired {
    static constexpr Severity severity = Severity::Error;
    [[nodiscard]] static auto payload() { return std::tuple<>(); }
};

/// None of the members is there of which one must be.
struct MissingAlternative {
    static constexpr Severity severity = Severity::Error;
    std::vector<std::string> names;
    [[nodiscard]] auto payload() const { return std::tie(names); }
};

/// The datum names nothing in the array that it refers to.
struct RequiredInMismatch {
    static constexpr Severity severity = Severity::Error;
    std::string itemProperty;
    std::string arrayReference;
    [[nodiscard]] auto payload() const { return std::tie(itemProperty, arrayReference); }
};

/// A member that no keyword speaks of.
struct SuperfluousItem {
    static constexpr Severity severity = Severity::Warning;
    [[nodiscard]] static auto payload() { return std::tuple<>(); }
};

struct InvalidItem {
    static constexpr Severity severity = Severity::Error;
    [[nodiscard]] static auto payload() { return std::tuple<>(); }
};

/// The datum was walked against a schema.
struct SubschemaTrace {
    static constexpr Severity severity = Severity::Info;
    [[nodiscard]] static auto payload() { return std::tuple<>(); }
};

struct RequiredInTrace {
    static constexpr Severity severity = Severity::Info;
    std::string itemProperty;
    std::string arrayReference;
    [[nodiscard]] auto payload() const { return std::tie(itemProperty, arrayReference); }
};

struct DescriptionTrace {
    static constexpr Severity severity = Severity::Info;
    std::string text;
    [[nodiscard]] auto payload() const { return std::tie(text); }
};

struct FormatTrace {
    static constexpr Severity severity = Severity::Info;
    std::string format;
    [[nodiscard]] auto payload() const { return std::tie(format); }
};

struct UnitsTrace {
    static constexpr Severity severity = Severity::Info;
    std::string units;
    [[nodiscard]] auto payload() const { return std::tie(units); }
};

/// The default of the datum, as JSON text.
struct DefaultTrace {
    static constexpr Severity severity = Severity::Info;
    std::string value;
    [[nodiscard]] auto payload() const { return std::tie(value); }
};

/// A keyword accounted for the member at this place.
struct AccountedTrace {
    static constexpr Severity severity = Severity::Info;
    [[nodiscard]] static auto payload() { return std::tuple<>(); }
};

struct AutoexpandTrace {
    static constexpr Severity severity = Severity::Info;
    bool expand;
    [[nodiscard]] auto payload() const { return std::tie(expand); }
};

/// The alternative that was chosen of the group at a place of the schema, counted from 0.
struct AlternativeTrace {
    static constexpr Severity severity = Severity::Info;
    std::string group;
    std::size_t alternative;
    [[nodiscard]] auto payload() const { return std::tie(group, alternative); }
};

struct MinimumTrace {
    static constexpr Severity severity = Severity::Info;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct ExclusiveMinimumTrace {
    static constexpr Severity severity = Severity::Info;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct MaximumTrace {
    static constexpr Severity severity = Severity::Info;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

struct ExclusiveMaximumTrace {
    static constexpr Severity severity = Severity::Info;
    double limit;
    [[nodiscard]] auto payload() const { return std::tie(limit); }
};

/// What a walk found at a place. The order of the alternatives decides the order of findings at one place.
using Issue =
    std::variant<ConstMismatch, EnumMismatch, ExclusiveAlternatives, BelowMinimum, NotAboveExclusiveMinimum,
                 AboveMaximum, NotBelowExclusiveMaximum, TypeMismatch, MissingRequired, MissingAlternative,
                 RequiredInMismatch, SuperfluousItem, InvalidItem, SubschemaTrace, RequiredInTrace,
                 DescriptionTrace, FormatTrace, UnitsTrace, DefaultTrace, AccountedTrace, AutoexpandTrace,
                 AlternativeTrace, MinimumTrace, ExclusiveMinimumTrace, MaximumTrace, ExclusiveMaximumTrace>;

static_assert(std::variant_size_v<Issue> == 26);

namespace detail {

template <std::size_t Index, typename Kind>
constexpr bool issueStandsAt = std::is_same_v<std::variant_alternative_t<Index, Issue>, Kind>;

static_assert(issueStandsAt<0, ConstMismatch> && issueStandsAt<1, EnumMismatch>);
static_assert(issueStandsAt<2, ExclusiveAlternatives> && issueStandsAt<3, BelowMinimum>);
static_assert(issueStandsAt<4, NotAboveExclusiveMinimum> && issueStandsAt<5, AboveMaximum>);
static_assert(issueStandsAt<6, NotBelowExclusiveMaximum> && issueStandsAt<7, TypeMismatch>);
static_assert(issueStandsAt<8, MissingRequired> && issueStandsAt<9, MissingAlternative>);
static_assert(issueStandsAt<10, RequiredInMismatch> && issueStandsAt<11, SuperfluousItem>);
static_assert(issueStandsAt<12, InvalidItem> && issueStandsAt<14, RequiredInTrace>);
static_assert(issueStandsAt<18, DefaultTrace> && issueStandsAt<19, AccountedTrace>);
static_assert(issueStandsAt<20, AutoexpandTrace> && issueStandsAt<22, MinimumTrace>);
static_assert(issueStandsAt<23, ExclusiveMinimumTrace> && issueStandsAt<24, MaximumTrace>);
static_assert(issueStandsAt<25, ExclusiveMaximumTrace>);

} // namespace detail

/// Order of two findings of one kind: by their payloads.
template <typename Kind, typename = decltype(std::declval<const Kind&>().payload())>
bool operator<(const Kind& a, const Kind& b) {
    return a.payload() < b.payload();
}

template <typename Kind, typename = decltype(std::declval<const Kind&>().payload())>
bool operator==(const Kind& a, const Kind& b) {
    return a.payload() == b.payload();
}

[[nodiscard]] inline Severity severityOf(const Issue& issue) {
    return std::visit([](const auto& kind) { return kind.severity; }, issue);
}

} // namespace jsv
