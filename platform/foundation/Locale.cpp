#include "platform/foundation/Locale.h"

#include <unicode/calendar.h>
#include <unicode/coll.h>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <vector>

#include "platform/foundation/Environment.h"

namespace corvane {
namespace {

constexpr std::size_t kMaximumFormatters = 16;
constexpr double kMillisecondsPerSecond = 1000;

std::u16string textOf(const icu::UnicodeString& string) {
    return {string.getBuffer(), static_cast<std::size_t>(string.length())};
}

// A view of the text without a copy; the text must outlive it.
icu::UnicodeString aliasOfText(std::u16string_view text) {
    constexpr UBool kIsTerminated = false;
    return {kIsTerminated, icu::ConstChar16Ptr(text.data()), static_cast<std::int32_t>(text.size())};
}

// The C library's modifiers that name a script; ICU would read them as variants.
std::string_view scriptOfModifier(std::string_view modifier) {
    if (modifier == "latin" || modifier == "iqtelif") return "Latn";
    if (modifier == "cyrillic") return "Cyrl";
    if (modifier == "devanagari") return "Deva";
    return {};
}

// ICU's name of a locale of the C library, "sr_RS.UTF-8@latin" or "C".
std::string canonicalIdentifier(std::string_view identifier) {
    const std::size_t at = identifier.find('@');
    std::string_view name = identifier.substr(0, at);
    const std::string_view modifier = at == std::string_view::npos ? "" : identifier.substr(at + 1);
    name = name.substr(0, name.find('.'));
    if (name.empty() || name == "C" || name == "POSIX") return "en_US_POSIX";
    std::string canonical(name);
    const bool hasKeywords = modifier.find('=') != std::string_view::npos;
    if (hasKeywords) canonical.append("@").append(modifier);
    const icu::Locale locale = icu::Locale::createCanonical(canonical.c_str());
    const std::string_view script = scriptOfModifier(modifier);
    if (script.empty()) return locale.getName();
    return std::string(locale.getLanguage()) + "_" + std::string(script) + "_" + locale.getCountry();
}

// The calendar of a locale may be another one; dates are Gregorian everywhere.
icu::Locale gregorianLocale(const std::string& identifier) {
    icu::Locale locale(identifier.c_str());
    UErrorCode status = U_ZERO_ERROR;
    locale.setKeywordValue("calendar", "gregorian", status);
    return locale;
}

// A calendar without zone rules and without the Julian past, for civil fields written as if they were UTC.
std::unique_ptr<icu::GregorianCalendar> civilCalendar(const icu::Locale& locale) {
    UErrorCode status = U_ZERO_ERROR;
    auto calendar = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), locale, status);
    calendar->setGregorianChange(-std::numeric_limits<double>::infinity(), status);
    return calendar;
}

UDate millisecondsOfCivil(const cctz::civil_second& civil) {
    return static_cast<UDate>(civil - cctz::civil_second(1970)) * kMillisecondsPerSecond;
}

// The fraction of a second as whole milliseconds, 0 to 999.
double millisecondsOfFraction(Date date) {
    const double seconds = date.time_since_epoch().count();
    if (!std::isfinite(seconds)) return 0;
    return std::floor((seconds - std::floor(seconds)) * kMillisecondsPerSecond);
}

// In patterns the newer locale data separate "h:mm" and "a" with a narrow no-break space; nobody types one.
std::u16string withPlainSpaces(std::u16string_view text) {
    std::u16string plain(text);
    std::ranges::replace(plain, u'\u202F', u' ');
    std::ranges::replace(plain, u'\u00A0', u' ');
    return plain;
}

bool isPatternLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z');
}

