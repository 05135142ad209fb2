#include <memory>

#include "bench/by_hand.h"
#include "bench/cases.h"

namespace QuorBench {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Parameters;
using QuorDataLib::Value;

const Date kFrom = Date::of(2024, 1, 1);
const Date kTo = Date::of(2024, 6, 30);

/// The party or account with the most rows in `relation`.
std::int32_t busiest(const Company& company, const std::string& column,
                     const std::string& relation) {
  return std::stoi(Query(company.byHand(), "SELECT " + column + " FROM " + relation +
                                               " GROUP BY 1 ORDER BY count(*) DESC, 1 LIMIT 1")
                       .text());
}

/// A statement by hand whose first marker is a key and whose others are dates.
std::shared_ptr<Query> byKeyAndDates(const Company& company, const std::string& sql,
                                     std::int32_t key, const std::vector<Date>& dates) {
  auto query = std::make_shared<Query>(company.byHand(), sql);
  query->bind(1, key);
  for (std::size_t i = 0; i < dates.size(); ++i) {
    query->bind(static_cast<int>(i) + 2, dates[i].toText());
  }
  return query;
}

/// What `open` gives against a statement by hand.
template <class Open>
Pair against(const Open& open, const std::shared_ptr<Query>& byHand) {
  requireSame(read(open()), byHand->read());
  return {[open] { read(open()); }, [byHand] { byHand->read(); }};
}

Pair customerHistory(const std::shared_ptr<Company>& company) {
  const std::int32_t customer = busiest(*company, "ExCustId", "InvoiHdr");
  return against(
      [=] { return company->customers().OpenCustHistoryList(kFrom, kTo, customer); },
      byKeyAndDates(
          *company,
          "SELECT InvoiDate, InInvoiId, InvoiId, InvoiType, TotalToPay, TotAmnt, RecAmnt, "
          "ExCurrencyId FROM CustHistoryList_View WHERE ExCustId = ?1 "
          "AND InvoiDate BETWEEN ?2 AND ?3 ORDER BY InvoiDate, InInvoiId",
          customer, {kFrom, kTo}));
}

Pair supplierHistory(const std::shared_ptr<Company>& company) {
  const std::int32_t supplier = busiest(*company, "ExSuppId", "PurcHdr");
  return against(
      [=] { return company->suppliers().OpenSuppHistoryList(supplier, kFrom, kTo); },
      byKeyAndDates(*company,
                    "SELECT PurcDate, InPurcId, DocNo, PurcType, PurcCredit, PaidAmnt, TotAmnt, "
                    "TotalToPay, ExCurrencyId FROM SuppHistoryList_View WHERE ExSuppId = ?1 "
                    "AND PurcDate BETWEEN ?2 AND ?3 ORDER BY PurcDate, InPurcId",
                    supplier, {kFrom, kTo}));
}

Pair customerBalance(const std::shared_ptr<Company>& company) {
  const std::int32_t customer = busiest(*company, "ExCustId", "InvoiHdr");
  return against([=] { return company->customers().OpenCustBalance(customer, kTo, 0, ""); },
                 byKeyAndDates(*company,
                               "SELECT ExCustId, sum(CustBalance), sum(CustBalanceHome) FROM "
                               "CustBalance_View WHERE ExCustId = ?1 AND BalanceDate <= ?2 "
                               "GROUP BY ExCustId",
                               customer, {kTo}));
}

Pair supplierBalance(const std::shared_ptr<Company>& company) {
  const std::int32_t supplier = busiest(*company, "ExSuppId", "PurcHdr");
  return against([=] { return company->suppliers().OpenSuppBalance(supplier, kTo, 0, ""); },
                 byKeyAndDates(*company,
                               "SELECT ExSuppId, sum(SuppBalance), sum(SuppBalanceHome) FROM "
                               "SuppBalance_View WHERE ExSuppId = ?1 AND BalanceDate <= ?2 "
                               "GROUP BY ExSuppId",
                               supplier, {kTo}));
}

Pair accountBalance(const std::shared_ptr<Company>& company) {
  const std::int32_t account = busiest(*company, "ExAcctId", "GLDet");
  const std::string sql =
      "SELECT COALESCE(SUM(DetAmnt), 0) AS AcctBalance FROM GLDet "
      "WHERE ExAcctId = ? AND DetDate <= ?";
  return against(
      [=] {
        return company->connection()->OpenRecordset(
            sql, 4, 0, Parameters::array({Value(account), Value(kTo)}), -1);
      },
      byKeyAndDates(*company, sql, account, {kTo}));
}

Pair accountBalances(const std::shared_ptr<Company>& company) {
  const std::string sql =
      "SELECT ExAcctId, SUM(DetAmnt) AS AcctBalance FROM GLDet "
      "WHERE DetDate <= ? GROUP BY ExAcctId";
  auto byHand = std::make_shared<Query>(company->byHand(), sql);
  byHand->bind(1, kTo.toText());
  return against(
      [=] {
        return company->connection()->OpenRecordset(sql, 4, 0, Parameters::single(Value(kTo)), -1);
      },
      byHand);
}

/// Without a party the statement is that of all.
Pair customerBalances(const std::shared_ptr<Company>& company) {
  auto byHand = std::make_shared<Query>(
      company->byHand(),
      "SELECT ExCustId, sum(CustBalance), sum(CustBalanceHome) FROM CustBalance_View "
      "WHERE BalanceDate <= ?1 GROUP BY ExCustId ORDER BY ExCustId");
  byHand->bind(1, kTo.toText());
  return against([=] { return company->customers().OpenCustBalance(0, kTo, 0, ""); }, byHand);
}

Pair supplierBalances(const std::shared_ptr<Company>& company) {
  auto byHand = std::make_shared<Query>(
      company->byHand(),
      "SELECT ExSuppId, sum(SuppBalance), sum(SuppBalanceHome) FROM SuppBalance_View "
      "WHERE BalanceDate <= ?1 GROUP BY ExSuppId ORDER BY ExSuppId");
  byHand->bind(1, kTo.toText());
  return against([=] { return company->suppliers().OpenSuppBalance(0, kTo, 0, ""); }, byHand);
}

}  // namespace

void addAccounts(Suite& suite, Companies& companies, int scale) {
  const std::string size = ", " + std::to_string(scale) + ",000 invoices / by hand";
  const auto add = [&](const char* what, Pair (*setUp)(const std::shared_ptr<Company>&),
                       double goal = 1.10) {
    suite.compare(what + size, goal,
                  [&companies, scale, setUp] { return setUp(companies.open(scale)); });
  };
  add("history of a customer", customerHistory);
  add("history of a supplier", supplierHistory);
  add("balance of a customer", customerBalance);
  add("balance of a supplier", supplierBalance);
  add("balances of all customers", customerBalances, 0.50);
  add("balances of all suppliers", supplierBalances, 0.50);
  add("balance of a ledger account", accountBalance);
  add("balances of all ledger accounts", accountBalances);
}

}  // namespace QuorBench
