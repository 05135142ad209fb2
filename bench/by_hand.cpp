#include "bench/by_hand.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <stdexcept>
#include <string_view>
#include <utility>

namespace QuorBench {
namespace {

void check(sqlite3_stmt* statement, int code, int expected) {
  if (code != expected) throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(statement)));
}

}  // namespace

Query::Query(sqlite3* database, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(database, sql.c_str(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  statement_.reset(statement);
  if (code != SQLITE_OK) throw std::runtime_error(sqlite3_errmsg(database));
}

void Query::bind(int index, std::int64_t number) {
  check(statement_.get(), sqlite3_bind_int64(statement_.get(), index, number), SQLITE_OK);
}

void Query::bind(int index, const std::string& text) {
  check(statement_.get(),
        sqlite3_bind_text(statement_.get(), index, text.data(), static_cast<int>(text.size()),
                          SQLITE_TRANSIENT),
        SQLITE_OK);
}

template <class Text>
Digest Query::run(Text&& takeText) {
  sqlite3_stmt* statement = statement_.get();
  const int columns = sqlite3_column_count(statement);
  Digest digest;
  int code = SQLITE_ROW;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    ++digest.rows;
    for (int column = 0; column < columns; ++column) {
      switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
          digest.integers += static_cast<std::uint64_t>(sqlite3_column_int64(statement, column));
          break;
        case SQLITE_FLOAT:
          benchmark::DoNotOptimize(sqlite3_column_double(statement, column));
          break;
        case SQLITE_TEXT: {
          const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
          const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
          takeText(std::string_view(text, size));
          break;
        }
        default:
          break;
      }
    }
  }
  check(statement, code, SQLITE_DONE);
  sqlite3_reset(statement);
  return digest;
}

std::string Query::text() {
  std::string first;
  if (sqlite3_step(statement_.get()) == SQLITE_ROW) {
    if (const auto* text = sqlite3_column_text(statement_.get(), 0)) {
      first = reinterpret_cast<const char*>(text);
    }
  }
  sqlite3_reset(statement_.get());
  return first;
}

Digest Query::read() {
  return run([](std::string_view text) { benchmark::DoNotOptimize(text.data()); });
}

Digest Query::copy() {
  return run([](std::string_view text) { benchmark::DoNotOptimize(std::string(text)); });
}

Digest read(const QuorDataLib::Ref<QuorDataLib::Recordset>& rows) {
  using QuorDataLib::ValueType;
  QuorDataLib::Recordset& recordset = *rows;
  const std::int32_t columns = recordset.FieldCount();
  Digest digest;
  for (; !recordset.AtEnd(); recordset.MoveNext()) {
    ++digest.rows;
    for (std::int32_t column = 0; column < columns; ++column) {
      const QuorDataLib::Value value = recordset.Field(column);
      switch (value.type()) {
        case ValueType::Boolean:
          digest.integers += value.toBoolean() ? 1U : 0U;
          break;
        case ValueType::Integer:
        case ValueType::Long:
          digest.integers += static_cast<std::uint64_t>(value.toLong());
          break;
        case ValueType::Currency:
          digest.integers += static_cast<std::uint64_t>(value.toCurrency().units());
          break;
        default:
          benchmark::DoNotOptimize(&value);
      }
    }
  }
  recordset.Close();
  return digest;
}

double memoryInUse() {
  const struct mallinfo2 memory = mallinfo2();
  sqlite3_int64 pages = 0;
  sqlite3_int64 most = 0;
  sqlite3_status64(SQLITE_STATUS_PAGECACHE_OVERFLOW, &pages, &most, 0);
  return (static_cast<double>(memory.uordblks + memory.hblkhd) - static_cast<double>(pages)) / 1024;
}

void requireSame(const Digest& ours, const Digest& byHand) {
  if (ours.rows > 0 && ours == byHand) return;
  throw std::runtime_error("the two ways do not read the same rows (" + std::to_string(ours.rows) +
                           " and " + std::to_string(byHand.rows) + ")");
}

}  // namespace QuorBench
