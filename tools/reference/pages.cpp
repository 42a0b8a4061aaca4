#include "tools/reference/pages.hpp"

#include <algorithm>

#include "tools/reference/site.hpp"

namespace reference {

namespace {

constexpr auto pageDepth = 3;

bool beginsPage(const Block& block) {
    return std::count(block.path.begin(), block.path.end(), '/') == pageDepth && !block.blocks.empty();
}

/// "/SETUP/ORVAMD/ORVASUB" gives "ORVAMD-ORVASUB": short, and still unique among blocks of one depth.
std::string pageName(const std::string& path, char separator) {
    std::string name = path.substr(path.find('/', 1) + 1);
    std::replace(name.begin(), name.end(), '/', separator);
    return name;
}

} // namespace

PagePlan::PagePlan(const Block& root) {
    all.push_back({"index.html", "Command file", {}});
    add(root, 0);
}

void PagePlan::add(const Block& block, std::size_t page) {
    if (beginsPage(block)) {
        page = all.size();
        all.push_back({pageName(block.path, '-') + ".html", pageName(block.path, ' '), {}});
    }
    all[page].blocks.push_back(&block);
    pageOfBlock[block.path] = page;
    for (const Block& inner : block.blocks) {
        add(inner, page);
    }
}

const Page& PagePlan::pageOf(const std::string& path) const {
    const auto found = pageOfBlock.find(path);
    if (found != pageOfBlock.end()) {
        return all[found->second];
    }
    const auto parent = pageOfBlock.find(path.substr(0, path.rfind('/')));
    return all[parent == pageOfBlock.end() ? 0 : parent->second];
}

std::string PagePlan::link(const std::string& path) const {
    return pageOf(path).file + '#' + fragmentOf(path);
}

} // namespace reference
