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
      return queries_->OpenCustBalance(CustomerId, AsOfDate, 0, {});
    });
    step([&] {
      if (!rows->AtEnd()) result = valueOrEmpty(rows, "CustBalance").toCurrency();
    });
    step([&] { release(rows); });
  });
}

Ref<CCustPmtInfo> CCustomerHelper::GetLastPmtInfo(std::int32_t CustomerId) {
  return trap("GetLastPmtInfo", [&](Steps& step, Ref<CCustPmtInfo>& result) {
    result = make<CCustPmtInfo>();
    const Ref<Recordset> rows = reuse(step, lastPayments_, {CustomerId},
                                      [&] { return queries_->OpenCustLastPmt(CustomerId); });
    step([&] {
      if (rows->AtEnd()) return;
      result->SetLastPmtDate(valueOrEmpty(rows, "LastPmt").toDate());
      result->SetLastPmtAmnt(valueOrEmpty(rows, "PmtTotAmnt").toCurrency());
      result->SetLastPmtCode(valueOrEmpty(rows, "PmtCode").toLong());
      result->SetLastPmtType(valueOrEmpty(rows, "Type").toText());
    });
    step([&] { release(rows); });
  });
}

Ref<CCustSaleInfo> CCustomerHelper::GetLastSaleInfo(std::int32_t CustomerId) {
  return trap("GetLastSaleInfo", [&](Steps& step, Ref<CCustSaleInfo>& result) {
    result = make<CCustSaleInfo>();
    const Ref<Recordset> rows = reuse(step, lastSales_, {CustomerId},
                                      [&] { return queries_->OpenCustLastSale(CustomerId); });
    step([&] {
      if (rows->AtEnd()) return;
      result->SetLastSaleDate(valueOrEmpty(rows, "LastSale").toDate());
      result->SetLastSaleAmnt(valueOrEmpty(rows, "TotAmnt").toCurrency());
      result->SetLastSaleCode(valueOrEmpty(rows, "InInvoiId").toLong());
      result->SetLastSaleType(valueOrEmpty(rows, "InvoiType").toLong());
    });
    step([&] { release(rows); });
  });
}

}  // namespace QuorAccQueries
