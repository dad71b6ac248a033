#include "queries/TaskListExport.h"

#include <algorithm>
#include <vector>

#include "dates/DateTexts.h"
#include "model/GSData.h"
#include "model/GTask.h"
#include "text/HtmlEscaping.h"
#include "text/HtmlText.h"

namespace corvane {
namespace {

constexpr std::u16string_view kCompletedMark = u"\u2713 ";
constexpr std::u16string_view kOpenMark = u"\u2752 ";
constexpr std::size_t kDetailIndent = 3;

std::u16string dueText(const GTask& task) {
    return task.hasDueTime() ? stringOfDateTime(*task.dueDate()) : stringOfDate(*task.dueDate());
}

// The two renderings differ in every piece; what they have in common is the walk in stringOfExportedTasks.
class Rendering {
  public:
    explicit Rendering(bool treeMode) : treeMode_(treeMode) {}
    virtual ~Rendering() = default;
    Rendering(const Rendering&) = delete;
    Rendering& operator=(const Rendering&) = delete;

    virtual void open(std::optional<std::u16string_view> title) = 0;
    virtual void beginTask(const GTask& task, std::size_t depth) = 0;
    virtual void dueDate(std::u16string_view text, std::size_t depth) = 0;
    virtual void notes(std::u16string_view text, std::size_t depth) = 0;
    virtual void endTask() = 0;
    virtual void close() = 0;

    std::u16string take() { return std::move(result_); }

  protected:
    bool treeMode_;
    std::u16string result_;
};

class TextRendering final : public Rendering {
  public:
    using Rendering::Rendering;

    void open(std::optional<std::u16string_view> title) override {
        if (title) result_.append(*title).append(u":\n");
    }
    void beginTask(const GTask& task, std::size_t depth) override {
        if (treeMode_) result_.append(depth, u' ');
        result_.append(task.completed() ? kCompletedMark : kOpenMark).append(task.name().value_or(u""));
    }
    void dueDate(std::u16string_view text, std::size_t depth) override { detail(text, depth); }
    void notes(std::u16string_view text, std::size_t depth) override { detail(text, depth); }
    void endTask() override { result_ += u'\n'; }
    void close() override {}

  private:
    // Details are indented by the task's depth in a flat list as well.
    void detail(std::u16string_view text, std::size_t depth) {
        result_.append(u"\n").append(depth + kDetailIndent, u' ').append(text);
    }
};

class HtmlRendering final : public Rendering {
  public:
    HtmlRendering(bool treeMode, bool listMode) : Rendering(treeMode), listMode_(listMode) {}

    void open(std::optional<std::u16string_view> title) override {
        result_ += u"<span style=\"font-family:arial;\"><p><br>";
        if (title) {
            element(u"<p style=\"font-size:medium;color:black;font-weight:bold;text-decoration:underline;\">",
                    stringByEncodingHTMLEntities(*title), u":</p>");
        }
        if (listMode_) result_ += u"<ol>";
    }
    void beginTask(const GTask& task, std::size_t depth) override {
        if (treeMode_) nest(depth);
        if (listMode_) result_ += u"<li>";
        element(task.completed() ? u"<span style=\"font-size:medium;color:gray;font-weight:normal;"
                                   u"text-decoration:line-through;\">"
                                 : u"<span style=\"font-size:medium;color:black;font-weight:bold;\">",
                stringByEncodingHTMLEntities(task.name().value_or(u"")), u"</span>");
    }
    void dueDate(std::u16string_view text, std::size_t) override {
        element(u"<br><span style=\"font-size:small;color:#333333;font-style:oblique;\">",
                stringByEncodingHTMLEntities(text), u"</span>");
    }
    void notes(std::u16string_view text, std::size_t) override {
        element(u"<br><span style=\"font-size:small;color:#333333;\">",
                stringWithNewLinesAsBRs(stringByEncodingHTMLEntities(text)), u"</span>");
    }
    void endTask() override { result_ += listMode_ ? u"</li>" : u"\n"; }
    void close() override {
        if (treeMode_) nest(0);
        if (listMode_) result_ += u"</ol>";
        result_ += u"</p></span>";
    }

  private:
    void element(std::u16string_view opening, std::u16string_view text, std::u16string_view closing) {
        result_.append(opening).append(text).append(closing);
    }
    void nest(std::size_t depth) {
        for (; level_ < depth; ++level_) result_ += u"<ol>";
        for (; level_ > depth; --level_) result_ += u"</ol>";
    }

    bool listMode_;
    std::size_t level_ = 0;
};

void render(Rendering& rendering, const GTask& task, std::size_t depth) {
    rendering.beginTask(task, depth);
    // A date that is stored shows, also where the task is not marked as having one.
    if (task.dueDate()) rendering.dueDate(dueText(task), depth);
    if (const auto notes = task.notes(); notes && !notes->empty()) rendering.notes(*notes, depth);
    rendering.endTask();
}

}  // namespace

std::u16string stringOfExportedTasks(std::span<const ExportedTask> tasks,
                                     std::optional<std::u16string_view> withTitle, bool showSubtasking,
                                     bool html) {
    const bool several = tasks.size() >= 2;
    const bool treeMode = showSubtasking && several;
    TextRendering text(treeMode);
    HtmlRendering fragment(treeMode, several);
    Rendering& rendering = html ? static_cast<Rendering&>(fragment) : text;
    rendering.open(withTitle);
    for (const ExportedTask& entry : tasks) render(rendering, *entry.task, entry.depth);
    rendering.close();
    return rendering.take();
}

std::u16string GSData::stringOfTasks(std::span<GTask* const> tasks,
                                     std::optional<std::u16string_view> withTitle, bool showSubtasking,
                                     bool html) {
    std::vector<ExportedTask> exported(tasks.size());
    std::ranges::transform(tasks, exported.begin(), [](GTask* task) {
        return ExportedTask{task, task->depth()};
    });
    return stringOfExportedTasks(exported, withTitle, showSubtasking, html);
}

}  // namespace corvane
