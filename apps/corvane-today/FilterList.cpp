#include "apps/corvane-today/FilterList.h"

#include <utility>

#include <QEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "apps/corvane-today/CompanionStyle.h"
#include "apps/corvane-today/QtText.h"
#include "apps/corvane-today/TemplateImages.h"
#include "model/GSData.h"
#include "queries/TaskFilters.h"

namespace corvane {
namespace {

constexpr int kCountRole = Qt::UserRole;

class FilterDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {0, qRound(option.fontMetrics.height() * 1.9)};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const WidgetPalette palette = paletteOf(*option.widget);
        const bool isSelected = option.state & QStyle::State_Selected;
        const int gap = option.fontMetrics.height() / 2;
        const int icon = qRound(option.fontMetrics.height() * 1.15);
        QRect place = option.rect.adjusted(gap, 0, -gap, 0);
        const QRect iconPlace(place.left(), place.center().y() - icon / 2 + 1, icon, icon);
        place.setLeft(iconPlace.right() + gap);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        paintGround(*painter, option, palette);
        qvariant_cast<QIcon>(index.data(Qt::DecorationRole)).paint(painter, mirrored(iconPlace, option));
        painter->setPen(isSelected ? palette.accent() : palette.text());
        paintText(*painter, place, Qt::AlignLeft, index.data().toString(), option);
        painter->setPen(palette.quietText());
        painter->setFont(detailsFont(option.font));
        paintText(*painter, place, Qt::AlignRight, index.data(kCountRole).toString(), option);
        painter->restore();
    }

  private:
    static QRect mirrored(const QRect& place, const QStyleOptionViewItem& option) {
        return QStyle::visualRect(option.direction, option.rect, place);
    }

    static void paintText(QPainter& painter, const QRect& place, Qt::Alignment side, const QString& text,
                          const QStyleOptionViewItem& option) {
        const Qt::Alignment alignment = QStyle::visualAlignment(option.direction, side);
        painter.drawText(
            mirrored(place, option),
            static_cast<int>(alignment) | Qt::AlignAbsolute | Qt::AlignVCenter | Qt::TextSingleLine, text);
    }

    static void paintGround(QPainter& painter, const QStyleOptionViewItem& option,
                            const WidgetPalette& palette) {
        const QRectF ground = QRectF(option.rect).adjusted(1, 1, -1, -1);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::NoBrush);
        if (option.state & QStyle::State_Selected) painter.setBrush(palette.buttonGround());
        if (option.state & QStyle::State_HasFocus) painter.setPen(QPen(palette.accent(), 2));
        painter.drawRoundedRect(ground, 6, 6);
    }
};

std::optional<std::size_t> countOf(std::uint32_t filter, TaskSelection selection) {
    ManagedObjectContext& context = GSData::sharedInstance().viewContext();
    selection.filter = filter;
    const auto result = context.countForFetch(requestForTasks(selection, context));
    const auto* count = std::get_if<std::size_t>(&result);
    return count ? std::optional(*count) : std::nullopt;
}

}  // namespace

FilterList::FilterList(QWidget* parent) : QListWidget(parent) {
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new FilterDelegate(this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(translated("Filters"));
    for (std::uint32_t filter = 0; filter < kListFilter; ++filter) {
        addItem(qtText(GSData::filterLocalizedName(filter).value_or(std::u16string())));
    }
    updateIcons();
    choose(kTodayFilter);
    counting_.setInterval(0);
    connect(&counting_, &QTimer::timeout, this, &FilterList::countNext);
}

void FilterList::countTasks(std::function<TaskSelection()> selection) {
    selection_ = std::move(selection);
    nextFilter_ = 0;
    counting_.start();
}

void FilterList::countNext() {
    if (nextFilter_ >= kListFilter) return counting_.stop();
    QListWidgetItem* shown = item(static_cast<int>(nextFilter_));
    const std::optional<std::size_t> count = countOf(nextFilter_, selection_());
    shown->setData(kCountRole, count ? locale().toString(static_cast<qulonglong>(*count)) : QString());
    const auto number = static_cast<std::int64_t>(count.value_or(0));
    const QString tasks = number == 1 ? translated("1 task") : translated("%d tasks", number);
    shown->setData(Qt::AccessibleTextRole, QStringList{shown->text(), tasks}.join(translated(", ")));
    ++nextFilter_;
}

QString FilterList::countText(std::uint32_t filter) const {
    return item(static_cast<int>(filter))->data(kCountRole).toString();
}

QSize FilterList::sizeHint() const {
    int width = 0;
    for (int i = 0; i < count(); ++i) {
        width = std::max(width, fontMetrics().horizontalAdvance(item(i)->text()));
    }
    return {width + fontMetrics().height() * 6, QListWidget::sizeHint().height()};
}

void FilterList::changeEvent(QEvent* event) {
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) updateIcons();
}

void FilterList::updateIcons() {
    const QColor tint = paletteOf(*this).accent();
    for (int i = 0; i < count(); ++i) {
        item(i)->setIcon(templateIcon(std::string(GSData::filterImageName(i)), tint));
    }
}

}  // namespace corvane
