#include "apps/corvane-today/RowPainting.h"

#include <algorithm>

#include <QFontMetricsF>

#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TemplateImages.h"

namespace corvane {
namespace {

constexpr double kCorner = 6;
constexpr double kFocusWidth = 2;
constexpr double kHiddenTextShare = 0.42;  ///< of a hidden text's height, drawn as a bar

class RowPainter {
  public:
    RowPainter(QPainter& painter, const QWidget& row, const RowState& state, const WidgetLook& look)
        : painter_(painter), row_(row), state_(state), look_(look) {}

    void draw(const RowContent& content) {
        drawGround();
        drawStrip(content.colorView);
        drawImage(bulletOf(content), look_.palette.quietText());
        drawTitle(content.titleLabel);
        if (state_.act == RowAct::kMovedToTomorrow) return drawMoved(content.timeLabel);
        drawImage(content.priority, look_.palette.quietText());
        drawImage(content.alert, look_.palette.quietText());
        drawImage(content.repeat, look_.palette.quietText());
        drawLabel(content.timeLabel, look_.palette.text());
        drawImage(content.reminderSign, look_.palette.quietText());
        drawLabel(content.reminderLabel, look_.palette.quietText());
        drawNotes(content.notesLabel);
    }

  private:
    bool isRightToLeft() const { return row_.layoutDirection() == Qt::RightToLeft; }

    QRectF placed(const Rect& frame) const {
        QRectF place = look_.pixels(frame);
        if (isRightToLeft()) place.moveLeft(row_.width() - place.right());
        return place;
    }

    void drawGround() {
        painter_.setPen(Qt::NoPen);
        if (state_.isHovered) {
            painter_.setBrush(look_.palette.hoverGround());
            painter_.drawRoundedRect(row_.rect(), look_.pixels(kCorner), look_.pixels(kCorner));
        }
        if (state_.hasFocus) drawFocusFrame(painter_, row_.rect(), look_);
    }

    void drawStrip(const View& strip) {
        if (!strip.backgroundColor) return;
        QRectF place = placed(strip.frame);
        painter_.setPen(Qt::NoPen);
        if (look_.palette.isCloseToGround(*strip.backgroundColor)) {
            painter_.setPen(QPen(look_.palette.quietText(), 1));
            place.adjust(0.5, 0.5, -0.5, -0.5);
        }
        painter_.setBrush(look_.palette.ofList(*strip.backgroundColor));
        const double corner = look_.pixels(strip.cornerRadius);
        painter_.drawRoundedRect(place, corner, corner);
    }

    ImageView bulletOf(const RowContent& content) const {
        ImageView bullet = content.bullet;
        if (state_.act == RowAct::kCompleted && bullet.image) bullet.image->name = "Task-VChecked";
        return bullet;
    }

    // Images point to where a line goes on.
    void drawImage(const ImageView& view, const QColor& fallback) {
        if (view.isHidden || !view.image) return;
        const QRectF place = placed(view.frame);
        painter_.save();
        if (isRightToLeft()) {
            painter_.translate(2 * place.center().x(), 0);
            painter_.scale(-1, 1);
        }
        drawTemplateImage(painter_, place, view.image->name,
                          look_.palette.readable(view.tintColor, fallback));
        painter_.restore();
    }

    void drawTitle(const Label& label) {
        const bool isPast = state_.act != RowAct::kNone;
        Label title = label;
        if (isPast) title.textColor.reset();
        drawText(title, isPast ? look_.palette.quietText() : look_.palette.text(),
                 state_.act == RowAct::kCompleted);
    }

    void drawMoved(const Label& label) {
        Label moved = label;
        moved.isHidden = false;
        moved.text = coreText(translated("Moved to tomorrow"));
        moved.frame.width = row_.width() / look_.pixels(1) - moved.frame.x;
        drawLabel(moved, look_.palette.text());
    }

    void drawNotes(const Label& label) { drawText(label, look_.palette.quietText(), false); }

    // Times are no secret.
    void drawLabel(const Label& label, const QColor& fallback) {
        if (label.isHidden || !label.text) return;
        drawLine(label, shownLine(*label.text), fallback, false);
    }

    void drawText(const Label& label, const QColor& fallback, bool isStruckOut) {
        if (label.isHidden || !label.text) return;
        if (look_.isPrivate) return drawBar(label);
        drawLine(label, shownLine(*label.text), fallback, isStruckOut);
    }

    void drawBar(const Label& label) {
        Rect frame = label.frame;
        frame.y += frame.height * (1 - kHiddenTextShare) / 2;
        frame.height *= kHiddenTextShare;
        frame.width = std::min(frame.width, 120.0);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(look_.palette.hairline());
        const QRectF place = placed(frame);
        if (place.width() > 0) painter_.drawRoundedRect(place, place.height() / 2, place.height() / 2);
    }

    // A text keeps its own direction and begins where the window's lines begin.
    void drawLine(const Label& label, const QString& text, const QColor& fallback, bool isStruckOut) {
        QRectF place = look_.pixels(label.frame);
        place.setRight(std::min(place.right(), row_.width() - state_.rightInset));
        if (place.width() <= 0) return;
        if (isRightToLeft()) place.moveLeft(row_.width() - place.right());
        QFont font = look_.fonts().qtFont(label.font);
        font.setStrikeOut(isStruckOut);
        painter_.setFont(font);
        painter_.setPen(look_.palette.readable(label.textColor, fallback));
        painter_.setLayoutDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
        const Qt::Alignment side = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
        const QString shown = QFontMetricsF(font).elidedText(text, Qt::ElideRight, place.width() + 0.5);
        painter_.drawText(place,
                          static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine |
                              Qt::TextDontClip,
                          shown);
    }

    QPainter& painter_;
    const QWidget& row_;
    const RowState& state_;
    const WidgetLook& look_;
};

bool isCut(const Label& label, const WidgetLook& look) {
    if (label.isHidden || !label.text) return false;
    return look.measuring.sizeOfText(*label.text, label.font).width > label.frame.width + 0.5;
}

}  // namespace

void drawRow(QPainter& painter, const QWidget& row, const RowContent& content, const RowState& state,
             const WidgetLook& look) {
    painter.setRenderHint(QPainter::Antialiasing);
    RowPainter(painter, row, state, look).draw(content);
}

bool isRowCut(const RowContent& content, const WidgetLook& look) {
    return isCut(content.titleLabel, look) || isCut(content.notesLabel, look);
}

void drawFocusFrame(QPainter& painter, const QRectF& place, const WidgetLook& look) {
    constexpr double kHalf = kFocusWidth / 2;
    painter.setPen(QPen(look.palette.accent(), kFocusWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(kHalf, kHalf, -kHalf, -kHalf), look.pixels(kCorner),
                            look.pixels(kCorner));
    painter.setPen(Qt::NoPen);
}

}  // namespace corvane
