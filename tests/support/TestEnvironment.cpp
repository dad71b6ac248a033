#include "support/TestEnvironment.h"

#include <cctz/civil_time.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace corvane {
namespace {

std::filesystem::path makeTemporaryDirectory() {
    std::string path = (std::filesystem::temp_directory_path() / "corvane-test-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory: " + path);
    return path;
}

template <class... Arguments>
std::string formatted(const char* format, Arguments... arguments) {
    char text[64];
    std::snprintf(text, sizeof text, format, arguments...);
    return text;
}

Environment environmentOf(const TestSurroundings& surroundings) {
    Environment environment;
    environment.timeZone = surroundings.timeZone;
    environment.locale = surroundings.locale;
    environment.translate = [](const char*, std::optional<std::int64_t>) { return std::nullopt; };
    return environment;
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() : path_(makeTemporaryDirectory()) {}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

TestEnvironment::TestEnvironment(const TestSurroundings& surroundings) : scope_(environmentOf(surroundings)) {
    Environment& environment = Environment::current();
    environment.useContainerDirectory(container_.path());
    environment.documentsDirectory = container_.path() / "Documents";
    setNow(surroundings.now);
}

void TestEnvironment::setNow(std::string_view civil) const {
    Environment::current().now = [date = at(civil)] { return date; };
}

Date at(std::string_view civil) {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    double seconds = 0;
    const std::string text(civil);
    const int count =
        std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%lf", &year, &month, &day, &hour, &minute, &seconds);
    if (count != 3 && count != 5 && count != 6) throw std::invalid_argument("no civil time: " + text);
    const double wholeSeconds = std::floor(seconds);
    const cctz::civil_second whole(year, month, day, hour, minute, static_cast<int>(wholeSeconds));
    return Calendar::current().dateFromCivil(whole) + TimeInterval(seconds - wholeSeconds);
}

std::string civilText(Date date) {
    const auto milliseconds = std::llround(date.time_since_epoch().count() * 1000);
    const Date rounded{TimeInterval(static_cast<double>(milliseconds) / 1000)};
    const cctz::civil_second civil = Calendar::current().civilSecond(rounded);
    const auto fraction = static_cast<int>((milliseconds % 1000 + 1000) % 1000);
    std::string text =
        formatted("%04lld-%02d-%02d", static_cast<long long>(civil.year()), civil.month(), civil.day());
    const bool hasSeconds = civil.second() != 0 || fraction != 0;
    if (civil == cctz::civil_second(cctz::civil_day(civil)) && !hasSeconds) return text;
    text += formatted(" %02d:%02d", civil.hour(), civil.minute());
    if (hasSeconds) text += formatted(":%02d", civil.second());
    if (fraction != 0) text += formatted(".%03d", fraction);
    return text;
}

}  // namespace corvane
