#include "apps/host/ProgramEnvironment.h"

#include <clocale>

#include "dates/Rfc3339.h"
#include "platform/foundation/Environment.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {
namespace {

// People type "2024-03-05T12:00:00Z" as well as the form with milliseconds.
std::optional<Date> clockFromText(const std::string& text) {
    std::u16string full = textFromUtf8(text);
    if (full.size() == 20 && full.back() == u'Z') full.insert(full.size() - 1, u".000");
    return dateFromRfc3339(full);
}

}  // namespace

void useLocaleOfUser() {
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_NUMERIC, "C");
}

std::optional<std::string> setUpProgramEnvironment(const ProgramOptions& options) {
    useLocaleOfUser();
    load();
    Environment& environment = Environment::current();
    environment.documentsDirectory = Environment::defaultDocumentsDirectory();
    environment.useContainerDirectory(
        options.container.empty() ? Environment::defaultContainerDirectory() : options.container,
        Environment::MissingDirectory::kLeave);
    if (options.now.empty()) return std::nullopt;
    const std::optional<Date> date = clockFromText(options.now);
    if (!date)
        return localizedUtf8("--now takes a time like 2024-03-05T12:00:00Z, not \"%@\"",
                             {textFromUtf8(options.now)});
    environment.now = [fixed = *date] { return fixed; };
    return std::nullopt;
}

}  // namespace corvane
