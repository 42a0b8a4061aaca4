#include "tools/reference/site.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "tools/reference/templates.hpp"

namespace {

using reference::SiteFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::vector<SiteFile> site() {
    return reference::renderSite(
        reference::readManual(reference::Json::parse(R"({"type": "object", "properties": {
        "S": {"type": "object", "properties": {"M": {"type": "object", "properties": {
            "D": {"type": "array", "items": {"type": "object", "properties": {
                "show grid": {"type": "string", "description": "<p>A<sub>b</sub> &lt; c</p>", "default": "<&>"},
                "IN": {"type": "object", "properties": {}}}}},
            "L": {"type": "object", "properties": {}}}}}}}})")),
        "v1 <x>");
}

std::string content(const std::string& name) {
    const std::vector<SiteFile> files = site();
    const auto found =
        std::find_if(files.begin(), files.end(), [&](const SiteFile& file) { return file.name == name; });
    if (found == files.end()) {
        throw std::runtime_error(name + " is no file of the site");
    }
    return found->content;
}

TEST(Site, HasAPageForEachDomain) {
    std::vector<std::string> names;
    for (const SiteFile& file : site()) {
        names.push_back(file.name);
    }
    EXPECT_THAT(names, ElementsAre("index.html", "M-D.html", "manual.css", "manual.js", "search_index.js"));
}

TEST(Site, MakesThePathTheIdOfEachEntry) {
    EXPECT_THAT(content("index.html"), HasSubstr(R"(id="/")"));
    EXPECT_THAT(content("index.html"), HasSubstr(R"(id="/S/M/L")"));
    EXPECT_THAT(content("M-D.html"), HasSubstr(R"(id="/S/M/D/IN")"));
    EXPECT_THAT(content("M-D.html"), HasSubstr(R"(id="/S/M/D/show%20grid")"));
}

TEST(Site, TakesDescriptionsAsTheyAreAndEscapesTheRest) {
    const std::string page = content("M-D.html");
    EXPECT_THAT(page, HasSubstr("<p>A<sub>b</sub> &lt; c</p>"));
    EXPECT_THAT(page, HasSubstr("&lt;&amp;&gt;"));
    EXPECT_THAT(page, HasSubstr("v1 &lt;x&gt;"));
    EXPECT_THAT(page, Not(HasSubstr("<&>")));
}

TEST(Site, IndexesWordsWithoutTags) {
    EXPECT_THAT(content("search_index.js"), HasSubstr(R"(["/S/M/D/show grid","M-D.html",0," Ab &lt; c "])"));
    EXPECT_THAT(content("search_index.js"), HasSubstr(R"(["/S/M/L","index.html",1,""])"));
}

TEST(Site, EncodesFragments) {
    EXPECT_EQ(reference::fragmentOf(""), "/");
    EXPECT_EQ(reference::fragmentOf("/A/b c"), "/A/b%20c");
    EXPECT_EQ(reference::fragmentOf("/A_b-9.~1"), "/A_b-9.~1");
    EXPECT_EQ(reference::fragmentOf("/\""), "/%22");
}

TEST(Site, IsWrittenIntoANewFolder) {
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / "orvante_site_test" / "inner";
    std::filesystem::remove_all(folder.parent_path());
    reference::writeSite({{"a.html", "text\n"}}, folder);
    std::ifstream file(folder / "a.html");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "text\n");
    std::filesystem::create_directory(folder / "b.html");
    EXPECT_THROW(reference::writeSite({{"b.html", ""}}, folder), std::runtime_error);
    std::filesystem::remove_all(folder.parent_path());
}

TEST(Templates, AreThoseOfTheFolder) {
    EXPECT_THAT(std::string(reference::templateText("page.mustache")), HasSubstr("<!DOCTYPE html>"));
    EXPECT_THROW(static_cast<void>(reference::templateText("none.mustache")), std::runtime_error);
}

} // namespace
