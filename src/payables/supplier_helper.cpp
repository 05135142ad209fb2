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
      return queries_->OpenSuppBalance(SuppId, BalanceDate, 0, {});
    });
    step([&] {
      if (!rows->AtEnd()) result = valueOrEmpty(rows, "SuppBalance").toCurrency();
    });
    step([&] { release(rows); });
  });
}

Ref<CSupplierPmtInfo> CSupplierHelper::GetLastPmtInfo(std::int32_t SuppId) {
  return trap("GetLastPmtInfo", [&](Steps& step, Ref<CSupplierPmtInfo>& result) {
    result = make<CSupplierPmtInfo>();
    const Ref<Recordset> rows =
        reuse(step, lastPayments_, {SuppId}, [&] { return queries_->OpenSuppLastPmt(SuppId); });
    step([&] {
      if (rows->AtEnd()) return;
      result->SetLastPmtDate(valueOrEmpty(rows, "LastPmt").toDate());
      result->SetLastPmtAmnt(valueOrEmpty(rows, "PmtTotAmnt").toCurrency());
      result->SetLastPmtCode(valueOrEmpty(rows, "Code").toLong());
      result->SetLastPmtType(valueOrEmpty(rows, "Type").toText());
    });
    step([&] { release(rows); });
  });
}

Ref<CSupplierPurcInfo> CSupplierHelper::GetLastPurcInfo(std::int32_t SuppId) {
  return trap("GetLastPurcInfo", [&](Steps& step, Ref<CSupplierPurcInfo>& result) {
    result = make<CSupplierPurcInfo>();
    const Ref<Recordset> rows =
        reuse(step, lastPurchases_, {SuppId}, [&] { return queries_->OpenSuppLastPurc(SuppId); });
    step([&] {
      if (rows->AtEnd()) return;
      result->SetLastPurcDate(valueOrEmpty(rows, "LastPurc").toDate());
      result->SetLastPurcAmnt(valueOrEmpty(rows, "TotAmnt").toCurrency());
      result->SetLastPurcCode(valueOrEmpty(rows, "InPurcId").toLong());
      result->SetLastPurcType(valueOrEmpty(rows, "PurcType").toLong());
    });
    step([&] { release(rows); });
  });
}

}  // namespace QuorAccQueries
