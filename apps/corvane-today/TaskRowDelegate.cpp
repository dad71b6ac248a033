#include "apps/corvane-today/TaskRowDelegate.h"

#include <algorithm>

#include <QMouseEvent>
#include <QPainter>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/ShownText.h"
#include "apps/corvane-today/TemplateImages.h"

namespace corvane {
namespace {

/// Lengths of a row, from the font.
struct RowMeasures {
    explicit RowMeasures(const QFont& font)
        : title(font), details(detailsFont(font)), unit(title.height() / 8.0) {}

    QFontMetricsF title;
    QFontMetricsF details;
    double unit;

    double height() const { return title.height() + details.height() + 5 * unit; }
    double boxSize() const { return title.height() * 0.95; }
    double boxStart() const { return 7 * unit; }
    double textStart() const { return boxStart() + boxSize() + 3.5 * unit; }
};

/// Places pieces in a line from its beginning on, whichever side that is.
class Line {
  public:
    Line(const QRectF& place, Qt::LayoutDirection direction)
        : rest_(place), isMirrored_(direction == Qt::RightToLeft) {}

    QRectF take(double width, double gap) {
        width = std::clamp(width, 0.0, rest_.width());
        QRectF piece = rest_;
        piece.setWidth(width);
        if (isMirrored_) piece.moveRight(rest_.right());
        const double taken = std::min(width + gap, rest_.width());
        rest_.adjust(isMirrored_ ? 0 : taken, 0, isMirrored_ ? -taken : 0, 0);
        return piece;
    }
    QRectF takeFromEnd(double width, double gap) {
        Line reversed(rest_, isMirrored_ ? Qt::LeftToRight : Qt::RightToLeft);
        const QRectF piece = reversed.take(width, gap);
        rest_ = reversed.rest_;
        return piece;
    }
    const QRectF& rest() const { return rest_; }

  private:
    QRectF rest_;
    bool isMirrored_;
};

QRectF centered(const QRectF& place, QSizeF size) {
    return {place.center().x() - size.width() / 2, place.center().y() - size.height() / 2, size.width(),
            size.height()};
}

class RowPainter {
  public:
    RowPainter(QPainter& painter, const QStyleOptionViewItem& option, const TaskListRow& row)
        : painter_(painter),
          option_(option),
          row_(row),
          measures_(option.font),
          palette_(paletteOf(*option.widget)) {}

    void paint() {
        painter_.setRenderHint(QPainter::Antialiasing);
        // A title is written in its own direction, wherever its row begins.
        painter_.setLayoutDirection(Qt::LayoutDirectionAuto);
        paintGround();
        paintStrip();
        const QRectF row = option_.rect;
        const QRect box = TaskRowDelegate::boxOf(option_.rect, option_.font, option_.direction);
        drawTemplateImage(painter_, box, row_.isDone ? "Task-VChecked" : bulletName(),
                          row_.isDone ? palette_.accent() : palette_.quietText());
        QRectF text = row.adjusted(0, 2 * measures_.unit, 0, -2 * measures_.unit);
        Line lines(text, option_.direction);
        lines.take(measures_.textStart(), 0);
        lines.takeFromEnd(4 * measures_.unit, 0);
        paintTitle(lines.rest());
        paintDetails(lines.rest());
    }

  private:
    std::string bulletName() const { return row_.widget.bullet.value_or("Task-VUnchecked"); }

    void paintGround() {
        const bool isSelected = option_.state & QStyle::State_Selected;
        const bool isHovered = option_.state & QStyle::State_MouseOver;
        const QRectF ground = QRectF(option_.rect).adjusted(2, 1, -2, -1);
        painter_.setPen(Qt::NoPen);
        if (isSelected || isHovered) {
            painter_.setBrush(isSelected ? palette_.buttonGround() : palette_.hoverGround());
            painter_.drawRoundedRect(ground, 6, 6);
        }
        if (option_.state & QStyle::State_HasFocus) {
            painter_.setBrush(Qt::NoBrush);
            painter_.setPen(QPen(palette_.accent(), 2));
            painter_.drawRoundedRect(ground.adjusted(1, 1, -1, -1), 6, 6);
        }
    }

    void paintStrip() {
        if (!row_.widget.color) return;
        const double inset = 3 * measures_.unit;
        Line line(QRectF(option_.rect).adjusted(5, inset, -5, -inset), option_.direction);
        const bool isHidden = palette_.isCloseToGround(*row_.widget.color);
        painter_.setBrush(palette_.ofList(*row_.widget.color));
        painter_.setPen(isHidden ? QPen(palette_.quietText()) : QPen(Qt::NoPen));
        painter_.drawRoundedRect(line.take(4, 0), 2, 2);
    }

