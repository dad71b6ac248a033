// A tree of names that knows nothing of positions: what the operations on tasks should come to.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace corvane {

class NameTree {
  public:
    /// Names in tree order, with the number of their ancestors.
    struct Entry {
        std::string name;
        int depth = 0;
    };
    using Entries = std::vector<Entry>;

    const Entries& entries() const { return entries_; }

    /// The parent's name; empty for a root.
    std::string parentOf(const std::string& name) const {
        const auto entry = find(entries_, name);
        const auto parent = std::find_if(std::make_reverse_iterator(entry), entries_.rend(),
                                         [&](const Entry& other) { return other.depth < entry->depth; });
        return parent == entries_.rend() ? std::string() : parent->name;
    }
    Entries subtree(const std::string& name) const {
        const auto first = find(entries_, name);
        return {first, endOf(entries_, first)};
    }
    /// Puts a subtree behind `previous`; where that is empty, before the parent's other children.
    void put(Entries subtree, const std::string& parent, const std::string& previous) {
        auto place = entries_.begin();
        int depth = 0;
        if (!previous.empty()) {
            depth = find(entries_, previous)->depth;
            place = endOf(entries_, find(entries_, previous));
        } else if (!parent.empty()) {
            place = find(entries_, parent) + 1;
            depth = std::prev(place)->depth + 1;
        }
        const int by = depth - subtree.front().depth;
        for (Entry& entry : subtree) entry.depth += by;
        entries_.insert(place, subtree.begin(), subtree.end());
    }
    Entries cut(const std::string& name) {
        Entries subtree = this->subtree(name);
        const auto first = find(entries_, name);
        entries_.erase(first, endOf(entries_, first));
        return subtree;
    }
    /// Below itself, a subtree's children first move up to before its siblings.
    void move(const std::string& name, const std::string& parent, const std::string& previous) {
        const std::string target = previous.empty() ? parent : parentOf(previous);
        for (std::string above = target; !above.empty(); above = parentOf(above)) {
            if (above == name) liftChildren(name);
        }
        put(cut(name), target, previous);
    }
    /// A name goes, its children take its place.
    void remove(const std::string& name) {
        const auto first = find(entries_, name);
        for (auto entry = first + 1, end = endOf(entries_, first); entry != end; ++entry) --entry->depth;
        entries_.erase(first);
    }

    std::string text() const {
        std::string result;
        int depth = 0;
        for (const Entry& entry : entries_) {
            result += std::string(static_cast<std::size_t>(std::max(depth - entry.depth, 0)), ')');
            if (!result.empty()) result += entry.depth > depth ? '(' : ' ';
            result += entry.name;
            depth = entry.depth;
        }
        return result + std::string(static_cast<std::size_t>(depth), ')');
    }

  private:
    static auto find(auto& entries, const std::string& name) -> decltype(entries.begin()) {
        return std::ranges::find(entries, name, &Entry::name);
    }
    static auto endOf(auto& entries, auto first) -> decltype(first) {
        return std::find_if(first + 1, entries.end(),
                            [&](const Entry& entry) { return entry.depth <= first->depth; });
    }
    void liftChildren(const std::string& name) {
        const std::string parent = parentOf(name);
        const auto first = find(entries_, name);
        Entries children(first + 1, endOf(entries_, first));
        entries_.erase(first + 1, endOf(entries_, first));
        // One put moves them all: they are siblings, and depths count from the first one.
        put(std::move(children), parent, {});
    }

    Entries entries_;
};

}  // namespace corvane
