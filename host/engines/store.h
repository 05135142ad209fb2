// A company's database as the host sees it, whatever engine stores it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/catalogue.h"
#include "platform/data_library.h"

namespace QuorHost {

/// Adds rows to one table, as fast as the engine allows. It does not run outside a transaction.
class RowWriter {
 public:
  virtual ~RowWriter() = default;

  /// Adds a row: one value for each column the writer was made for, converted to the column's type;
  /// Null and Empty are stored as null. Raises the conversion's error, naming the column, or a
  /// refused statement with the engine's reason (a duplicate key, a missing value, a text too
  /// long). A server tells what is wrong only beside other rows (a duplicate key, a reference)
  /// when it has them: with a later row, with the next statement or at the commit.
  virtual void add(std::span<const QuorDataLib::Value> values) = 0;
};

/// A transaction that rolls back unless it was committed.
class Transaction {
 public:
  virtual ~Transaction() = default;
  /// Makes the changes durable; raises the engine's error (a full disk) and then keeps nothing.
  virtual void commit() = 0;
};

/// While it lives, everything that its store reads is of one moment: what others store meanwhile is
/// seen when it has ended. Small reads are faster for it, as the engine need not look for changes
/// each time. Others can go on writing, but the engine cannot put away what they wrote, so that the
/// file beside the company file grows.
class Snapshot {
 public:
  Snapshot() = default;
  virtual ~Snapshot() = default;
  Snapshot(const Snapshot&) = delete;
  Snapshot& operator=(const Snapshot&) = delete;
};

/// A table whose changes are to be noted: its rows' `key` (a whole number) and `date`, for rows
/// that are added, removed, or changed in one of `columns`.
struct WatchedTable {
  std::string table;
  std::string key;
  /// Empty where no date matters.
  std::string date;
  /// Leaves out rows in which this column is not above zero; empty for all rows.
  std::string positive;
  std::vector<std::string> columns;
};

/// While it lives, it notes what changes in a table, by its own store alone.
class ChangeLog {
 public:
  /// The earliest date that a changed row of `key` had or has, if there are dates.
  struct Change {
    std::int32_t key = 0;
    QuorDataLib::Date from;
  };

  ChangeLog() = default;
  virtual ~ChangeLog() = default;
  ChangeLog(const ChangeLog&) = delete;
  ChangeLog& operator=(const ChangeLog&) = delete;

  /// What has changed until now, by key.
  [[nodiscard]] virtual std::vector<Change> take() = 0;
};

/// An open company database.
class Store : public std::enable_shared_from_this<Store> {
 public:
  virtual ~Store() = default;

  /// The company's tables and views, in their order of creation.
  [[nodiscard]] virtual const Sql::Catalogue& catalogue() const = 0;

  /// Whether there is a table or a view of that name.
  [[nodiscard]] virtual bool hasTable(std::string_view name) {
    return catalogue().find(name) != nullptr;
  }

  /// The only dialect that the company's engine reads; nothing where it reads both.
  [[nodiscard]] virtual std::optional<Sql::Dialect> onlyDialect() const { return std::nullopt; }

  /// The `CREATE` statements that made them and their indexes, in their order.
  [[nodiscard]] virtual std::vector<std::string> definitions() const = 0;

  /// True when the company may be changed.
  [[nodiscard]] virtual bool writable() const = 0;

  /// A connection that reads statements in `dialect`. It keeps the store open. Raises 5 for the
  /// dialect that the engine does not read.
  [[nodiscard]] virtual QuorDataLib::Ref<QuorDataLib::Connection> connect(Sql::Dialect dialect) = 0;

  /// A connection for statements that read alike in both dialects.
  [[nodiscard]] QuorDataLib::Ref<QuorDataLib::Connection> connectInEither() {
    return connect(onlyDialect().value_or(Sql::Dialect::Server));
  }

  /// Runs a `CREATE` statement of the server dialect and adds what it makes to the catalogue.
  virtual void define(std::string_view statement) = 0;

  /// Makes `table` anew as `statement`, a `CREATE TABLE` of that name, has it. Its rows keep what
  /// they have in the columns that both have, and its indexes stay. No table may refer to it,
  /// unless it only gains one column, its last, which may be null.
  virtual void redefine(std::string_view table, std::string_view statement) = 0;

  [[nodiscard]] virtual std::unique_ptr<Transaction> begin() = 0;

  /// The same, for changes of definitions: of several programs that want to make some, one begins
  /// when the others have ended, and knows what they have made.
  [[nodiscard]] virtual std::unique_ptr<Transaction> beginToDefine() { return begin(); }

  /// Reads the company as it is now until the snapshot is dropped. Raises 5 when the company was
  /// opened for writing, or when a snapshot is held already.
  [[nodiscard]] virtual std::unique_ptr<Snapshot> hold() = 0;

  /// A writer of rows for some columns of `table`, in that order. Raises a refused statement for an
  /// unknown table or column.
  [[nodiscard]] virtual std::unique_ptr<RowWriter> writer(
      const std::string& table, const std::vector<std::string>& columns) = 0;

