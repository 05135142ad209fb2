#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ctime>
#include <limits>
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

/// Customers or suppliers: how their aging is opened, and what it is by hand.
struct Side {
  const char* parties;
  const char* party;
  Ref<Recordset> (*open)(Company& company, std::int32_t party);
  std::string (*byHand)(const std::string& columns);
  /// The component leaves out what stands in the list already, by the names as they are spelled.
  const char* columns;
  /// Parties that something is owed by or to, by number of documents.
  const char* owing;
};

constexpr Side kCustomers{
    "customers",
    "customer",
    [](Company& company, std::int32_t party) {
      return company.customers().OpenCustAgingTransactions(false, party, Date(), "", "", "", "",
                                                           false, false);
    },
    customerAgingByHand,
    "SELECT group_concat('Cust.' || name, ', ') FROM pragma_table_info('Cust') "
    "WHERE name NOT IN ('ExCurrencyId', 'InCustID')",
    "SELECT ExCustId AS Party, count(*) AS Documents FROM CustBalance_View "
    "GROUP BY ExCustId HAVING sum(CustBalance) <> 0"};

constexpr Side kSuppliers{
    "suppliers",
    "supplier",
    [](Company& company, std::int32_t party) {
      return company.suppliers().OpenSuppAgingTransactions(false, party, Date(), "", "", false, "",
                                                           "");
    },
    supplierAgingByHand,
    "SELECT group_concat('Supp.' || name, ', ') FROM pragma_table_info('Supp') "
    "WHERE name <> 'ExCurrencyId'",
    "SELECT ExSuppId AS Party, count(*) AS Documents FROM SuppBalance_View "
    "GROUP BY ExSuppId HAVING sum(SuppBalance) <> 0"};

std::string statement(const Side& side, const Company& company) {
  return side.byHand(Query(company.byHand(), side.columns).text());
}

/// The party in the middle by number of documents.
std::int32_t someParty(const Side& side, const Company& company) {
  const std::string owing = side.owing;
  return std::stoi(
      Query(company.byHand(), "WITH Owing AS (" + owing +
                                  ") SELECT Party FROM Owing ORDER BY Documents, Party "
                                  "LIMIT 1 OFFSET (SELECT count(*) / 2 FROM Owing)")
          .text());
}

/// Putting the statement together, on a connection that only knows the customer table's columns,
/// against what the engine needs to prepare it.
Pair assembling(const std::shared_ptr<Company>& company) {
  auto customers = QuorDataLib::make<CCustomerQueries>();
  customers->SetCustomConnection(
      columnSource(company->connection(), "SELECT * FROM Cust WHERE 1=0"));
  return {[company, customers] {
            company->use();
            customers->OpenCustAgingTransactions(false, 0, Date(), "", "", "", "", false, false)
                ->Close();
          },
          [company, sql = statement(kCustomers, *company)] { Query(company->byHand(), sql); }};
}

Pair all(const Side& side, const std::shared_ptr<Company>& company) {
  auto byHand = std::make_shared<Query>(company->byHand(), statement(side, *company));
  byHand->bind(1, "9999-12-31");
  requireSame(read(side.open(*company, 0)), byHand->read());
  return {[&side, company] { read(side.open(*company, 0)); }, [byHand] { byHand->read(); }};
}

Pair one(const Side& side, const std::shared_ptr<Company>& company) {
  const std::int32_t party = someParty(side, *company);
  return {[&side, company, party] { read(side.open(*company, party)); },
          [&side, company] { read(side.open(*company, 0)); }};
}

/// Processor time of the aging of all customers, the best of a few.
double secondsOfAll(const std::shared_ptr<Company>& company) {
  constexpr int kTurns = 4;
  constexpr double kEnough = 3;
  double best = std::numeric_limits<double>::infinity();
  double spent = 0;
  for (int turn = 0; turn < kTurns || spent < kEnough; ++turn) {
    const std::clock_t begin = std::clock();
    read(kCustomers.open(*company, 0));
    const double seconds = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    best = std::min(best, seconds);
    spent += seconds;
  }
  return best;
}

void addSide(Suite& suite, Companies& companies, const Side& side, int scale) {
  const std::string size = std::to_string(scale) + ",000 invoices";
  const std::string ofAll = std::string("aging of all ") + side.parties + ", " + size;
  const std::string ofOne = std::string("aging of one ") + side.party + ", " + size;
  const bool large = scale >= 1000;
  suite.compare(ofAll + " / by hand", large ? 0.50 : 1.00,
                [&companies, &side, scale] { return all(side, companies.open(scale)); });
  suite.compare(ofOne + " / of all", large ? 0.01 : 1.00,
                [&companies, &side, scale] { return one(side, companies.open(scale)); });
  suite.limit(ofOne, 5,
              [&companies, &side, scale] { return one(side, companies.open(scale)).ours; });
}

}  // namespace

void addAging(Suite& suite, Companies& companies, const std::vector<int>& scales) {
  suite.compare("aging statement: assembled / prepared by the engine", 0.01,
                [&companies] { return assembling(companies.open(1)); });
  for (const int scale : scales) {
    addSide(suite, companies, kCustomers, scale);
    addSide(suite, companies, kSuppliers, scale);
  }
  if (scales.empty()) return;
  const auto [small, large] = std::ranges::minmax(scales);
  if (small == large) return;
  suite.figure("growth of the aging from " + std::to_string(small) + ",000 to " +
                   std::to_string(large) + ",000 invoices, exponent",
               1.10, "", [&companies, small = small, large = large] {
                 const double time =
                     secondsOfAll(companies.open(large)) / secondsOfAll(companies.open(small));
                 return std::log(time) / std::log(static_cast<double>(large) / small);
               });
}

}  // namespace QuorBench
