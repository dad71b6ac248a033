// The list of keys, as a small window of its own.
#pragma once

#include <QWidget>

namespace corvane {

void showKeyHelp(QWidget* parent);

}  // namespace corvane
