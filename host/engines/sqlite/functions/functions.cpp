#include "host/engines/sqlite/functions/functions.h"

#include <cmath>
#include <new>

#include "host/engines/sqlite/functions/function_call.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

void endWithError(sqlite3_context* context) {
  try {
    throw;
  } catch (const CallError& error) {
    sqlite3_result_error(context, error.message().c_str(), -1);
  } catch (const QuorDataLib::Error& error) {
    const bool overflowed = error.is(QuorDataLib::ErrorNumber::Overflow);
    sqlite3_result_error(context, overflowed ? kIntegerOverflow : error.what(), -1);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  }
}

void callFromEngine(sqlite3_context* context, int count, sqlite3_value** values) {
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(values[i]) == SQLITE_NULL) return sqlite3_result_null(context);
  }
  const auto* const entry = static_cast<const FunctionEntry*>(sqlite3_user_data(context));
  try {
    entry->body(Call(context, count, values));
  } catch (...) {
    endWithError(context);
  }
}

void registerAll(sqlite3* database, std::span<const FunctionEntry> entries) {
  for (const FunctionEntry& entry : entries) {
    void* const data = const_cast<FunctionEntry*>(&entry);  // NOLINT: handed back as const
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    if (sqlite3_create_function_v2(database, entry.name, entry.arguments, kFlags, data,
                                   callFromEngine, nullptr, nullptr, nullptr) != SQLITE_OK) {
      QuorDataLib::raise(QuorDataLib::ErrorNumber::OutOfMemory, "Out of memory");
    }
  }
}

}  // namespace

std::string_view Call::text(std::size_t i) const {
  const unsigned char* const text = sqlite3_value_text(values_[i]);
  if (text == nullptr) throw std::bad_alloc();
  return {reinterpret_cast<const char*>(text),
          static_cast<std::size_t>(sqlite3_value_bytes(values_[i]))};
}

std::int64_t Call::whole(std::size_t i) const {
  if (!isWhole(i)) overflow();
  return sqlite3_value_int64(values_[i]);
}

void Call::returnNumber(double value) const {
  if (!std::isfinite(value)) overflow();
  sqlite3_result_double(context_, value);
}

void Call::returnText(std::string_view value) const {
  sqlite3_result_text64(context_, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void overflow() { throw CallError(kIntegerOverflow); }

void registerFunctions(sqlite3* database) {
  registerAll(database, numberFunctions());
  registerAll(database, dateFunctions());
  registerAll(database, textFunctions());
}

}  // namespace QuorHost::Sqlite
