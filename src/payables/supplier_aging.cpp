// The aging query of the suppliers; the class's other queries are in supplier_queries.cpp.
#include "core/statement.h"
#include "payables/supplier_aging_sql.h"
#include "payables/supplier_queries.h"
#include "receivables/customer_queries.h"

namespace QuorAccQueries {

namespace Sql = SupplierAgingSql;

Ref<Recordset> CSupplierQueries::OpenSuppAgingTransactions(
    bool ShowAllTransactions, std::int32_t SuppId, Date AgingDate, const std::string& Filter,
    const std::string& OrderBy, bool ByCurrency, const std::string& FieldsList,
    const std::string& GroupBy) {
  return trap("OpenSuppAgingTransactions", [&](Steps& step, Ref<Recordset>& result) {
    Date noLowerDate;
    step([&] { MUtils::NormalizeDateRange(noLowerDate, AgingDate); });
    if (ByCurrency) ByCurrency = foreignCurrencyUsed(step);
    const std::string fields = FieldsList.empty() ? defaultFieldList(step, ByCurrency) : FieldsList;
    const std::string credits = GetAgingSuppPmtCreditsSQL(step);
    const std::int16_t engine = engineType(step);

    Statement statement;
    if (ByCurrency) statement.text(Sql::kByCurrencyBefore);
    statement.text("SELECT ").fragment(fields).text("\r\n");
    statement.text(Sql::kDetails).text(credits).bind(AgingDate);
    statement.text(Sql::kJoinParties);
    statement.text(Sql::kJoinOutstanding).text(Sql::kTotalPayments.of(engine)).text(Sql::kPayments);
    if (SuppId != 0) statement.text(Sql::kPaymentsOfSupplier).number(SuppId).text("\r\n");
    statement.text(Sql::kOutstandingAtDate).bind(AgingDate).bind(AgingDate);
    if (SuppId != 0) statement.text(Sql::kPurchasesOfSupplier).bind(SuppId);
    statement.text(Sql::kRows).bind(AgingDate).bind(AgingDate);
    if (SuppId != 0) statement.text(Sql::kOfSupplier).bind(SuppId);
    if (!ShowAllTransactions) statement.text(Sql::kOutstandingOnly);
    if (!Filter.empty()) statement.text(" AND (").fragment(Filter).text(")\r\n");
    if (!GroupBy.empty()) statement.text(" GROUP BY ").fragment(GroupBy).text("\r\n");
    if (ByCurrency) statement.text(Sql::kByCurrencyAfter);
    statement.text(" ORDER BY ");
    statement.fragment(OrderBy.empty() ? Sql::kDefaultOrder : OrderBy).text("\r\n");
    result = open(step, statement, Pass::Array, {.flag = kFlagNone});
  });
}

std::string CSupplierQueries::defaultFieldList(Steps& step, bool byCurrency) {
  std::string list(Sql::kSelectDocument);
  list += nullSafe(step, "SuppAgingList_View.DocCredit", 0);
  list += Sql::kSelectDocCredit;
  list += nullSafe(step, "SuppAgingList_View.PurcCredit", 0);
  list += Sql::kSelectPurcCredit;
  step([&] { list += GetAgingSuppFieldsList(std::string(Sql::kColumnsBesideDocument)); });
  list += Sql::kSelectParty;
  if (byCurrency) {
    list += nullSafe(step, "SuppAgingList_View.ExCurrencyId", 1);
    return list + " As InnerViewExCurrencyId ";
  }
  list += "SuppAgingList_View.ExCurrencyId, ";
  step([&] { list += GetAgingCurrencyFieldsList(); });
  return list;
}

std::string CSupplierQueries::GetAgingSuppPmtCreditsSQL(Steps& step) {
  std::string text(Sql::kCredits);
  text += Sql::kCreditBalance.of(engineType(step));
  text += Sql::kCreditApplications;
  return text;
}

std::string CSupplierQueries::GetAgingSuppFieldsList(const std::string& ExcludeFields) {
  return trap("GetAgingSuppFieldsList", [&](Steps& step, std::string& result) {
    if (ExcludeFields.empty()) {
      result = Sql::kSupplierColumns;
    } else {
      listColumns(step, result, Sql::kNoSuppliers, "Supp", ExcludeFields);
    }
  });
}

std::string CSupplierQueries::GetAgingCurrencyFieldsList() {
  return trap("GetAgingCurrencyFieldsList", [&](Steps& step, std::string& result) {
    step([&] { result = CCustomerQueries().GetAgingCurrencyFieldsList(); });
  });
}

}  // namespace QuorAccQueries
