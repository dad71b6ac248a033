#include "platform/views/TableView.h"

#include <cassert>
#include <utility>

namespace corvane {

void TableView::registerCellFactory(std::string identifier, CellFactory factory) {
    factories_.insert_or_assign(std::move(identifier), std::move(factory));
}

TableViewCell& TableView::dequeueReusableCell(std::string_view identifier, IndexPath indexPath) {
    const std::string key(identifier);
    RowCell& rowCell = rowCells_[indexPath];
    if (rowCell.cell) reusableCells_[rowCell.identifier].push_back(std::move(rowCell.cell));
    rowCell = {key, takeReusableCell(key)};
    return *rowCell.cell;
}

std::unique_ptr<TableViewCell> TableView::takeReusableCell(const std::string& identifier) {
    std::vector<std::unique_ptr<TableViewCell>>& reusable = reusableCells_[identifier];
    if (!reusable.empty()) {
        std::unique_ptr<TableViewCell> cell = std::move(reusable.back());
        reusable.pop_back();
        return cell;
    }
    std::unique_ptr<TableViewCell> cell = factories_.at(identifier)();
    cell->awakeFromNib();
    return cell;
}

void TableView::reloadData() {
    // From the last row to the first, so that a row gets its old cell back when nothing has moved.
    for (auto entry = rowCells_.rbegin(); entry != rowCells_.rend(); ++entry) {
        RowCell& rowCell = entry->second;
        rowCell.cell->setSelected(false, false);
        reusableCells_[rowCell.identifier].push_back(std::move(rowCell.cell));
    }
    rowCells_.clear();
    selectedRow_.reset();
}

std::size_t TableView::numberOfRows(std::size_t section) const {
    return dataSource ? dataSource->numberOfRowsInSection(*this, section) : 0;
}

TableViewCell& TableView::cellForRow(IndexPath indexPath) {
    assert(indexPath.row < numberOfRows(indexPath.section));
    const auto known = rowCells_.find(indexPath);
    TableViewCell& cell =
        known != rowCells_.end() ? *known->second.cell : dataSource->cellForRowAtIndexPath(*this, indexPath);
    const Rect content{0, 0, frame.width, rowHeight};
    if (cell.contentView.frame != content) cell.setNeedsLayout();
    cell.contentView.frame = content;
    cell.layoutIfNeeded();
    return cell;
}

void TableView::selectRow(IndexPath indexPath) {
    if (indexPath.row >= numberOfRows(indexPath.section)) return;
    selectedRow_ = indexPath;
    cellForRow(indexPath).setSelected(true, false);
    if (delegate) delegate->didSelectRowAtIndexPath(*this, indexPath);
}

void TableView::deselectRow(IndexPath indexPath, bool animated) {
    if (selectedRow_ != indexPath) return;
    selectedRow_.reset();
    if (const auto known = rowCells_.find(indexPath); known != rowCells_.end()) {
        known->second.cell->setSelected(false, animated);
    }
}

}  // namespace corvane
