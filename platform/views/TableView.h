// A table of rows that asks its data source for a row only when somebody looks at it.
//
// Cells are reused: after a reload a row may get the cell that showed another row before.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/views/TableViewCell.h"
#include "platform/views/View.h"

namespace corvane {

class TableView;

struct IndexPath {
    std::size_t section = 0;
    std::size_t row = 0;

    auto operator<=>(const IndexPath&) const = default;
};

class TableViewDataSource {
  public:
    virtual ~TableViewDataSource() = default;
    virtual std::size_t numberOfRowsInSection(const TableView& tableView, std::size_t section) const = 0;
    /// A cell from `dequeueReusableCell` of this table, filled for the row.
    virtual TableViewCell& cellForRowAtIndexPath(TableView& tableView, IndexPath indexPath) = 0;
};

class TableViewDelegate {
  public:
    virtual ~TableViewDelegate() = default;
    virtual void didSelectRowAtIndexPath(TableView& tableView, IndexPath indexPath) = 0;
};

class TableView : public View {
  public:
    using CellFactory = std::function<std::unique_ptr<TableViewCell>()>;

    TableViewDataSource* dataSource = nullptr;
    TableViewDelegate* delegate = nullptr;
    double rowHeight = 0;  ///< of every row, in points

    /// Says how cells of an identifier are made. Cells that exist already stay.
    void registerCellFactory(std::string identifier, CellFactory factory);

    /// A cell that no row uses any more, else a new one. The identifier must be registered.
    TableViewCell& dequeueReusableCell(std::string_view identifier, IndexPath indexPath);

    /// Forgets all rows and the selection; their cells wait for reuse.
    void reloadData();

    // Rows, for a host
    std::size_t numberOfRows(std::size_t section = 0) const;
    /// The row's cell, filled and laid out at the table's width. The row must exist.
    TableViewCell& cellForRow(IndexPath indexPath);
    /// What a tap does: selects the row and tells the delegate. A row that does not exist is ignored.
    void selectRow(IndexPath indexPath);
    void deselectRow(IndexPath indexPath, bool animated);
    std::optional<IndexPath> indexPathForSelectedRow() const { return selectedRow_; }

  private:
    struct RowCell {
        std::string identifier;
        std::unique_ptr<TableViewCell> cell;
    };
    std::unique_ptr<TableViewCell> takeReusableCell(const std::string& identifier);

    std::map<std::string, CellFactory, std::less<>> factories_;
    std::map<std::string, std::vector<std::unique_ptr<TableViewCell>>, std::less<>> reusableCells_;
    std::map<IndexPath, RowCell> rowCells_;
    std::optional<IndexPath> selectedRow_;
};

}  // namespace corvane
