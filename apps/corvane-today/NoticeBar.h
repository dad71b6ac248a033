// The line at the foot of a window: what was done, with a way back, or what could not be done.
#pragma once

#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include "apps/corvane-today/MessageLine.h"

namespace corvane {

class NoticeBar : public QWidget {
    Q_OBJECT
  public:
    enum class Way { kNone, kUndo };

    explicit NoticeBar(QWidget* parent);

    /// For a few seconds.
    void tell(const QString& text, Way back = Way::kNone);
    /// Until the next notice.
    void tellProblem(const QString& text);
    QString text() const { return message_->text(); }

  Q_SIGNALS:
    void undoWanted();

  private:
    MessageLine* message_;
    QPushButton* undo_;
    QTimer end_;
};

}  // namespace corvane
