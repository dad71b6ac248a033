// Names that queries and the registration of their functions share.
#pragma once

namespace corvane {

/// Orders texts as the user's locale does, without regard to case. For ORDER BY only: an index with it would
/// make the file unwritable for every other program.
inline constexpr const char* kLocalizedCollation = "CORVANE_LOCALIZED";

/// The options of a text comparison as the last argument of a function.
inline constexpr int kIgnoresCaseBit = 1;
inline constexpr int kIgnoresDiacriticsBit = 2;

}  // namespace corvane
