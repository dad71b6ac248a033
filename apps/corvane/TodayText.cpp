#include "apps/corvane/TodayText.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "apps/corvane/TerminalText.h"
#include "apps/host/RowsInSight.h"
#include "apps/host/WritingDirection.h"
#include "platform/foundation/Localization.h"
#include "platform/foundation/Text.h"
#include "widget/WidgetImages.h"

namespace corvane {
namespace {

struct Signs {
    std::u16string_view colorStrip, openBullet, lockedBullet, alert, repeat;
};
constexpr Signs kSigns{u"▎", u"○", u"◉", u"♪", u"↻"};
constexpr Signs kAsciiSigns{u"|", u"o", u"@", u"*", u"~"};

struct PriorityMark {
    const char* image;
    std::u16string_view sign;
};
constexpr PriorityMark kPriorityMarks[] = {
    {kPriority1Image.name, u"!"  },
    {kPriority2Image.name, u"!!" },
    {kPriority3Image.name, u"!!!"},
};

// Titles and second lines begin in the same column, whatever stands before them.
constexpr std::u16string_view kGap = u" ";
constexpr std::u16string_view kNoBullet = u" ";
constexpr std::u16string_view kNoStrip = u" ";

using Dress = std::string (TerminalStyle::*)(std::string_view) const;
constexpr Dress kUndressed = nullptr;

// A line that fills from left to right and is cut where the width ends.
class Line {
  public:
    explicit Line(const TerminalStyle& style)
        : style_(style), rest_(style.width.value_or(std::numeric_limits<std::size_t>::max())) {}

    /// @param text  without controls
    void add(std::u16string_view text, Dress dress = kUndressed) {
        const std::string shown = fitting(text);
        line_ += dress ? (style_.*dress)(shown) : shown;
    }
    void addColored(std::u16string_view text, const Color& color) {
        line_ += style_.colored(fitting(text), color);
    }
    /// A text from outside.
    void addForeign(std::u16string_view text, Dress dress = kUndressed) {
        // Only what may fit is looked at: notes can be long.
        if (rest_ > 0) add(terminalText(beginning(text)), dress);
    }
    /// What is added from here on is a link.
    void beginLink() { linkStart_ = line_.size(); }
    void endLink(std::u16string_view url, std::string_view id = {}) {
        const std::string text = line_.substr(linkStart_);
        line_.replace(linkStart_, text.size(), style_.linked(text, url, id));
    }
    std::string finished() const { return line_.substr(0, line_.find_last_not_of(' ') + 1) + "\n"; }

  private:
    std::u16string_view beginning(std::u16string_view text) const {
        constexpr std::size_t kMostUnitsPerCell = 64;
        if (!style_.width) return text;
        return text.substr(0, (rest_ + 1) * kMostUnitsPerCell);
    }

    std::string fitting(std::u16string_view text) {
        std::u16string shown(text);
        if (style_.width) {
            shown = cutToWidth(text, rest_);
            rest_ -= std::min(rest_, displayWidth(shown));
        }
        return utf8FromText(hasRightToLeftText(shown) ? isolatedText(shown) : shown);
    }

    const TerminalStyle& style_;
    std::size_t rest_;
    std::string line_;
    std::size_t linkStart_ = 0;
};

class Drawing {
  public:
    Drawing(const TodayLinks& links, const TerminalStyle& style)
        : links_(links), style_(style), signs_(style.asciiOnly ? kAsciiSigns : kSigns) {}

    void draw(const WidgetSnapshot& widget) {
        if (!widget.noTasksHidden) drawEmpty(widget);
        const bool isCutOff = isContentCutOff(widget);
        for (const WidgetRow& row : std::span(widget.rows).first(rowsInSight(widget))) drawRow(row);
        if (isCutOff) return;
        if (widget.footer) drawLine(*widget.footer, &TerminalStyle::faint);
        drawButtons(widget.showAllTitle);
    }
    const std::string& text() const { return text_; }

