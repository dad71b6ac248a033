// Rows as screen readers meet them: items of a list, with actions that have names.
#include <QAccessible>
#include <QAccessibleWidget>
#include <QStringList>

#include "apps/corvane-today/CompanionWindow.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TaskRow.h"
#include "apps/corvane-today/WidgetWindow.h"

namespace corvane {
namespace {

template <auto kSignal>
void emitSignal(TaskRow& row) {
    Q_EMIT(row.*kSignal)();
}

template <int kMinutes>
void remind(TaskRow& row) {
    auto* window = qobject_cast<WidgetWindow*>(row.window());
    if (window) Q_EMIT window->reminderWanted(QString::fromStdString(row.taskid()), kMinutes);
}

struct RowAction {
    const char* name;
    void (*act)(TaskRow&);
    bool isForActs;  ///< for a task that was just completed or moved
};
constexpr RowAction kActions[] = {
    {"Open",                    emitSignal<&TaskRow::openWanted>,       false},
    {"Done",                    emitSignal<&TaskRow::completionWanted>, false},
    {"Remind me in 10 minutes", remind<10>,                             false},
    {"Remind me in 1 hour",     remind<60>,                             false},
    {"Move to tomorrow",        emitSignal<&TaskRow::moveWanted>,       false},
    {"Undo",                    emitSignal<&TaskRow::undoWanted>,       true },
};

// QAccessibleWidget offers the widget's own actions; a row's are these.
class AccessibleRow final : public QAccessibleWidget {
  public:
    explicit AccessibleRow(TaskRow& row) : QAccessibleWidget(&row, QAccessible::ListItem), row_(row) {}

    QStringList actionNames() const override {
        QStringList names;
        for (const RowAction& action : kActions) {
            if (isOffered(action)) names << QString::fromLatin1(action.name);
        }
        return names;
    }

    QString localizedActionName(const QString& name) const override {
        return translated(name.toLatin1().constData());
    }

    void doAction(const QString& name) override {
        for (const RowAction& action : kActions) {
            if (isOffered(action) && name == QLatin1String(action.name)) action.act(row_);
        }
    }

  private:
    bool isOffered(const RowAction& action) const {
        return action.isForActs == (row_.act() != RowAct::kNone);
    }

    TaskRow& row_;
};

// Qt takes a plain widget for a mere part, even where it is a window.
bool isOwnWindow(const QObject* object) {
    return qobject_cast<const WidgetWindow*>(object) || qobject_cast<const CompanionWindow*>(object);
}

QAccessibleInterface* accessibleOf(const QString& className, QObject* object) {
    Q_UNUSED(className);
    if (auto* row = qobject_cast<TaskRow*>(object)) return new AccessibleRow(*row);
    if (auto* list = qobject_cast<TaskList*>(object)) return new QAccessibleWidget(list, QAccessible::List);
    if (isOwnWindow(object)) {
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
    }
    return nullptr;
}

}  // namespace

void installRowAccessibility() {
    static const bool isInstalled = (QAccessible::installFactory(accessibleOf), true);
    Q_UNUSED(isInstalled);
}

}  // namespace corvane
