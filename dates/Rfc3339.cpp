#include "dates/Rfc3339.h"

#include <cmath>

namespace corvane {
namespace {

constexpr std::u16string_view kShape = u"0000-00-00T00:00:00.000Z";  // '0' stands for any digit
constexpr std::u16string_view kEarliest = u"0000-01-01T00:00:00.000Z";
constexpr std::u16string_view kLatest = u"9999-12-31T23:59:59.999Z";
constexpr int kMillisecondsPerSecond = 1000;

// Where the digits of a field stand in the text.
struct Field {
    std::size_t position, width;
};
constexpr Field kYear{0, 4}, kMonth{5, 2}, kDay{8, 2}, kHour{11, 2}, kMinute{14, 2}, kSecond{17, 2};
constexpr Field kMilliseconds{20, 3};

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool hasShape(std::u16string_view text) {
    if (text.size() != kShape.size()) return false;
    for (std::size_t i = 0; i < kShape.size(); ++i) {
        if (kShape[i] == u'0' ? !isDigit(text[i]) : text[i] != kShape[i]) return false;
    }
    return true;
}

int read(std::u16string_view text, Field field) {
    int value = 0;
    for (const char16_t unit : text.substr(field.position, field.width)) value = value * 10 + (unit - u'0');
    return value;
}

void write(std::u16string& text, Field field, int value) {
    for (std::size_t i = field.width; i-- > 0; value /= 10) {
        text[field.position + i] = static_cast<char16_t>(u'0' + value % 10);
    }
}

// A field beyond its range has been carried into the next, so that it no longer reads as written.
bool isCarried(const cctz::civil_second& civil, std::u16string_view text) {
    return civil.month() != read(text, kMonth) || civil.day() != read(text, kDay) ||
           civil.hour() != read(text, kHour) || civil.minute() != read(text, kMinute) ||
           civil.second() != read(text, kSecond);
}

struct RoundedDate {
    Date second;
    int milliseconds;
};

RoundedDate roundedToMilliseconds(Date date) {
    const double seconds = date.time_since_epoch().count();
    if (!std::isfinite(seconds)) return {date, 0};
    const double whole = std::floor(seconds);
    const int milliseconds = static_cast<int>(std::lround((seconds - whole) * kMillisecondsPerSecond));
    const int carry = milliseconds / kMillisecondsPerSecond;
    return {Date(TimeInterval(whole + carry)), milliseconds % kMillisecondsPerSecond};
}

std::u16string textOfFields(const cctz::civil_second& civil, int milliseconds) {
    if (civil.year() < 0) return std::u16string(kEarliest);
    if (civil.year() > 9999) return std::u16string(kLatest);
    std::u16string result(kShape);
    write(result, kYear, static_cast<int>(civil.year()));
    write(result, kMonth, civil.month());
    write(result, kDay, civil.day());
    write(result, kHour, civil.hour());
    write(result, kMinute, civil.minute());
    write(result, kSecond, civil.second());
    write(result, kMilliseconds, milliseconds);
    return result;
}

const Rfc3339Formatter& utcFormatter() {
    static const Rfc3339Formatter formatter(cctz::utc_time_zone());
    return formatter;
}

const Rfc3339Formatter& localFormatter() {
    static const Rfc3339Formatter formatter(Calendar::current().timeZone());
    return formatter;
}

}  // namespace

std::optional<Date> Rfc3339Formatter::dateFromString(std::u16string_view text) const {
    const std::scoped_lock lock(mutex_);
    if (!hasShape(text)) return std::nullopt;
    const cctz::civil_second civil(read(text, kYear), read(text, kMonth), read(text, kDay), read(text, kHour),
                                   read(text, kMinute), read(text, kSecond));
    if (isCarried(civil, text)) return std::nullopt;
    const double milliseconds = read(text, kMilliseconds);
    return calendar_.dateFromCivil(civil) + TimeInterval(milliseconds / kMillisecondsPerSecond);
}

std::u16string Rfc3339Formatter::stringFromDate(Date date) const {
    const std::scoped_lock lock(mutex_);
    const RoundedDate rounded = roundedToMilliseconds(date);
    return textOfFields(calendar_.civilSecond(rounded.second), rounded.milliseconds);
}

void load() {
    utcFormatter();
    localFormatter();
}

std::optional<Date> dateFromRfc3339(std::u16string_view text) { return utcFormatter().dateFromString(text); }

std::u16string stringOfRfc3339(Date date) { return utcFormatter().stringFromDate(date); }

std::optional<Date> dateLocalizedFromRfc3339(std::u16string_view text) {
    return localFormatter().dateFromString(text);
}

std::u16string stringOfLocalizedRfc3339(Date date) { return localFormatter().stringFromDate(date); }

}  // namespace corvane
