#include "model/RepeatData.h"

#include "platform/foundation/LeadingInteger.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

std::vector<std::u16string_view> piecesOf(std::u16string_view text) {
    std::vector<std::u16string_view> pieces;
    for (;;) {
        const std::size_t comma = text.find(u',');
        pieces.push_back(text.substr(0, comma));
        if (comma == std::u16string_view::npos) return pieces;
        text.remove_prefix(comma + 1);
    }
}

std::int64_t pieceOfMonthlyRepeatData(std::optional<std::u16string_view> data, std::size_t index) {
    if (!data) return 0;
    const std::vector<std::u16string_view> pieces = piecesOf(*data);
    return pieces.size() == 2 ? integerValue(pieces[index]) : 0;
}

template <class Integer>
std::u16string decimalText(Integer number) {
    return textFromUtf8(std::to_string(number));
}

}  // namespace

std::int64_t integerValue(std::u16string_view text) { return leadingInteger(utf8FromText(text)).value_or(0); }

std::optional<std::u16string> monthlyRepeatData(std::uint64_t ordinal, std::uint64_t weekday) {
    if (ordinal == 0 || weekday == 0) return std::nullopt;
    return decimalText(static_cast<std::int32_t>(ordinal)) + u"," +
           decimalText(static_cast<std::int32_t>(weekday));
}

std::uint64_t ordinalOfMonthlyRepeatData(std::optional<std::u16string_view> data) {
    const std::int64_t ordinal = pieceOfMonthlyRepeatData(data, 0);
    return ordinal >= 1 && ordinal <= 5 ? static_cast<std::uint64_t>(ordinal) : 0;
}

std::uint64_t weekdayOfMonthlyRepeatData(std::optional<std::u16string_view> data) {
    const std::int64_t weekday = pieceOfMonthlyRepeatData(data, 1);
    return weekday >= 1 ? static_cast<std::uint64_t>(weekday) : 0;
}

std::optional<std::u16string> weeklyRepeatData(std::span<const std::uint64_t> weekdays) {
    std::optional<std::u16string> data;
    for (const std::uint64_t weekday : weekdays) {
        data = data ? *data + u"," + decimalText(weekday) : decimalText(weekday);
    }
    return data;
}

std::vector<std::uint64_t> weekdaysOfWeeklyRepeatData(std::optional<std::u16string_view> data) {
    std::vector<std::uint64_t> weekdays;
    if (!data) return weekdays;
    for (const std::u16string_view piece : piecesOf(*data)) {
        weekdays.push_back(static_cast<std::uint64_t>(integerValue(piece)));
    }
    return weekdays;
}

}  // namespace corvane
