#include "host/engines/postgres/server/link.h"

#include <charconv>
#include <ctime>
#include <utility>

#include "host/engines/postgres/server/server_error.h"
#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Postgres {
namespace {

/// Offset of this machine's clock, which the server's dates of today go by.
std::string timeZone() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  const long minutes = local.tm_gmtoff / 60;
  return "INTERVAL '" + std::to_string(minutes) + " minutes' HOUR TO MINUTE";
}

/// What our connections are told. Compiling a plan takes longer than most of ours run; the sorts of
/// whole-company reports want their memory; a company is in memory or on a disk without arms, where
/// a row by its key costs little more than the next one; rows of a table come in the order of the
/// table.
std::string settings(const Address& address, Access access) {
  return "SET search_path = " + Link::quoted(address.schema) +
         "; SET client_encoding = 'UTF8'; SET DateStyle = 'ISO, YMD'; SET extra_float_digits = 1;"
         " SET standard_conforming_strings = on; SET jit = off; SET work_mem = '64MB'; SET "
         "random_page_cost = 1.1;"
         " SET cursor_tuple_fraction = 1; SET synchronize_seqscans = off;"
         " SET client_min_messages = error; SET lock_timeout = '60s'; SET TIME ZONE " +
         timeZone() + (access == Access::Read ? "; SET default_transaction_read_only = on" : "");
}

std::string doubled(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) {
    result += c;
    if (c == quote) result += c;
  }
  return result + quote;
}

}  // namespace

std::string Link::quoted(std::string_view name) { return doubled(name, '"'); }
std::string Link::nameOf(std::string_view name) { return quoted(Sql::lowerName(name)); }
std::string Link::literal(std::string_view text) { return doubled(text, '\''); }

Link::Link(const Address& address, Access access, const Sql::Catalogue& catalogue)
    : catalogue_(&catalogue), mayChange_(access == Access::Write) {
  std::vector<const char*> names;
  std::vector<const char*> values;
  names.reserve(address.names.size() + 2);
  values.reserve(address.values.size() + 2);
  for (const std::string& name : address.names) names.push_back(name.c_str());
  for (const std::string& value : address.values) values.push_back(value.c_str());
  names.insert(names.end(), {"fallback_application_name", nullptr});
  values.insert(values.end(), {"quoracc", nullptr});
  connection_.reset(PQconnectdbParams(names.data(), values.data(), 0));
  if (!connection_ || lost()) raiseConnectionError(connection_.get(), address.shown);
  // Warnings of the server would go to standard error.
  PQsetNoticeProcessor(connection_.get(), [](void*, const char*) {}, nullptr);
  run(settings(address, access));
}

Result Link::checked(PGresult* raw, std::string_view text) {
  Result result(raw);
  switch (PQresultStatus(result.get())) {
    case PGRES_COMMAND_OK:
    case PGRES_TUPLES_OK:
    case PGRES_EMPTY_QUERY:
    case PGRES_COPY_IN:
      return result;
    default:
      raiseServerError(
          connection_.get(), result.get(),
          {.statement = text, .limit = limit_, .mayChange = mayChange_, .catalogue = catalogue_});
  }
}

Result Link::run(const std::string& sql, std::string_view text) {
  awaitCopy();
  return checked(PQexec(connection_.get(), sql.c_str()), text);
}

Result Link::run(const std::string& sql, const std::vector<Argument>& arguments,
                 std::string_view text) {
  awaitCopy();
  std::vector<Oid> types;
  std::vector<const char*> values;
  for (const Argument& argument : arguments) {
    types.push_back(argument.type);
    values.push_back(argument.text ? argument.text->c_str() : nullptr);
  }
  return checked(PQexecParams(connection_.get(), sql.c_str(), static_cast<int>(arguments.size()),
                              types.data(), values.data(), nullptr, nullptr, 0),
                 text);
}

void Link::tryTo(const char* sql) noexcept {
  takeCopied();
  PQclear(PQexec(connection_.get(), sql));
}

std::int64_t Link::number(const std::string& sql) {
  const Result result = run(sql);
  std::int64_t value = 0;
  if (PQntuples(result.get()) > 0) {
    const std::string_view text = textAt(result, 0, 0);
    std::from_chars(text.data(), text.data() + text.size(), value);
  }
  return value;
}

void Link::limit(std::int32_t seconds) {
  if (limit_ == seconds) return;
  constexpr std::int32_t kMost = 2'000'000;  // the server counts milliseconds in 32 bits
  limit_ = 0;
  run("SET statement_timeout = " +
      (seconds == 0 ? "DEFAULT" : "'" + std::to_string(std::min(seconds, kMost)) + "s'"));
  limit_ = seconds;
}

void Link::rollBack() noexcept {
  tryTo("ROLLBACK");
  limit_ = -1;  // of no statement: the next one says it again
}

void Link::copy(const std::string& sql, std::string_view rows) {
  run(sql);
  copying_ = true;
  if (PQputCopyData(connection_.get(), rows.data(), static_cast<int>(rows.size())) != 1 ||
      PQputCopyEnd(connection_.get(), nullptr) != 1) {
    copying_ = false;
    raiseServerError(connection_.get(), nullptr,
                     {.mayChange = mayChange_, .catalogue = catalogue_});
  }
}

Result Link::takeCopied() noexcept {
  if (!std::exchange(copying_, false)) return {};
  Result result(PQgetResult(connection_.get()));
  // The connection is ready for the next statement when there is no further result.
  while (const Result more{PQgetResult(connection_.get())}) {
  }
  return result;
}

void Link::awaitCopy() {
  if (Result result = takeCopied()) checked(result.release(), {});
}

}  // namespace QuorHost::Postgres
