// An empty window of the widget's size, ended by its first frame: what a Qt program costs that does nothing.
// With an argument it shows that as a text, which takes the toolkit's fonts.
#include <unistd.h>

#include <cstdlib>

#include <QApplication>
#include <QPainter>
#include <QTimer>
#include <QWidget>

namespace {

class EmptyWindow : public QWidget {
  public:
    explicit EmptyWindow(QString text) : text_(std::move(text)) {}

  protected:
    void paintEvent(QPaintEvent*) override {
        if (!text_.isEmpty()) QPainter(this).drawText(rect(), text_);
        QTimer::singleShot(0, [] { _exit(EXIT_SUCCESS); });
    }

  private:
    QString text_;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication application(argumentCount, arguments);
    EmptyWindow window(QApplication::arguments().value(1));
    window.resize(359, 650);
    window.show();
    return QApplication::exec();
}
