#include "apps/corvane/CommandText.h"

#include "platform/foundation/Localization.h"

namespace corvane {

std::string translatedWith(const char* key, std::initializer_list<TextArgument> arguments) {
    const auto* count = arguments.size() > 0 ? std::get_if<std::int64_t>(arguments.begin()) : nullptr;
    const std::u16string format = count ? localizedString(key, *count) : localizedString(key);
    return utf8FromText(arguments.size() > 0 ? stringWithFormat(format, arguments) : format);
}

}  // namespace corvane
