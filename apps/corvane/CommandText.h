// Texts of the command line in the user's language, as UTF-8. The English text is the key.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"

namespace corvane {

inline FormatArgument formatArgument(std::integral auto number) { return static_cast<std::int64_t>(number); }
inline FormatArgument formatArgument(std::string_view utf8) { return textFromUtf8(utf8); }
inline FormatArgument formatArgument(std::u16string_view text) { return std::u16string(text); }

/// The translation of a key, filled with numbers ("%d") and texts ("%@"). A number in first place is a count:
/// it chooses the plural form.
///
///     translated("the list %@ is read-only", name)
///     translated("Moved %1$d tasks to %2$@.", tasks.size(), name)
template <typename... Arguments>
std::string translated(const char* key, const Arguments&... arguments) {
    return localizedUtf8(key, {formatArgument(arguments)...});
}

/// `translated` of a sentence with a count that has an English text of its own for one. That text does not
/// tell the count and takes only the further arguments; the other one takes the count first.
///
///     translatedCount("Moved 1 task to %@.", "Moved %1$d tasks to %2$@.", tasks.size(), name)
template <typename... Arguments>
std::string translatedCount(const char* one, const char* several, std::integral auto count,
                            const Arguments&... arguments) {
    return count == 1 ? translated(one, arguments...) : translated(several, count, arguments...);
}

/// "Milk, bread", as the user's language separates words.
std::string joined(const std::vector<std::string>& words);

}  // namespace corvane
