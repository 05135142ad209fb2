#include "projects/project_helper.h"

#include "core/platform_access.h"
#include "core/statement.h"
#include "ledger/account_numbers.h"
#include "projects/project_sql.h"

namespace QuorAccQueries {

namespace Sql = ProjectSql;

namespace {

/// The class of accounts that the host lists further types of.
constexpr std::int32_t kExpenseClass = 2;

/// Adds a condition on a segment, unless all are wanted.
void addSegment(Statement& statement, std::string_view condition, std::int32_t segment) {
  if (segment > 0) statement.text(condition).number(segment);
}

}  // namespace

const ClassInfo& CProjectHelper::info() {
  using Self = CProjectHelper;
  static const ClassInfo info = describeClass<CProjectHelper>(
      "Project values: sales, purchases and hours, in total, of a period and as budgeted.",
      joined(HelperFrame::members(),
             {
                 method<&Self::GetProjSales>("GetProjSales", {"ProjId"}, "A project's sales."),
                 method<&Self::GetProjPurchases>("GetProjPurchases", {"ProjId"},
                                                 "A project's purchases."),
                 method<&Self::GetProjHours>("GetProjHours", {"ProjId"},
                                             "A project's hours, paid and bought."),
                 method<&Self::GetProjSalesRange>("GetProjSalesRange",
                                                  {"ProjId", "SegmentId", "FromDate", "ToDate"},
                                                  "A project's sales in a period."),
                 method<&Self::GetProjPurchasesRange>("GetProjPurchasesRange",
                                                      {"ProjId", "SegmentId", "FromDate", "ToDate"},
                                                      "A project's purchases in a period."),
                 method<&Self::GetProjHoursRange>("GetProjHoursRange",
                                                  {"ProjId", "SegmentId", "FromDate", "ToDate"},
                                                  "A project's hours in a period."),
                 method<&Self::GetProjSalesBudgetRange>(
                     "GetProjSalesBudgetRange", {"ProjId", "SegmentId", "FromDate", "ToDate"},
                     "The sales that a project's budget has for the fiscal periods of a range."),
                 method<&Self::GetProjPurchBudgetRange>(
                     "GetProjPurchBudgetRange", {"ProjId", "SegmentId", "FromDate", "ToDate"},
                     "The purchases that it has for them."),
                 method<&Self::GetProjHoursBudgetRange>(
                     "GetProjHoursBudgetRange", {"ProjId", "SegmentId", "FromDate", "ToDate"},
                     "The hours that it has for them."),
             }));
  return info;
}

template <class Build>
void CProjectHelper::readValue(Steps& step, RecordsetCache& cache, CacheKey key,
                               const std::string& column, Currency& result, Build&& build,
                               Where where) {
  const Ref<Recordset> rows = findOrOpen(
      step, cache, key, [&] { return open(step, build(), Pass::Array, {}, where); }, where);
  if (hasRow(step, rows, where)) readField(step, rows, column, result, where);
  keepOrClose(step, cache, key, rows, where);
}

Currency CProjectHelper::GetProjSales(std::int32_t ProjId) {
  return trap("GetProjSales", [&](Steps& step, Currency& result) {
    readValue(step, sales_, {ProjId}, "ProjSales", result,
              [&] { return Statement(Sql::kSales).bind(ProjId); });
  });
}

Currency CProjectHelper::GetProjPurchases(std::int32_t ProjId) {
  return trap("GetProjPurchases", [&](Steps& step, Currency& result) {
    readValue(step, purchases_, {ProjId}, "ProjPurchases", result,
              [&] { return Statement(Sql::kPurchases).bind(ProjId); });
  });
}

Currency CProjectHelper::GetProjHours(std::int32_t ProjId) {
  return trap("GetProjHours", [&](Steps& step, Currency& result) {
    readValue(step, hours_, {ProjId}, "ProjHours", result, [&] {
      Statement statement(Sql::kHoursPaid);
      statement.bind(ProjId).text(Sql::kOfAllPays);
      statement.text(Sql::kHoursBought).bind(ProjId);
      statement.text(Sql::kOfHourItems).text(Sql::kHoursSource);
      return statement;
    });
  });
}

Currency CProjectHelper::GetProjSalesRange(std::int32_t ProjId, std::int32_t SegmentId,
                                           Date FromDate, Date ToDate) {
  return trap("GetProjSalesRange", [&](Steps& step, Currency& result) {
    readValue(step, salesRanges_, {ProjId, SegmentId, FromDate, ToDate}, "ProjSales", result, [&] {
      const bool fixedChart =
          askCompany(step, &QuorCastriaFoundation::Company::CieAccountTypeChart) == kFixedChart;
      Statement statement(fixedChart ? Sql::kFixedSales : Sql::kOwnSales);
      statement.text(Sql::kOfProject).number(ProjId);
      statement.text(Sql::kSoldInPeriod).bind(FromDate).bind(ToDate);
      addSegment(statement, Sql::kOfSegment, SegmentId);
      return statement;
    });
  });
}

Currency CProjectHelper::GetProjPurchasesRange(std::int32_t ProjId, std::int32_t SegmentId,
                                               Date FromDate, Date ToDate) {
  return trap("GetProjPurchasesRange", [&](Steps& step, Currency& result) {
    readValue(
        step, purchaseRanges_, {ProjId, SegmentId, FromDate, ToDate}, "ProjPurchases", result, [&] {
          Statement statement;
          if (askCompany(step, &QuorCastriaFoundation::Company::CieAccountTypeChart) ==
              kFixedChart) {
            const std::string furtherTypes = askUtility(step, [](QuorDataLib::Utility& utility) {
              return utility.FurtherAccountTypes(kExpenseClass);
            });
            statement.text(Sql::kFixedPurchases).fragment(furtherTypes);
            statement.text(Sql::kFixedPurchasesEnd);
          } else {
            statement.text(Sql::kOwnPurchases);
          }
          statement.text(Sql::kOfProject).number(ProjId);
          statement.text(Sql::kSpentInPeriod).bind(FromDate).bind(ToDate);
          addSegment(statement, Sql::kOfSegment, SegmentId);
          return statement;
        });
  });
}

Currency CProjectHelper::GetProjHoursRange(std::int32_t ProjId, std::int32_t SegmentId,
                                           Date FromDate, Date ToDate) {
  return trap("GetProjHoursRange", [&](Steps& step, Currency& result) {
    readValue(step, hourRanges_, {ProjId, SegmentId, FromDate, ToDate}, "ProjHours", result, [&] {
      Statement statement(Sql::kHoursPaid);
      statement.bind(ProjId).text(Sql::kOfPaysInPeriod).bind(FromDate).bind(ToDate);
      addSegment(statement, Sql::kOfPaySegment, SegmentId);
      statement.text(" ").text(Sql::kHoursBought).bind(ProjId);
      statement.text(Sql::kBoughtInPeriod).bind(FromDate).bind(ToDate).text(Sql::kOfHourItems);
      addSegment(statement, Sql::kOfPurchaseSegment, SegmentId);
      return statement.text(Sql::kHoursSource);
    });
  });
}

void CProjectHelper::readBudget(Steps& step, const Range& range, const std::string& column,
                                Currency& result, Where where) {
  readValue(
      step, budgetRanges_, {range.project, range.segment, range.from, range.to}, column, result,
      [&] {
        Statement statement(Sql::kBudgets);
        statement.bind(range.project).bind(range.segment);
        for (int pair = 0; pair < 3; ++pair) statement.bind(range.from).bind(range.to);
        return statement;
      },
      where);
}

Currency CProjectHelper::GetProjSalesBudgetRange(std::int32_t ProjId, std::int32_t SegmentId,
                                                 Date FromDate, Date ToDate) {
  return trap("GetProjSalesBudgetRange", [&](Steps& step, Currency& result) {
    readBudget(step, {ProjId, SegmentId, FromDate, ToDate}, "Sales", result);
  });
}

Currency CProjectHelper::GetProjPurchBudgetRange(std::int32_t ProjId, std::int32_t SegmentId,
                                                 Date FromDate, Date ToDate) {
  return trap("GetProjPurchBudgetRange", [&](Steps& step, Currency& result) {
    readBudget(step, {ProjId, SegmentId, FromDate, ToDate}, "Purch", result);
  });
}

Currency CProjectHelper::GetProjHoursBudgetRange(std::int32_t ProjId, std::int32_t SegmentId,
                                                 Date FromDate, Date ToDate) {
  return trap("GetProjHoursBudgetRange", [&](Steps& step, Currency& result) {
    readBudget(step, {ProjId, SegmentId, FromDate, ToDate}, "Hours", result);
  });
}

}  // namespace QuorAccQueries