  /// Begins to note changes of a table. There is one log of a table at a time.
  [[nodiscard]] virtual std::unique_ptr<ChangeLog> watch(const WatchedTable& watched) = 0;

  /// What is wrong with the file as far as the engine can tell: damage, broken references, objects
  /// that the company's definitions do not know. One line each; empty when all is well.
  [[nodiscard]] virtual std::vector<std::string> integrityFindings() = 0;

  /// Copies the company, whole and as it is at this moment, over the empty file at `path`; others
  /// may go on writing meanwhile. `progress` is told from time to time how much of how much is
  /// done. The copy is on the disk at the end.
  virtual void copyTo(
      const std::string& path,
      const std::function<void(std::int64_t done, std::int64_t total)>& progress) = 0;

  /// The engine and its version, for people ("SQLite 3.40.1").
  [[nodiscard]] virtual std::string engineName() const = 0;

  /// Size of the database in bytes.
  [[nodiscard]] virtual std::int64_t sizeInBytes() const = 0;

  /// Version of the company schema that the database holds.
  [[nodiscard]] virtual int schemaVersion() const = 0;
  virtual void setSchemaVersion(int version) = 0;
};

enum class Access : std::uint8_t { Read, Write };

/// How a new company file is filled.
enum class Durability : std::uint8_t {
  /// Every commit is on the disk when it returns.
  Full,
  /// For a file that is made in one go under a temporary name: nothing is synced before the end.
  Bulk,
};

/// Version of the company schema that this build makes, and the newest that it reads. A file
/// without a version (0) opens, too: it holds whatever `define` made in it.
inline constexpr int kNewestSchemaVersion = 7;

/// Raised when the connection to a server ends while it is used.
inline constexpr std::int32_t kConnectionLost = static_cast<std::int32_t>(0x80040E15);

/// Whether `company` is a connection to a server (`postgresql://user@host/database?schema=NAME`,
/// `odbc:DSN=NAME;dialect=server`) and not the path of a file.
[[nodiscard]] bool isServer(std::string_view company) noexcept;

/// `company` as it may be shown: a connection without its passwords.
[[nodiscard]] std::string shownCompany(const std::string& company);

/// How a company is opened for work that may or may not write: for writing where this process may
/// write its file, and on a server, which knows itself what a role may do; otherwise for reading.
[[nodiscard]] Access accessAllowed(const std::string& company) noexcept;

/// Opens the company file at `path`, or the company that a connection leads to. A file whose texts
/// are in the order of another system is sorted anew, in place for writing and in a copy for
/// reading. Raises 75 with a message that says what to do for a missing, unreadable, truncated,
/// locked or foreign file, for one of a newer schema version, and for a server, a database, a role
/// or a schema that is not there.
[[nodiscard]] std::shared_ptr<Store> openCompanyFile(const std::string& path, Access access);

/// Opens for reading a private copy of the company file at `path` to which `change` has been done;
/// the file itself stays as it is. The copy is made in the folder for temporary files, takes as
/// much room there, and is gone with the store.
[[nodiscard]] std::shared_ptr<Store> openChangedCopy(const std::string& path,
                                                     const std::function<void(Store&)>& change);

/// Keeps a company file from everybody else.
class SoleUse {
 public:
  SoleUse() = default;
  virtual ~SoleUse() = default;
  SoleUse(const SoleUse&) = delete;
  SoleUse& operator=(const SoleUse&) = delete;
};

/// Takes the file at `path` out of use, so that it can be replaced: its log is back in it, and
/// whoever wants to open it waits until the object is dropped. Empty where the file is no database
/// that the engine can read. Raises 75 when somebody uses the file, or it may not be written.
[[nodiscard]] std::unique_ptr<SoleUse> takeAlone(const std::string& path);

/// How much of a file tells whether it is a company's.
inline constexpr std::size_t kCompanyHeaderSize = 100;

/// Whether a file that begins with `header` was made as a company.
[[nodiscard]] bool isCompanyHeader(std::string_view header) noexcept;

/// `Store::integrityFindings` of a company file that may be too damaged to be opened as one. Raises
/// what `openCompanyFile` raises where there is nothing to look at.
[[nodiscard]] std::vector<std::string> companyFileFindings(const std::string& path);

/// How a new company on a server comes to be.
struct OnServer {
  /// In place of the company that is there, of nothing else.
  bool replace = false;
  /// Roles that may read all that the company holds, also what later versions of the schema bring,
  /// and do no more. They must be there already.
  std::vector<std::string> readers;
};

/// Makes an empty database at `path`, where nothing or an empty file may be: raises 75 otherwise,
/// or when the file cannot be made. Only its owner may read and write it. The file of a bulk store
/// is whole and on the disk after a commit, and when the store has been closed; before that, only
/// this store can use it. Where `path` is a connection, the company comes to be with the store's
/// first transaction, in a schema that is not there or empty, as `onServer` says; a file is never
/// replaced and has no readers: raises 5 where it is to have some.
[[nodiscard]] std::shared_ptr<Store> createCompanyFile(const std::string& path,
                                                       Durability durability,
                                                       const OnServer& onServer = {});

}  // namespace QuorHost