// A pattern to read by: a strict reader takes "dd" for exactly two digits, "d" for one or two. Fields that
// touch ("HHmm") keep their widths, which alone tell them apart.
std::u16string patternForReading(std::u16string_view pattern) {
    constexpr std::u16string_view kNumericFields = u"dMHhKkms";
    std::u16string result;
    bool isQuoted = false;
    for (std::size_t start = 0; start < pattern.size();) {
        const std::size_t end = std::min(pattern.find_first_not_of(pattern[start], start), pattern.size());
        const std::size_t length = end - start;
        if (pattern[start] == u'\'' && length % 2 == 1) isQuoted = !isQuoted;
        const bool touches = (start > 0 && isPatternLetter(pattern[start - 1])) ||
                             (end < pattern.size() && isPatternLetter(pattern[end]));
        const bool isNumeric = kNumericFields.find(pattern[start]) != std::u16string_view::npos;
        const bool isShortened = isNumeric && length == 2 && !touches && !isQuoted;
        result += pattern.substr(start, isShortened ? 1 : length);
        start = end;
    }
    return withPlainSpaces(result);
}

// The identifier of the process's settings, in the C library's order of precedence.
const char* identifierOfProcess() {
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') return value;
    }
    return "C";
}

}  // namespace

struct Locale::Services {
    struct Formatter {
        std::u16string pattern;
        std::unique_ptr<icu::SimpleDateFormat> format;
    };

    explicit Services(const std::string& identifier) : locale(gregorianLocale(identifier)) {}

    icu::GregorianCalendar& civil() {
        if (!calendar) calendar = civilCalendar(locale);
        return *calendar;
    }

    /// The formatter of a pattern.
    icu::SimpleDateFormat& formatter(const std::u16string& pattern) {
        const auto kept = std::ranges::find(formatters, pattern, &Formatter::pattern);
        if (kept != formatters.end()) return *kept->format;
        UErrorCode status = U_ZERO_ERROR;
        return keep(pattern, std::make_unique<icu::SimpleDateFormat>(aliasOfText(pattern), locale, status));
    }

    /// Keeps a formatter; the one made first makes room when there are too many.
    icu::SimpleDateFormat& keep(std::u16string pattern, std::unique_ptr<icu::SimpleDateFormat> format) {
        UErrorCode status = U_ZERO_ERROR;
        format->setLenient(false);
        format->setBooleanAttribute(UDAT_PARSE_PARTIAL_LITERAL_MATCH, false, status);
        if (formatters.size() == kMaximumFormatters) formatters.erase(formatters.begin());
        formatters.push_back({std::move(pattern), std::move(format)});
        return *formatters.back().format;
    }

    /// The pattern of a style's formatter, which is kept as well: a style's pattern is asked for to format.
    std::u16string patternOfStyle(icu::DateFormat* created) {
        std::unique_ptr<icu::DateFormat> owner(created);
        auto* simple = dynamic_cast<icu::SimpleDateFormat*>(created);
        if (simple == nullptr) return {};
        static_cast<void>(owner.release());  // owned as what it is from here on
        icu::UnicodeString pattern;
        simple->toPattern(pattern);
        keep(textOf(pattern), std::unique_ptr<icu::SimpleDateFormat>(simple));
        return textOf(pattern);
    }

    icu::Locale locale;
    std::optional<Weekday> firstWeekday;
    std::unique_ptr<icu::GregorianCalendar> calendar;
    std::unique_ptr<icu::DateTimePatternGenerator> generator;
    std::unique_ptr<icu::Collator> collator;
    std::map<std::string, std::u16string, std::less<>> patterns;
    std::optional<std::u16string> shortTime;
    std::optional<std::u16string> shortDate;
    std::vector<Formatter> formatters;
};

const Locale& Locale::current() {
    static std::map<std::string, std::unique_ptr<const Locale>, std::less<>> locales;
    static std::pair<std::string, const Locale*> last;
    const std::string& ofEnvironment = Environment::current().locale;
    const std::string_view setting = ofEnvironment.empty() ? identifierOfProcess() : ofEnvironment.c_str();
    if (last.second != nullptr && last.first == setting) return *last.second;
    auto found = locales.find(setting);
    if (found == locales.end()) {
        found = locales.emplace(setting, std::make_unique<const Locale>(std::string(setting))).first;
    }
    last = {std::string(setting), found->second.get()};
    return *found->second;
}

