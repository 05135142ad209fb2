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
    if (ByCurrency) ByCurrency = step([] { return foreignCurrencyUsed(); });
    const std::string fields =
        FieldList.empty() ? step([&] { return defaultFieldList(ByCurrency); }) : FieldList;
    const std::string details = step([&] { return GetCustomerAgingTrxSQL(ByOrder); });
    const std::string credits = step([&] { return GetAgingCustPmtCreditsSQL(ByOrder); });
    const std::int16_t engine = step([] { return engineType(); });

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
    step([&] { result = open(statement, Pass::Array, kFlagNone); });
  });
}

std::string CCustomerQueries::defaultFieldList(bool byCurrency) {
  std::string list(Sql::kSelectDocument);
  list += GetAgingCustFieldsList(std::string(Sql::kColumnsBesideDocument)) + ",\r\n";
  if (byCurrency)
    return list + nullSafe("CustAgingList.ExCurrencyId", 1) + " As InnerViewExCurrencyId ";
  return list + "CustAgingList.ExCurrencyId, " + GetAgingCurrencyFieldsList();
}

std::string CCustomerQueries::GetCustomerAgingTrxSQL(bool ByOrder) const {
  return trap("GetCustomerAgingTrxSQL", [&](Steps& step, std::string& result) {
    if (!ByOrder) {
      result = Sql::kDetails;
      return;
    }
    const std::int16_t engine = step([] { return engineType(); });
    result = Sql::kDetailsByOrder.of(engine);
  });
}

std::string CCustomerQueries::GetAgingCustPmtCreditsSQL(bool ByOrder) {
  std::string text(ByOrder ? Sql::kCreditKeysByOrder.of(engineType()) : Sql::kCreditKeys);
  text += Sql::kCreditColumns;
  text += nullSafe("TotalAppliedAmountDirect", 0) + " + ";
  text += nullSafe("TotalAppliedAmountIndirect", 0) + " + ";
  text += nullSafe("TotalAppliedAmountOrder", 0);
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
