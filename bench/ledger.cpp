#include <chrono>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <vector>

#include "bench/by_hand.h"
#include "bench/cases.h"
#include "host/company/company.h"
#include "host/company/table.h"
#include "ledger/general_ledger_helper.h"

namespace QuorBench {
namespace {

using QuorAccQueries::CGeneralLedgerHelper;
using QuorAccQueries::CGeneralLedgerQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::make;

const Date kFrom = Date::of(2024, 1, 1);
const Date kTo = Date::of(2024, 6, 30);
constexpr std::int32_t kHome = 1;

/// The account with most lines.
std::int32_t busiestAccount(const std::shared_ptr<Company>& company) {
  return std::stoi(Query(company->byHand(),
                         "SELECT ExAcctId FROM GLDet GROUP BY 1 ORDER BY count(*) DESC, 1 LIMIT 1")
                       .text());
}

/// Half a year of it.
Pair historyOfAccount(const std::shared_ptr<Company>& company) {
  const std::int32_t account = busiestAccount(company);
  const auto queries = make<CGeneralLedgerQueries>();
  queries->SetCustomConnection(company->connection());
  const auto open = [company, queries, account] {
    company->use();
    return queries->OpenGLAcctHistory(false, 0, account, kHome, kFrom, kTo);
  };
  const auto byHand = std::make_shared<Query>(
      company->byHand(),
      "SELECT DetDate, SeqNo, ExSrcKeyVal, DetRef, Source, DetDesc, DetAmnt FROM GLDet "
      "WHERE ExAcctId = ?1 AND DetDate BETWEEN ?2 AND ?3 ORDER BY DetDate, SeqNo");
  byHand->bind(1, account);
  byHand->bind(2, kFrom.toText());
  byHand->bind(3, kTo.toText());
  requireSame(read(open()), byHand->read());
  return {[open] { read(open()); }, [byHand] { byHand->read(); }};
}

/// A statement of the component's against one of the engine's own over the lines themselves, both
/// up to a day.
template <class Open>
Pair upTo(const std::shared_ptr<Company>& company, const Open& open, const std::string& sql) {
  const auto opened = [company, open] {
    company->use();
    return open();
  };
  const auto byHand = std::make_shared<Query>(company->byHand(), sql);
  byHand->bind(1, kTo.toText());
  requireSame(read(opened()), byHand->read());
  return {[opened] { read(opened()); }, [byHand] { byHand->read(); }};
}

/// What every account grew by in each month.
Pair growth(const std::shared_ptr<Company>& company) {
  return upTo(
      company,
      [company] {
        return company->connection()->OpenRecordset(
            "SELECT ExAcctId, YEAR(DetDate) AS Y, MONTH(DetDate) AS M, SUM(DetAmnt) AS Growth "
            "FROM GLDet WHERE DetDate <= ? GROUP BY ExAcctId, YEAR(DetDate), MONTH(DetDate)",
            4, 0, QuorDataLib::Parameters::single(kTo), -1);
      },
      "SELECT ExAcctId, CAST(substr(DetDate, 1, 4) AS INT) AS Y, CAST(substr(DetDate, 6, 2) AS "
      "INT) AS M, sum(DetAmnt) FROM GLDet WHERE DetDate <= ?1 GROUP BY 1, 2, 3");
}

struct Account {
  std::int32_t id;
  std::int32_t type;
  std::int32_t currency;
};

/// The balances of all accounts at a day, through a helper that keeps what it reads.
Work trialBalance(const std::shared_ptr<Company>& company) {
  const auto accounts = std::make_shared<std::vector<Account>>();
  const auto rows = company->connection()->OpenRecordset(
      "SELECT InGLAcctId, AcctType, COALESCE(ExCurrencyId, 0) AS C FROM GLAcct", 4, 0, {}, -1);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    accounts->push_back(
        {rows->Field(0).toLong(), rows->Field(1).toLong(), rows->Field(2).toLong()});
  }
  return [company, accounts] {
    company->use();
    const auto helper = make<CGeneralLedgerHelper>();
    helper->SetCustomConnection(company->connection());
    helper->SetCacheRecordsets(true);
    Currency total;
    for (const Account& account : *accounts) {
      total += helper->GetAcctBalance(account.id, account.type, account.currency, kTo, kHome, false,
                                      0, 0, false, {});
    }
    total -= helper->CurrentEarnings(Date::of(2024, 4, 1), kTo, {});
    if (!total.isZero()) throw std::runtime_error("the trial balance does not balance");
  };
}

constexpr int kAccounts = 100'000;

/// A company with a chart of its user's own and so many accounts of one type, numbered without a
/// gap.
std::shared_ptr<Company> largeChart(const Companies& companies) {
  const std::string path =
      companies.folder() + "/chart-" + std::to_string(QuorHost::kNewestSchemaVersion) + ".db";
  if (!std::filesystem::exists(path)) {
    QuorHost::createCompany(path, {});
    const auto store = QuorHost::openCompany(path, QuorHost::Access::Write);
    const auto transaction = store->begin();
    QuorHost::Table(*store, "CieInfo", {"InCieId", "AccountTypeChart"}).add({1, 3});
    QuorHost::Table(*store, "AccountType", {"ID", "AcctPrefix", "ExAcctTypeDefId"})
        .add({1, "1", 1});
    QuorHost::Table table(*store, "GLAcct", {"GLAcctId", "Descr", "AcctType"});
    for (int i = 0; i < kAccounts; ++i) {
      std::string counter = std::to_string(i);
      if (counter.size() < 3) counter.insert(0, 3 - counter.size(), '0');
      table.add({"1" + counter, "Account", 1});
    }
    transaction->commit();
  }
  return std::make_shared<Company>(path);
}

/// Milliseconds for one look-up of a number, on the way to the first free one.
double nextNumber(const Companies& companies) {
  const std::shared_ptr<Company> company = largeChart(companies);
  company->use();
  CGeneralLedgerHelper helper;
  helper.SetCustomConnection(company->connection());
  const auto begin = std::chrono::steady_clock::now();
  if (helper.FindNextGLAcctId("1", "") != "1100000") throw std::runtime_error("a wrong number");
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  return time.count() / (kAccounts + 1);
}

}  // namespace

void addLedger(Suite& suite, Companies& companies, int scale) {
  const std::string size = ", " + std::to_string(scale) + ",000 invoices";
  suite.compare("history of a ledger account" + size + " / by hand", 1.10,
                [&companies, scale] { return historyOfAccount(companies.open(scale)); });
  suite.compare("growth of all accounts by month" + size + " / added up by hand", 0.5,
                [&companies, scale] { return growth(companies.open(scale)); });
  suite.limit("trial balance through a helper that keeps rows" + size, 50,
              [&companies, scale] { return trialBalance(companies.open(scale)); });
  suite.figure("look-up of an account number among 100,000", 1, " ms",
               [&companies] { return nextNumber(companies); });
}

}  // namespace QuorBench
