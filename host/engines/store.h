// A company's database as the host sees it, whatever engine stores it.
#pragma once

#include <cstdint>
#include <memory>
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
  /// long).
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

/// An open company database.
class Store : public std::enable_shared_from_this<Store> {
 public:
  virtual ~Store() = default;

  /// The company's tables and views, in their order of creation.
  [[nodiscard]] virtual const Sql::Catalogue& catalogue() const = 0;

  /// True when the company may be changed.
  [[nodiscard]] virtual bool writable() const = 0;

  /// A connection that reads statements in `dialect`. It keeps the store open.
  [[nodiscard]] virtual QuorDataLib::Ref<QuorDataLib::Connection> connect(Sql::Dialect dialect) = 0;

  /// Runs a `CREATE` statement of the server dialect and adds what it makes to the catalogue.
  virtual void define(std::string_view statement) = 0;

  [[nodiscard]] virtual std::unique_ptr<Transaction> begin() = 0;

  /// Reads the company as it is now until the snapshot is dropped. Raises 5 when the company was
  /// opened for writing, or when a snapshot is held already.
  [[nodiscard]] virtual std::unique_ptr<Snapshot> hold() = 0;

  /// A writer of rows for some columns of `table`, in that order. Raises a refused statement for an
  /// unknown table or column.
  [[nodiscard]] virtual std::unique_ptr<RowWriter> writer(
      const std::string& table, const std::vector<std::string>& columns) = 0;

  /// What the engine's own integrity check finds, one line each; empty when all is well.
  [[nodiscard]] virtual std::vector<std::string> integrityFindings() = 0;

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
inline constexpr int kNewestSchemaVersion = 3;

/// Opens the company file at `path`. Raises 75 with a message that says what to do for a missing,
/// unreadable, truncated, locked or foreign file, and for one of a newer schema version.
[[nodiscard]] std::shared_ptr<Store> openCompanyFile(const std::string& path, Access access);

/// Makes an empty database at `path`, which must not exist: raises 75 when it does, or when the
/// file cannot be made. The file of a bulk store is whole and on the disk after a commit, and when
/// the store has been closed; before that, only this store can use it.
[[nodiscard]] std::shared_ptr<Store> createCompanyFile(const std::string& path,
                                                       Durability durability);

}  // namespace QuorHost
