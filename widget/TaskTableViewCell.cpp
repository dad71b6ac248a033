#include "widget/TaskTableViewCell.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "dates/RelativeDayTexts.h"
#include "model/GList.h"
#include "model/GTask.h"
#include "model/GUser.h"
#include "platform/foundation/Environment.h"
#include "widget/PriorityBands.h"
#include "widget/SystemVersion.h"
#include "widget/WidgetImages.h"

namespace corvane {
namespace {

constexpr double kGapAfterBullet = 7;
constexpr double kGapAfterPiece = 5;

constexpr Color kTitleGrey = Color::white(0.15);
constexpr Color kIconGrey = Color::white(0.5);

// Where the views stand until a host says otherwise; the packing moves them from left to right only.
constexpr Rect kColorFrame{0, 0, 4, 44};
constexpr Rect kBulletFrame{11, 5, 16, 16};
constexpr Rect kPriorityFrame{31, 6, 6, 14};
constexpr Rect kTitleFrame{34, 3, 318, 20};
constexpr Rect kAlertFrame{34, 26, 12, 12};
constexpr Rect kRepeatFrame{51, 26, 12, 12};
constexpr Rect kTimeFrame{68, 24, 100, 16};
constexpr Rect kNotesFrame{173, 24, 179, 16};

const ImageAsset* priorityMark(std::int32_t priority) {
    switch (bandOfPriority(priority)) {
        case PriorityBand::kNone:
            return nullptr;
        case PriorityBand::kLow:
            return &kPriority1Image;
        case PriorityBand::kMedium:
            return &kPriority2Image;
        case PriorityBand::kHigh:
            return &kPriority3Image;
    }
    return nullptr;
}

// Unicode's separators (general category Z), the tab and the line breaks among the controls.
constexpr bool isWhitespaceOrNewline(char16_t unit) {
    if (unit < 0x80) return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
    if (unit >= 0x2000)
        return unit <= 0x200A || unit == 0x2028 || unit == 0x2029 || unit == 0x202F || unit == 0x205F ||
               unit == 0x3000;
    return unit == 0x85 || unit == 0xA0 || unit == 0x1680;
}

// Every separator becomes one blank; runs of them are kept.
std::u16string onOneLine(std::u16string_view text) {
    std::u16string line(text);
    std::ranges::replace_if(line, isWhitespaceOrNewline, u' ');
    return line;
}

void show(Label& label, std::optional<std::u16string> text) {
    label.isHidden = !text;
    label.text = std::move(text);
}

void useTemplateImage(ImageView& view) {
    if (view.image) view.image = view.image->withRenderingMode(Image::RenderingMode::kTemplate);
}

bool isUnlisted(const GList* list) {
    const GUser* user = list ? list->user() : nullptr;
    return user && user->accountType() == kUnlistedAccountType;
}

// What is left of a line that fills from left to right.
struct LineRest {
    double x;
    double width;

    void advancePast(double pieceWidth) {
        x += pieceWidth + kGapAfterPiece;
        width -= pieceWidth + kGapAfterPiece;
    }
    void place(Label& label, const TextMeasuring& measuring) const {
        label.sizeToFit(measuring);
        label.frame.x = x;
        label.frame.width = std::min(label.frame.width, width);
    }
};

}  // namespace

TaskTableViewCell::TaskTableViewCell(const TextMeasuring& measuring) : measuring_(measuring) {
    colorView.frame = kColorFrame;
    taskBulletImageView.frame = kBulletFrame;
    priorityView.frame = kPriorityFrame;
    titleLabel.frame = kTitleFrame;
    alertImageView.frame = kAlertFrame;
    alertImageView.image = kAlertImage.image();
    repeatImageView.frame = kRepeatFrame;
    repeatImageView.image = kRepeatImage.image();
    timeLabel.frame = kTimeFrame;
    notesLabel.frame = kNotesFrame;
}

void TaskTableViewCell::awakeFromNib() {
    TableViewCell::awakeFromNib();
    if (iOS10()) {
        titleLabel.textColor = kTitleGrey;
    } else {
        for (ImageView* icon : {&alertImageView, &repeatImageView}) {
            icon->tintColor = kIconGrey;
            useTemplateImage(*icon);
        }
    }
    priorityView.tintColor = Color::systemRed();
}

void TaskTableViewCell::setTask(const GTask& task) {
    const GList* list = task.list();
    showBullet(task);
    colorView.backgroundColor = list ? list->color() : std::nullopt;
    titleLabel.text = task.name();
    showDates(task);
    showPriority(task);
    showNotes(task);
    setNeedsLayout();
}

void TaskTableViewCell::showBullet(const GTask& task) {
    if (isUnlisted(task.list())) {
        taskBulletImageView.image.reset();
        return;
    }
    taskBulletImageView.image = (task.hasSubtasks() ? kLockedBulletImage : kOpenBulletImage).image();
}

void TaskTableViewCell::showDates(const GTask& task) {
    const std::optional<Date> dueDate = task.dueDate();
    alertImageView.isHidden = !dueDate || !task.alertDate();
    repeatImageView.isHidden = !dueDate || task.alertRepeat() == kNoRepeat;
    std::optional<std::u16string> text;
    if (dueDate) text = stringOfDaysLeftSinceDate(*dueDate, now(), task.hasDueTime());
    show(timeLabel, std::move(text));
}

void TaskTableViewCell::showPriority(const GTask& task) {
    const ImageAsset* mark = priorityMark(task.priority());
    priorityView.isHidden = !mark;
    if (!mark) return;
    priorityView.image = mark->image();
    useTemplateImage(priorityView);
    priorityView.sizeToFit();
}

void TaskTableViewCell::showNotes(const GTask& task) {
    const std::optional<std::u16string_view> notes = task.notes();
    if (!notes || notes->empty()) return show(notesLabel, std::nullopt);
    show(notesLabel, onOneLine(*notes));
}

void TaskTableViewCell::layoutSubviews() {
    TableViewCell::layoutSubviews();
    const double x = taskBulletImageView.frame.x + taskBulletImageView.frame.width + kGapAfterBullet;
    layoutTitle(x);
    layoutSecondLine(x);
}

void TaskTableViewCell::layoutTitle(double x) {
    if (!priorityView.isHidden) x += priorityView.frame.width;
    titleLabel.frame.x = x;
    titleLabel.frame.width = contentView.frame.width - x;
}

void TaskTableViewCell::layoutSecondLine(double x) {
    LineRest rest{x, contentView.frame.width - x};
    if (!alertImageView.isHidden) rest.advancePast(alertImageView.frame.width);
    if (!repeatImageView.isHidden) {
        repeatImageView.frame.x = rest.x;
        rest.advancePast(repeatImageView.frame.width);
    }
    if (!timeLabel.isHidden) {
        rest.place(timeLabel, measuring_);
        rest.advancePast(timeLabel.frame.width);
    }
    if (!notesLabel.isHidden) rest.place(notesLabel, measuring_);
}

}  // namespace corvane
