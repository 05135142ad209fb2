// Any text, read in both dialects: it is refused with a message, or the storage engine accepts its
// translation.
#include <sqlite3.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host/engines/sqlite/functions/collation.h"
#include "host/engines/sqlite/functions/functions.h"
#include "host/engines/sqlite/write/sql_writer.h"
#include "host/sql/front_end.h"
#include "platform/data_library.h"
#include "platform/error.h"

namespace {

using namespace QuorHost;

constexpr std::string_view kSchema = R"(
  CREATE TABLE Cust (InCustId INT IDENTITY(1,1) PRIMARY KEY, Name VARCHAR(40), Balance MONEY,
                     Since DATETIME, Active BIT, Rate FLOAT, Kind SMALLINT);
  CREATE TABLE Doc (InDocId INT PRIMARY KEY, ExCustId INT REFERENCES Cust (InCustId), No VARCHAR(9),
                    Amnt MONEY NOT NULL DEFAULT 0, At DATETIME);
  CREATE VIEW Totals AS SELECT ExCustId, SUM(Amnt) AS Total, MAX(No) AS Last1 FROM Doc
                        GROUP BY ExCustId;
)";

class Company {
 public:
  Company() {
    sqlite3_open(":memory:", &database_);
    Sqlite::registerFunctions(database_);
    Sqlite::registerCollation(database_);
    for (const std::string& statement : Sql::splitStatements(kSchema)) {
      const Sql::Translation made =
          Sql::translate(statement, Sql::Dialect::Server, catalogue_, writer_);
      sqlite3_exec(database_, made.sql.c_str(), nullptr, nullptr, nullptr);
      catalogue_.add(made.created);
    }
  }

  void read(std::string_view text, Sql::Dialect dialect) {
    try {
      const Sql::Translation translation = Sql::translate(text, dialect, catalogue_, writer_);
      prepare(translation.sql);
    } catch (const QuorDataLib::Error& error) {
      if (error.number() != QuorDataLib::kStatementRefused) fail(error.what(), "");
    }
  }

 private:
  void prepare(const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr);
    sqlite3_finalize(statement);
    if (code != SQLITE_OK) fail(sqlite3_errmsg(database_), sql);
  }

  [[noreturn]] static void fail(const char* message, const std::string& sql) {
    std::fprintf(stderr, "%s\n%s\n", message, sql.c_str());
    std::abort();
  }

  sqlite3* database_ = nullptr;
  Sql::Catalogue catalogue_;
  Sqlite::SqlWriter writer_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Company company;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  company.read(text, Sql::Dialect::Server);
  company.read(text, Sql::Dialect::Desktop);
  try {
    (void)Sql::splitStatements(text);
  } catch (const QuorDataLib::Error&) {
    // Refused, which is an answer.
  }
  return 0;
}
