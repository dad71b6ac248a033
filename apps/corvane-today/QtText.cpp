#include "apps/corvane-today/QtText.h"

#include "platform/foundation/Localization.h"

namespace corvane {

QString qtText(std::u16string_view text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

std::u16string coreText(const QString& text) { return text.toStdU16String(); }

QString translated(const char* key) { return qtText(localizedString(key)); }

QString translated(const char* key, std::int64_t count) {
    return qtText(stringWithFormat(localizedString(key, count), {count}));
}

QString translated(const char* key, const QString& text) {
    return qtText(stringWithFormat(localizedString(key), {coreText(text)}));
}

}  // namespace corvane
