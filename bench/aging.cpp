#include <cstdint>
#include <memory>

#include "bench/aging_by_hand.h"
#include "bench/by_hand.h"
#include "bench/cases.h"
#include "bench/column_source.h"

namespace QuorBench {
namespace {

using QuorAccQueries::CCustomerQueries;
using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

Ref<Recordset> openAging(CCustomerQueries& customers, std::int32_t customer) {
  return customers.OpenCustAgingTransactions(false, customer, Date(), "", "", "", "", false, false);
}

std::string agingStatement(const Company& company) {
  // The component leaves out what stands in the list already, by the names as they are spelled.
  Query columns(company.byHand(),
                "SELECT group_concat('Cust.' || name, ', ') FROM pragma_table_info('Cust') "
                "WHERE name NOT IN ('ExCurrencyId', 'InCustID')");
  return agingByHand(columns.text());
}

/// The customer in the middle by number of documents, of those who owe something.
std::int32_t someCustomer(const Company& company) {
  Query query(company.byHand(),
              "WITH Owing AS (SELECT ExCustId, count(*) AS Documents FROM CustBalance_View "
              "GROUP BY ExCustId HAVING sum(CustBalance) <> 0) "
              "SELECT ExCustId FROM Owing ORDER BY Documents, ExCustId "
              "LIMIT 1 OFFSET (SELECT count(*) / 2 FROM Owing)");
  return std::stoi(query.text());
}

/// Putting the statement together, on a connection that only knows the customer table's columns,
/// against what the engine needs to prepare it.
Pair assembling(const std::shared_ptr<Company>& company) {
  auto customers = QuorDataLib::make<CCustomerQueries>();
  customers->SetCustomConnection(
      columnSource(company->connection(), "SELECT * FROM Cust WHERE 1=0"));
  return {[company, customers] {
            company->use();
            openAging(*customers, 0)->Close();
          },
          [company, sql = agingStatement(*company)] { Query(company->byHand(), sql); }};
}

Pair allCustomers(const std::shared_ptr<Company>& company) {
  auto byHand = std::make_shared<Query>(company->byHand(), agingStatement(*company));
  byHand->bind(1, "9999-12-31");
  requireSame(read(openAging(company->customers(), 0)), byHand->read());
  return {[company] { read(openAging(company->customers(), 0)); }, [byHand] { byHand->read(); }};
}

Pair oneCustomer(const std::shared_ptr<Company>& company) {
  const std::int32_t customer = someCustomer(*company);
  return {[company, customer] { read(openAging(company->customers(), customer)); },
          [company] { read(openAging(company->customers(), 0)); }};
}

}  // namespace

void addAging(Suite& suite, Companies& companies, const std::vector<int>& scales) {
  suite.compare("aging statement: assembled / prepared by the engine", 0.01,
                [&companies] { return assembling(companies.open(1)); });
  for (const int scale : scales) {
    const std::string size = std::to_string(scale) + ",000 invoices";
    const bool large = scale >= 1000;
    suite.compare("aging of all customers, " + size + " / by hand", large ? 0.75 : 1.00,
                  [&companies, scale] { return allCustomers(companies.open(scale)); });
    suite.compare("aging of one customer, " + size + " / of all", large ? 0.01 : 1.00,
                  [&companies, scale] { return oneCustomer(companies.open(scale)); });
    suite.limit("aging of one customer, " + size, 5,
                [&companies, scale] { return oneCustomer(companies.open(scale)).ours; });
  }
}

}  // namespace QuorBench
