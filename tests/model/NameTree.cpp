#include "NameTree.h"

#include <algorithm>
#include <cstdlib>

namespace corvane {

void NameTree::insert(const std::string& name, const std::string& parent, const std::string& previous) {
    put(
        {
            {name, 0}
    },
        parent, previous);
}

void NameTree::move(const std::string& name, const std::string& parent, const std::string& previous) {
    const std::string target = previous.empty() ? parent : parentOf(previous);
    for (std::string ancestor = target; !ancestor.empty(); ancestor = parentOf(ancestor)) {
        if (ancestor == name) liftChildren(name);
    }
    if (previous == name) return;
    put(cut(name), target, previous);
}

void NameTree::remove(const std::string& name) {
    const std::size_t index = indexOf(name);
    const std::size_t end = endOf(index);
    for (std::size_t i = index + 1; i < end; ++i) --entries_[i].depth;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
}

std::vector<std::string> NameTree::names() const {
    std::vector<std::string> result;
    for (const Entry& entry : entries_) result.push_back(entry.name);
    return result;
}

std::string NameTree::parentOf(const std::string& name) const {
    const std::size_t index = indexOf(name);
    for (std::size_t i = index; i-- > 0;) {
        if (entries_[i].depth < entries_[index].depth) return entries_[i].name;
    }
    return {};
}

std::string NameTree::text() const {
    std::string result;
    int depth = 0;
    for (const Entry& entry : entries_) {
        if (entry.depth > depth) {
            result += '(';
        } else {
            result += std::string(static_cast<std::size_t>(depth - entry.depth), ')');
            if (!result.empty()) result += ' ';
        }
        result += entry.name;
        depth = entry.depth;
    }
    return result + std::string(static_cast<std::size_t>(depth), ')');
}

std::size_t NameTree::indexOf(const std::string& name) const {
    const auto found = std::ranges::find(entries_, name, &Entry::name);
    if (found == entries_.end()) std::abort();
    return static_cast<std::size_t>(found - entries_.begin());
}

std::size_t NameTree::endOf(std::size_t index) const {
    std::size_t end = index + 1;
    while (end < entries_.size() && entries_[end].depth > entries_[index].depth) ++end;
    return end;
}

std::vector<NameTree::Entry> NameTree::subtree(const std::string& name) const {
    const std::size_t index = indexOf(name);
    std::vector<Entry> entries(entries_.begin() + static_cast<std::ptrdiff_t>(index),
                               entries_.begin() + static_cast<std::ptrdiff_t>(endOf(index)));
    const int depth = entries.front().depth;
    for (Entry& entry : entries) entry.depth -= depth;
    return entries;
}

std::vector<NameTree::Entry> NameTree::cut(const std::string& name) {
    std::vector<Entry> entries = subtree(name);
    const auto first = entries_.begin() + static_cast<std::ptrdiff_t>(indexOf(name));
    entries_.erase(first, first + static_cast<std::ptrdiff_t>(entries.size()));
    return entries;
}

void NameTree::put(std::vector<Entry> entries, const std::string& parent, const std::string& previous) {
    std::size_t place = 0;
    int depth = 0;
    if (!previous.empty()) {
        place = endOf(indexOf(previous));
        depth = entries_[indexOf(previous)].depth;
    } else if (!parent.empty()) {
        place = indexOf(parent) + 1;
        depth = entries_[indexOf(parent)].depth + 1;
    }
    for (Entry& entry : entries) entry.depth += depth;
    entries_.insert(entries_.begin() + static_cast<std::ptrdiff_t>(place), entries.begin(), entries.end());
}

void NameTree::liftChildren(const std::string& name) {
    const std::string parent = parentOf(name);
    while (endOf(indexOf(name)) > indexOf(name) + 1) {
        std::size_t last = indexOf(name) + 1;
        while (endOf(last) < endOf(indexOf(name))) last = endOf(last);
        put(cut(entries_[last].name), parent, {});
    }
}

}  // namespace corvane
