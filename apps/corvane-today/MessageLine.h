// A line of plain text for the user, in a quiet colour or in the one of problems.
#pragma once

#include <QLabel>

namespace corvane {

/// A label of plain text, whatever the text is.
QLabel* plainLabel(const QString& text, QWidget* parent);

class MessageLine : public QLabel {
    Q_OBJECT
  public:
    explicit MessageLine(QWidget* parent);

    /// Empty texts hide the line.
    void showHint(const QString& text);
    /// Screen readers speak it at once.
    void showProblem(const QString& text);
    void clearMessage() { showHint({}); }

    bool isProblem() const { return isProblem_; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void showMessage(const QString& text, bool isProblem);
    void takeColor();

    bool isProblem_ = false;
};

}  // namespace corvane
