#include "platform/foundation/PosixTimeZone.h"

#include <cctz/zone_info_source.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view kNamePrefix = "posix-rules:";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// "CET", or "<+03>" where it is not of letters alone. Takes it away; empty when there is none.
std::string takeAbbreviation(std::string_view& text) {
    const bool isQuoted = text.starts_with('<');
    if (isQuoted) text.remove_prefix(1);
    const auto letters = static_cast<std::size_t>(std::ranges::find_if_not(text, isLetter) - text.begin());
    const std::size_t length = isQuoted ? text.find('>') : letters;
    constexpr std::size_t kShortest = 3;
    constexpr std::size_t kLongest = 30;
    if (length > std::min(kLongest, text.size()) || length < kShortest) return {};
    std::string abbreviation(text.substr(0, length));
    text.remove_prefix(isQuoted ? length + 1 : length);
    return abbreviation;
}

// "-9", "+3:30" or "5:45:10": hours west of Greenwich. Takes it away.
std::optional<std::chrono::seconds> takeOffset(std::string_view& text) {
    const bool isEast = text.starts_with('-');
    if (isEast || text.starts_with('+')) text.remove_prefix(1);
    std::chrono::seconds west{0};
    for (int unit : {3600, 60, 1}) {
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        constexpr int kMost = 59;
        if (error != std::errc() || number < 0 || number > kMost) return std::nullopt;
        text.remove_prefix(static_cast<std::size_t>(end - text.data()));
        west += std::chrono::seconds(number * unit);
        if (!text.starts_with(':')) break;
        text.remove_prefix(1);
    }
    return isEast ? west : -west;
}

// One kind of time that the rules know.
struct TimeType {
    std::string abbreviation;
    std::chrono::seconds offset{0};  // east of Greenwich
};
struct Rules {
    TimeType standard;
    TimeType summer;  // without an abbreviation: there is none
};

std::optional<Rules> rulesOfText(std::string_view text) {
    Rules rules;
    rules.standard.abbreviation = takeAbbreviation(text);
    const std::optional<std::chrono::seconds> offset = takeOffset(text);
    if (rules.standard.abbreviation.empty() || !offset) return std::nullopt;
    rules.standard.offset = *offset;
    if (text.empty()) return rules;
    rules.summer.abbreviation = takeAbbreviation(text);
    const bool saysOffset = !text.starts_with(',');
    const std::optional<std::chrono::seconds> summer =
        saysOffset ? takeOffset(text) : *offset + std::chrono::hours(1);
    if (rules.summer.abbreviation.empty() || !summer || !text.starts_with(',')) return std::nullopt;
    rules.summer.offset = *summer;
    return rules;
}

void appendNumber(std::string& data, std::int64_t number, int bytes) {
    for (int i = bytes - 1; i >= 0; --i) data += static_cast<char>(number >> (8 * i) & 0xff);
}

// Zone data of version 2 (RFC 8536): nothing but one summer and one winter in 1900, and the rules at the end,
// which speak for all years after it.
std::string zoneData(const std::string& text) {
    constexpr std::int64_t kFirstDayOf1900 = -2'208'988'800;
    constexpr std::int64_t kDay = 86'400;
    const Rules rules = rulesOfText(text).value_or(Rules());
    std::string header = "TZif2";
    header.append(15, '\0');
    std::string data = header + std::string(24, '\0') + header;  // an empty body of version 1 comes first
    const std::string names = rules.standard.abbreviation + '\0' + rules.summer.abbreviation + '\0';
    for (const std::int64_t count : {0, 0, 0, 2, 2}) appendNumber(data, count, 4);
    appendNumber(data, std::ssize(names), 4);
    for (const std::int64_t days : {0, 1}) appendNumber(data, kFirstDayOf1900 + days * kDay, 8);
    data += {'\1', '\0'};  // the types that begin then
    appendNumber(data, rules.standard.offset.count(), 4);
    data += {'\0', '\0'};
    appendNumber(data, rules.summer.offset.count(), 4);
    data += {'\1', static_cast<char>(rules.standard.abbreviation.size() + 1)};
    return data + names + '\n' + text + '\n';
}

class ZoneData final : public cctz::ZoneInfoSource {
  public:
    explicit ZoneData(std::string data) : data_(std::move(data)) {}

    std::size_t Read(void* target, std::size_t size) override {
        const std::size_t count = std::min(size, data_.size() - position_);
        std::memcpy(target, data_.data() + position_, count);
        position_ += count;
        return count;
    }
    int Skip(std::size_t offset) override {
        position_ += std::min(offset, data_.size() - position_);
        return 0;
    }

  private:
    std::string data_;
    std::size_t position_ = 0;
};

using Source = std::unique_ptr<cctz::ZoneInfoSource>;

Source zoneDataOfName(const std::string& name, const std::function<Source(const std::string&)>& otherwise) {
    if (!name.starts_with(kNamePrefix)) return otherwise(name);
    return std::make_unique<ZoneData>(zoneData(name.substr(kNamePrefix.size())));
}

}  // namespace

std::optional<cctz::time_zone> timeZoneOfPosixRules(const std::string& rules) {
    const std::optional<Rules> read = rulesOfText(rules);
    if (!read) return std::nullopt;
    if (read->summer.abbreviation.empty()) return cctz::fixed_time_zone(read->standard.offset);
    cctz_extension::zone_info_source_factory = zoneDataOfName;
    cctz::time_zone zone;
    const bool isLoaded = cctz::load_time_zone(std::string(kNamePrefix) + rules, &zone);
    return isLoaded ? std::optional(zone) : std::nullopt;
}

}  // namespace corvane
