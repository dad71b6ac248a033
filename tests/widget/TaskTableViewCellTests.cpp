#include "widget/TaskTableViewCell.h"

#include <gtest/gtest.h>

#include "WidgetFixture.h"

namespace corvane {
namespace {

using Mode = Image::RenderingMode;

// A cell of a row 300 points wide. Its bullet ends at 27, so that titles and second lines begin at 34.
class TaskTableViewCellTest : public testing::Test {
  protected:
    TaskTableViewCellTest() {
        cell.contentView.frame = {0, 0, 300, 44};
        cell.taskBulletImageView.frame = {11, 5, 16, 16};
        cell.alertImageView.frame = {40, 26, 12, 12};
        cell.repeatImageView.frame = {0, 27, 14, 13};
        cell.timeLabel.frame = {0, 24, 0, 0};
        cell.notesLabel.frame = {0, 25, 0, 0};
    }

    void show(const GTask& task) {
        cell.setTask(task);
        cell.layoutIfNeeded();
    }

    WidgetFixture widget;
    TaskTableViewCell cell{widget.measuring};
};

TEST_F(TaskTableViewCellTest, MarksPrioritiesByBands) {
    constexpr std::pair<std::int32_t, const char*> kRows[] = {
        {29, nullptr         },
        {30, "Task-Priority1"},
        {40, "Task-Priority2"},
        {50, "Task-Priority3"},
        {-1, "Task-Priority3"},
    };
    GTask& task = widget.addTask(u"Task");
    for (const auto& [priority, mark] : kRows) {
        SCOPED_TRACE(priority);
        task.setPriority(priority);
        show(task);
        EXPECT_EQ(cell.priorityView.isHidden, mark == nullptr);
        if (!mark) continue;
        EXPECT_EQ(cell.priorityView.image->name, mark);
        EXPECT_EQ(cell.priorityView.image->renderingMode, Mode::kTemplate);
        EXPECT_EQ(cell.priorityView.frame.width, cell.priorityView.image->size.width);
    }
    EXPECT_EQ(cell.priorityView.image->name, "Task-Priority3") << "a hidden mark keeps its image";
}

TEST_F(TaskTableViewCellTest, ShowsNotesOnOneLine) {
    const std::pair<std::optional<std::u16string_view>, std::optional<std::u16string_view>> rows[] = {
        {std::nullopt,                                                        std::nullopt                   },
        {u"",                                                                 std::nullopt                   },
        {u"two\nwords",                                                       u"two words"                   },
        {u"\r\n lead and trail\t",                                            u"   lead and trail "          },
        {u"a\u0085b\u00a0c\u1680d\u2003e\u2028f\u2029g\u202fh\u205fi\u3000j", u"a b c d e f g h i j"         },
        {u"a\u200bb\u180ec\ufeffd\u0008",                                     u"a\u200bb\u180ec\ufeffd\u0008"},
        {u"\xd83d lone",                                                      u"\xd83d lone"                 },
    };
    GTask& task = widget.addTask(u"Task");
    for (const auto& [notes, shown] : rows) {
        task.setNotes(notes);
        show(task);
        EXPECT_EQ(cell.notesLabel.text, shown);
        EXPECT_EQ(cell.notesLabel.isHidden, !shown);
    }
}

TEST_F(TaskTableViewCellTest, ShowsDatesOnlyWithADueDate) {
    struct Row {
        const char* what;
        const char* due;
        const char* alert;
        std::int32_t repeat;
        bool hasTime;
        bool showsAlert, showsRepeat;
        std::optional<std::u16string_view> time;
    };
    const Row rows[] = {
        {"repeat, no date",  nullptr,            nullptr,            16, false, false, false, std::nullopt },
        {"date",             "2024-03-05 14:00", nullptr,            0,  false, false, false, u"Today"     },
        {"alert and repeat", "2024-03-03 14:00", "2024-03-05 08:00", 16, true,  true,  true,  u"2 days ago"},
        {"unknown repeat",   "2024-03-04 14:00", nullptr,            -1, true,  false, true,  u"Yesterday" },
    };
    widget.environment->locale = "en_GB";
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        GTask& task = widget.addTask(u"Task", row.due);
        if (row.alert) task.setAlertDate(at(row.alert));
        task.setAlertRepeat(row.repeat);
        task.setHasDueTime(row.hasTime);
        show(task);
        EXPECT_EQ(!cell.alertImageView.isHidden, row.showsAlert);
        EXPECT_EQ(!cell.repeatImageView.isHidden, row.showsRepeat);
        EXPECT_EQ(cell.timeLabel.text, row.time);
        EXPECT_EQ(cell.timeLabel.isHidden, !row.time);
    }
}

TEST_F(TaskTableViewCellTest, ChoosesTheBulletByAccountAndSubtasks) {
    const auto bullet = [this](const GTask& task) {
        show(task);
        const std::optional<Image>& image = cell.taskBulletImageView.image;
        return image ? image->name : "none";
    };
    GTask& parent = widget.addTask(u"Parent");
    GTask& child = widget.addTask(u"Child");
    child.setParentTask(&parent);
    child.setCompleted(true);
    EXPECT_EQ(bullet(parent), "Task-CollapsedLocked");
    EXPECT_EQ(bullet(child), "Task-VUnchecked");
    child.setRemoved(true);
    EXPECT_EQ(bullet(parent), "Task-VUnchecked");
    widget.account->setAccountType(kUnlistedAccountType);
    EXPECT_EQ(bullet(parent), "none");
    widget.home->setUser(nullptr);
    EXPECT_EQ(bullet(parent), "Task-VUnchecked");
    parent.setList(nullptr);
    EXPECT_EQ(bullet(parent), "Task-VUnchecked");
}

// Texts are 6 points a code unit and 15 high.
TEST_F(TaskTableViewCellTest, PacksTheSecondLineFromTheLeft) {
    struct Row {
        const char* what;
        bool alert, repeat;
        const char* due;
        const char16_t* notes;
        double repeatX;
        Rect time, notesFrame;
    };
    constexpr Rect kAsPlaced{0, 24, 0, 0};
    constexpr Rect kNotesAsPlaced{0, 25, 0, 0};
    constexpr Row kRows[] = {
        {"time, notes", false, false, "2024-03-05", u"1234",                                0,  {34, 24, 30, 15}, {69, 25, 24, 15} },
        {"repeat",      false, true,  "2024-03-05", u"1234",                                34, {53, 24, 30, 15}, {88, 25, 24, 15} },
        {"both",        true,  true,  "2024-03-05", u"1234",                                51, {70, 24, 30, 15}, {105, 25, 24, 15}},
        {"notes only",  true,  true,  nullptr,      u"1234",                                0,  kAsPlaced,        {34, 25, 24, 15} },
        {"notes cut",
         true,                 true,
         "2024-03-05",                              u"12345678901234567890123456789012345",
         51,                                                                                    {70, 24, 30, 15},
         {105, 25, 195, 15}                                                                                                        },
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        cell.repeatImageView.frame.x = 0;
        cell.timeLabel.frame = kAsPlaced;
        cell.notesLabel.frame = kNotesAsPlaced;
        GTask& task = widget.addTask(u"Task", row.due);
        if (row.alert) task.setAlertDate(at("2024-03-05"));
        task.setAlertRepeat(row.repeat ? kRepeatDaily : kNoRepeat);
        if (row.notes) task.setNotes(row.notes);
        show(task);
        EXPECT_EQ(cell.alertImageView.frame, (Rect{40, 26, 12, 12}));
        EXPECT_EQ(cell.repeatImageView.frame, (Rect{row.repeatX, 27, 14, 13}));
        EXPECT_EQ(cell.timeLabel.frame, row.time);
        EXPECT_EQ(cell.notesLabel.frame, row.notesFrame);
    }
}

TEST_F(TaskTableViewCellTest, CutsALongDueTextAndLeavesTheNotesWhatIsLeft) {
    cell.contentView.frame.width = 80;
    GTask& task = widget.addTask(u"Task", "1024-03-05");
    task.setNotes(u"notes");
    show(task);
    EXPECT_EQ(cell.timeLabel.frame, (Rect{34, 24, 46, 15}));
    EXPECT_EQ(cell.notesLabel.frame, (Rect{85, 25, -5, 15}));
}

TEST_F(TaskTableViewCellTest, BeginsTheTitleAfterThePriorityMark) {
    cell.titleLabel.frame = {0, 3, 0, 20};
    GTask& task = widget.addTask(u"Task");
    show(task);
    EXPECT_EQ(cell.titleLabel.frame, (Rect{34, 3, 266, 20}));
    task.setPriority(50);
    show(task);
    const double mark = cell.priorityView.image->size.width;
    EXPECT_EQ(cell.titleLabel.frame, (Rect{34 + mark, 3, 266 - mark, 20}));
    EXPECT_EQ(cell.timeLabel.frame.x, 34);
}

TEST_F(TaskTableViewCellTest, StylesItselfForTheSystem) {
    cell.awakeFromNib();
    EXPECT_EQ(cell.titleLabel.textColor, Color::white(0.15));
    EXPECT_EQ(cell.alertImageView.tintColor, std::nullopt);
    EXPECT_EQ(cell.repeatImageView.image->renderingMode, Mode::kAutomatic);
    EXPECT_EQ(cell.priorityView.tintColor, Color::systemRed());

    widget.environment->device.systemVersion = u"9.3.5";
    TaskTableViewCell older(widget.measuring);
    older.awakeFromNib();
    EXPECT_EQ(older.titleLabel.textColor, std::nullopt);
    EXPECT_EQ(older.priorityView.tintColor, Color::systemRed());
    for (const ImageView* icon : {&older.alertImageView, &older.repeatImageView}) {
        EXPECT_EQ(icon->tintColor, Color::white(0.5));
        EXPECT_EQ(icon->image->renderingMode, Mode::kTemplate);
    }
}

}  // namespace
}  // namespace corvane
