// Texts between the core and Qt. Both hold UTF-16, so nothing is lost on the way.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <QString>

namespace corvane {

QString qtText(std::u16string_view text);
std::u16string coreText(const QString& text);

/// The translation of a key, as localizedString gives it; Qt's own translations are not used.
QString translated(const char* key);
/// With a count, which also fills "%d".
QString translated(const char* key, std::int64_t count);
/// With a text, which fills "%@".
QString translated(const char* key, const QString& text);

}  // namespace corvane
