#include "platform/foundation/Localization.h"

#include <gtest/gtest.h>

#include <clocale>

#include "platform/foundation/Text.h"
#include "support/FileBytes.h"
#include "support/ProcessVariable.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

std::string littleEndian(std::size_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(number >> shift & 255));
    return bytes;
}

// A catalogue in GNU gettext's MO format; pairs of text and translation, sorted by text.
std::string catalogue(const std::vector<std::pair<std::string, std::string>>& entries) {
    constexpr std::size_t kHeaderSize = 28;
    const std::size_t translations = kHeaderSize + 8 * entries.size();
    const std::size_t texts = translations + 8 * entries.size();
    std::string tables[2];
    std::string strings;
    for (const auto& [text, translation] : entries) {
        for (int i = 0; i < 2; ++i) {
            const std::string& string = i == 0 ? text : translation;
            tables[i] += littleEndian(string.size()) + littleEndian(texts + strings.size());
            strings += string + '\0';
        }
    }
    return littleEndian(0x950412de) + littleEndian(0) + littleEndian(entries.size()) +
           littleEndian(kHeaderSize) + littleEndian(translations) + littleEndian(0) + littleEndian(0) +
           tables[0] + tables[1] + strings;
}

TEST(Localization, ReadsTheCatalogueOfTheProcessesLanguage) {
    using namespace std::string_literals;
    const TestEnvironment environment;
    environment->translate = nullptr;
    const std::filesystem::path catalogues = environment.containerDirectory() / "locale";
    writeFileBytes(catalogues / "pl/LC_MESSAGES/corvane.mo",
                   catalogue({
                       {"",
                        "Content-Type: text/plain; charset=UTF-8\nPlural-Forms: nplurals=3; plural=(n==1 ? 0 "
                        ": n%10>=2 && n%10<=4 && (n%100<10 || n%100>=20) ? 1 : 2);\n"    },
                       {"In %d days\0In %d days"s, "Za %d dzień\0Za %d dni\0Za %d dób"s},
                       {"Today",                   "Dziś"                               }
    }));
    const ProcessVariable directory("CORVANE_LOCALE_DIR", catalogues.c_str());
    const ProcessVariable language("LANGUAGE", "pl");
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_EQ(localizedString("Today"), u"Dziś");
    EXPECT_EQ(localizedString("Tomorrow"), u"Tomorrow");
    EXPECT_EQ(localizedString("In %d days", 1), u"Za %d dzień");
    EXPECT_EQ(localizedString("In %d days", 3), u"Za %d dni");
    EXPECT_EQ(localizedString("In %d days", 5), u"Za %d dób");
    EXPECT_EQ(localizedUtf8("In %d days", {std::int64_t{3}}), "Za 3 dni");
    EXPECT_EQ(localizedString(""), u"");  // not the header of the catalogue
    {
        // English has no catalogue, and yet goes before the languages behind it.
        const ProcessVariable englishFirst("LANGUAGE", "en_GB:pl");
        EXPECT_EQ(localizedString("Today"), u"Today");
    }
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(localizedString("Today"), u"Today");
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Localization, AsksTheEnvironmentsTranslatorFirst) {
    const TestEnvironment environment;
    environment->translate = [](const char* key,
                                std::optional<std::int64_t> count) -> std::optional<std::string> {
        if (std::string_view(key) == "Today") return "Heute";
        return count == 7 ? std::optional<std::string>("sieben") : std::nullopt;
    };
    EXPECT_EQ(localizedString("Today"), u"Heute");
    EXPECT_EQ(localizedString("%d days", 7), u"sieben");
    EXPECT_EQ(localizedString("%d days", 8), u"%d days");
}

TEST(Localization, FillsFormats) {
    constexpr std::int64_t kFive = 5;
    constexpr std::int64_t kMinusOne = -1;
    EXPECT_EQ(stringWithFormat(u"", {kFive}), u"");
    EXPECT_EQ(stringWithFormat(u"%d of %ld, %u", {kFive, kMinusOne, kFive}), u"5 of -1, 5");
    EXPECT_EQ(stringWithFormat(u"%2$@: %1$d, %2$@", {kFive, u"Milk"}), u"Milk: 5, Milk");
    EXPECT_EQ(stringWithFormat(u"%@ at %@", {u"%d %@", u"noon"}), u"%d %@ at noon");
    EXPECT_EQ(stringWithFormat(u"100%% of %d%%", {kFive}), u"100% of 5%");
}

TEST(Localization, LeavesPlaceholdersThatNothingFits) {
    constexpr std::int64_t kMinusOne = -1;
    EXPECT_EQ(stringWithFormat(u"missing %d %@", {kMinusOne}), u"missing -1 %@");
    EXPECT_EQ(stringWithFormat(u"wrong kind %@ %d", {kMinusOne, u"Milk"}), u"wrong kind %@ %d");
    EXPECT_EQ(stringWithFormat(u"below zero %u", {kMinusOne}), u"below zero %u");
    EXPECT_EQ(stringWithFormat(u"beyond %3$@ %0$@ %99999$@", {u"Milk"}), u"beyond %3$@ %0$@ %99999$@");
    EXPECT_EQ(stringWithFormat(u"unknown %s %f % %l%", {u"Milk"}), u"unknown %s %f % %l%");
}

}  // namespace
}  // namespace corvane
