// Single values about a supplier.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/frame.h"
#include "core/value_records.h"
#include "payables/supplier_queries.h"

namespace QuorAccQueries {

/// Answers single questions about a supplier, the counterpart of `CCustomerHelper`: its query
/// object likewise answers from the application's default connection.
class CSupplierHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CSupplierHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// What is owed to the supplier at a date less open credits, in his currency; no date for the
  /// balance of all documents. 0 for a supplier without documents.
  Currency GetSuppBalance(std::int32_t SuppId, Date BalanceDate);

  /// The last payment to the supplier; an empty record when there is none.
  Ref<CSupplierPmtInfo> GetLastPmtInfo(std::int32_t SuppId);

  /// The last purchase from the supplier; an empty record when there is none.
  Ref<CSupplierPurcInfo> GetLastPurcInfo(std::int32_t SuppId);

 private:
  Ref<CSupplierQueries> queries_ = make<CSupplierQueries>();
  RecordsetCache balances_;
  RecordsetCache lastPayments_;
  RecordsetCache lastPurchases_;
};

}  // namespace QuorAccQueries
