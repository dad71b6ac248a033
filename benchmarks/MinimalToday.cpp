// The least that a program can do to show today's tasks: the yardstick of the whole process `corvane today`.
//
// It links the same libraries, makes first use of the same services of ICU, opens the store as it lies there
// and prints the titles and times of the tasks that are due. It knows the tables, checks nothing, cares about
// no other version of the store and nothing hostile in it.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <cctz/time_zone.h>
#include <plist/plist.h>
#include <sqlite3.h>
#include <unicode/udat.h>
#include <unicode/udatpg.h>
#include <unicode/uloc.h>

namespace {

constexpr const char* kDueTasks =
    "SELECT t.Z_PK, t.ZNAME, t.ZNOTES, t.ZDUEDATE, t.ZHASDUETIME, t.ZALERTDATE, t.ZALERTREPEAT, t.ZPRIORITY, "
    "l.ZCOLOR, u.ZACCOUNTTYPE FROM ZGTASK t JOIN ZGLIST l ON l.Z_PK = t.ZLIST "
    "LEFT JOIN ZGUSER u ON u.Z_PK = l.ZUSER "
    "WHERE t.ZREMOVED = 0 AND t.ZNAME IS NOT NULL AND t.ZNAME <> '' AND l.ZREMOVED = 0 "
    "AND l.ZISISOLATED = 0 AND t.ZCOMPLETED = 0 AND t.ZHASDUEDATE = 1 AND t.ZDUEDATE < ?1 "
    "ORDER BY t.ZPRIORITY DESC, t.ZHASDUEDATE DESC, t.ZDUEDATE, t.ZDISPLAYORDER, l.ZNAME, t.ZNAME";

// Time zone, short time style, pattern generator and a formatter of its pattern.
struct DateServices {
    DateServices() {
        cctz::load_time_zone("Europe/Berlin", &zone);
        const char* locale = uloc_getDefault();
        time = udat_open(UDAT_SHORT, UDAT_NONE, locale, u"UTC", 3, nullptr, 0, &status);
        generator = udatpg_open(locale, &status);
        constexpr std::u16string_view kSkeleton = u"EEEMMMd";
        char16_t pattern[64];
        const int32_t length = udatpg_getBestPattern(
            generator, kSkeleton.data(), static_cast<int32_t>(kSkeleton.size()), pattern, 64, &status);
        date = udat_open(UDAT_PATTERN, UDAT_PATTERN, locale, u"UTC", 3, pattern, length, &status);
    }

    std::string text(double secondsSince2001) {
        char16_t buffer[128];
        const double milliseconds = (secondsSince2001 + 978307200.0) * 1000;
        const int32_t length = udat_format(time, milliseconds, buffer, 128, nullptr, &status);
        return {buffer, buffer + length};
    }

    UErrorCode status = U_ZERO_ERROR;
    cctz::time_zone zone;
    UDateFormat* time = nullptr;
    UDateFormat* date = nullptr;
    UDateTimePatternGenerator* generator = nullptr;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) return EXIT_FAILURE;
    std::setlocale(LC_ALL, "");
    DateServices services;
    plist_free(plist_new_bool(1));
    sqlite3* database = nullptr;
    sqlite3_open_v2(arguments[1], &database, SQLITE_OPEN_READWRITE, nullptr);
    sqlite3_stmt* tasks = nullptr;
    if (sqlite3_prepare_v2(database, kDueTasks, -1, &tasks, nullptr) != SQLITE_OK) return EXIT_FAILURE;
    sqlite3_bind_double(tasks, 1, std::strtod(arguments[2], nullptr));
    constexpr int kRowsShown = 11;
    for (int row = 0; sqlite3_step(tasks) == SQLITE_ROW; ++row) {
        if (row >= kRowsShown) continue;
        const std::string time = services.text(sqlite3_column_double(tasks, 3));
        std::printf("%s\n  %s\n", reinterpret_cast<const char*>(sqlite3_column_text(tasks, 1)), time.c_str());
    }
    return EXIT_SUCCESS;
}