  private:
    void drawEmpty(const WidgetSnapshot& widget) {
        Line wellDone(style_);
        wellDone.beginLink();
        wellDone.addForeign(widget.wellDone, &TerminalStyle::bold);
        wellDone.endLink(links_.today, "today");
        Line noMoreTasks(style_);
        noMoreTasks.beginLink();
        noMoreTasks.addForeign(widget.noMoreTasks, &TerminalStyle::faint);
        noMoreTasks.endLink(links_.today, "today");
        text_ += wellDone.finished() + noMoreTasks.finished();
    }

    void drawRow(const WidgetRow& row) {
        const std::string link = "row" + std::to_string(++rows_);
        Line first = lineOfRow(row);
        first.beginLink();
        first.add(bullet(row));
        first.add(kGap);
        if (const auto mark = priorityMark(row)) {
            first.add(*mark, &TerminalStyle::red);
            first.add(kGap);
        }
        first.addForeign(row.title.value_or(std::u16string()), &TerminalStyle::bold);
        first.endLink(row.url, link);

        Line second = lineOfRow(row);
        second.add(kNoBullet);
        second.add(kGap);
        second.beginLink();
        drawDetails(second, row);
        second.endLink(row.url, link);
        text_ += first.finished() + second.finished();
    }

    Line lineOfRow(const WidgetRow& row) const {
        Line line(style_);
        if (row.color) {
            line.addColored(signs_.colorStrip, *row.color);
        } else {
            line.add(kNoStrip);
        }
        line.add(kGap);
        return line;
    }

    void drawDetails(Line& line, const WidgetRow& row) const {
        if (row.alert) {
            line.add(signs_.alert);
            line.add(kGap);
        }
        if (row.repeat) {
            line.add(signs_.repeat);
            line.add(kGap);
        }
        if (row.time) line.addForeign(*row.time);
        if (!row.notes || row.notes->find_first_not_of(u' ') == std::u16string::npos) return;
        line.add(u"  ");
        line.addForeign(*row.notes, &TerminalStyle::faint);
    }

    void drawLine(std::u16string_view text, Dress dress) {
        Line line(style_);
        line.addForeign(text, dress);
        text_ += line.finished();
    }

    void drawButtons(const std::optional<std::u16string>& showAllTitle) {
        Line line(style_);
        if (showAllTitle) {
            drawButton(line, *showAllTitle, links_.today);
            line.add(kGap);
        }
        if (style_.links) drawButton(line, localizedString("Add Task"), links_.addTask);
        if (showAllTitle || style_.links) text_ += line.finished();
    }

    static void drawButton(Line& line, std::u16string_view title, std::u16string_view url) {
        line.beginLink();
        line.addForeign(u"[" + std::u16string(title) + u"]", &TerminalStyle::blue);
        line.endLink(url);
    }

    // A task of an unlisted account has none, but leaves its place.
    std::u16string_view bullet(const WidgetRow& row) const {
        if (!row.bullet) return kNoBullet;
        return *row.bullet == kLockedBulletImage.name ? signs_.lockedBullet : signs_.openBullet;
    }

    static std::optional<std::u16string_view> priorityMark(const WidgetRow& row) {
        const auto mark = std::ranges::find_if(kPriorityMarks, [&row](const PriorityMark& candidate) {
            return row.priority == candidate.image;
        });
        return mark == std::end(kPriorityMarks) ? std::nullopt : std::optional(mark->sign);
    }

    const TodayLinks& links_;
    const TerminalStyle& style_;
    const Signs& signs_;
    std::string text_;
    int rows_ = 0;
};

}  // namespace

std::string todayText(const WidgetSnapshot& widget, const TodayLinks& links, const TerminalStyle& style) {
    Drawing drawing(links, style);
    drawing.draw(widget);
    return drawing.text();
}

}  // namespace corvane
