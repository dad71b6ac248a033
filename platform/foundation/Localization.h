// Texts for people, in the user's language. The English text is the key (gettext domain "corvane").
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace corvane {

/// Marks a key that is translated elsewhere, so that it gets into the catalogues.
constexpr const char* textKey(const char* key) { return key; }

/// The translation of a key, or the key itself.
std::u16string localizedString(const char* key);

/// The translation of a key with a count, in the plural form that `count` takes in the user's language.
std::u16string localizedString(const char* key, std::int64_t count);

using FormatArgument = std::variant<std::int64_t, std::u16string>;

/// Fills "%d", "%ld", "%u", "%@", "%1$@" and "%%" of a format. A placeholder without a fitting argument (a
/// number for "%d", a text for "%@") stays as it stands, so that a faulty translation cannot break the
/// program.
std::u16string stringWithFormat(std::u16string_view format, std::initializer_list<FormatArgument> arguments);

/// The translation of a key in UTF-8, its placeholders filled. A number in first place is a count: it chooses
/// the plural form.
std::string localizedUtf8(const char* key, std::initializer_list<FormatArgument> arguments = {});

}  // namespace corvane
