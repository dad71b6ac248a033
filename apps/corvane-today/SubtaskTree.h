// The tasks below a task, as a tree with a check box each.
#pragma once

#include <string>
#include <vector>

#include <QTreeWidget>

namespace corvane {

class GTask;

class SubtaskTree : public QTreeWidget {
    Q_OBJECT
  public:
    explicit SubtaskTree(QWidget* parent);

    /// Shows what stands below a task; what is folded and selected stays so. Without subtasks it hides.
    void show(GTask& task, bool isReadOnly);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    void completionWanted(const QString& taskid, bool isDone);
    void taskWanted(const QString& taskid);

  private:
    struct Entry {
        QString taskid;
        QString name;
        std::size_t parent = 0;  ///< index among the entries, 0 is the task itself
        bool isDone = false;

        bool operator==(const Entry&) const = default;
    };
    static std::vector<Entry> entriesBelow(GTask& task);
    void build(bool isReadOnly);
    void askForCompletion(const QTreeWidgetItem* item);

    std::vector<Entry> entries_;
    bool isReadOnly_ = false;
    bool isStale_ = false;
    bool isBuilding_ = false;
};

}  // namespace corvane
