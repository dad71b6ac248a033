// A line to type in that is read as words: what they mean shows while they are typed, and they are taken when
// the typing is finished.
#pragma once

#include <functional>

#include <QLineEdit>
#include <QWidget>

#include "apps/corvane-today/MessageLine.h"

namespace corvane {

struct WordsReading {
    bool isUnderstood = false;
    QString message;  ///< what the words mean, or why they mean nothing; one line
};

class WordsField : public QWidget {
    Q_OBJECT
  public:
    /// @return what the words mean, without any effect
    using Reader = std::function<WordsReading(const QString&)>;
    /// Takes words that were understood. @return whether they are kept now; else they stay as typed
    using Taker = std::function<bool(const QString&)>;

    WordsField(Reader reader, Taker taker, QWidget* parent);

    QLineEdit& line() const { return *line_; }
    QString text() const { return line_->text(); }
    const MessageLine& message() const { return *message_; }

    /// Shows what is stored. Something that is being typed stays, with a word about it when the stored text
    /// has changed meanwhile; Escape goes back to the stored one.
    void showStored(const QString& text, const QString& hint);
    void setReadOnly(bool isReadOnly) { line_->setReadOnly(isReadOnly); }

    bool isBeingTyped() const { return line_->isModified(); }
    /// As when the typing is finished. @return false: the words mean nothing, which now shows
    bool takeTyped();
    /// Shows what the words mean, or why they mean nothing, typed or not. @return whether they are understood
    bool check();
    /// Goes back to what is stored.
    void giveUpTyping();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showMeaning();

    Reader reader_;
    Taker taker_;
    QLineEdit* line_;
    MessageLine* message_;
    QString stored_;
    QString storedHint_;
};

}  // namespace corvane
