#include "apps/corvane-today/FieldForm.h"

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"

namespace corvane {

QFormLayout* makeFieldForm(std::span<const FieldRow> rows, QWidget* parent) {
    auto* form = new QFormLayout;
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(spacing(*parent, 2));
    form->setVerticalSpacing(spacing(*parent, 1.2));
    form->setLabelAlignment(Qt::AlignLeading | Qt::AlignTop);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    for (const FieldRow& row : rows) {
        QLabel* label = makeFieldLabel(row.name, row.field, parent);
        label->setContentsMargins(0, spacing(*parent, 0.2), 0, 0);
        form->addRow(label, row.field);
        row.field->setAccessibleName(translated(row.name));
    }
    return form;
}

QLabel* makeFieldLabel(const char* name, QWidget* field, QWidget* parent) {
    QLabel* label = plainLabel(translated(name), parent);
    label->setForegroundRole(QPalette::PlaceholderText);
    label->setBuddy(field);
    return label;
}

void describeField(const WordsField& field, const char* name, const char* example) {
    field.line().setAccessibleName(translated(name));
    field.line().setPlaceholderText(translated(example));
}

}  // namespace corvane
