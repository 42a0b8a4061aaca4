#include "tools/reference/site.hpp"

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "tools/reference/pages.hpp"
#include "tools/reference/templates.hpp"
#include "tools/reference/view.hpp"

namespace reference {

namespace {

using kainjow::mustache::mustache;
using kainjow::mustache::partial;

View partialOf(const char* name) {
    View view(partial([name] { return std::string(templateText(name)); }));
    return view;
}

std::string render(const char* name, const View& view) {
    mustache page{std::string(templateText(name))};
    if (!page.is_valid()) {
        throw std::runtime_error(std::string(name) + ": " + page.error_message());
    }
    return page.render(view);
}

std::string renderTree(const Block& root, const PagePlan& plan) {
    View view = treeView(root, plan);
    view.set("tree", partialOf("tree.mustache"));
    return render("tree.mustache", view);
}

std::string renderPage(const Page& page, const PagePlan& plan, const std::string& tree,
                       const std::string& version) {
    kainjow::mustache::list blocks;
    for (const Block* block : page.blocks) {
        blocks.push_back(blockView(*block, plan));
    }
    View view;
    view.set("title", page.title);
    view.set("version", version);
    view.set("tree", tree);
    view.set("blocks", View(blocks));
    view.set("block", partialOf("block.mustache"));
    view.set("key", partialOf("key.mustache"));
    view.set("group", partialOf("group.mustache"));
    view.set("names", partialOf("names.mustache"));
    return render("page.mustache", view);
}

/// Tags within words; all others part them.
bool isInline(std::string_view tag) {
    const std::string_view name = tag.substr(tag.find_first_not_of("</"));
    for (const std::string_view known : {"a>", "a ", "b>", "i>", "sub>", "sup>", "code>"}) {
        if (name.substr(0, known.size()) == known) {
            return true;
        }
    }
    return false;
}

/// The text between the tags; entities are left to the browser.
std::string withoutTags(std::string_view html) {
    std::string text;
    for (std::size_t at = 0; at < html.size();) {
        const std::size_t tag = std::min(html.find('<', at), html.size());
        text += html.substr(at, tag - at);
        const std::size_t end = std::min(html.find('>', tag), html.size() - 1);
        if (tag < html.size() && !isInline(html.substr(tag, end - tag + 1))) {
            text += ' ';
        }
        at = tag == html.size() ? tag : end + 1;
    }
    return text;
}

Json indexEntry(const std::string& path, const Page& page, bool isBlock, const std::string& description) {
    return Json::array({path, page.file, isBlock ? 1 : 0, withoutTags(description)});
}

void addToIndex(const Block& block, const PagePlan& plan, Json& entries) {
    const Page& page = plan.pageOf(block.path);
    entries.push_back(indexEntry(block.path, page, true, block.description + block.entryDescription));
    for (const Key& key : block.keys) {
        entries.push_back(indexEntry(key.path, page, false, key.description + key.elementDescription));
    }
    for (const Block& inner : block.blocks) {
        addToIndex(inner, plan, entries);
    }
}

/// A script and no JSON file: pages that are opened from the file system may load scripts only.
std::string searchIndex(const Block& root, const PagePlan& plan) {
    Json entries = Json::array();
    addToIndex(root, plan, entries);
    return "window.manualIndex = " + entries.dump() + ";\n";
}

bool isPlainInFragment(char c) {
    constexpr std::string_view plain = "-._~/";
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           plain.find(c) != std::string_view::npos;
}

} // namespace

std::string fragmentOf(const std::string& path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string fragment;
    for (const char c : path) {
        if (isPlainInFragment(c)) {
            fragment += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            fragment += {'%', digits[byte / digits.size()], digits[byte % digits.size()]};
        }
    }
    return fragment.empty() ? "/" : fragment;
}

std::vector<SiteFile> renderSite(const Block& root, const std::string& version) {
    const PagePlan plan(root);
    const std::string tree = renderTree(root, plan);
    std::vector<SiteFile> files;
    for (const Page& page : plan.pages()) {
        files.push_back({page.file, renderPage(page, plan, tree, version)});
    }
    for (const char* name : {"manual.css", "manual.js"}) {
        files.push_back({name, std::string(templateText(name))});
    }
    files.push_back({"search_index.js", searchIndex(root, plan)});
    return files;
}

void writeSite(const std::vector<SiteFile>& files, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const SiteFile& file : files) {
        const std::filesystem::path path = folder / file.name;
        std::ofstream stream(path, std::ios::binary);
        stream << file.content << std::flush;
        if (!stream) {
            throw std::runtime_error(path.string() + ": this file cannot be written.");
        }
    }
}

} // namespace reference
