// The rows of a running SQLite statement.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "host/engines/rows/cursor.h"
#include "host/engines/sqlite/database.h"
#include "host/engines/sqlite/statement_cache.h"
#include "platform/values/value.h"

namespace QuorHost::Sqlite {

/// Runs a query whenever it is stepped from before its first row, on the session that the database
/// has for it then. It has a statement of its own only as long as it stands on a row.
class SqliteCursor final : public Rows::Cursor {
 public:
  /// Takes over a statement that was just taken from the database's session, and binds `values` to
  /// its markers. Raises what binding raises.
  SqliteCursor(std::shared_ptr<Database> database, StatementCache::Taken query,
               std::vector<QuorDataLib::Value> values, TimeLimit limit);
  ~SqliteCursor() override;
  SqliteCursor(const SqliteCursor&) = delete;
  SqliteCursor& operator=(const SqliteCursor&) = delete;

  void setReader(Rows::CursorReader& reader) noexcept override { reader_ = &reader; }
  [[nodiscard]] const std::vector<Sql::ResultColumn>& columns() const noexcept override {
    return source_->translation().columns;
  }
  bool step() override;
  [[nodiscard]] Rows::Cell cell(std::int32_t column) const override;
  void reset() noexcept override;
  [[nodiscard]] Rows::Allowance readAhead() const noexcept override;
  [[nodiscard]] int compareTexts(std::string_view a, std::string_view b) const noexcept override;

  /// Has the reader take rows into memory.
  void letKeep(const Rows::Allowance& allowance) noexcept { reader_->keepRows(allowance); }
  /// Ends the statement and raises from now on: the database has been given up.
  void abandon() noexcept;

 private:
  /// Takes a statement from the session of the moment, and binds the values.
  void prepare();
  void setLive(bool live) noexcept;

  std::shared_ptr<Database> database_;
  std::shared_ptr<const TranslatedStatement> source_;
  std::vector<QuorDataLib::Value> values_;
  TimeLimit limit_;
  std::shared_ptr<Session> session_;  // of the statement
  Statement statement_;               // empty unless it stands on a row or is about to be stepped
  bool live_ = false;
  Rows::CursorReader* reader_ = nullptr;
};

}  // namespace QuorHost::Sqlite
