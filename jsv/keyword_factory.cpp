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

constexpr std::array<Entry, 20> dialect = {{
    {"type", make<TypeKeyword>},
    {"const", make<ConstKeyword>},
    {"enum", make<EnumKeyword>},
    {"minimum", makeMinimum},
    {"exclusiveMinimum", make<IgnoredKeyword>},
    {"maximum", makeMaximum},
    {"exclusiveMaximum", make<IgnoredKeyword>},
    {"required", make<RequiredKeyword>},
    {"properties", make<PropertiesKeyword>},
    {"items", make<ItemsKeyword>},
    {"requiredIn", make<RequiredInKeyword>},
    {"oneOf", make<OneOfKeyword>},
    {"allOf", make<AllOfKeyword>},
    {"$schema", make<IgnoredKeyword>},
    {"default", make<DefaultKeyword>},
    {"format", make<FormatKeyword>},
    {"optional", make<OptionalKeyword>},
    {"description", make<DescriptionKeyword>},
    {"autoexpand", make<AutoexpandKeyword>},
    {"units", make<UnitsKeyword>},
}};

} // namespace

SchemaKeyword makeKeyword(const ValidationContext& context, const Json& schemaObject, const Place& place,
                          const std::string& name) {
    return makeKeyword(context, schemaObject, place, schemaObject.find(name));
}

SchemaKeyword makeKeyword(const ValidationContext& context, const Json& schemaObject, const Place& place,
                          const Json::const_iterator& member) {
    const std::string& name = member.key();
    const auto* const entry =
        std::find_if(dialect.begin(), dialect.end(), [&](const Entry& each) { return each.name == name; });
    if (entry == dialect.end()) {
        throw InvalidSchemaException(Place(place, name).location(),
                                     "The keyword '" + name + "' is not supported.");
    }
    return entry->maker({context, schemaObject, place, *member});
}

} // namespace jsv
