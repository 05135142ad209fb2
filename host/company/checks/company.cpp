// The file as a whole, and the company itself.
#include <array>
#include <cmath>

#include "host/company/checks/check.h"
#include "host/sql/utf8.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;
using Sql::Relation;

/// The row in words: by its primary key, or by its number where it has none.
std::string rowName(const Relation& table, Recordset& row, std::int64_t number) {
  std::string key;
  for (const Sql::Column& column : table.columns) {
    if (!column.primaryKey) continue;
    try {
      key += (key.empty() ? "" : ", ") + row.Field(column.name).toText();
    } catch (const QuorDataLib::Error&) {
      return "Row number " + std::to_string(number);
    }
  }
  return key.empty() ? "Row number " + std::to_string(number) : "Row " + key;
}

/// What is wrong with a value that could be read; empty when nothing is.
std::string faultOf(const Value& value) {
  if (value.type() == ValueType::Double && !std::isfinite(value.toDouble())) {
    return "the number is not finite";
  }
  if (value.type() == ValueType::Text && Sql::findIllFormed(value.text()) != std::string::npos) {
    return "the text is not UTF-8";
  }
  return {};
}

void lookAtRow(const Relation& table, Recordset& row, std::int64_t number, const Findings& report) {
  for (std::int32_t i = 0; i < row.FieldCount(); ++i) {
    std::string fault;
    try {
      fault = faultOf(row.Field(i));
    } catch (const QuorDataLib::Error& error) {
      fault = error.description();
    }
    if (fault.empty()) continue;
    report(rowName(table, row, number) + " of " + table.name + ", column " + row.FieldName(i) +
           ": " + fault);
  }
}

void lookAtValues(Store& store, const Findings& report) {
  const auto connection = store.connect(Sql::Dialect::Server);
  for (const Relation& table : store.catalogue().relations()) {
    if (table.kind != Relation::Kind::Table) continue;
    std::int64_t number = 0;
    try {
      const Ref<Recordset> rows =
          connection->OpenRecordset("SELECT * FROM [" + table.name + "]", 4, 0, {}, 0);
      for (; !rows->AtEnd(); rows->MoveNext()) lookAtRow(table, *rows, ++number, report);
    } catch (const QuorDataLib::Error& error) {
      report("Table " + table.name + " can be read for " + std::to_string(number) +
             " rows only: " + error.description());
    }
  }
}

void lookAtFile(Store& store, const Findings& report) {
  for (const std::string& finding : store.integrityFindings()) report(finding);
}

constexpr std::array kCompanyChecks{
    Check{.rule = "the file is sound", .look = lookAtFile},
    Check{.rule = "every value is of its column's type", .look = lookAtValues},
    Check{.rule = "there is one company in the file",
          .query = "SELECT InCieId, Name FROM CieInfo "
                   "WHERE InCieId > (SELECT MIN(InCieId) FROM CieInfo) ORDER BY InCieId",
          .finding = "Row {0} of CieInfo ({1}) is a second company: a file holds one"},
};

}  // namespace

std::span<const Check> companyChecks() { return kCompanyChecks; }

}  // namespace QuorHost
