#include "schema/command_file_schema.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "jsv/exceptions.hpp"
#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_node.hpp"
#include "jsv/validation_context.hpp"
#include "tools/assemble/output.hpp"

namespace {

using nlohmann::json;

std::string deliveredFile() {
    std::ifstream file(ORVANTE_SCHEMA_FILE, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(CommandFileSchema, isTheDeliveredFileByteForByte) {
    const std::string file = deliveredFile();
    ASSERT_FALSE(file.empty());
    EXPECT_EQ(std::strlen(commandFileSchema()), file.size());
    EXPECT_TRUE(std::string_view(commandFileSchema()) == file);
}

TEST(CommandFileSchema, isOneTextFromCallToCall) {
    EXPECT_EQ(commandFileSchema(), commandFileSchema());
}

TEST(CommandFileSchema, isThePrintedFormOfWhatItSays) {
    const auto parsed = nlohmann::ordered_json::parse(commandFileSchema());
    EXPECT_TRUE(assembly::printedText(parsed) == commandFileSchema());
}

TEST(CommandFileSchema, beginsWithTheNameOfItsLanguage) {
    constexpr std::string_view beginning = "{\r\n  \"$schema\": \"./metaschema.json\",\r\n";
    EXPECT_EQ(std::string_view(commandFileSchema()).substr(0, beginning.size()), beginning);
}

/// Makes every keyword of every schema object and checks its parameter, wherever it stands.
class Compiler {
public:
    explicit Compiler(const json& schemaDocument) : schema(schemaDocument) {}

    void compile(const json& node, const std::string& pointer) {
        if (!node.is_object()) {
            ADD_FAILURE() << pointer << " is no object";
            return;
        }
        compileKeywords(node, pointer);
        ++nodes;
        if (node.contains("properties")) {
            for (const auto& [name, property] : node["properties"].items()) {
                compile(property, pointer + "/properties/" + name);
            }
        }
        if (node.contains("items")) {
            compile(node["items"], pointer + "/items");
        }
        compileGroup(node, pointer);
        for (const json& conjunct : node.value("allOf", json::array())) {
            compileGroup(conjunct, pointer + "/allOf");
        }
    }

    [[nodiscard]] std::size_t compiledNodes() const { return nodes; }
    [[nodiscard]] std::size_t compiledKeywords() const { return keywords; }

private:
    void compileGroup(const json& owner, const std::string& pointer) {
        for (const json& alternative : owner.value("oneOf", json::array())) {
            compile(alternative, pointer + "/oneOf");
        }
    }

    void compileKeywords(const json& node, const std::string& pointer) {
        const jsv::Location start;
        jsv::SchemaNode compiled(node, jsv::Place(start));
        for (std::size_t member = 0; member < compiled.memberCount(); ++member) {
            try {
                jsv::checkParameter(compiled.keyword(member, {data, schema}), compiled);
                ++keywords;
            } catch (const jsv::InvalidSchemaException& fault) {
                ADD_FAILURE() << pointer << ": " << fault.what();
                return;
            }
        }
    }

    const json& schema;
    json data;
    std::size_t nodes = 0;
    std::size_t keywords = 0;
};

TEST(CommandFileSchema, compilesAtEveryNode) {
    const json schema = json::parse(commandFileSchema());
    Compiler compiler(schema);
    compiler.compile(schema, "");
    EXPECT_GT(compiler.compiledNodes(), 1451U) << "more nodes than those that are described";
    EXPECT_GT(compiler.compiledKeywords(), 2 * compiler.compiledNodes());
}

TEST(CommandFileSchema, compilesAsOne) {
    const json schema = json::parse(commandFileSchema());
    const json data;
    const jsv::Location start;
    jsv::SchemaNode root(schema, jsv::Place(start));
    EXPECT_TRUE(jsv::isFaultless(root, {data, schema}));
}

} // namespace
