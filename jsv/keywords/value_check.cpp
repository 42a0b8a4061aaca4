#include "jsv/keywords/value_check.hpp"

#include <variant>

#include "jsv/keywords/references.hpp"
#include "jsv/keywords/values.hpp"

namespace jsv {

struct ValueCheck::Adder {
    ValueCheck& check;

    void operator()(const TypeKeyword& keyword) const { check.type = *keyword.kept; }
    void operator()(const ConstKeyword& keyword) const { check.constant = *keyword.kept; }
    void operator()(const EnumKeyword& keyword) const { check.allowed = &*keyword.kept; }
    void operator()(const RequiredInKeyword& keyword) const { check.referenced = &*keyword.kept; }
    void operator()(const MinimumKeyword& keyword) const { check.lowest = *keyword.kept; }
    void operator()(const ExclusiveMinimumKeyword& keyword) const {
        check.lowest = *keyword.kept;
        check.lowestIsExcluded = true;
    }
    void operator()(const MaximumKeyword& keyword) const { check.highest = *keyword.kept; }
    void operator()(const ExclusiveMaximumKeyword& keyword) const {
        check.highest = *keyword.kept;
        check.highestIsExcluded = true;
    }
    template <typename Other>
    void operator()(const Other& /*keyword*/) const {
        check.knowsAll = check.knowsAll && Other::tracesOnly;
    }
};

void ValueCheck::add(const SchemaKeyword& keyword) {
    std::visit(Adder{*this}, keyword);
}

bool ValueCheck::passes(const nlohmann::json& datum) const {
    return knowsAll && satisfies(typeOf(datum), type) &&
           (!datum.is_number() || isWithinLimits(datum.get<double>())) &&
           (constant == nullptr || isText(datum, *constant)) &&
           (allowed == nullptr || isAllowed(datum, *allowed)) &&
           (referenced == nullptr || isNamed(datum, *referenced));
}

bool ValueCheck::isWithinLimits(double number) const {
    return (lowestIsExcluded ? number > lowest : number >= lowest) &&
           (highestIsExcluded ? number < highest : number <= highest);
}

} // namespace jsv
