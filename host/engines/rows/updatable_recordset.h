// A recordset whose rows can be added and changed.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "host/engines/rows/recordset.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Sqlite {

/// A recordset of one table's own columns. What is set stays in memory until `Update` stores the
/// row with one statement; moving to another row drops it. A row that was added is the only one
/// until `MoveFirst` reads the table again.
class UpdatableRecordset final : public Recordset {
 public:
  /// `table` is copied: it must be the one whose rows the statement reads.
  UpdatableRecordset(std::shared_ptr<Database> database, StatementCache::Taken query,
                     TimeLimit limit, Sql::Relation table);

  bool AtEnd() override;
  using Recordset::Field;
  QuorDataLib::Value Field(std::int32_t index) override;
  void MoveFirst() override;
  void MoveNext() override;
  bool Find(const std::string& criterion) override;
  void AddNew() override;
  /// A row that exists can be changed when the result has all columns of the table's primary key;
  /// raises 5 otherwise.
  void SetField(const std::string& name, const QuorDataLib::Value& value) override;
  void Update() override;

 private:
  enum class Pending : std::uint8_t { Nothing, NewRow, ChangedRow };
  using Values = std::map<std::int32_t, QuorDataLib::Value>;  // by column of the result

  void forget() noexcept;
  /// The result's columns that are the table's primary key; raises 5 when it has not all of them.
  [[nodiscard]] std::vector<std::int32_t> keyColumns() const;
  [[nodiscard]] std::string quotedColumn(std::int32_t index) const;
  /// The clause by which a statement gives back the row as it was stored, in the result's columns.
  [[nodiscard]] std::string returning() const;
  [[nodiscard]] std::string insertText() const;
  [[nodiscard]] std::string updateText(const std::vector<std::int32_t>& key) const;
  [[nodiscard]] KeptRows insertRow() const;
  [[nodiscard]] KeptRows updateRow();
  void bindSet(const Statement& statement) const;
  [[nodiscard]] KeptRows storedRow(Statement& statement) const;

  Sql::Relation table_;
  Pending pending_ = Pending::Nothing;
  Values set_;
};

}  // namespace QuorHost::Sqlite
