#pragma once

#include <map>
#include <string>
#include <vector>

#include "tools/reference/manual_model.hpp"

namespace reference {

/// One page of the manual, with the blocks on it in the order of the schema.
struct Page {
    std::string file;
    std::string title;
    std::vector<const Block*> blocks;
};

/// The blocks shared out to pages: a domain, and what else is a model's member with blocks of its own, has
/// its own page.
class PagePlan {
public:
    explicit PagePlan(const Block& root);

    [[nodiscard]] const std::vector<Page>& pages() const { return all; }
    /// The page on which a block or key has its entry.
    [[nodiscard]] const Page& pageOf(const std::string& path) const;
    /// A link to the entry of a block or key, from any page.
    [[nodiscard]] std::string link(const std::string& path) const;

private:
    void add(const Block& block, std::size_t page);

    std::vector<Page> all;
    std::map<std::string, std::size_t> pageOfBlock;
};

} // namespace reference
