#include "text/QueryComponents.h"

#include <algorithm>
#include <iterator>

#include "text/UrlEncoding.h"

namespace corvane {
namespace {

constexpr std::u16string_view kMissingValue = u"(null)";

// Takes the text up to the next separator off, and the separator too.
std::u16string_view takePart(std::u16string_view& text, char16_t separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::u16string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

void addPiece(QueryTable& table, std::u16string_view piece) {
    if (piece.find(u'=') == piece.npos) return;
    const std::optional<std::u16string> key = stringByURLDecodingStringParameter(takePart(piece, u'='));
    std::optional<std::u16string> value = stringByURLDecodingStringParameter(takePart(piece, u'='));
    if (!key || !value) return;
    QueryValue& values = table[*key];
    if (std::holds_alternative<std::monostate>(values)) values.emplace<std::vector<std::u16string>>();
    std::get<std::vector<std::u16string>>(values).push_back(*std::move(value));
}

// Every value as it is written, encoded.
std::vector<std::u16string> encodedValues(const QueryValue* value) {
    std::vector<std::u16string> encoded;
    if (value == nullptr || std::holds_alternative<std::monostate>(*value)) {
        encoded.emplace_back(kMissingValue);
    } else if (const auto* single = std::get_if<std::u16string>(value)) {
        encoded.push_back(stringByURLEncodingStringParameter(*single));
    } else {
        std::ranges::transform(std::get<std::vector<std::u16string>>(*value), std::back_inserter(encoded),
                               stringByURLEncodingStringParameter);
    }
    return encoded;
}

}  // namespace

QueryTable::QueryTable(std::initializer_list<Entry> entries) {
    for (const auto& [key, value] : entries) (*this)[key] = value;
}

QueryValue& QueryTable::operator[](std::u16string_view key) {
    const auto [known, isNew] = positions_.try_emplace(std::u16string(key), entries_.size());
    if (isNew) entries_.emplace_back(key, std::monostate());
    return entries_[known->second].second;
}

const QueryValue* QueryTable::find(std::u16string_view key) const {
    const auto known = positions_.find(std::u16string(key));
    return known == positions_.end() ? nullptr : &entries_[known->second].second;
}

QueryTable dictionaryFromQueryComponents(std::u16string_view query) {
    QueryTable table;
    while (!query.empty()) addPiece(table, takePart(query, u'&'));
    return table;
}

std::optional<QueryTable> queryComponents(std::u16string_view url) {
    url = url.substr(0, url.find(u'#'));
    const std::size_t mark = url.find(u'?');
    if (mark == url.npos) return std::nullopt;
    return dictionaryFromQueryComponents(url.substr(mark + 1));
}

std::optional<std::u16string> stringFromQueryComponents(const QueryTable& table) {
    std::u16string query;
    for (const auto& [key, ownValue] : table) {
        const std::u16string encodedKey = stringByURLEncodingStringParameter(key);
        // Meant so: the value is not `ownValue`, but the one under the encoded key.
        for (const std::u16string& encodedValue : encodedValues(table.find(encodedKey))) {
            if (!query.empty()) query += u'&';
            query.append(encodedKey).append(u"=").append(encodedValue);
        }
    }
    if (query.empty()) return std::nullopt;
    return query;
}

}  // namespace corvane
