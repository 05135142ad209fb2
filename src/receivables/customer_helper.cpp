#include "receivables/customer_helper.h"

namespace QuorAccQueries {

const ClassInfo& CCustomerHelper::info() {
  static const ClassInfo info = describeClass<CCustomerHelper>(
      "Single values about a customer.",
      joined(HelperFrame::members(),
             {
                 method<&CCustomerHelper::GetCustBalance>(
                     "GetCustBalance", {"CustomerId", "AsOfDate"},
                     "What a customer owes at a date less his open credits."),
                 method<&CCustomerHelper::GetLastPmtInfo>("GetLastPmtInfo", {"CustomerId"},
                                                          "A customer's last payment."),
                 method<&CCustomerHelper::GetLastSaleInfo>("GetLastSaleInfo", {"CustomerId"},
                                                           "The last sale to a customer."),
             }));
  return info;
}

Currency CCustomerHelper::GetCustBalance(std::int32_t CustomerId, Date AsOfDate) {
  return trap("GetCustBalance", [&](Steps& step, Currency& result) {
    const Ref<Recordset> rows = reuse(step, balances_, {AsOfDate, CustomerId}, [&] {
      return step([&] { return queries_->OpenCustBalance(CustomerId, AsOfDate, 0, {}); });
    });
    if (hasRow(step, rows)) readField(step, rows, "CustBalance", result);
    release(step, rows);
  });
}

Ref<CCustPmtInfo> CCustomerHelper::GetLastPmtInfo(std::int32_t CustomerId) {
  return trap("GetLastPmtInfo", [&](Steps& step, Ref<CCustPmtInfo>& result) {
    result = make<CCustPmtInfo>();
    const Ref<Recordset> rows = reuse(step, lastPayments_, {CustomerId}, [&] {
      return step([&] { return queries_->OpenCustLastPmt(CustomerId); });
    });
    if (hasRow(step, rows)) {
      step([&] { result->SetLastPmtDate(valueOrEmpty(rows, "LastPmt").toDate()); });
      step([&] { result->SetLastPmtAmnt(valueOrEmpty(rows, "PmtTotAmnt").toCurrency()); });
      step([&] { result->SetLastPmtCode(valueOrEmpty(rows, "PmtCode").toLong()); });
      step([&] { result->SetLastPmtType(valueOrEmpty(rows, "Type").toText()); });
    }
    release(step, rows);
  });
}

Ref<CCustSaleInfo> CCustomerHelper::GetLastSaleInfo(std::int32_t CustomerId) {
  return trap("GetLastSaleInfo", [&](Steps& step, Ref<CCustSaleInfo>& result) {
    result = make<CCustSaleInfo>();
    const Ref<Recordset> rows = reuse(step, lastSales_, {CustomerId}, [&] {
      return step([&] { return queries_->OpenCustLastSale(CustomerId); });
    });
    if (hasRow(step, rows)) {
      step([&] { result->SetLastSaleDate(valueOrEmpty(rows, "LastSale").toDate()); });
      step([&] { result->SetLastSaleAmnt(valueOrEmpty(rows, "TotAmnt").toCurrency()); });
      step([&] { result->SetLastSaleCode(valueOrEmpty(rows, "InInvoiId").toLong()); });
      step([&] { result->SetLastSaleType(valueOrEmpty(rows, "InvoiType").toLong()); });
    }
    release(step, rows);
  });
}

}  // namespace QuorAccQueries
