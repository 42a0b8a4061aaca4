#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "jsv/location.hpp"
#include "jsv/name_index.hpp"
#include "jsv/schema_type.hpp"

namespace jsv {

class SchemaNode;

struct SchemaNodeDeleter {
    void operator()(SchemaNode* node) const;
};
using OwnedSchema = std::unique_ptr<SchemaNode, SchemaNodeDeleter>;

/// Texts in the order of a schema; refers into the schema document.
using TextList = std::vector<const std::string*>;

/// Member names in the order of a schema.
using NameList = std::vector<Name>;

/// What a schema says about a name, by the name's number.
struct NameRole {
    /// Its keywords account for the name.
    bool isAccounted = false;
    /// Its "properties" have a schema for it.
    bool isDescribed = false;
};

/// What a schema says about names; of numbers beyond its end it says nothing.
using NameRoles = std::vector<NameRole>;

// What a keyword keeps of its parameter once it was checked.

struct CheckedParameter {};

struct AllowedTexts {
    TextList texts;
    /// The same, for long lists; empty for short ones.
    NameIndex lookUp;
};

struct PropertySchemas {
    struct Property {
        Name name;
        OwnedSchema schema;
    };
    std::vector<Property> properties;
    /// Their schemas by the numbers of their names; null for names that are no property.
    std::vector<SchemaNode*> byId;
};

struct ItemsSchema {
    OwnedSchema schema;
};

using TextSet = NameIndex;

/// The texts that the elements of an array of the data have under a name: every reference to them shares one
/// set.
using ReferencedTexts = std::map<std::pair<const nlohmann::json*, std::string>, TextSet>;

struct ReferencedNames {
    const std::string* itemProperty;
    const std::string* arrayReference;
    /// Null where the reference leads to no array.
    const TextSet* names;
};

struct Alternative {
    OwnedSchema schema;
    /// Names that it requires, each once, in the order of the schema.
    NameList required;
    /// The texts to which it fixes the selectors, in their order.
    TextList selectorValues;
};

/// One group of alternatives: the parameter of a "oneOf".
struct AlternativeGroup {
    std::vector<Alternative> alternatives;
    /// Members by which the alternatives are told apart: each alternative fixes each of them.
    NameList selectors;
    /// No alternative says anything about a datum that is no object.
    bool speaksOfMembersOnly = true;
    /// Whether no schema of the group has a fault, however deep; found out when it is first asked.
    std::optional<bool> faultless;
    /// Names of all alternatives and their nested groups; put together when they are first asked for.
    std::optional<NameRoles> allNames;
};

/// Where a group stands inside "allOf": the places of its schemas refer to it, so that it must not move.
struct GroupPlace {
    GroupPlace(const Place& keyword, std::size_t index, const std::string& name)
        : element(keyword, index), alternatives(element, name) {}
    GroupPlace(const GroupPlace&) = delete;
    GroupPlace(GroupPlace&&) = delete;
    GroupPlace& operator=(const GroupPlace&) = delete;
    GroupPlace& operator=(GroupPlace&&) = delete;
    ~GroupPlace() = default;

    Place element;
    Place alternatives;
};

struct AlternativeGroups {
    std::vector<AlternativeGroup> groups;
    /// Of each group in turn.
    std::deque<GroupPlace> places;
};

/// What the alternatives from 1 on hold: the documents' parts that they refer to, and what is kept of the
/// parameter.
template <typename Kept>
struct Keyword {
    /// What is more than a value stands apart: most keywords keep little, and a schema has thousands of them
    /// side by side.
    static constexpr bool isValue =
        std::is_trivially_copyable_v<Kept> && sizeof(std::optional<Kept>) <= sizeof(std::optional<double>);
    using Room = std::conditional_t<isValue, std::optional<Kept>, std::unique_ptr<Kept>>;

