#include "apps/host/AlertWords.h"

#include <gtest/gtest.h>

#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// "1 hour before" has no digit here.
std::optional<std::string> inGerman(std::string_view key, std::optional<std::int64_t> count) {
    if (key == "at due time") return "zur Fälligkeit";
    if (key == "none") return "kein Alarm";
    if (key == "1 hour before") return "eine Stunde vorher";
    if (key == "1 minute before") return "1 Minute vorher";
    if (key == "%d hours before") return count == 1 ? "%d Stunde vorher" : "%d Stunden vorher";
    if (key == "%d minutes before") return "%d Minuten vorher";
    if (key == "%d days before") return "%d Tage vorher";
    return std::nullopt;
}

TEST(AlertWords, ReadsBackWhatItTellsInTheUsersLanguage) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin", .locale = "de_DE"});
    environment->translate = inGerman;
    const Date due = at("2024-04-01 12:00");
    for (const char* alert : {"2024-04-01 12:00", "2024-04-01 11:59", "2024-04-01 11:00", "2024-04-01 02:00",
                              "2024-03-30 12:00", "2024-04-01 10:30"}) {
        SCOPED_TRACE(alert);
        const auto read = alertFromWords(alertInWords(at(alert), due), due);
        ASSERT_TRUE(std::holds_alternative<std::optional<Date>>(read)) << std::get<std::string>(read);
        EXPECT_EQ(std::get<std::optional<Date>>(read), at(alert));
    }
    EXPECT_EQ(std::get<std::optional<Date>>(alertFromWords(u"Kein Alarm", due)), std::nullopt);
    EXPECT_EQ(std::get<std::optional<Date>>(alertFromWords(u"2h", due)), at("2024-04-01 10:00"));
    EXPECT_TRUE(std::holds_alternative<std::string>(alertFromWords(u"vier Stunden vorher", due)));
}

}  // namespace
}  // namespace corvane
