#include "text/TagSuffixes.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>
#include <utility>

namespace corvane {
namespace {

// Less than every unit, so that a tag text sorts before those that end with it.
constexpr std::int32_t kBeforeStart = -1;

// The unit of the tag text before its last `length` ones.
std::int32_t unitBefore(std::u16string_view tag, std::size_t length) {
    return length < tag.size() ? tag[tag.size() - 1 - length] : kBeforeStart;
}

}  // namespace

TagSuffixes::TagSuffixes(std::vector<std::u16string_view> tags)
    : tags_(std::move(tags)), byEnd_(tags_.size()), firstSuffixes_(tags_.size()) {
    sortByEnd();
    findFirstSuffixes();
}

TagSuffixes::Search TagSuffixes::search() const {
    Search search;
    search.end_ = byEnd_.size();
    return search;
}

TagOrder TagSuffixes::extend(Search& search, char16_t unit) const {
    const auto range = std::span(byEnd_).subspan(search.begin_, search.end_ - search.begin_);
    const auto key = [&](TagOrder order) { return unitBefore(tags_[order], search.length_); };
    const auto first = std::ranges::lower_bound(range, std::int32_t{unit}, {}, key);
    const auto last = std::ranges::upper_bound(first, range.end(), std::int32_t{unit}, {}, key);
    search.end_ = search.begin_ + static_cast<std::size_t>(last - range.begin());
    search.begin_ += static_cast<std::size_t>(first - range.begin());
    ++search.length_;
    return first != last && tags_[*first].size() == search.length_ ? *first : kNoTag;
}

void TagSuffixes::sortByEnd() {
    std::iota(byEnd_.begin(), byEnd_.end(), TagOrder{0});
    std::ranges::sort(byEnd_, [this](TagOrder left, TagOrder right) {
        const std::u16string_view a = tags_[left];
        const std::u16string_view b = tags_[right];
        return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
    });
}

// Sorted by their ends, tag texts come after those that they end with, like the words of a dictionary after
// their own beginnings: a stack of suffixes, each one ending the next, is enough.
void TagSuffixes::findFirstSuffixes() {
    std::vector<TagOrder> suffixes;
    for (const TagOrder order : byEnd_) {
        while (!suffixes.empty() && !tags_[order].ends_with(tags_[suffixes.back()])) suffixes.pop_back();
        firstSuffixes_[order] = suffixes.empty() ? order : std::min(order, firstSuffixes_[suffixes.back()]);
        suffixes.push_back(order);
    }
}

}  // namespace corvane
