// Texts without the differences that [c] and [d] ignore.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The options of a text comparison: [c], [d], [cd].
struct TextOptions {
    bool ignoresCase = false;
    bool ignoresDiacritics = false;  ///< "é" equals "e"

    bool any() const { return ignoresCase || ignoresDiacritics; }
    bool operator==(const TextOptions&) const = default;
};

/// The text as the options see it: decomposed and without nonspacing marks, then with full case folding
/// ("Straße" becomes "strasse"). Two texts are equal under the options when these are.
/// Source: Unicode normalisation form D, CaseFolding.txt.
std::u16string foldedText(std::u16string_view text, TextOptions options);

}  // namespace corvane
