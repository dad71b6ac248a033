#include "platform/views/TableView.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

struct NumberCell final : TableViewCell {
    std::size_t number = 0;
    int layouts = 0;
    void layoutSubviews() override { ++layouts; }
};

struct Numbers final : TableViewDataSource {
    std::size_t count = 3;
    int made = 0;
    int filled = 0;
    TableView table;

    Numbers() {
        table.dataSource = this;
        table.rowHeight = 44;
        table.frame.width = 300;
        table.registerCellFactory("Number", [this] {
            ++made;
            return std::make_unique<NumberCell>();
        });
    }
    std::size_t numberOfRowsInSection(const TableView&, std::size_t) const override { return count; }
    TableViewCell& cellForRowAtIndexPath(TableView& tableView, IndexPath indexPath) override {
        ++filled;
        auto& cell = static_cast<NumberCell&>(tableView.dequeueReusableCell("Number", indexPath));
        cell.number = indexPath.row;
        return cell;
    }
    NumberCell& cell(std::size_t row) { return static_cast<NumberCell&>(table.cellForRow({0, row})); }
};

TEST(TableView, FillsARowWhenSomebodyLooksAtItAndReusesItsCell) {
    Numbers numbers;
    numbers.table.reloadData();
    EXPECT_EQ(numbers.filled, 0);
    const NumberCell* first = &numbers.cell(0);
    EXPECT_EQ(&numbers.cell(0), first);
    EXPECT_EQ(numbers.filled, 1);
    numbers.table.reloadData();
    EXPECT_EQ(&numbers.cell(0), first);
    EXPECT_EQ(numbers.cell(2).number, 2u);
    EXPECT_EQ(numbers.made, 2);
    EXPECT_EQ(numbers.filled, 3);
}

TEST(TableView, LaysOutOnceUntilTheWidthChanges) {
    Numbers numbers;
    numbers.cell(0);
    EXPECT_EQ(numbers.cell(0).layouts, 1);
    numbers.table.frame.width = 200;
    EXPECT_EQ(numbers.cell(0).layouts, 2);
    EXPECT_EQ(numbers.cell(0).contentView.frame, (Rect{0, 0, 200, 44}));
}

}  // namespace
}  // namespace corvane
