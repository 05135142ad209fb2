// The walk over the statements around queries, which an engine fills in.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "host/engines/write/engine_form.h"
#include "host/engines/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Write {

/// Writes one statement. What an engine says in a way of its own it overrides.
class StatementWriter {
 public:
  virtual ~StatementWriter() = default;
  StatementWriter(const StatementWriter&) = delete;
  StatementWriter& operator=(const StatementWriter&) = delete;

  /// The engine's SQL for `statement`; it runs once.
  [[nodiscard]] std::string run(const Sql::Tree::Statement& statement);

 protected:
  /// `misfit` follows the name of a column whose value is handed to `quor_misfit`.
  explicit StatementWriter(const EngineForm& form, std::string_view misfit = {})
      : form_(form), misfit_(misfit), sql_(form.textRules()) {}

  virtual void createTable(const Sql::Tree::CreateTable& table) = 0;
  /// The table of totals that are kept.
  virtual void createTotals(const Sql::Tree::CreateView& view) = 0;
  virtual void keyOfIndex(const Sql::Tree::CreateIndex& index,
                          const Sql::Tree::IndexColumn& column) = 0;
  /// What follows the last key, the parenthesis included.
  virtual void endIndex(const Sql::Tree::CreateIndex& index) = 0;
  /// A value as it is stored.
  virtual void stored(const Sql::Tree::Expression& value) { write(value); }
  /// The rows that a query gives, as they are stored.
  virtual void storedRows(const Sql::Tree::Insert& insert) { write(*insert.query, false); }

  // What engines put their texts together from.

  [[nodiscard]] SqlText& sql() noexcept { return sql_; }
  void write(const Sql::Tree::Query& query, bool named);
  void write(const Sql::Tree::Expression& expression);
  template <class Items, class WriteItem>
  void list(const Items& items, const WriteItem& writeItem) {
    std::string_view separator;
    for (const auto& item : items) {
      sql_.add(separator);
      writeItem(item);
      separator = ", ";
    }
  }
  template <class Names>
  void names(const Names& columns) {
    sql_.add(" (");
    list(columns, [&](std::string_view column) { sql_.name(column); });
    sql_.add(")");
  }
  void writeConstraint(const Sql::Tree::Constraint& constraint);
  /// A check that a value fits its column, whose name stands between `before` and `after`; what
  /// does not fit goes to the function that says so.
  void fits(const Sql::Tree::CreateTable& table, const Sql::Tree::TableColumn& column,
            std::string_view before, std::string_view after, std::string_view otherwise);
  /// Whether the engine numbers rows by `column`: where the primary key is one whole number.
  [[nodiscard]] static bool isNumbered(const Sql::Tree::CreateTable& table,
                                       const Sql::Tree::TableColumn& column) {
    const bool whole = column.type == Sql::Type::Long || column.type == Sql::Type::Integer;
    return whole && column.primaryKey &&
           std::ranges::count(table.columns, true, &Sql::Tree::TableColumn::primaryKey) == 1;
  }

 private:
  void add(const Sql::Tree::Query* query) { write(*query, false); }
  void add(const Sql::Tree::Insert& insert);
  void add(const Sql::Tree::Update& update);
  void add(const Sql::Tree::Delete& erase);
  void add(const Sql::Tree::CreateTable& table) { createTable(table); }
  void add(const Sql::Tree::CreateView& view);
  void add(const Sql::Tree::CreateIndex& index);
  void where(const Sql::Tree::Expression* condition);

  const EngineForm& form_;
  std::string_view misfit_;
  SqlText sql_;
};

}  // namespace QuorHost::Write
