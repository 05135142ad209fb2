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
#include "platform/values/date.h"

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
  /// Replace an existing file, which nobody may be using.
  bool force = false;
  /// Roles of the server that may read the company and do no more.
  std::vector<std::string> readers;
};

/// Makes a company file: the schema, its parameters and, on request, the sample. The file appears
/// at `path` complete or not at all; an existing one is refused without `force`, and with it stays
/// as it is until the new one is complete. Only the owner may read and write a new file; one that
/// is replaced hands its mode and owner down. Where `path` is a link, it stays, and the file that
/// it leads to is meant. On a server the same holds of the schema. Raises 5, and 75 for an old file
/// that is in use, with what to do.
void createCompany(const std::string& path, const CreateOptions& options,
                   const Progress& progress = {});

/// Copies the company at `path`, whole and as it is at one moment, to `copy`, as `createCompany`
/// makes a file. Others may read and write the company meanwhile.
void backupCompany(const std::string& path, const std::string& copy, bool force,
                   const Progress& progress = {});

/// Copies the company that `from` names, a file or a connection to a server, to `to`, which may be
/// either, too: its tables, views and indexes with all rows, as they are at one moment. What is at
/// `to` appears complete or not at all; what was there is replaced only with `force`, a file as
/// `createCompany` replaces one, on a server nothing but another company. Others may use the
/// company meanwhile. `readers` are as in `CreateOptions`.
void copyCompany(const std::string& from, const std::string& to, bool force,
                 const Progress& progress = {}, const std::vector<std::string>& readers = {});

/// Opens a company as `openCompanyFile` does. One of an older schema is brought up to this
/// one: for writing in the file itself, in one transaction; for reading in a copy in the folder for
/// temporary files, which takes its time and room at every opening. Raises what stands in the way
/// of that, and then leaves the file as it is.
[[nodiscard]] std::shared_ptr<Store> openCompany(const std::string& path, Access access);

/// Loads CSV (RFC 4180, UTF-8, a header row that names any subset of the table's columns, an empty
/// field is null, an empty quoted field the empty text) into `table`, in one transaction, after the
/// rows that are there or instead of them. The `Balance` of documents, where it is left out, is
/// what their other columns make it. The input is read to its end before anything is changed, so
/// that a slow one keeps nobody waiting; what does not fit a little memory rests in a temporary
/// file. Returns the number of rows loaded. Raises an error that names line and column of the first
/// bad row; nothing is kept then. Stock movements make the running costs of
/// their items stale from their day on, unless they are all there is and bring their own; lines of
/// purchases those of what was received by them, where they adjust another reception.
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

/// Told every finding of a check, one line each.
using Findings = std::function<void(const std::string& finding)>;

/// Looks at the file, then at the books: the rules are those of `checks/`. Tells every finding as
/// it is made, and goes on with the next rule where one cannot be checked, which is a finding
/// itself. Returns how many there were: 0 when all is well.
std::int64_t checkCompany(Store& store, const Findings& report);

/// The same of a company file, which may be too damaged to be opened: what stands in the way is
/// then the first finding, and the rest is what can be said without. Raises what `openCompany`
/// raises where there is no company to look at.
std::int64_t checkCompany(const std::string& path, const Findings& report);

/// All findings together.
[[nodiscard]] std::vector<std::string> checkCompany(Store& store);

}  // namespace QuorHost
