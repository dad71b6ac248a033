// Notes of any length as plain text, taken when the typing is finished.
#pragma once

#include <functional>

#include <QPlainTextEdit>

namespace corvane {

class NotesField : public QPlainTextEdit {
    Q_OBJECT
  public:
    /// @return whether the text is kept now; else it stays as typed
    using Taker = std::function<bool(const QString&)>;

    NotesField(Taker taker, QWidget* parent);

    /// The text with line feeds between its lines; no other character is replaced.
    QString text() const;
    /// Shows what is stored; what is being typed stays.
    void showStored(const QString& text);
    bool isBeingTyped() const;
    void takeTyped();
    /// Goes back to what is stored.
    void forgetTyping();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void focusOutEvent(QFocusEvent* event) override;

  private:
    Taker taker_;
    QString stored_;
};

}  // namespace corvane
