// What a user does to tasks from the window, the tray, a notification or the companion window: each act is
// one save, and can be taken back.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QObject>
#include <QString>

#include "apps/host/CompletionUndo.h"
#include "apps/host/TaskEditing.h"
#include "platform/foundation/Date.h"

namespace corvane {

class GTask;

class TaskActions : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

    /// The live task of an object URI in the open store; null where there is none.
    static GTask* taskNamed(const std::string& taskid);

    /// Completes a task, or moves a repeating one on.
    /// @return whether it was done and saved; else `failed` has told why
    bool complete(const std::string& taskid);
    bool reopen(const std::string& taskid);
    /// An edit of the due day; the alert goes along.
    bool moveToTomorrow(const std::string& taskid);
    /// Any other edit, which cannot be taken back here.
    bool edit(const std::string& taskid, const std::function<void(GTask&)>& change);

    /// Makes a task, and the store where there is none yet.
    /// @return its object URI; none: `failed` has told why
    std::optional<std::string> add(const std::function<GTask&(ManagedObjectContext&)>& make);

    /// The task that the next undo is about; none when there is nothing to take back.
    std::optional<std::string> undoableTask() const;
    /// Brings back what the last of the first three acts changed, as far as nobody changed it since.
    bool undo();
    /// The same for the last act on one task.
    bool undo(const std::string& taskid);

  Q_SIGNALS:
    /// Something was saved: what is on the screen has to be refreshed.
    void changed();
    /// One line for people: the act could not be done and nothing was changed, or an undo left things as
    /// somebody had changed them since.
    void failed(const QString& reason);

  private:
    using UndoableChange = std::function<CompletionUndo(GTask&)>;
    bool act(const std::string& taskid, const UndoableChange& change);
    bool save();

    struct Undoable {
        std::string taskid;
        CompletionUndo undo;
    };
    std::vector<Undoable> undoables_;  ///< the latest at the end
};

}  // namespace corvane
