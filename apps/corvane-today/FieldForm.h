// A form of labels and fields, as the pages of the companion window have it.
#pragma once

#include <span>

#include <QFormLayout>
#include <QWidget>

#include "apps/corvane-today/WordsField.h"

namespace corvane {

struct FieldRow {
    const char* name;  ///< key of a text
    QWidget* field;
};

/// Labels in a quiet colour, each the buddy of its field and its name for screen readers.
QFormLayout* makeFieldForm(std::span<const FieldRow> rows, QWidget* parent);

/// A label alone, in the same look.
QLabel* makeFieldLabel(const char* name, QWidget* field, QWidget* parent);

/// Gives a field its name for screen readers, and an example that shows while it is empty.
void describeField(const WordsField& field, const char* name, const char* example);

}  // namespace corvane
