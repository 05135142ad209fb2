// Totals that the engine keeps beside the rows that they are of.
#pragma once

#include <string>
#include <vector>

#include "host/engines/sqlite/database.h"
#include "host/engines/sqlite/write/kept_totals_text.h"

namespace QuorHost::Sqlite {

/// Adds totals, whose table is there and empty, up from their rows, and keeps them true from then
/// on.
void beginToKeep(Database& database, const KeptTotals& totals);

/// Lets the triggers follow a table that was made anew with all its rows.
void goOnKeeping(Database& database, const KeptTotals& totals);

/// Takes the triggers of `table` away until totals are stored, if it is empty: much may come into
/// it, which is added up faster at once. Only in a transaction.
void expectMany(Database& database, const std::string& table);

/// Stores what the open transaction has changed kept totals by. Must come before every statement
/// that could read them, and before the transaction ends. Raises an overflow when a total becomes
/// too large.
void storeTotals(Database& database);

/// Kept totals that are not what their rows add up to, one line each.
[[nodiscard]] std::vector<std::string> wrongTotals(Database& database);

/// One statement that changes rows, for as long as it lives: what it means for kept totals is
/// stored with it, or with the transaction that it is part of. Unless `finish` was called, nothing
/// is kept of it.
class RowChange {
 public:
  /// Begins a transaction where none is open; raises the engine's error, quoting `text`.
  RowChange(Database& database, std::string_view text);
  ~RowChange();
  RowChange(const RowChange&) = delete;
  RowChange& operator=(const RowChange&) = delete;

  /// The statement has come to its end.
  void finish();

 private:
  Database& database_;
  bool own_;  // the transaction is this statement's
  bool finished_ = false;
};

}  // namespace QuorHost::Sqlite
