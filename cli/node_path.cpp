#include "node_path.h"

#include <algorithm>
#include <vector>

namespace zentor_cli {

namespace {

using Name = std::string NodeNames::*;

// How far a name leads: the paths that it names in full, and the group in which the search ended.
class Search {
public:
    Search(const Document& document, Name name) : document_(document), name_(name) {}

    // Names may have slashes themselves, so that one text can lead several ways.
    void Look(const std::string& group, const std::string& rest) {
        const Children children = document_.ChildrenOf(group);
        for (std::uint64_t index = 0; index < children.count; ++index) {
            const std::string path = children.PathOf(index);
            const NodeNames names = document_.Names(path);
            const std::string& name = names.*name_;
            if (name == rest) {
                found_.push_back(path);
            } else if (names.kind == NodeKind::kGroup && rest.size() > name.size() && rest[name.size()] == '/' &&
                       rest.starts_with(name)) {
                deepest_ = path;
                Look(path, rest.substr(name.size() + 1));
            }
        }
    }

    const std::vector<std::string>& Found() const { return found_; }
    const std::string& Deepest() const { return deepest_; }

private:
    const Document& document_;
    Name name_;
    std::vector<std::string> found_;
    std::string deepest_;
};

constexpr std::size_t kShown = 10;

std::string ListOf(const std::vector<std::string>& items, std::uint64_t count) {
    std::string list;
    for (const std::string& item : items) list += (list.empty() ? "" : ", ") + item;
    return count > items.size() ? list + ", and " + std::to_string(count - items.size()) + " more" : list;
}

// What a group has, by name.
std::string ContentsOf(const Document& document, const std::string& group) {
    const Children children = document.ChildrenOf(group);
    std::vector<std::string> names;
    for (std::uint64_t index = 0; index < std::min<std::uint64_t>(children.count, kShown); ++index) {
        const NodeNames of = document.Names(children.PathOf(index));
        names.push_back('"' + (of.displayName.empty() ? of.matchName : of.displayName) + '"');
    }
    return names.empty() ? "there is nothing" : "there are " + ListOf(names, children.count);
}

}  // namespace

std::string DataPathOf(const Document& document, const std::string& given) {
    if (given.empty() || given.front() == '[') return given;
    std::string deepest;
    for (const Name name : {&NodeNames::displayName, &NodeNames::matchName}) {
        Search search(document, name);
        search.Look("", given);
        std::vector<std::string> found = search.Found();
        if (found.size() == 1) return found.front();
        if (!found.empty()) {
            const std::size_t count = found.size();
            found.resize(std::min(count, kShown));
            throw LibraryFailure(std::to_string(count) + " nodes are called \"" + given +
                                 "\": " + ListOf(found, count));
        }
        if (deepest.empty()) deepest = search.Deepest();
    }
    throw LibraryFailure("no node is called \"" + given + "\"; " + (deepest.empty() ? "" : "in " + deepest + ' ') +
                         ContentsOf(document, deepest));
}

}  // namespace zentor_cli
