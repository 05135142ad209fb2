// The rows of a statement that was passed through.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/odbc/driver/database.h"
#include "host/engines/odbc/run/batch.h"
#include "host/engines/odbc/run/statement.h"
#include "host/engines/rows/cursor.h"
#include "platform/values/value.h"

namespace QuorHost::Odbc {

/// Runs a query when it is made, and again when it is stepped from before its first row, on the
/// connection that the database has for it then. A result that comes in one batch holds nothing of
/// the driver.
class OdbcCursor final : public Rows::Cursor {
 public:
  /// Raises what converting `values` raises, and what the driver reports.
  OdbcCursor(std::shared_ptr<Database> database, std::string text,
             std::vector<QuorDataLib::Value> values, std::int32_t limit);
  ~OdbcCursor() override;
  OdbcCursor(const OdbcCursor&) = delete;
  OdbcCursor& operator=(const OdbcCursor&) = delete;

  void setReader(Rows::CursorReader& reader) noexcept override { reader_ = &reader; }
  [[nodiscard]] const std::vector<Sql::ResultColumn>& columns() const noexcept override {
    return columns_;
  }
  bool step() override;
  [[nodiscard]] Rows::Cell cell(std::int32_t column) const override;
  void reset() noexcept override;
  [[nodiscard]] Rows::Allowance readAhead() const noexcept override;
  [[nodiscard]] int compareTexts(std::string_view a, std::string_view b) const noexcept override {
    return database_->compareTexts()(a, b);
  }

  /// Has the reader take rows into memory.
  void letKeep(const Rows::Allowance& allowance) noexcept {
    if (reader_ != nullptr) reader_->keepRows(allowance);
  }

 private:
  /// Runs the statement; a connection that turns out to be lost before anything was sent is made
  /// anew, once.
  void start();
  void startOn(const std::shared_ptr<Session>& session);
  /// Fetches the next rows; where the driver has no more, the statement ends.
  void fetch();
  void endStatement() noexcept;

  std::shared_ptr<Database> database_;
  std::string text_;
  std::vector<QuorDataLib::Value> values_;
  std::int32_t limit_;
  std::vector<Sql::ResultColumn> columns_;
  std::shared_ptr<Session> session_;  // while the driver has rows
  std::unique_ptr<Batch> batch_;      // outlives the statement that it was bound to
  std::unique_ptr<Statement> statement_;
  bool started_ = false;  // the statement has run, and no row was asked for
  bool running_ = false;
  std::size_t row_ = 0;
  Rows::CursorReader* reader_ = nullptr;
};

}  // namespace QuorHost::Odbc
