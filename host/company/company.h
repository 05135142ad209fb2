// The company file: making, filling, inspecting and checking it.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/engines/store.h"
#include "platform/date.h"

namespace QuorHost {

/// Largest scale of the sample: more would not fit its 32-bit keys.
inline constexpr std::int32_t kLargestScale = 100'000;

/// Told how far long work has come: what is being done, and done and total in units of that work.
/// Called a few hundred times at most.
using Progress = std::function<void(std::string_view what, std::int64_t done, std::int64_t total)>;

/// Kinds of charts of accounts, by the numbers that `CieInfo.AccountTypeChart` has for them.
enum class Chart : std::uint8_t { Fixed = 1, French = 2, Own = 3 };

struct CreateOptions {
  /// Fill the company with a believable trading business.
  bool sample = false;
  /// Size of the sample in thousands of customer invoices; everything else grows with it. 1 or
  /// more.
  std::int32_t scale = 1;
  /// The same scale, seed and chart give the same bytes.
  std::uint64_t seed = 1;
  /// The numbers and types of the sample's accounts.
  Chart chart = Chart::Fixed;
  /// Replace an existing file.
  bool force = false;
};

/// Makes a company file: the schema, its parameters and, on request, the sample. The file appears
/// at `path` complete or not at all; an existing one is refused without `force`, and with it stays
/// as it is until the new one is complete.
void createCompany(const std::string& path, const CreateOptions& options,
                   const Progress& progress = {});

/// Opens a company file as `openCompanyFile` does. One of an older schema is first brought up to
/// this one, in one transaction, also when it is opened for reading; raises what stands in the way
/// of that, and then leaves the file as it is.
[[nodiscard]] std::shared_ptr<Store> openCompany(const std::string& path, Access access);

/// Loads CSV (RFC 4180, UTF-8, a header row that names any subset of the table's columns, an empty
/// field is null, an empty quoted field the empty text) into `table`, in one transaction, after the
/// rows that are there or instead of them. Returns the number of rows loaded. Raises an error that
/// names line and column of the first bad row; nothing is kept then.
std::int64_t importCsv(Store& store, const std::string& table, std::istream& csv, bool replace);

/// Writes all rows of a table or view as CSV that `importCsv` reads back to the same rows. Returns
/// the number of rows.
std::int64_t exportCsv(Store& store, const std::string& relation, std::ostream& csv);

struct CompanyInfo {
  struct Relation {
    std::string name;
    Sql::Relation::Kind kind;
    std::int64_t rows;
  };
  std::string engine;
  std::int64_t sizeInBytes = 0;
  int schemaVersion = 0;
  std::vector<Relation> relations;
  /// First and last date of the customers' and suppliers' documents; no date without documents.
  QuorDataLib::Date firstDocument;
  QuorDataLib::Date lastDocument;
};

[[nodiscard]] CompanyInfo describeCompany(Store& store);

/// The engine's integrity check, then the books: every ledger transaction balances, no document
/// line points at nothing. One line for each finding, empty when all is well.
[[nodiscard]] std::vector<std::string> checkCompany(Store& store);

}  // namespace QuorHost
