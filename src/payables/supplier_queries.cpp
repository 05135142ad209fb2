#include "payables/supplier_queries.h"

#include "core/statement.h"
#include "payables/supplier_sql.h"

namespace QuorAccQueries {

namespace Sql = SupplierSql;

namespace {

/// Leaves out the purchases of a list of keys.
void exclude(Statement& statement, const std::string& keys) {
  if (!keys.empty()) statement.text(" AND (InPurcId NOT IN (").fragment(keys).text("))");
}

}  // namespace

const ClassInfo& CSupplierQueries::info() {
  static const ClassInfo info = describeClass<CSupplierQueries>(
      "Supplier queries: aging, histories, receptions and orders, balances, credits, project "
      "costs.",
      joined(
          QueryFrame::members(),
          {
              method<&CSupplierQueries::OpenSuppAgingTransactions>(
                  "OpenSuppAgingTransactions",
                  {"ShowAllTransactions", "SuppId", "AgingDate", "Filter", "OrderBy", "ByCurrency",
                   "FieldsList", "GroupBy"},
                  "Payable documents, what was applied to them, and open credits as at a date."),
              method<&CSupplierQueries::GetAgingSuppFieldsList>(
                  "GetAgingSuppFieldsList", {"ExcludeFields"},
                  "The supplier's columns for a select list, without those named."),
              method<&CSupplierQueries::GetAgingCurrencyFieldsList>(
                  "GetAgingCurrencyFieldsList", {}, "The currency's columns for a select list."),
              method<&CSupplierQueries::OpenSuppHistoryList>(
                  "OpenSuppHistoryList", {"SuppId", "FromDate", "ToDate"},
                  "A supplier's documents and payments in a period, by date."),
              method<&CSupplierQueries::OpenSuppOpenRec>(
                  "OpenSuppOpenRec", {"SuppId", "ExcludeIds"},
                  "A supplier's receptions not yet invoiced."),
              method<&CSupplierQueries::OpenSuppOpenPurcOrd>("OpenSuppOpenPurcOrd",
                                                             {"SuppId", "ExcludeIds"},
                                                             "A supplier's open purchase orders."),
              method<&CSupplierQueries::OpenSuppPurcOpenExpectedRec>(
                  "OpenSuppPurcOpenExpectedRec", {"SuppId", "PurcType"},
                  "A supplier's purchases expected to be received."),
              method<&CSupplierQueries::OpenSuppPreviousBalanceInfo>(
                  "OpenSuppPreviousBalanceInfo", {"SuppId", "BeforeDate"},
                  "The sum of a supplier's history before a date."),
              method<&CSupplierQueries::OpenPurcBalanceAtDate>(
                  "OpenPurcBalanceAtDate", {"PurcId", "AtDate"},
                  "A purchase's amount less what was applied to it up to a date."),
              method<&CSupplierQueries::OpenSuppBalance>(
                  "OpenSuppBalance", {"SuppId", "BalanceDate", "SegmentId", "ExtraFields"},
                  "What is owed to suppliers, in their currency and in home currency."),
              method<&CSupplierQueries::OpenSuppOpenCredits>(
                  "OpenSuppOpenCredits", {"SuppId"},
                  "Payments to a supplier that still have an open credit."),
              method<&CSupplierQueries::OpenSuppLastPurc>("OpenSuppLastPurc", {"SuppId"},
                                                          "The last purchase from a supplier."),
              method<&CSupplierQueries::OpenSuppLastPmt>("OpenSuppLastPmt", {"SuppId"},
                                                         "The last payment to a supplier."),
              method<&CSupplierQueries::OpenUnappliedPayment>("OpenUnappliedPayment", {"PmtId"},
                                                              "The part of a payment not applied."),
              method<&CSupplierQueries::OpenSuppExpectedPurcOrd>(
                  "OpenSuppExpectedPurcOrd", {"SuppId"}, "A supplier's expected purchase orders."),
              method<&CSupplierQueries::OpenSuppCostByProject>(
                  "OpenSuppCostByProject",
                  {"SuppId", "AsAtDate", "ProjId", "SegmentId", "ExtraFields"},
                  "Ledger amounts of purchases and expenses posted to projects. Give ExtraFields; "
                  "ProjId counts only beside another filter."),
          }));
  return info;
}

Ref<Recordset> CSupplierQueries::OpenSuppHistoryList(std::int32_t SuppId, Date FromDate,
                                                     Date ToDate) {
  return trap("OpenSuppHistoryList", [&](Steps& step, Ref<Recordset>& result) {
    step([&] { MUtils::NormalizeDateRange(FromDate, ToDate); });
    Statement statement(Sql::kHistory);
    statement.bind(FromDate).bind(ToDate).bind(SuppId);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppOpenRec(std::int32_t SuppId,
                                                 const std::string& ExcludeIds) {
  return trap("OpenSuppOpenRec", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kOpenReceptions);
    exclude(statement.number(SuppId), ExcludeIds);
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppOpenPurcOrd(std::int32_t SuppId,
                                                     const std::string& ExcludeIds) {
  return trap("OpenSuppOpenPurcOrd", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kOpenOrders);
    exclude(statement.number(SuppId), ExcludeIds);
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppPurcOpenExpectedRec(std::int32_t SuppId,
                                                             std::int32_t PurcType) {
  return trap("OpenSuppPurcOpenExpectedRec", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kExpectedReceptions);
    statement.number(SuppId);
    if (PurcType > 0) statement.text(" AND PurcType = ").number(PurcType);
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppPreviousBalanceInfo(std::int32_t SuppId, Date BeforeDate) {
  return trap("OpenSuppPreviousBalanceInfo", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kPreviousBalance);
    statement.bind(SuppId).bind(BeforeDate);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CSupplierQueries::OpenPurcBalanceAtDate(std::int32_t PurcId, Date AtDate) {
  return trap("OpenPurcBalanceAtDate", [&](Steps& step, Ref<Recordset>& result) {
    Date noLowerDate;
    step([&] { MUtils::NormalizeDateRange(noLowerDate, AtDate); });
    Statement statement(Sql::kPurchaseBalanceAtDate);
    statement.bind(PurcId).bind(PurcId).bind(AtDate);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppBalance(std::int32_t SuppId, Date BalanceDate,
                                                 std::int32_t SegmentId,
                                                 const std::string& ExtraFields) {
  return trap("OpenSuppBalance", [&](Steps& step, Ref<Recordset>& result) {
    const Statement statement =
        balanceStatement(Sql::kBalance, SuppId, BalanceDate, SegmentId, ExtraFields);
    const Pass pass = statement.values().empty() ? Pass::Nothing : Pass::Array;
    result = open(step, statement, pass);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppOpenCredits(std::int32_t SuppId) {
  return trap("OpenSuppOpenCredits", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kOpenCredits).bind(SuppId), Pass::Array);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppLastPurc(std::int32_t SuppId) {
  return trap("OpenSuppLastPurc", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kLastPurchase).bind(SuppId), Pass::Array);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppLastPmt(std::int32_t SuppId) {
  return trap("OpenSuppLastPmt", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kLastPayment);
    statement.number(SuppId).text(Sql::kLastPaymentOrder);
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenUnappliedPayment(std::int32_t PmtId) {
  return trap("OpenUnappliedPayment", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kUnapplied).number(PmtId), Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppExpectedPurcOrd(std::int32_t SuppId) {
  return trap("OpenSuppExpectedPurcOrd", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kExpectedOrders).number(SuppId), Pass::Nothing);
  });
}

Ref<Recordset> CSupplierQueries::OpenSuppCostByProject(std::int32_t SuppId, Date AsAtDate,
                                                       std::int32_t ProjId, std::int32_t SegmentId,
                                                       const std::string& ExtraFields) {
  return trap("OpenSuppCostByProject", [&](Steps& step, Ref<Recordset>& result) {
    const std::int32_t bankAccount = accountParameter(step, "WIPGLBankAccount");
    const std::int32_t serviceAccount = accountParameter(step, "WIPGLUnrecordedServiceAccount");
    const Statement statement =
        projectCostStatement(Sql::kProjectCost, bankAccount, serviceAccount, SuppId, AsAtDate,
                             ProjId, SegmentId, ExtraFields);
    result = open(step, statement, Pass::Array);
  });
}

}  // namespace QuorAccQueries
