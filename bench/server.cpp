#include <benchmark/benchmark.h>
#include <libpq-fe.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

#include "bench/by_hand.h"
#include "bench/cases.h"
#include "host/company/company.h"
#include "host/engines/postgres/run/values.h"
#include "host/engines/postgres/write/sql_writer.h"
#include "platform/error.h"

namespace QuorBench {
namespace {

using QuorDataLib::Connection;
using QuorDataLib::Date;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

const Date kTo = Date::of(2024, 6, 30);

/// A statement as it reached a connection.
struct Sent {
  std::string sql;
  std::vector<Value> values;
};

/// Hands everything on and keeps the last query.
class Listening final : public Connection {
 public:
  Listening(Ref<Connection> connection, Sent& last)
      : connection_(std::move(connection)), last_(last) {}

  Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode, std::int32_t option,
                               const Parameters& parameters, std::int32_t flag) override {
    last_ = {sql, parameters.values()};
    return connection_->OpenRecordset(sql, mode, option, parameters, flag);
  }
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const Parameters& parameters) override {
    connection_->Execute(sql, recordsAffected, option, parameters);
  }
  std::int32_t CommandTimeout() override { return connection_->CommandTimeout(); }
  void SetCommandTimeout(std::int32_t seconds) override { connection_->SetCommandTimeout(seconds); }

 private:
  Ref<Connection> connection_;
  Sent& last_;
};

struct ClearResult {
  void operator()(PGresult* result) const noexcept { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ClearResult>;

/// What a program would write over the client library alone, with the settings that ours have.
class ByHand {
 public:
  ByHand(const std::string& server, const std::string& schema)
      : connection_(PQconnectdb(server.c_str())) {
    run("SET search_path = " + schema +
            "; SET jit = off; SET work_mem = '64MB'; SET random_page_cost = 1.1",
        {});
  }

  /// Runs a statement and copies all its values.
  std::int64_t read(const std::string& sql, const std::vector<std::string>& values) {
    return taken(run(sql, values));
  }

  /// The same, a batch at a time.
  std::int64_t scan(const std::string& sql) {
    constexpr int kBatch = 4096;
    run("BEGIN READ ONLY", {});
    run("DECLARE byhand NO SCROLL CURSOR FOR " + sql, {});
    std::int64_t rows = 0;
    std::int64_t more = kBatch;
    while (more == kBatch) {
      more = taken(run("FETCH " + std::to_string(kBatch) + " FROM byhand", {}));
      rows += more;
    }
    run("COMMIT", {});
    return rows;
  }

 private:
  struct Finish {
    void operator()(PGconn* connection) const noexcept { PQfinish(connection); }
  };

  Result run(const std::string& sql, const std::vector<std::string>& values) {
    std::vector<const char*> texts;
    texts.reserve(values.size());
    for (const std::string& value : values) texts.push_back(value.c_str());
    Result result(values.empty()
                      ? PQexec(connection_.get(), sql.c_str())
                      : PQexecParams(connection_.get(), sql.c_str(), static_cast<int>(texts.size()),
                                     nullptr, texts.data(), nullptr, nullptr, 0));
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_TUPLES_OK && status != PGRES_COMMAND_OK) {
      throw std::runtime_error(PQerrorMessage(connection_.get()));
    }
    return result;
  }

  static std::int64_t taken(const Result& result) {
    const int rows = PQntuples(result.get());
    const int columns = PQnfields(result.get());
    for (int row = 0; row < rows; ++row) {
      for (int column = 0; column < columns; ++column) {
        benchmark::DoNotOptimize(
            std::string(PQgetvalue(result.get(), row, column),
                        static_cast<std::size_t>(PQgetlength(result.get(), row, column))));
      }
    }
    return rows;
  }

  std::unique_ptr<PGconn, Finish> connection_;
};

/// A company on the server, and the file that it is a copy of.
class Both {
 public:
  Both(Companies& companies, int scale, std::string server)
      : server_(std::move(server)),
        schema_("quoracc_bench_" + std::to_string(QuorHost::kNewestSchemaVersion) + "_" +
                std::to_string(scale)),
        path_(companies.file(scale)),
        file_(companies.open(scale)) {
    try {
      there_ = std::make_shared<Company>(address());
    } catch (const QuorDataLib::Error&) {
      QuorHost::copyCompany(path_, address(), false);
      there_ = std::make_shared<Company>(address());
    }
  }

  [[nodiscard]] std::string address() const { return addressOf(schema_); }
  [[nodiscard]] Company& there() const { return *there_; }
  [[nodiscard]] Company& file() const { return *file_; }
  [[nodiscard]] std::shared_ptr<ByHand> byHand() const {
    return std::make_shared<ByHand>(server_, schema_);
  }

  /// Seconds that another copy of the file takes.
  [[nodiscard]] double copy() const {
    const auto start = std::chrono::steady_clock::now();
    QuorHost::copyCompany(path_, addressOf(schema_ + "_copy"), true);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  }

 private:
  [[nodiscard]] std::string addressOf(const std::string& schema) const {
    return server_ + (server_.find('?') == std::string::npos ? "?schema=" : "&schema=") + schema;
  }