    const nlohmann::json* data;
    const nlohmann::json* parameter;
    /// Empty until the keyword was applied for the first time.
    Room kept{};
};

/// The request to walk a datum against a nested schema; made by other keywords, not by a member of a schema.
struct SubschemaWalk {
    static constexpr bool tracesOnly = false;
    SchemaNode* schema;
};

// `tracesOnly`: applied to a datum, the keyword gives nothing but traces.

struct ConstKeyword : Keyword<const std::string*> {
    static constexpr bool tracesOnly = false;
};

struct EnumKeyword : Keyword<AllowedTexts> {
    static constexpr bool tracesOnly = false;
};

struct MinimumKeyword : Keyword<double> {
    static constexpr bool tracesOnly = false;
};

struct MaximumKeyword : Keyword<double> {
    static constexpr bool tracesOnly = false;
};

struct ExclusiveMinimumKeyword : Keyword<double> {
    static constexpr bool tracesOnly = false;
};

struct ExclusiveMaximumKeyword : Keyword<double> {
    static constexpr bool tracesOnly = false;
};

struct ItemsKeyword : Keyword<ItemsSchema> {
    static constexpr bool tracesOnly = false;
};

struct IgnoredKeyword : Keyword<CheckedParameter> {
    static constexpr bool tracesOnly = true;
};

struct OneOfKeyword : Keyword<AlternativeGroup> {
    static constexpr bool tracesOnly = false;
};

struct PropertiesKeyword : Keyword<PropertySchemas> {
    static constexpr bool tracesOnly = false;
};

struct RequiredInKeyword : Keyword<ReferencedNames> {
    static constexpr bool tracesOnly = false;
};

struct RequiredKeyword : Keyword<NameList> {
    static constexpr bool tracesOnly = false;
};

struct TypeKeyword : Keyword<SchemaType> {
    static constexpr bool tracesOnly = false;
};

struct OptionalKeyword : Keyword<NameList> {
    static constexpr bool tracesOnly = true;
};

struct FormatKeyword : Keyword<CheckedParameter> {
    static constexpr bool tracesOnly = true;
};

struct DescriptionKeyword : Keyword<CheckedParameter> {
    static constexpr bool tracesOnly = true;
};

struct AutoexpandKeyword : Keyword<bool> {
    static constexpr bool tracesOnly = true;
};

struct UnitsKeyword : Keyword<CheckedParameter> {
    static constexpr bool tracesOnly = true;
};

struct DefaultKeyword : Keyword<CheckedParameter> {
    static constexpr bool tracesOnly = true;
};

struct AllOfKeyword : Keyword<AlternativeGroups> {
    static constexpr bool tracesOnly = false;
};

/// A keyword of the dialect.
using SchemaKeyword =
    std::variant<SubschemaWalk, ConstKeyword, EnumKeyword, MinimumKeyword, MaximumKeyword,
                 ExclusiveMinimumKeyword, ExclusiveMaximumKeyword, ItemsKeyword, IgnoredKeyword, OneOfKeyword,
                 PropertiesKeyword, RequiredInKeyword, RequiredKeyword, TypeKeyword, OptionalKeyword,
                 FormatKeyword, DescriptionKeyword, AutoexpandKeyword, UnitsKeyword, DefaultKeyword,
                 AllOfKeyword>;

static_assert(std::variant_size_v<SchemaKeyword> == 21);

namespace detail {

template <std::size_t Index, typename Alternative>
constexpr bool keywordStandsAt =
    std::is_same_v<std::variant_alternative_t<Index, SchemaKeyword>, Alternative>;

static_assert(keywordStandsAt<0, SubschemaWalk> && keywordStandsAt<1, ConstKeyword>);
static_assert(keywordStandsAt<2, EnumKeyword> && keywordStandsAt<3, MinimumKeyword>);
static_assert(keywordStandsAt<4, MaximumKeyword> && keywordStandsAt<5, ExclusiveMinimumKeyword>);
static_assert(keywordStandsAt<6, ExclusiveMaximumKeyword> && keywordStandsAt<7, ItemsKeyword>);
static_assert(keywordStandsAt<8, IgnoredKeyword> && keywordStandsAt<9, OneOfKeyword>);
static_assert(keywordStandsAt<10, PropertiesKeyword> && keywordStandsAt<11, RequiredInKeyword>);
static_assert(keywordStandsAt<12, RequiredKeyword> && keywordStandsAt<13, TypeKeyword>);
static_assert(keywordStandsAt<14, OptionalKeyword> && keywordStandsAt<15, FormatKeyword>);
static_assert(keywordStandsAt<16, DescriptionKeyword> && keywordStandsAt<17, AutoexpandKeyword>);
static_assert(keywordStandsAt<18, UnitsKeyword> && keywordStandsAt<19, DefaultKeyword>);
static_assert(keywordStandsAt<20, AllOfKeyword>);

} // namespace detail

} // namespace jsv
