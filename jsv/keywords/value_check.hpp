#pragma once

#include <limits>
#include <nlohmann/json.hpp>
#include <string>

#include "jsv/schema_keyword.hpp"
#include "jsv/schema_type.hpp"

namespace jsv {

/// What the keywords of one schema together ask of a datum that has no members.
///
/// Nearly all data are sound: they are let pass by one question instead of one for each keyword. Whatever
/// does not pass goes to the keywords, which alone make findings.
class ValueCheck {
public:
    /// Adds what a keyword asks; its parameter must have been checked, and it must outlive the check.
    void add(const SchemaKeyword& keyword);

    /// Whether no keyword has a finding for a datum. False also where it takes the keywords to know.
    [[nodiscard]] bool passes(const nlohmann::json& datum) const;
    /// Whether it asks all that the keywords ask.
    [[nodiscard]] bool isWhole() const { return knowsAll; }

private:
    struct Adder;
    [[nodiscard]] bool isWithinLimits(double number) const;

    bool knowsAll = true;
    bool lowestIsExcluded = false;
    bool highestIsExcluded = false;
    SchemaType type = SchemaType::unknown;
    double lowest = -std::numeric_limits<double>::infinity();
    double highest = std::numeric_limits<double>::infinity();
    const std::string* constant = nullptr;
    const AllowedTexts* allowed = nullptr;
    const ReferencedNames* referenced = nullptr;
};

} // namespace jsv
