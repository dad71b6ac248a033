// Task lists as text and HTML.
#include "QueryFixture.h"

namespace corvane {
namespace {

constexpr bool kTree = true;
constexpr bool kFlat = false;
constexpr bool kHtml = true;
constexpr bool kText = false;

class TaskListExportTest : public QueryTest {
  protected:
    std::string exported(bool tree, bool html, std::optional<std::u16string_view> title = std::nullopt) {
        return utf8FromText(GSData::stringOfTasks(list().orderedAllTasks(), title, tree, html));
    }
    // The tags alone.
    std::string tags(bool tree) {
        std::string html = exported(tree, kHtml);
        std::string result;
        for (std::size_t i = 0; i < html.size(); ++i) {
            for (const std::string_view tag : {"<ol>", "</ol>", "<li>", "</li>"}) {
                if (html.compare(i, tag.size(), tag) == 0) result += tag;
            }
        }
        return result;
    }
};

TEST_F(TaskListExportTest, OneTaskStandsAlone) {
    plant(list(), "Milk");
    EXPECT_EQ(exported(kTree, kText), "❒ Milk\n");
    EXPECT_EQ(exported(kTree, kHtml),
              "<span style=\"font-family:arial;\"><p><br>"
              "<span style=\"font-size:medium;color:black;font-weight:bold;\">Milk</span>\n</p></span>");
}

TEST_F(TaskListExportTest, NoTasks) {
    EXPECT_EQ(exported(kFlat, kText, u"Shop"), "Shop:\n");
    EXPECT_EQ(
        exported(kFlat, kHtml, u"<Shop>"),
        "<span style=\"font-family:arial;\"><p><br><p style=\"font-size:medium;color:black;font-weight:bold;"
        "text-decoration:underline;\">&lt;Shop&gt;:</p></p></span>");
}

TEST_F(TaskListExportTest, TextShowsTheTreeAndDetails) {
    plant(list(), "A(B+(C)) D");
    named("C").setNotes(u"one\ntwo");
    named("D").setNotes(u"");
    named("D").setDueDate(at("2024-03-08"));  // not marked as having one
    named("A").setDueDate(at("2025-03-08 14:05"));
    named("A").setHasDueTime(true);
    EXPECT_EQ(exported(kTree, kText),
              "❒ A\n   Sat, Mar 8, 2025, 2:05\u202fPM\n ✓ B\n  ❒ C\n     one\ntwo\n❒ D\n   Fri, Mar 8\n");
    EXPECT_EQ(exported(kFlat, kText),
              "❒ A\n   Sat, Mar 8, 2025, 2:05\u202fPM\n✓ B\n❒ C\n     one\ntwo\n❒ D\n   Fri, Mar 8\n");
}

TEST_F(TaskListExportTest, HtmlNestsListsByDepth) {
    plant(list(), "A(B(C)) D");
    EXPECT_EQ(tags(kTree), "<ol><li></li><ol><li></li><ol><li></li></ol></ol><li></li></ol>");
    EXPECT_EQ(tags(kFlat), "<ol><li></li><li></li><li></li><li></li></ol>");
}

TEST_F(TaskListExportTest, HtmlIsEscapedAndNothingElse) {
    plant(list(), "A B+");
    GTask& a = named("A");
    a.setName(u"<b>&é");
    a.setNotes(u"x < y\r\nz");
    named("B").setDueDate(at("2024-03-08"));
    const std::string html = exported(kFlat, kHtml);
    EXPECT_NE(html.find("&lt;b&gt;&amp;&eacute;</span>"), std::string::npos) << html;
    EXPECT_NE(html.find("<br><span style=\"font-size:small;color:#333333;\">x &lt; y<br />z</span></li>"),
              std::string::npos);
    EXPECT_NE(
        html.find(
            "color:gray;font-weight:normal;text-decoration:line-through;\">B</span>"
            "<br><span style=\"font-size:small;color:#333333;font-style:oblique;\">Fri, Mar 8</span></li>"),
        std::string::npos);
    EXPECT_NE(exported(kFlat, kText).find("<b>&é"), std::string::npos);
}

}  // namespace
}  // namespace corvane