    void paintTitle(const QRectF& place) {
        Line line(place, option_.direction);
        const QFontMetricsF details = measures_.details;
        const double listWidth = std::min(details.horizontalAdvance(row_.list), place.width() * 0.3);
        const QRectF list = line.takeFromEnd(listWidth, 3 * measures_.unit);
        drawText(list, row_.list, detailsFont(option_.font), palette_.quietText(), measures_.title.height());
        if (row_.widget.priority && !row_.isDone) {
            const double height = measures_.title.height() * 0.62;
            const double marks = row_.widget.priority->back() - '0';
            const QSizeF size(height * (marks * 5 + 1) / 14, height);
            QRectF mark = line.take(size.width(), 1.5 * measures_.unit);
            mark.setHeight(measures_.title.height());
            drawTemplateImage(painter_, centered(mark, size), *row_.widget.priority, problemColor(palette_));
        }
        QFont font = option_.font;
        font.setStrikeOut(row_.isDone);
        drawText(line.rest(), shownLine(row_.widget.title.value_or(std::u16string())), font,
                 row_.isDone ? palette_.quietText() : palette_.text(), measures_.title.height());
    }

    void paintDetails(const QRectF& place) {
        const double height = measures_.details.height();
        Line line(QRectF(place.left(), place.bottom() - height, place.width(), height), option_.direction);
        const double icon = height * 0.75;
        for (const auto& [isShown, name] :
             {std::pair(row_.widget.alert, "Task-Alert"), std::pair(row_.widget.repeat, "Task-Repeat")}) {
            if (!isShown) continue;
            const QRectF piece = line.take(icon, 1.5 * measures_.unit);
            drawTemplateImage(painter_, centered(piece, {icon, icon}), name, palette_.quietText());
        }
        const QFont font = detailsFont(option_.font);
        if (row_.widget.time) {
            const QString time = shownLine(*row_.widget.time);
            const QRectF piece =
                line.take(measures_.details.horizontalAdvance(time) + 1, 2.5 * measures_.unit);
            drawText(piece, time, font, row_.isLate ? problemColor(palette_) : palette_.quietText(), height);
        }
        if (row_.widget.notes) {
            drawText(line.rest(), shownLine(*row_.widget.notes), font, palette_.quietText(), height);
        }
    }

    void drawText(QRectF place, const QString& text, const QFont& font, const QColor& color, double height) {
        place.setHeight(height);
        painter_.setFont(font);
        painter_.setPen(color);
        const int side = option_.direction == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft;
        const QString shown = QFontMetricsF(font).elidedText(text, Qt::ElideRight, place.width());
        painter_.drawText(place, side | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    }

    QPainter& painter_;
    const QStyleOptionViewItem& option_;
    const TaskListRow& row_;
    RowMeasures measures_;
    WidgetPalette palette_;
};

}  // namespace

void TaskRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const auto* model = qobject_cast<const TaskListModel*>(index.model());
    if (!model) return;
    painter->save();
    RowPainter(*painter, option, model->row(index)).paint();
    painter->restore();
}

QSize TaskRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const {
    return {0, qRound(RowMeasures(option.font).height())};
}

QRect TaskRowDelegate::boxOf(const QRect& row, const QFont& font, Qt::LayoutDirection direction) {
    const RowMeasures measures(font);
    Line line(row, direction);
    line.take(measures.boxStart(), 0);
    const QRectF place = line.take(measures.boxSize(), 0);
    return centered(place, {measures.boxSize(), measures.boxSize()}).toRect();
}

bool TaskRowDelegate::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem& option,
                                  const QModelIndex& index) {
    const bool isMouse = event->type() == QEvent::MouseButtonRelease ||
                         event->type() == QEvent::MouseButtonPress ||
                         event->type() == QEvent::MouseButtonDblClick;
    if (!isMouse) return false;
    const auto* mouse = static_cast<QMouseEvent*>(event);
    constexpr int kNear = 4;
    const QRect box =
        boxOf(option.rect, option.font, option.direction).adjusted(-kNear, -kNear, kNear, kNear);
    if (mouse->button() != Qt::LeftButton || !box.contains(mouse->position().toPoint())) return false;
    if (event->type() == QEvent::MouseButtonRelease) Q_EMIT boxClicked(index);
    return true;
}

}  // namespace corvane
