// A tree of names that knows nothing of positions: what the operations on tasks should come to.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

class NameTree {
  public:
    /// One name more, as the first child of `parent` (empty: the first root), or behind `previous`.
    void insert(const std::string& name, const std::string& parent, const std::string& previous);
    /// A copy of a subtree whose names come from `rename`, at such a place.
    template <class Rename>
    void copy(const std::string& name, const std::string& parent, const std::string& previous,
              Rename rename) {
        std::vector<Entry> copied = subtree(name);
        for (Entry& entry : copied) entry.name = rename(entry.name);
        put(std::move(copied), parent, previous);
    }
    /// A subtree moves to such a place; below itself, its children first move up to before its siblings.
    void move(const std::string& name, const std::string& parent, const std::string& previous);
    /// A name goes, its children take its place.
    void remove(const std::string& name);
    void removeSubtree(const std::string& name) { cut(name); }

    std::vector<std::string> names() const;
    std::string parentOf(const std::string& name) const;  ///< empty for a root
    std::string text() const;

  private:
    /// Names in tree order, with the number of their ancestors.
    struct Entry {
        std::string name;
        int depth = 0;
    };
    std::size_t indexOf(const std::string& name) const;
    std::size_t endOf(std::size_t index) const;
    std::vector<Entry> subtree(const std::string& name) const;
    std::vector<Entry> cut(const std::string& name);
    void put(std::vector<Entry> entries, const std::string& parent, const std::string& previous);
    void liftChildren(const std::string& name);

    std::vector<Entry> entries_;
};

}  // namespace corvane
