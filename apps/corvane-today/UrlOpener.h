// Hands URLs over to the program that the desktop knows for their scheme, where there is one beside ours.
#pragma once

#include <QObject>
#include <QString>

namespace corvane {

class UrlOpener : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;

    /// Asks the desktop without waiting, each time afresh: programs come and go.
    void open(const QString& url);

  Q_SIGNALS:
    /// No other program answers.
    void unanswered(const QString& url);

  private:
    void openWith(const QString& program, const QString& url);
};

}  // namespace corvane
