#include "payables/supplier_helper.h"

namespace QuorAccQueries {

const ClassInfo& CSupplierHelper::info() {
  static const ClassInfo info = describeClass<CSupplierHelper>(
      "Single values about a supplier.",
      joined(HelperFrame::members(),
             {
                 method<&CSupplierHelper::GetSuppBalance>(
                     "GetSuppBalance", {"SuppId", "BalanceDate"},
                     "What is owed to a supplier at a date less open credits."),
                 method<&CSupplierHelper::GetLastPmtInfo>("GetLastPmtInfo", {"SuppId"},
                                                          "The last payment to a supplier."),
                 method<&CSupplierHelper::GetLastPurcInfo>("GetLastPurcInfo", {"SuppId"},
                                                           "The last purchase from a supplier."),
             }));
  return info;
}

Currency CSupplierHelper::GetSuppBalance(std::int32_t SuppId, Date BalanceDate) {
  return trap("GetSuppBalance", [&](Steps& step, Currency& result) {
    const Ref<Recordset> rows = reuse(step, balances_, {BalanceDate, SuppId}, [&] {
      return step([&] { return queries_->OpenSuppBalance(SuppId, BalanceDate, 0, {}); });
    });
    if (hasRow(step, rows)) readField(step, rows, "SuppBalance", result);
    release(step, rows);
  });
}

Ref<CSupplierPmtInfo> CSupplierHelper::GetLastPmtInfo(std::int32_t SuppId) {
  return trap("GetLastPmtInfo", [&](Steps& step, Ref<CSupplierPmtInfo>& result) {
    result = make<CSupplierPmtInfo>();
    const Ref<Recordset> rows = reuse(step, lastPayments_, {SuppId}, [&] {
      return step([&] { return queries_->OpenSuppLastPmt(SuppId); });
    });
    if (hasRow(step, rows)) {
      step([&] { result->SetLastPmtDate(valueOrEmpty(rows, "LastPmt").toDate()); });
      step([&] { result->SetLastPmtAmnt(valueOrEmpty(rows, "PmtTotAmnt").toCurrency()); });
      step([&] { result->SetLastPmtCode(valueOrEmpty(rows, "Code").toLong()); });
      step([&] { result->SetLastPmtType(valueOrEmpty(rows, "Type").toText()); });
    }
    release(step, rows);
  });
}

Ref<CSupplierPurcInfo> CSupplierHelper::GetLastPurcInfo(std::int32_t SuppId) {
  return trap("GetLastPurcInfo", [&](Steps& step, Ref<CSupplierPurcInfo>& result) {
    result = make<CSupplierPurcInfo>();
    const Ref<Recordset> rows = reuse(step, lastPurchases_, {SuppId}, [&] {
      return step([&] { return queries_->OpenSuppLastPurc(SuppId); });
    });
    if (hasRow(step, rows)) {
      step([&] { result->SetLastPurcDate(valueOrEmpty(rows, "LastPurc").toDate()); });
      step([&] { result->SetLastPurcAmnt(valueOrEmpty(rows, "TotAmnt").toCurrency()); });
      step([&] { result->SetLastPurcCode(valueOrEmpty(rows, "InPurcId").toLong()); });
      step([&] { result->SetLastPurcType(valueOrEmpty(rows, "PurcType").toLong()); });
    }
    release(step, rows);
  });
}

}  // namespace QuorAccQueries
