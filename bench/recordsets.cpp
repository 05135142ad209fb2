#include <algorithm>
#include <memory>
#include <vector>

#include "bench/by_hand.h"
#include "bench/cases.h"

namespace QuorBench {
namespace {

using QuorDataLib::Connection;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

Ref<Recordset> open(const Ref<Connection>& connection, const std::string& sql,
                    const Parameters& parameters = {}) {
  return connection->OpenRecordset(sql, 4, 0, parameters, -1);
}

Pair rowsAsValues(const std::shared_ptr<Company>& company) {
  // Twelve columns of every kind.
  const std::string sql =
      "SELECT InInvoiId, InvoiId, InvoiType, ExCustId, InvoiDate, DueDate, DetAmnt, TaxAmnt, "
      "TotAmnt, Balance, ExchangeRate, ExCurrencyId FROM InvoiHdr";
  auto byHand = std::make_shared<Query>(company->byHand(), sql);
  requireSame(read(open(company->connection(), sql)), byHand->copy());
  return {[company, sql] { read(open(company->connection(), sql)); }, [byHand] { byHand->copy(); }};
}

/// Customers one after the other, far enough apart to be on pages of their own.
class Keys {
 public:
  explicit Keys(const Company& company)
      : count_(std::stoi(Query(company.byHand(), "SELECT count(*) FROM Cust").text())) {}
  std::int32_t next() { return 1 + (key_ = (key_ + 37) % count_); }

 private:
  std::int32_t count_;
  std::int32_t key_ = 0;
};

Pair singleRow(const std::shared_ptr<Company>& company) {
  const std::string sql = "SELECT Name, CreditLim FROM Cust WHERE InCustId = ?";
  auto byHand = std::make_shared<Query>(company->byHand(), sql);
  auto keys = std::make_shared<Keys>(*company);
  return {[company, sql, keys] {
            read(open(company->connection(), sql, Parameters::single(Value(keys->next()))));
          },
          [byHand, keys] {
            byHand->bind(1, keys->next());
            byHand->copy();
          }};
}

/// The same look-up while the company is read as of one moment, on both sides.
Pair singleRowHeld(const std::shared_ptr<Company>& company) {
  const Pair pair = singleRow(company);
  const std::shared_ptr<QuorHost::Snapshot> held = company->store().hold();
  const std::shared_ptr<sqlite3> begun(company->byHand(), [company](sqlite3* database) {
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
  });
  sqlite3_exec(begun.get(), "BEGIN", nullptr, nullptr, nullptr);
  return {[held, ours = pair.ours] { ours(); }, [begun, byHand = pair.reference] { byHand(); }};
}

/// What the program's memory grows by from the 1,000th to the last of a million rows, in KiB.
double memoryOfAScan(const std::shared_ptr<Company>& company) {
  const Ref<Recordset> rows = open(company->connection(),
                                   "SELECT GLDet.DetDate, GLDet.DetDesc, GLDet.DetAmnt FROM GLDet, "
                                   "(SELECT TOP 16 InCustId FROM Cust ORDER BY InCustId) AS Times");
  constexpr int kSome = 1'000;
  int count = 0;
  double start = 0;
  double most = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    for (std::int32_t column = 0; column < 3; ++column) static_cast<void>(rows->Field(column));
    if (++count % kSome != 0) continue;
    if (count == kSome) start = memoryInUse();
    most = std::max(most, memoryInUse());
  }
  if (count < 1'000'000) throw std::runtime_error("the scan: the company is too small");
  return most - start;
}

constexpr int kRows = 10'000;

/// 10,000 `Find` calls on a recordset of 10,000 rows whose index stands.
Work finding(const std::shared_ptr<Company>& company) {
  const Ref<Recordset> rows =
      open(company->connection(),
           "SELECT TOP 10000 InInvoiId, Balance FROM InvoiHdr ORDER BY InInvoiId");
  auto criteria = std::make_shared<std::vector<std::string>>();
  for (; !rows->AtEnd(); rows->MoveNext()) {
    criteria->push_back("InInvoiId = " + rows->Field(0).toText());
  }
  if (criteria->size() != kRows) throw std::runtime_error("Find: the company is too small");
  rows->Find(criteria->front());
  return [company, rows, criteria] {
    for (const std::string& criterion : *criteria) rows->Find(criterion);
  };
}

}  // namespace

void addRecordsets(Suite& suite, Companies& companies) {
  suite.compare("rows of 12 columns as values / stepped and copied by hand", 1.15,
                [&companies] { return rowsAsValues(companies.open(10)); });
  suite.compare("one row by key / a statement kept prepared by hand", 1.30,
                [&companies] { return singleRow(companies.open(10)); });
  suite.compare("one row by key in a snapshot / in a transaction by hand", 2.50,
                [&companies] { return singleRowHeld(companies.openApart(10)); });
  suite.limit("10,000 times Find in 10,000 rows", 10,
              [&companies] { return finding(companies.open(10)); });
  suite.figure("memory that a scan of a million rows takes", 64, " KiB",
               [&companies] { return memoryOfAScan(companies.open(10)); });
}

}  // namespace QuorBench
