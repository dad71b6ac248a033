// Which tag texts a text ends with.
#pragma once

#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

namespace corvane {

/// The place of a tag text in the order of replacement, from 0.
using TagOrder = std::size_t;
inline constexpr TagOrder kNoTag = std::numeric_limits<TagOrder>::max();

/// Tag texts sorted by their ends.
class TagSuffixes {
  public:
    /// Reads a text from its end to its start.
    class Search {
      public:
        /// How many units have been read.
        std::size_t length() const { return length_; }

        /// No tag text ends with the units read so far, nor with those and more.
        bool isOver() const { return begin_ == end_; }

      private:
        friend class TagSuffixes;
        std::size_t begin_ = 0;  // of the range in byEnd_ that ends with the units read
        std::size_t end_ = 0;
        std::size_t length_ = 0;
    };

    TagSuffixes() = default;

    /// @param tags  distinct, in the order of replacement; the texts that they view outlive the object
    explicit TagSuffixes(std::vector<std::u16string_view> tags);

    std::u16string_view tag(TagOrder order) const { return tags_[order]; }

    /// The first in order of a tag text and those that it ends with.
    TagOrder firstSuffix(TagOrder order) const { return firstSuffixes_[order]; }

    Search search() const;

    /// Reads one unit more, the one before those read; returns the tag text that is just what has been read
    /// then, or kNoTag.
    TagOrder extend(Search& search, char16_t unit) const;

  private:
    void sortByEnd();
    void findFirstSuffixes();

    std::vector<std::u16string_view> tags_;
    std::vector<TagOrder> byEnd_;
    std::vector<TagOrder> firstSuffixes_;
};

}  // namespace corvane
