// What belongs to the user's locale: patterns, names, first weekday, comparison of names.
//
// Services are opened on first use and kept; nothing is built per call. Source of patterns: UTS #35.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/foundation/Calendar.h"
#include "platform/foundation/Date.h"

namespace corvane {

class Locale {
  public:
    /// The locale of this moment (environment, else LC_ALL, LC_TIME, LANG; "C" and "POSIX" read as
    /// en_US_POSIX). The reference stays valid for the life of the process.
    static const Locale& current();

    explicit Locale(const std::string& identifier);
    ~Locale();
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;

    const std::string& identifier() const { return identifier_; }  ///< as ICU writes it: "de_DE"
    std::string language() const;                                  ///< "de"
    bool isRightToLeft() const;
    Weekday firstWeekday() const;

    /// The locale's preferred pattern for the fields of a skeleton ("EEEMMMd").
    const std::u16string& patternForSkeleton(std::string_view skeleton) const;
    /// The pattern of the short time style.
    const std::u16string& shortTimePattern() const;
    /// The pattern of the short date style.
    const std::u16string& shortDatePattern() const;

    /// The date's civil fields in `calendar` and its milliseconds, written by a UTS #35 pattern. Zone letters
    /// in a pattern would show UTC.
    std::u16string stringFromDate(Date date, const std::u16string& pattern, const Calendar& calendar) const;

    /// Reads a text by a pattern, whole, leniently only in field widths and the kind of blank. Two digits of
    /// a year mean one from 80 years before `start` to 20 years after.
    /// @return the civil time, missing fields taken from `start`; none when the text does not fit
    std::optional<cctz::civil_second> civilFromString(std::u16string_view text, const std::u16string& pattern,
                                                      const cctz::civil_second& start) const;

    /// Localised comparison that ignores case.
    /// @return negative, zero or positive
    int localizedCaseInsensitiveCompare(std::u16string_view a, std::u16string_view b) const;

  private:
    struct Services;
    std::string identifier_;
    std::unique_ptr<Services> services_;
};

}  // namespace corvane