Locale::Locale(const std::string& identifier)
    : identifier_(canonicalIdentifier(identifier)), services_(std::make_unique<Services>(identifier_)) {}
Locale::~Locale() = default;

std::string Locale::language() const { return services_->locale.getLanguage(); }

bool Locale::isRightToLeft() const { return services_->locale.isRightToLeft(); }

Weekday Locale::firstWeekday() const {
    if (!services_->firstWeekday) {
        UErrorCode status = U_ZERO_ERROR;
        const Weekday day = services_->civil().getFirstDayOfWeek(status);
        services_->firstWeekday = U_SUCCESS(status) ? day : kSunday;
    }
    return *services_->firstWeekday;
}

const std::u16string& Locale::patternForSkeleton(std::string_view skeleton) const {
    const auto kept = services_->patterns.find(skeleton);
    if (kept != services_->patterns.end()) return kept->second;
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::DateTimePatternGenerator>& generator = services_->generator;
    if (!generator) {
        generator.reset(icu::DateTimePatternGenerator::createInstance(services_->locale, status));
    }
    const icu::UnicodeString fields(skeleton.data(), static_cast<std::int32_t>(skeleton.size()), US_INV);
    std::u16string pattern = textOf(generator ? generator->getBestPattern(fields, status) : fields);
    return services_->patterns.emplace(skeleton, std::move(pattern)).first->second;
}

const std::u16string& Locale::shortTimePattern() const {
    if (!services_->shortTime) {
        services_->shortTime = services_->patternOfStyle(
            icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, services_->locale));
    }
    return *services_->shortTime;
}

const std::u16string& Locale::shortDatePattern() const {
    if (!services_->shortDate) {
        services_->shortDate = services_->patternOfStyle(
            icu::DateFormat::createDateInstance(icu::DateFormat::kShort, services_->locale));
    }
    return *services_->shortDate;
}

std::u16string Locale::stringFromDate(Date date, const std::u16string& pattern,
                                      const Calendar& calendar) const {
    icu::GregorianCalendar& civil = services_->civil();
    UErrorCode status = U_ZERO_ERROR;
    civil.setLenient(true);
    civil.setTime(millisecondsOfCivil(calendar.civilSecond(date)) + millisecondsOfFraction(date), status);
    icu::UnicodeString text;
    icu::FieldPosition ignored;
    services_->formatter(pattern).format(civil, text, ignored);
    return textOf(text);
}

std::optional<cctz::civil_second> Locale::civilFromString(std::u16string_view text,
                                                          const std::u16string& pattern,
                                                          const cctz::civil_second& start) const {
    constexpr double kMillisecondsPerYear = 365.2425 * 86'400 * kMillisecondsPerSecond;
    const std::u16string plain = withPlainSpaces(text);
    icu::SimpleDateFormat& format = services_->formatter(patternForReading(pattern));
    icu::GregorianCalendar& civil = services_->civil();
    const UDate first = millisecondsOfCivil(start);
    UErrorCode status = U_ZERO_ERROR;
    // Two digits of a year mean the one from 80 years before `start` to 20 years after it.
    format.set2DigitYearStart(first - 80 * kMillisecondsPerYear, status);
    civil.setLenient(false);
    civil.setTime(first, status);
    icu::ParsePosition position(0);
    format.parse(aliasOfText(plain), civil, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() != static_cast<std::int32_t>(plain.size())) {
        return std::nullopt;
    }
    const UDate parsed = civil.getTime(status);
    if (U_FAILURE(status)) return std::nullopt;
    return cctz::civil_second(1970) + static_cast<std::int64_t>(std::floor(parsed / kMillisecondsPerSecond));
}

int Locale::localizedCaseInsensitiveCompare(std::u16string_view a, std::u16string_view b) const {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator>& collator = services_->collator;
    if (!collator) {
        collator.reset(icu::Collator::createInstance(services_->locale, status));
        if (U_FAILURE(status)) return a.compare(b);
        collator->setStrength(icu::Collator::SECONDARY);
    }
    return collator->compare(a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                             static_cast<std::int32_t>(b.size()), status);
}

}  // namespace corvane
