#include "text/TagReplacement.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <queue>
#include <unordered_map>
#include <utility>
#include <vector>

#include "text/TagSuffixes.h"

// Replacing one tag text after the other would cost their number times the length of the text. But a tag text
// has its only ">" at its end, so the text is seen as pieces that end in a ">" each. A tag text occurs where
// a piece ends with it; replacing it takes the ">" away, and what is left joins the piece on the right. An
// unchanged piece ends with its own tag text, from its first "<" on, and with no other but those inside it.

namespace corvane {
namespace {

constexpr std::u16string_view kInlineTags[] = {u"<a>",      u"</a>",      u"<span>", u"</span>",
                                               u"<strong>", u"</strong>", u"<em>",   u"</em>"};

std::u16string_view replacementOfTag(std::u16string_view tag) {
    return std::ranges::find(kInlineTags, tag) == std::end(kInlineTags) ? u" " : u"";
}

// Takes the piece up to the next ">" off the text, or all of it when there is none.
std::u16string_view takePiece(std::u16string_view& text) {
    const std::size_t end = text.find(u'>');
    const std::u16string_view piece = text.substr(0, end == text.npos ? end : end + 1);
    text.remove_prefix(piece.size());
    return piece;
}

// From the first "<" to the end of the piece; empty without one.
std::u16string_view tagOfPiece(std::u16string_view piece) {
    return piece.substr(std::min(piece.find(u'<'), piece.size()));
}

bool isTerminated(std::u16string_view piece) { return piece.ends_with(u'>'); }

bool holdsAnotherTag(std::u16string_view tag) { return tag.find(u'<', 1) != tag.npos; }

// Numbers tag texts in the order in which they first occur.
class TagOrders {
  public:
    TagOrder orderOfTag(std::u16string_view tag) {
        const auto [known, isNew] = orders_.try_emplace(tag, tags_.size());
        if (isNew) tags_.push_back(tag);
        return known->second;
    }

    std::vector<std::u16string_view> takeTags() { return std::move(tags_); }

  private:
    std::unordered_map<std::u16string_view, TagOrder> orders_;
    std::vector<std::u16string_view> tags_;
};

// Replaces tag texts that hold others: a queue says which piece loses which tag text next.
//
// What is left of a piece can then hold a "<", and the piece that it joins can end with longer tag texts.
// Only these are searched for, from where the last search in that piece ended, and only those whose turn is
// to come: a tag text that comes about after its turn, or in it, stays. What is left is read again only when
// piece after piece inherits it and each ends like another, longer tag text.
class NestedTagReplacement {
  public:
    explicit NestedTagReplacement(std::u16string_view text);

    std::u16string run();

  private:
    struct Piece {
        std::size_t begin = 0;  // in units_
        std::size_t end = 0;
        std::size_t tagStart = 0;  // the first "<", counted from `begin`; without one the length
        std::size_t left = 0;      // the pieces beside this one in a ring: the first follows the last
        std::size_t right = 0;
        TagOrder due = kNoTag;  // of the tag texts to come, the first that the piece ends with
        TagSuffixes::Search search;

        std::size_t size() const { return end - begin; }
    };

    // The pieces that end with the same tag text lose it from right to left, so that what is left of one
    // joins a piece that stays and is not searched in vain.
    struct Turn {
        TagOrder order;
        std::size_t piece;

        bool operator>(const Turn& other) const {
            return order != other.order ? order > other.order : piece < other.piece;
        }
    };

    void addPieces(std::u16string_view text, TagOrders& orders);
    void addPiece(std::size_t begin, std::u16string_view text, TagOrder tag);
    void schedule(std::size_t index, TagOrder order);
    void replaceTag(std::size_t index);
    void join(const Piece& left, Piece& right);
    void searchTags(std::size_t index, TagOrder after);

