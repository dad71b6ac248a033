// Tasks from files: the three formats, their trees, and what cannot be read.
#include "apps/corvane/TaskImport.h"

#include <gtest/gtest.h>

#include <random>

#include "apps/corvane/ReadableText.h"
#include "platform/foundation/Text.h"
#include "support/TestEnvironment.h"

namespace corvane {
namespace {

// "Milk+(Skimmed) Bread", due dates and notes in brackets behind the name: "Milk[2024-03-05 14:00|two]".
std::string treeText(const ImportedList& list) {
    std::string text;
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < list.tasks.size(); ++i) {
        const ImportedTask& task = list.tasks[i];
        while (!open.empty() && task.parent != open.back()) {
            text += ")";
            open.pop_back();
        }
        const bool isFirstChild = task.parent && *task.parent + 1 == i;
        if (!text.empty() && !isFirstChild) text += " ";
        text += utf8FromText(task.name) + (task.completed ? "+" : "");
        if (task.dueDate || !task.notes.empty()) {
            text +=
                "[" + (task.dueDate ? civilText(*task.dueDate) : "") + "|" + utf8FromText(task.notes) + "]";
        }
        const bool hasChildren = i + 1 < list.tasks.size() && list.tasks[i + 1].parent == i;
        if (hasChildren) {
            text += "(";
            open.push_back(i);
        }
    }
    return text + std::string(open.size(), ')');
}

std::string imported(std::string_view data) {
    const ImportResult result = importFromData(data);
    if (const auto* problem = std::get_if<std::string>(&result)) return *problem;
    std::string text;
    for (const ImportedList& list : std::get<Import>(result).lists) {
        if (!text.empty()) text += "; ";
        if (list.name) text += utf8FromText(*list.name) + ": ";
        text += treeText(list);
    }
    return text;
}

TEST(TaskImport, PlainTextNestsByIndentation) {
    const TestEnvironment environment;
    constexpr std::pair<const char*, const char*> kRows[] = {
        {"Milk\nBread\n",                                      "Milk Bread"               },
        {"\xEF\xBB\xBFMilk\r\n  Skimmed\r\n\r\n\tFull\nBread", "Milk(Skimmed(Full)) Bread"},
        {"- [x] Milk\n    * Skimmed\n  - [ ] Odd\n",           "Milk+(Skimmed Odd)"       },
        {"a\n    b\n  c\nd",                                   "a(b c) d"                 },
        {"Tom &amp; <b>Jerry</b>",                             "Tom &amp; <b>Jerry</b>"   },
        {"Milk\n\nSoon:\n\u2752 Bread",                        "Milk[|Soon:] Bread"       },
        {" \n\n",                                              "the file is empty"        },
    };
    for (const auto& [text, expected] : kRows) EXPECT_EQ(imported(text), expected) << text;
    EXPECT_EQ(imported(std::string_view("a\0b", 3)), "the file is no text");
}

TEST(TaskImport, TheExportsTextIsReadBack) {
    const TestEnvironment environment;
    EXPECT_EQ(
        imported("Mine:\n❒ A\n   Sat, Mar 8, 2025, 2:05\u202fPM\n ✓ B\n    note\n  ❒ C\n     one\ntwo\n❒ D\n"
                 "   Fri, Mar 8\n"),
        "Mine: A[2025-03-08 14:05|](B+[|note](C[|one\ntwo])) D[2024-03-08|]");
}

TEST(ReadableText, ReadsHtmlAndLeavesWhatPeopleType) {
    constexpr std::pair<std::u16string_view, std::u16string_view> kRows[] = {
        {u"a &lt; b &amp; c",                         u"a < b & c"                               },
        {u"If a <b then R&amp;D",                     u"If a <b then R&amp;D"                    },
        {u"first line\nsecond: a < b &amp; c\nthird", u"first line\nsecond: a < b &amp; c\nthird"},
        {u"Explain <p>",                              u"Explain <p>"                             },
        {u"<br>",                                     u"<br>"                                    },
        {u"<b>bold</b> and <T> of a vector</b>",      u"<b>bold</b> and <T> of a vector</b>"     },
        {u"Tom &amp; <B class='x'>Jerry</B>",         u"Tom & Jerry"                             },
        {u"one<br>two<BR/>\n  three",                 u"one\ntwo\nthree"                         },
        {u"<p>a\nb</p>\n<p>c &lt;</p>",               u"a\nb\nc <"                               },
        {u"<a\nhref='x'>here</a>",                    u"here"                                    },
    };
    for (const auto& [text, expected] : kRows) {
        EXPECT_EQ(utf8FromText(readableText(text)), utf8FromText(expected));
    }
    EXPECT_EQ(utf8FromText(readableTitle(u" <p>one</p><p>two</p>")), "one two");
    EXPECT_EQ(utf8FromText(readableTitle(u"<b></b>")), "<b></b>");
}

TEST(TaskImport, TakeoutTreesAreTakenFromTheParents) {
    const TestEnvironment environment({.timeZone = "America/New_York"});
    EXPECT_EQ(imported(R"({"kind": "tasks#taskLists", "items": [
        {"title": "Home", "items": [
            {"id": "c", "parent": "b", "title": "Child", "notes": "a &lt; b"},
            {"id": "b", "title": "Root", "due": "2024-03-05T00:00:00Z", "status": "completed",
             "completed": "2024-03-04T10:00:00.000Z"},
            {"id": "x", "title": "Gone", "deleted": true},
            {"id": "p", "parent": "q", "title": "P"}, {"id": "q", "parent": "p", "title": "Q"},
            {"id": "s", "parent": "s", "title": "Self"}, 7, {"title": ""}]},
        {"title": "Empty"}]})"),
              "Home: Root+[2024-03-05|](Child[|a < b]) P(Q) Self; Empty: ");
    EXPECT_EQ(imported(R"({"items": [{"title": "Offsets", "items": [
        {"title": "west", "due": "2024-03-05T00:00:00.000-08:00"},
        {"title": "east", "due": "2024-03-05T00:00:00+09:30"}, {"title": "none", "due": "tomorrow"}]}]})"),
              "Offsets: west[2024-03-05|] east[2024-03-05|] none");
    EXPECT_EQ(imported("{\"items\": 3}"), "the file holds no task lists");
    EXPECT_EQ(imported("{\"items\": ["), "the file is no JSON that can be read");
    EXPECT_EQ(imported("{\"items\": " + std::string(100'000, '[')), "the file is no JSON that can be read");
}

constexpr const char* kCalendar =
    "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nX-WR-CALNAME:Work\r\n"
    "BEGIN:VTODO\r\nUID:2\r\nRELATED-TO:1\r\nSUMMARY:Child\r\nDUE;VALUE=DATE:20240310\r\nEND:VTODO\r\n"
    "BEGIN:VTODO\r\nUID:1\r\nSUMMARY:Root\\, first\r\nDUE:20240305T130000Z\r\nPRIORITY:1\r\n"
    "RRULE:FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,FR\r\n"
    "BEGIN:VALARM\r\nTRIGGER:-PT15M\r\nACTION:DISPLAY\r\nEND:VALARM\r\nEND:VTODO\r\n"
    "BEGIN:VTODO\r\nUID:3\r\nSUMMARY:Monthly\r\nDUE:20240305T130000\r\nRRULE:FREQ=MONTHLY;BYDAY=-1FR\r\n"
    "STATUS:COMPLETED\r\nEND:VTODO\r\nEND:VCALENDAR\r\n";

TEST(TaskImport, CalendarsKeepDatesRulesAndAlarms) {
    const TestEnvironment environment({.timeZone = "Europe/Berlin"});
    EXPECT_EQ(imported(kCalendar),
              "Work: Root, first[2024-03-05 14:00|](Child[2024-03-10|]) Monthly+[2024-03-05 13:00|]");
    const Import import = std::get<Import>(importFromData(kCalendar));
    const ImportedTask& root = import.lists[0].tasks[0];
    EXPECT_EQ(root.priority, 50);
    EXPECT_EQ(root.repeat, (RepeatRule{
                               kRepeatWeekly, 2, {2, 6},
                                 0, 0
    }));
    EXPECT_EQ(root.alertDate, at("2024-03-05 13:45"));
    EXPECT_TRUE(root.hasDueTime);
    EXPECT_FALSE(import.lists[0].tasks[1].hasDueTime);
    EXPECT_EQ(import.lists[0].tasks[2].repeat, (RepeatRule{kRepeatMonthly, 1, {}, 5, 6}));
}

// Damaged files give something or a reason, and every parent stands before its children. No library has words
// of its own about them.
TEST(TaskImport, DamagedFilesAreHarmless) {
    const TestEnvironment environment;
    testing::internal::CaptureStderr();
    std::mt19937 random(7);
    const std::string seeds[] = {kCalendar,
                                 R"({"items":[{"title":"H","items":[{"id":"a","parent":"b","title":"T"}]}]})",
                                 "Mine:\n❒ A\n   Sat, Mar 8, 2025\n ✓ B\n"};
    for (int round = 0; round < 3000; ++round) {
        std::string data = seeds[random() % std::size(seeds)];
        for (unsigned i = random() % 6 + 1; i > 0; --i)
            data[random() % data.size()] = static_cast<char>(random());
        data.resize(random() % 4 == 0 ? random() % data.size() : data.size());
        const ImportResult result = importFromData(data);
        if (!std::holds_alternative<Import>(result)) continue;
        for (const ImportedList& list : std::get<Import>(result).lists) {
            for (std::size_t i = 0; i < list.tasks.size(); ++i) {
                ASSERT_TRUE(!list.tasks[i].parent || *list.tasks[i].parent < i);
            }
        }
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
}  // namespace corvane
