// An open query.
#pragma once

#include <cstdint>
#include <exception>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/rows/column_finder.h"
#include "host/engines/rows/cursor.h"
#include "host/engines/rows/kept_rows.h"
#include "host/engines/rows/row_index.h"
#include "platform/data_library.h"

namespace QuorHost::Rows {

/// A recordset over a cursor. A forward scan keeps no row, but for those that the engine wants out
/// of its way; they are dropped when they are passed. Going back to a first row that was left runs
/// the statement again, and from then on rows are kept as they are passed. `Find` keeps all rows.
class Recordset : public QuorDataLib::Recordset, private CursorReader {
 public:
  /// Runs the cursor's statement to its first row.
  explicit Recordset(std::unique_ptr<Cursor> cursor);
  ~Recordset() override;

  bool AtEnd() override;
  std::int32_t FieldCount() override;
  std::string FieldName(std::int32_t index) override;
  QuorDataLib::ValueType FieldType(std::int32_t index) override;
  QuorDataLib::Value Field(std::int32_t index) override;
  QuorDataLib::Value Field(const std::string& name) override;
  void MoveFirst() override;
  void MoveNext() override;
  bool Find(const std::string& criterion) override;
  void AddNew() override;
  void SetField(const std::string& name, const QuorDataLib::Value& value) override;
  void Update() override;
  void Close() override;

 protected:
  /// Raises 3704 when the recordset is closed. Every operation begins with it.
  void requireOpen() const {
    if (!open_) raiseClosed();
  }
  /// Raises 3265 when there is no such column.
  void requireColumn(std::int32_t index) const {
    if (static_cast<std::size_t>(index) >= columns_.size()) raiseNoColumn(index);
  }
  /// The result's columns.
  [[nodiscard]] const std::vector<Sql::ResultColumn>& columns() const { return columns_; }
  /// The column of that name; raises 3265 when there is none.
  [[nodiscard]] std::int32_t columnOf(std::string_view name);

  /// The current row's value in a column that there is; raises 3021 at the end.
  [[nodiscard]] virtual QuorDataLib::Value valueAt(std::int32_t column) const;
  /// Sees that the current row, if there is one, is kept.
  void keepCurrent();
  /// Makes the only row of `row` the current one. `showAlone` leaves nothing after it, and
  /// `MoveFirst` reads the database again; `showInPlace` puts it where the current row is, which
  /// must be kept.
  void showAlone(KeptRows row);
  void showInPlace(const KeptRows& row);

 private:
  [[noreturn]] static void raiseClosed();
  [[noreturn]] void raiseNoColumn(std::int32_t index) const;
  [[nodiscard]] bool isAtEnd() const noexcept { return current_ == kept_.size() && !live_; }
  void keepRows(const Allowance& allowance) noexcept final;
  /// Runs the statement to its first row, and further as far as the engine wishes.
  void start();
  void fetch();
  /// Keeps the row that the cursor stands on, and fetches the next one.
  void keepAndFetch();
  void stopReading() noexcept;
  /// Goes back to the first row: to the kept one, or by running the statement again.
  void rewind();
  [[nodiscard]] Cell currentCell(std::int32_t index) const {
    return current_ < kept_.size() ? kept_.at(current_, index) : cursor_->cell(index);
  }
  const RowIndex& indexOf(std::int32_t column);

  std::unique_ptr<Cursor> cursor_;
  const std::vector<Sql::ResultColumn>& columns_;  // the cursor's
  ColumnFinder finder_;

  // The rows at hand are those kept, and after them the one that the cursor stands on, if it does.
  KeptRows kept_;
  std::size_t current_ = 0;
  bool live_ = false;          // the cursor stands on a row
  bool keeping_ = false;       // rows stay kept when they are passed
  bool startsAtFirst_ = true;  // the first row is still at hand
  bool open_ = true;
  std::exception_ptr failure_;  // met by fetching; raised at the end of the kept rows
  std::map<std::int32_t, RowIndex> indexes_;
};

}  // namespace QuorHost::Rows
