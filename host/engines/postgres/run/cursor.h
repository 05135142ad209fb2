// The rows of a statement that runs on the server.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/engines/postgres/server/database.h"
#include "host/engines/rows/cursor.h"
#include "host/engines/write/translation_cache.h"
#include "platform/values/value.h"

namespace QuorHost::Postgres {

/// Runs a query whenever it is stepped from before its first row, on the connection that the
/// database has for it then, and reads its rows in batches that grow. A short result is in memory
/// with the first one, and holds nothing of the server.
class ServerCursor final : public Rows::Cursor {
 public:
  /// Raises what converting `values` to the markers' types raises.
  ServerCursor(std::shared_ptr<Database> database,
               std::shared_ptr<const Write::TranslatedStatement> source,
               const std::vector<QuorDataLib::Value>& values, std::int32_t limit);
  ~ServerCursor() override;
  ServerCursor(const ServerCursor&) = delete;
  ServerCursor& operator=(const ServerCursor&) = delete;

  void setReader(Rows::CursorReader& reader) noexcept override { reader_ = &reader; }
  [[nodiscard]] const std::vector<Sql::ResultColumn>& columns() const noexcept override {
    return source_->translation().columns;
  }
  bool step() override;
  [[nodiscard]] Rows::Cell cell(std::int32_t column) const override;
  void reset() noexcept override;
  /// The first batch is in memory already.
  [[nodiscard]] Rows::Allowance readAhead() const noexcept override { return {.rows = 0}; }
  [[nodiscard]] int compareTexts(std::string_view a, std::string_view b) const noexcept override {
    return database_->compareTexts()(a, b);
  }

  /// Has the reader take rows into memory.
  void letKeep(const Rows::Allowance& allowance) noexcept { reader_->keepRows(allowance); }
  /// The transaction has ended: what the server still has of the rows is gone.
  void abandon() noexcept;

 private:
  /// Runs the statement; a connection that turns out to be lost before anything was sent is made
  /// anew, once.
  void start();
  void startOn(const std::shared_ptr<Session>& session);
  void fetch(int rows);
  /// The server has no more rows.
  void finish();
  void setLive(bool live) noexcept;

  std::shared_ptr<Database> database_;
  std::shared_ptr<const Write::TranslatedStatement> source_;
  std::vector<Argument> arguments_;
  std::int32_t limit_;
  std::string name_;                  // of the server's cursor
  std::shared_ptr<Session> session_;  // while the server has rows
  bool own_ = false;                  // the transaction is this cursor's
  bool live_ = false;
  bool running_ = false;
  Result batch_;
  int row_ = 0;
  int size_ = 0;
  int wanted_ = 0;
  Rows::CursorReader* reader_ = nullptr;
};

}  // namespace QuorHost::Postgres