    std::u16string units_;  // the text, in which the pieces shrink and move
    std::u16string unterminatedTag_;
    std::vector<Piece> pieces_;  // the last one has no ">"
    TagSuffixes suffixes_;
    std::priority_queue<Turn, std::vector<Turn>, std::greater<>> turns_;
};

NestedTagReplacement::NestedTagReplacement(std::u16string_view text) : units_(text) {
    TagOrders orders;
    addPieces(text, orders);
    suffixes_ = TagSuffixes(orders.takeTags());
    for (std::size_t index = 0; index < pieces_.size(); ++index) {
        Piece& piece = pieces_[index];
        piece.left = index == 0 ? pieces_.size() - 1 : index - 1;
        piece.right = index + 1 == pieces_.size() ? 0 : index + 1;
        piece.search = suffixes_.search();
        if (piece.due != kNoTag) schedule(index, suffixes_.firstSuffix(piece.due));
    }
}

// Until all tag texts are known, a piece is due for its own one.
void NestedTagReplacement::addPieces(std::u16string_view text, TagOrders& orders) {
    std::u16string_view rest = text;
    while (rest.find(u'>') != rest.npos) {
        const std::size_t begin = text.size() - rest.size();
        const std::u16string_view piece = takePiece(rest);
        const std::u16string_view tag = tagOfPiece(piece);
        addPiece(begin, piece, tag.empty() ? kNoTag : orders.orderOfTag(tag));
    }
    addPiece(text.size() - rest.size(), rest, kNoTag);
    if (tagOfPiece(rest).empty()) return;
    unterminatedTag_ = tagOfPiece(rest);
    unterminatedTag_ += u'>';
    orders.orderOfTag(unterminatedTag_);
}

void NestedTagReplacement::addPiece(std::size_t begin, std::u16string_view text, TagOrder tag) {
    Piece piece;
    piece.begin = begin;
    piece.end = begin + text.size();
    piece.tagStart = text.size() - tagOfPiece(text).size();
    piece.due = tag;
    pieces_.push_back(piece);
}

std::u16string NestedTagReplacement::run() {
    while (!turns_.empty()) {
        const Turn turn = turns_.top();
        turns_.pop();
        // A piece that found an earlier tag text, or has lost its ">", has left a turn behind.
        if (pieces_[turn.piece].due == turn.order) replaceTag(turn.piece);
    }
    std::u16string result;
    const std::size_t last = pieces_.size() - 1;
    std::size_t index = last;
    do {
        index = pieces_[index].right;
        result.append(units_, pieces_[index].begin, pieces_[index].size());
    } while (index != last);
    return result;
}

void NestedTagReplacement::schedule(std::size_t index, TagOrder order) {
    pieces_[index].due = order;
    turns_.push({order, index});
}

void NestedTagReplacement::replaceTag(std::size_t index) {
    Piece& piece = pieces_[index];
    const TagOrder order = std::exchange(piece.due, kNoTag);
    piece.end -= suffixes_.tag(order).size();
    const bool leavesTagStart = piece.tagStart < piece.size();
    for (const char16_t unit : replacementOfTag(suffixes_.tag(order))) units_[piece.end++] = unit;
    if (!leavesTagStart) piece.tagStart = piece.size();
    pieces_[piece.left].right = piece.right;
    pieces_[piece.right].left = piece.left;
    join(piece, pieces_[piece.right]);
    if (leavesTagStart) searchTags(piece.right, order);
}

// The smaller of the two moves over to the other, so that no unit moves often.
void NestedTagReplacement::join(const Piece& left, Piece& right) {
    const auto at = [this](std::size_t position) { return units_.data() + position; };
    right.tagStart = left.tagStart < left.size() ? left.tagStart : left.size() + right.tagStart;
    if (left.size() <= right.size()) {
        std::copy_backward(at(left.begin), at(left.end), at(right.begin));
        right.begin -= left.size();
        return;
    }
    const std::size_t end = left.end + right.size();
    std::copy(at(right.begin), at(right.end), at(left.end));
    right.begin = left.begin;
    right.end = end;
}

void NestedTagReplacement::searchTags(std::size_t index, TagOrder after) {
    Piece& piece = pieces_[index];
    while (!piece.search.isOver() && piece.search.length() < piece.size()) {
        const char16_t unit = units_[piece.end - 1 - piece.search.length()];
        const TagOrder order = suffixes_.extend(piece.search, unit);
        if (order > after && order < piece.due) schedule(index, order);
    }
}

}  // namespace

std::u16string stringByReplacingTags(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::u16string_view rest = text; !rest.empty();) {
        const std::u16string_view piece = takePiece(rest);
        const std::u16string_view tag = tagOfPiece(piece);
        // Where no tag text holds another one, what is left of a piece holds no "<" to begin a longer one
        // with.
        if (holdsAnotherTag(tag)) return NestedTagReplacement(text).run();
        result += piece.substr(0, piece.size() - tag.size());
        if (!tag.empty()) result += isTerminated(tag) ? replacementOfTag(tag) : tag;
    }
    return result;
}

}  // namespace corvane
