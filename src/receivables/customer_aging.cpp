// The aging query of the customers; the class's other queries are in customer_queries.cpp.
#include "core/statement.h"
#include "receivables/customer_aging_sql.h"
#include "receivables/customer_queries.h"

namespace QuorAccQueries {

namespace Sql = CustomerAgingSql;

Ref<Recordset> CCustomerQueries::OpenCustAgingTransactions(
    bool AllTransactions, std::int32_t CustomerId, Date AsOfDate, const std::string& ExtraWhere,
    const std::string& OrderBy, const std::string& FieldList, const std::string& GroupBy,
    bool ByCurrency, bool ByOrder) {
  return trap("OpenCustAgingTransactions", [&](Steps& step, Ref<Recordset>& result) {
    Date noLowerDate;
    step([&] { MUtils::NormalizeDateRange(noLowerDate, AsOfDate); });
    if (ByCurrency) ByCurrency = foreignCurrencyUsed(step);
    const std::string fields = FieldList.empty() ? defaultFieldList(step, ByCurrency) : FieldList;
    const std::string details = step([&] { return GetCustomerAgingTrxSQL(ByOrder); });
    const std::string credits = GetAgingCustPmtCreditsSQL(step, ByOrder);
    const std::int16_t engine = engineType(step);

    Statement statement;
    if (ByCurrency) statement.text(Sql::kByCurrencyBefore);
    statement.text("SELECT ").fragment(fields).text("\r\n FROM ((((");
    statement.text(details).text("\r\n UNION ALL \r\n").text(credits).bind(AsOfDate);
    statement.text(Sql::kJoinParties);
    statement.text(Sql::kJoinOutstanding).text(Sql::kTotalPayments.of(engine));
    statement.text(Sql::kOutstandingAtDate).bind(AsOfDate).bind(AsOfDate).bind(AsOfDate);
    if (CustomerId != 0) statement.text(Sql::kOfCustomer).number(CustomerId);
    if (!AllTransactions) statement.text(Sql::kOutstandingOnly);
    if (!ExtraWhere.empty()) statement.text(" AND (").fragment(ExtraWhere).text(")");
    if (!GroupBy.empty()) statement.text(" GROUP BY ").fragment(GroupBy);
    if (ByCurrency) statement.text(Sql::kByCurrencyAfter);
    if (OrderBy.empty()) {
      statement.text(Sql::kDefaultOrder);
    } else {
      statement.text(" ORDER BY ").fragment(OrderBy);
    }
    result = open(step, statement, Pass::Array, {.flag = kFlagNone});
  });
}

std::string CCustomerQueries::defaultFieldList(Steps& step, bool byCurrency) {
  std::string list(Sql::kSelectDocument);
  step([&] { list += GetAgingCustFieldsList(std::string(Sql::kColumnsBesideDocument)); });
  list += ",\r\n";
  if (byCurrency) {
    list += nullSafe(step, "CustAgingList.ExCurrencyId", 1);
    return list + " As InnerViewExCurrencyId ";
  }
  return list + "CustAgingList.ExCurrencyId, " + GetAgingCurrencyFieldsList();
}

std::string CCustomerQueries::GetCustomerAgingTrxSQL(bool ByOrder) const {
  return trap("GetCustomerAgingTrxSQL", [&](Steps& step, std::string& result) {
    if (!ByOrder) {
      result = Sql::kDetails;
      return;
    }
    const std::int16_t engine = engineType(step);
    result = Sql::kDetailsByOrder.of(engine);
  });
}

std::string CCustomerQueries::GetAgingCustPmtCreditsSQL(Steps& step, bool ByOrder) {
  std::string text(ByOrder ? Sql::kCreditKeysByOrder.of(engineType(step)) : Sql::kCreditKeys);
  text += Sql::kCreditColumns;
  text += nullSafe(step, "TotalAppliedAmountDirect", 0);
  text += " + ";
  text += nullSafe(step, "TotalAppliedAmountIndirect", 0);
  text += " + ";
  text += nullSafe(step, "TotalAppliedAmountOrder", 0);
  text += Sql::kCreditApplications;
  text += std::to_string(Sql::kOrderType);
  text += Sql::kOpenCredits;
  return text;
}

std::string CCustomerQueries::GetAgingCustFieldsList(const std::string& Exclusions) {
  return trap("GetAgingCustFieldsList", [&](Steps& step, std::string& result) {
    if (Exclusions.empty()) {
      result = Sql::kCustomerColumns;
    } else {
      listColumns(step, result, Sql::kNoCustomers, "Cust", Exclusions);
    }
  });
}

std::string CCustomerQueries::GetAgingCurrencyFieldsList() const {
  return std::string(Sql::kCurrencyColumns);
}

}  // namespace QuorAccQueries
