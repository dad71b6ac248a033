#include "apps/corvane-today/NoticeBar.h"

#include <chrono>

#include <QHBoxLayout>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"

namespace corvane {

NoticeBar::NoticeBar(QWidget* parent) : QWidget(parent) {
    message_ = new MessageLine(this);
    undo_ = new QPushButton(translated("Undo"), this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(spacing(*this, 2), spacing(*this, 0.5), spacing(*this, 2), spacing(*this, 1));
    layout->addWidget(message_, 1);
    layout->addWidget(undo_);
    hide();
    end_.setSingleShot(true);
    end_.setInterval(std::chrono::seconds(8));
    connect(&end_, &QTimer::timeout, this, &QWidget::hide);
    connect(undo_, &QPushButton::clicked, this, [this] {
        hide();
        Q_EMIT undoWanted();
    });
}

void NoticeBar::tell(const QString& text, Way back) {
    message_->showHint(text);
    undo_->setVisible(back == Way::kUndo);
    setVisible(!text.isEmpty());
    end_.start();
}

void NoticeBar::tellProblem(const QString& text) {
    end_.stop();
    undo_->hide();
    show();
    message_->showProblem(text);
}

}  // namespace corvane