  std::string server_;
  std::string schema_;
  std::string path_;
  std::shared_ptr<Company> file_;
  std::shared_ptr<Company> there_;
};

using Open = Ref<Recordset> (*)(Company& company);

Ref<Recordset> allAging(Company& company) {
  return company.customers().OpenCustAgingTransactions(false, 0, Date(), "", "", "", "", false,
                                                       false);
}
Ref<Recordset> oneAging(Company& company) {
  return company.customers().OpenCustAgingTransactions(false, 5, Date(), "", "", "", "", false,
                                                       false);
}
Ref<Recordset> oneBalance(Company& company) {
  return company.customers().OpenCustBalance(5, kTo, 0, "");
}
Ref<Recordset> allBalances(Company& company) {
  return company.customers().OpenCustBalance(0, kTo, 0, "");
}
Ref<Recordset> accountBalances(Company& company) {
  return company.connection()->OpenRecordset(
      "SELECT ExAcctId, SUM(DetAmnt) AS AcctBalance FROM GLDet WHERE DetDate <= ? GROUP BY "
      "ExAcctId",
      4, 0, Parameters::single(Value(kTo)), -1);
}
const char* const kScan = "SELECT InGLDetId, DetDate, DetDesc, DetAmnt FROM GLDet";
Ref<Recordset> scan(Company& company) {
  return company.connection()->OpenRecordset(kScan, 4, 0, {}, 0);
}

/// Against the engine's SQL of the same statement by hand.
Pair besideByHand(const std::shared_ptr<Both>& both, Open open) {
  Company& company = both->there();
  Sent sent;
  company.customers().SetCustomConnection(QuorDataLib::make<Listening>(company.connection(), sent));
  const Digest ours = read(open(company));
  company.customers().SetCustomConnection(company.connection());
  const auto translation =
      QuorHost::Sql::translate(sent.sql, QuorHost::Sql::Dialect::Server,
                               company.store().catalogue(), QuorHost::Postgres::SqlWriter());
  std::vector<std::string> values;
  values.reserve(sent.values.size());
  for (std::size_t i = 0; i < sent.values.size(); ++i) {
    values.push_back(
        QuorHost::Postgres::argumentOf(sent.values[i], translation.markers[i]).text.value_or(""));
  }
  const auto byHand = both->byHand();
  if (byHand->read(translation.sql, values) != ours.rows) {
    throw std::runtime_error("the rows are not those by hand");
  }
  return {[both, open] { read(open(both->there())); },
          [byHand, sql = translation.sql, values] { byHand->read(sql, values); }};
}

Pair besideFile(const std::shared_ptr<Both>& both, Open open) {
  requireSame(read(open(both->there())), read(open(both->file())));
  return {[both, open] { read(open(both->there())); }, [both, open] { read(open(both->file())); }};
}

Pair scanned(const std::shared_ptr<Both>& both) {
  const auto byHand = both->byHand();
  const std::string sql = "SELECT ingldetid, detdate, detdesc, detamnt FROM gldet";
  if (byHand->scan(sql) != read(scan(both->there())).rows) {
    throw std::runtime_error("the rows are not those by hand");
  }
  return {[both] { read(scan(both->there())); }, [byHand, sql] { byHand->scan(sql); }};
}

/// What the program's memory grows by while all lines of the ledger are read, in KiB.
double memoryOfAScan(const std::shared_ptr<Both>& both) {
  const double start = memoryInUse();
  double most = 0;
  const Ref<Recordset> rows = scan(both->there());
  for (std::int64_t count = 0; !rows->AtEnd(); rows->MoveNext()) {
    if (++count % 1'000 == 0) most = std::max(most, memoryInUse() - start);
  }
  return most;
}

}  // namespace

void addServer(Suite& suite, Companies& companies, int scale, const std::string& server) {
  const auto kept = std::make_shared<std::shared_ptr<Both>>();
  const auto both = [kept, &companies, scale, server] {
    if (!*kept) *kept = std::make_shared<Both>(companies, scale, server);
    return *kept;
  };
  using Task = void (*)(Company& company);
  const auto limit = [&](const std::string& name, double milliseconds, Task task) {
    suite.limit(
        "server: " + name, milliseconds,
        [both, task] { return Work([both = both(), task] { task(both->there()); }); }, Clock::Wall);
  };
  const auto compare = [&](const std::string& name, double goal, auto setUp, Open open) {
    suite.compare(
        "server: " + name, goal, [both, setUp, open] { return setUp(both(), open); }, Clock::Wall);
  };
  suite.limit(
      "server: opened, and a first answer", 50,
      [both] {
        return Work(
            [both = both()] { read(oneBalance(*std::make_shared<Company>(both->address()))); });
      },
      Clock::Wall);
  limit("balance of a customer", 5, [](Company& company) { read(oneBalance(company)); });
  limit("aging of one customer", 60, [](Company& company) { read(oneAging(company)); });
  limit("the first of all lines of the ledger", 20, [](Company& company) {
    const Ref<Recordset> rows = scan(company);
    static_cast<void>(rows->Field(0));
    rows->Close();
  });
  compare("aging of one customer / by hand", 1.3, besideByHand, oneAging);
  compare("aging of all customers / by hand", 1.3, besideByHand, allAging);
  compare("aging of all customers / on a file", 2.5, besideFile, allAging);
  compare("balances of all customers / on a file", 1.2, besideFile, allBalances);
  compare("balances of all ledger accounts / on a file", 1.2, besideFile, accountBalances);
  suite.compare(
      "server: all lines of the ledger / by hand", 1.3, [both] { return scanned(both()); },
      Clock::Wall);
  suite.figure("server: memory that all lines of the ledger take", 16'384, " KiB",
               [both] { return memoryOfAScan(both()); });
  suite.figure("server: a copy of the company", 12, " s", [both] { return both()->copy(); });
}

}  // namespace QuorBench
