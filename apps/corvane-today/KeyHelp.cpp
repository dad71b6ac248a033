#include "apps/corvane-today/KeyHelp.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "apps/corvane-today/QtText.h"
#include "platform/foundation/Localization.h"

namespace corvane {
namespace {

struct KeyLine {
    const char* keys;
    const char* act;
};
constexpr KeyLine kKeyLines[] = {
    {textKey("Up, Down, Home, End"), textKey("Go from task to task")   },
    {textKey("Enter"),               textKey("Open the task")          },
    {textKey("Space"),               textKey("Mark the task as done")  },
    {textKey("Ctrl+Z"),              textKey("Undo")                   },
    {textKey("Ctrl+N"),              textKey("Add a task")             },
    {textKey("M"),                   textKey("Show all tasks of today")},
    {textKey("T, held"),             textKey("Preview tomorrow")       },
    {textKey("P"),                   textKey("Hide or show the titles")},
    {textKey("F5"),                  textKey("Refresh")                },
    {textKey("Esc"),                 textKey("Hide the window")        },
    {textKey("?"),                   textKey("Show the keys")          },
};

QLabel* plainLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    return label;
}

}  // namespace

void showKeyHelp(QWidget* parent) {
    auto* dialog = new QDialog(parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(translated("Keys"));
    auto* grid = new QGridLayout(dialog);
    grid->setHorizontalSpacing(24);
    int row = 0;
    for (const KeyLine& line : kKeyLines) {
        QLabel* keys = plainLabel(translated(line.keys), dialog);
        QFont font = keys->font();
        font.setWeight(QFont::DemiBold);
        keys->setFont(font);
        grid->addWidget(keys, row, 0);
        grid->addWidget(plainLabel(translated(line.act), dialog), row++, 1);
    }
    auto* buttons = new QDialogButtonBox(dialog);
    QPushButton* close = buttons->addButton(translated("Close"), QDialogButtonBox::RejectRole);
    close->setDefault(true);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    grid->addWidget(buttons, row, 0, 1, 2);
    dialog->open();
}

}  // namespace corvane
