#include "jsv/keyword_factory.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "jsv/exceptions.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

struct Source {
    const ValidationContext& context;
    const Json& schemaObject;
    const Place& place;
    const Json& parameter;
};

using Maker = SchemaKeyword (*)(const Source&);

template <typename Alternative>
SchemaKeyword make(const Source& source) {
    return Alternative{{&source.context.data, &source.parameter}};
}

/// Whether the switch beside a limit makes it exclusive.
bool isExclusive(const Source& source, const std::string& switchName) {
    const auto sibling = source.schemaObject.find(switchName);
    if (sibling == source.schemaObject.end()) {
        return false;
    }
    if (!sibling->is_boolean()) {
        throw InvalidSchemaException(Place(source.place, switchName).location(),
                                     "This keyword requires a boolean parameter.");
    }
    return sibling->get<bool>();
}

SchemaKeyword makeMinimum(const Source& source) {
    return isExclusive(source, "exclusiveMinimum") ? make<ExclusiveMinimumKeyword>(source)
                                                   : make<MinimumKeyword>(source);
}

SchemaKeyword makeMaximum(const Source& source) {
    return isExclusive(source, "exclusiveMaximum") ? make<ExclusiveMaximumKeyword>(source)
                                                   : make<MaximumKeyword>(source);
}

struct Entry {
    std::string_view name;
    Maker maker;
};

/// What stands most often in schemas comes first: the table is searched from its beginning.
constexpr std::array<Entry, 20> dialect = {{
    {"description", make<DescriptionKeyword>},
    {"type", make<TypeKeyword>},
    {"default", make<DefaultKeyword>},
    {"units", make<UnitsKeyword>},
    {"properties", make<PropertiesKeyword>},
    {"required", make<RequiredKeyword>},
    {"const", make<ConstKeyword>},
    {"optional", make<OptionalKeyword>},
    {"minimum", makeMinimum},
    {"maximum", makeMaximum},
    {"exclusiveMinimum", make<IgnoredKeyword>},
    {"exclusiveMaximum", make<IgnoredKeyword>},
    {"enum", make<EnumKeyword>},
    {"oneOf", make<OneOfKeyword>},
    {"items", make<ItemsKeyword>},
    {"format", make<FormatKeyword>},
    {"allOf", make<AllOfKeyword>},
    {"requiredIn", make<RequiredInKeyword>},
    {"autoexpand", make<AutoexpandKeyword>},
    {"$schema", make<IgnoredKeyword>},
}};

} // namespace

SchemaKeyword makeKeyword(const ValidationContext& context, const Json& schemaObject, const Place& place,
                          const Json::object_t::value_type& member) {
    const std::string& name = member.first;
    const auto* const entry =
        std::find_if(dialect.begin(), dialect.end(), [&](const Entry& each) { return each.name == name; });
    if (entry == dialect.end()) {
        throw InvalidSchemaException(Place(place, name).location(),
                                     "The keyword '" + name + "' is not supported.");
    }
    return entry->maker({context, schemaObject, place, member.second});
}

} // namespace jsv
