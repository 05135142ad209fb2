#include <memory>
#include <stdexcept>

#include "bench/by_hand.h"
#include "bench/cases.h"
#include "projects/project_helper.h"

namespace QuorBench {
namespace {

using QuorAccQueries::CProjectHelper;
using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::make;

const Date kFirstDay = Date::of(2024, 4, 1);
const Date kLastDay = Date::of(2024, 9, 30);
constexpr std::int32_t kAllSegments = 0;

using OfRange = Currency (CProjectHelper::*)(std::int32_t, std::int32_t, Date, Date);

/// A member of the helper for the project with most ledger lines and half a year, against a query
/// of the same figure, whose markers are the project and the two days.
Pair valueOfProject(const std::shared_ptr<Company>& company, OfRange member,
                    const std::string& query) {
  const std::int32_t project =
      std::stoi(Query(company->byHand(),
                      "SELECT ExProjId FROM GLDet WHERE ExProjId IS NOT NULL GROUP BY 1 "
                      "ORDER BY count(*) DESC, 1 LIMIT 1")
                    .text());
  company->use();
  const auto helper = make<CProjectHelper>();
  helper->SetCustomConnection(company->connection());
  const auto ours = [company, helper, member, project] {
    company->use();
    return ((*helper).*member)(project, kAllSegments, kFirstDay, kLastDay);
  };
  const auto byHand = std::make_shared<Query>(company->byHand(), query);
  byHand->bind(1, project);
  byHand->bind(2, kFirstDay.toText());
  byHand->bind(3, kLastDay.toText());
  if (ours().isZero() || std::to_string(ours().units()) != byHand->text()) {
    throw std::runtime_error("the two ways give other figures of the project");
  }
  return {[ours] { ours(); }, [byHand] { byHand->read(); }};
}

constexpr const char* kSalesByHand =
    "SELECT -sum(DetAmnt) FROM GLDet JOIN GLAcct ON InGLAcctId = ExAcctId "
    "WHERE ExProjId = ?1 AND DetDate BETWEEN ?2 AND ?3 AND AcctType = 4";
constexpr const char* kHoursByHand =
    "SELECT sum(Hours) FROM ("
    "SELECT sum(Units) AS Hours FROM TrxPayDetails JOIN TrxPay ON InTrxPayId = ExTrxPayId "
    "JOIN PayCode ON InPayCodeId = ExPayCodeId WHERE ExProjId = ?1 AND ChqDate BETWEEN ?2 AND ?3 "
    "AND PayCodeType = 4 AND (Canceled = 0 OR Canceled IS NULL) "
    "UNION SELECT sum(Qty) FROM PurcDet JOIN PurcHdr ON InPurcId = ExPurcId "
    "JOIN Item ON InItemId = ExItemId WHERE ExProjId = ?1 AND PurcDate BETWEEN ?2 AND ?3 "
    "AND PurcType = 3 AND Item.Hours <> 0)";

}  // namespace

void addProjects(Suite& suite, Companies& companies, int scale) {
  const std::string size = ", " + std::to_string(scale) + ",000 invoices / by hand";
  suite.compare("sales of a project in half a year" + size, 1.10, [&companies, scale] {
    return valueOfProject(companies.open(scale), &CProjectHelper::GetProjSalesRange, kSalesByHand);
  });
  suite.compare("hours of a project in half a year" + size, 1.10, [&companies, scale] {
    return valueOfProject(companies.open(scale), &CProjectHelper::GetProjHoursRange, kHoursByHand);
  });
}

}  // namespace QuorBench
