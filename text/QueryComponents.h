// The query of a URL ("taskid=1&taskid=2") as a table of keys and their values, read and written.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

namespace corvane {

/// The values of one key in their order, a single one, or a missing one.
using QueryValue = std::variant<std::monostate, std::u16string, std::vector<std::u16string>>;

/// Query values by key; enumerates its keys in the order in which they were added.
class QueryTable {
  public:
    using Entry = std::pair<std::u16string, QueryValue>;

    QueryTable() = default;
    QueryTable(std::initializer_list<Entry> entries);

    /// The value of the key; a new key is added with a missing one.
    QueryValue& operator[](std::u16string_view key);

    /// Null for a key that the table does not hold.
    const QueryValue* find(std::u16string_view key) const;

    bool empty() const { return entries_.empty(); }
    std::size_t size() const { return entries_.size(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }

    bool operator==(const QueryTable& other) const { return entries_ == other.entries_; }

  private:
    std::vector<Entry> entries_;
    std::unordered_map<std::u16string, std::size_t> positions_;
};

/// Reads a query without its "?": pieces between "&", each a key and a value that
/// `stringByURLDecodingStringParameter` decodes.
///
/// A repeated key collects its values: every value of the result is a list, never empty. A second "=" in a
/// piece ends its value, and the rest is dropped. Pieces without "=", and those whose key or value does not
/// decode, are left out.
QueryTable dictionaryFromQueryComponents(std::u16string_view query);

/// The table of a URL's query, which is between the first "?" and the first "#"; none without a "?" before
/// that.
std::optional<QueryTable> queryComponents(std::u16string_view url);

/// Writes a pair `key=value` for each value, joined by "&", encoded by `stringByURLEncodingStringParameter`.
/// None when there is no pair to write.
///
/// The value is looked up under the encoded key: a key that encoding changes has a missing value, unless the
/// encoded form is a key too. A missing value is written as "(null)".
std::optional<std::u16string> stringFromQueryComponents(const QueryTable& table);

}  // namespace corvane
