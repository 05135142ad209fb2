// A recordset whose rows can be added and changed.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/engines/rows/recordset.h"
#include "host/engines/rows/row_changer.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Rows {

/// A recordset of one table's own columns. What is set stays in memory until `Update` stores the
/// row with one statement; moving to another row drops it. A row that was added is the only one
/// until `MoveFirst` reads the table again.
class UpdatableRecordset final : public Recordset {
 public:
  /// `table` is copied: it must be the one whose rows the cursor reads and `changer` stores.
  UpdatableRecordset(std::unique_ptr<Cursor> cursor, std::unique_ptr<RowChanger> changer,
                     Sql::Relation table);

  bool AtEnd() override;
  void MoveFirst() override;
  void MoveNext() override;
  bool Find(const std::string& criterion) override;
  void AddNew() override;
  /// A row that exists can be changed when the result has all columns of the table's primary key;
  /// raises 5 otherwise.
  void SetField(const std::string& name, const QuorDataLib::Value& value) override;
  void Update() override;

 protected:
  [[nodiscard]] QuorDataLib::Value valueAt(std::int32_t column) const override;

 private:
  enum class Pending : std::uint8_t { Nothing, NewRow, ChangedRow };
  using Values = std::map<std::int32_t, QuorDataLib::Value>;  // by column of the result

  void forget() noexcept;
  /// The result's columns that are the table's primary key; raises 5 when it has not all of them.
  [[nodiscard]] std::vector<std::int32_t> keyColumns() const;
  [[nodiscard]] FieldValue field(std::int32_t index, QuorDataLib::Value value) const;
  /// What was set.
  [[nodiscard]] std::vector<FieldValue> changes() const;
  /// The primary key of the current row, as it is stored.
  [[nodiscard]] std::vector<FieldValue> key() const;

  std::unique_ptr<RowChanger> changer_;
  Sql::Relation table_;
  Pending pending_ = Pending::Nothing;
  Values set_;
};

}  // namespace QuorHost::Rows
