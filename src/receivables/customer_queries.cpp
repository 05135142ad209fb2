#include "receivables/customer_queries.h"

#include "core/statement.h"
#include "receivables/customer_sql.h"

namespace QuorAccQueries {

namespace Sql = CustomerSql;

namespace {

constexpr std::int32_t kEveryCustomer = -1;

}  // namespace

const ClassInfo& CCustomerQueries::info() {
  static const ClassInfo info = describeClass<CCustomerQueries>(
      "Customer queries: aging, histories, balances, credits, last documents, project costs.",
      joined(
          QueryFrame::members(),
          {
              method<&CCustomerQueries::OpenCustAgingTransactions>(
                  "OpenCustAgingTransactions",
                  {"AllTransactions", "CustomerId", "AsOfDate", "ExtraWhere", "OrderBy",
                   "FieldList", "GroupBy", "ByCurrency", "ByOrder"},
                  "Receivable documents, what was applied to them, and open credits as at a date. "
                  "ByOrder goes with the caller's own FieldList and OrderBy."),
              method<&CCustomerQueries::GetAgingCustFieldsList>(
                  "GetAgingCustFieldsList", {"Exclusions"},
                  "The customer's columns for a select list, without those named."),
              method<&CCustomerQueries::GetAgingCurrencyFieldsList>(
                  "GetAgingCurrencyFieldsList", {}, "The currency's columns for a select list."),
              method<&CCustomerQueries::OpenInvoiBalanceAtDate>(
                  "OpenInvoiBalanceAtDate", {"InvoiceId", "AtDate"},
                  "An invoice's amount less what was applied to it up to a date."),
              method<&CCustomerQueries::OpenCustHistoryList>(
                  "OpenCustHistoryList", {"FromDate", "ToDate", "CustomerId"},
                  "A customer's documents and payments in a period, by date."),
              method<&CCustomerQueries::OpenCustPreviousBalanceInfo>(
                  "OpenCustPreviousBalanceInfo", {"CustomerId", "BeforeDate"},
                  "The sum of a customer's history before a date."),
              method<&CCustomerQueries::OpenCustBalance>(
                  "OpenCustBalance", {"CustomerId", "AsOfDate", "SegmentId", "ExtraFields"},
                  "What customers owe, in their currency and in home currency."),
              method<&CCustomerQueries::OpenCustOpenCredits>(
                  "OpenCustOpenCredits", {"CustomerId"},
                  "A customer's payments that still have an open credit."),
              method<&CCustomerQueries::OpenInvoiPaidAmntAll>("OpenInvoiPaidAmntAll", {"InvoiceId"},
                                                              "What has been paid on an invoice."),
              method<&CCustomerQueries::OpenCustPmtUnappl>("OpenCustPmtUnappl", {"PaymentId"},
                                                           "The part of a payment not applied."),
              method<&CCustomerQueries::OpenCustLastPmt>(
                  "OpenCustLastPmt", {"CustomerId"},
                  "A customer's last payment; with -1 every customer's."),
              method<&CCustomerQueries::OpenCustLastSale>(
                  "OpenCustLastSale", {"CustomerId"},
                  "The last sale to a customer; with -1 to every customer."),
              method<&CCustomerQueries::OpenCustCostByProject>(
                  "OpenCustCostByProject",
                  {"CustomerId", "AsOfDate", "ProjectId", "SegmentId", "ExtraFields"},
                  "Ledger amounts of sales posted to projects. ProjectId counts only beside "
                  "another filter."),
          }));
  return info;
}

Ref<Recordset> CCustomerQueries::OpenInvoiBalanceAtDate(std::int32_t InvoiceId, Date AtDate) {
  return trap("OpenInvoiBalanceAtDate", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kInvoiceBalanceAtDate);
    statement.bind(InvoiceId).bind(InvoiceId).bind(AtDate);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustHistoryList(Date FromDate, Date ToDate,
                                                     std::int32_t CustomerId) {
  return trap("OpenCustHistoryList", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kHistory);
    statement.bind(FromDate).bind(ToDate).bind(CustomerId);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustPreviousBalanceInfo(std::int32_t CustomerId,
                                                             Date BeforeDate) {
  return trap("OpenCustPreviousBalanceInfo", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement(Sql::kPreviousBalance);
    statement.bind(CustomerId).bind(BeforeDate);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustBalance(std::int32_t CustomerId, Date AsOfDate,
                                                 std::int32_t SegmentId,
                                                 const std::string& ExtraFields) {
  return trap("OpenCustBalance", [&](Steps& step, Ref<Recordset>& result) {
    const Statement statement =
        balanceStatement(Sql::kBalance, CustomerId, AsOfDate, SegmentId, ExtraFields);
    result = open(step, statement, Pass::Array);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustOpenCredits(std::int32_t CustomerId) {
  return trap("OpenCustOpenCredits", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kOpenCredits).bind(CustomerId), Pass::Single);
  });
}

Ref<Recordset> CCustomerQueries::OpenInvoiPaidAmntAll(std::int32_t InvoiceId) {
  return trap("OpenInvoiPaidAmntAll", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kPaidOnInvoice).bind(InvoiceId), Pass::Single);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustPmtUnappl(std::int32_t PaymentId) {
  return trap("OpenCustPmtUnappl", [&](Steps& step, Ref<Recordset>& result) {
    result = open(step, Statement(Sql::kUnapplied).bind(PaymentId), Pass::Single);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustLastPmt(std::int32_t CustomerId) {
  return trap("OpenCustLastPmt", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement;
    if (CustomerId == kEveryCustomer) {
      statement.text(Sql::kLastPayments);
    } else {
      statement.text(Sql::kLastPayment).number(CustomerId).text(Sql::kLastPaymentOrder);
    }
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustLastSale(std::int32_t CustomerId) {
  return trap("OpenCustLastSale", [&](Steps& step, Ref<Recordset>& result) {
    Statement statement;
    if (CustomerId == kEveryCustomer) {
      statement.text(Sql::kLastSales);
    } else {
      statement.text(Sql::kLastSale).number(CustomerId).text(Sql::kLastSaleOrder);
    }
    result = open(step, statement, Pass::Nothing);
  });
}

Ref<Recordset> CCustomerQueries::OpenCustCostByProject(std::int32_t CustomerId, Date AsOfDate,
                                                       std::int32_t ProjectId,
                                                       std::int32_t SegmentId,
                                                       const std::string& ExtraFields) {
  return trap("OpenCustCostByProject", [&](Steps& step, Ref<Recordset>& result) {
    const std::int32_t bankAccount = accountParameter(step, "WIPGLBankAccount");
    const std::int32_t serviceAccount = accountParameter(step, "WIPGLUnrecordedServiceAccount");
    const Statement statement =
        projectCostStatement(Sql::kProjectCost, bankAccount, serviceAccount, CustomerId, AsOfDate,
                             ProjectId, SegmentId, ExtraFields);
    result = open(step, statement, Pass::Array);
  });
}

}  // namespace QuorAccQueries
