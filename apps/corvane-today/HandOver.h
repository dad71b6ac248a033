// Answers hand-over URLs with our own window, until another program answers their scheme.
#pragma once

#include <QString>

namespace corvane {

class CompanionWindow;

/// Shows what a URL from outside names; a URL that is refused is answered with the reason, beside today's
/// tasks.
void answerHandOver(const QString& url, CompanionWindow& window);

}  // namespace corvane
