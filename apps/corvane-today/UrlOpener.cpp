#include "apps/corvane-today/UrlOpener.h"

#include <QDesktopServices>
#include <QProcess>
#include <QTimer>
#include <QUrl>

namespace corvane {
namespace {

// The desktop files of this program begin so.
const QString kOwnPrograms = QStringLiteral("com.velmor.CorvaneToday");
constexpr int kPatienceInMilliseconds = 3000;

}  // namespace

// Opening a URL reports success even where nobody answers it, so that the desktop is asked before.
void UrlOpener::open(const QString& url) {
    auto* query = new QProcess(this);
    query->setStandardErrorFile(QProcess::nullDevice());
    connect(query, &QProcess::finished, this, [this, query, url] {
        openWith(QString::fromUtf8(query->readAllStandardOutput()).trimmed(), url);
        query->deleteLater();
    });
    connect(query, &QProcess::errorOccurred, this, [this, query, url](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart) return;  // else it finishes as well
        openWith({}, url);
        query->deleteLater();
    });
    QTimer::singleShot(kPatienceInMilliseconds, query, &QProcess::kill);
    query->start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                              QStringLiteral("x-scheme-handler/") + QUrl(url).scheme()});
}

void UrlOpener::openWith(const QString& program, const QString& url) {
    const bool isAnothers = !program.isEmpty() && !program.startsWith(kOwnPrograms);
    if (!isAnothers || !QDesktopServices::openUrl(QUrl(url))) Q_EMIT unanswered(url);
}

}  // namespace corvane
