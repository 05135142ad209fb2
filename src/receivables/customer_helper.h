// Single values about a customer.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/frame.h"
#include "core/value_records.h"
#include "receivables/customer_queries.h"

namespace QuorAccQueries {

/// Answers single questions about a customer through a query object of its own.
///
/// That object is never given this helper's connection: the answers come from the application's
/// default connection, also when `CustomConnection` was assigned. Hosts rely on it.
class CCustomerHelper : public HelperFrame {
 public:
  static constexpr std::string_view kClassName = "CCustomerHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// What the customer owes at a date less his open credits, in his currency; no date for the
  /// balance of all documents. 0 for a customer without documents.
  Currency GetCustBalance(std::int32_t CustomerId, Date AsOfDate);

  /// The customer's last payment; an empty record when there is none.
  Ref<CCustPmtInfo> GetLastPmtInfo(std::int32_t CustomerId);

  /// The last sale to the customer; an empty record when there is none.
  Ref<CCustSaleInfo> GetLastSaleInfo(std::int32_t CustomerId);

 private:
  Ref<CCustomerQueries> queries_ = make<CCustomerQueries>();
  RecordsetCache balances_;
  RecordsetCache lastPayments_;
  RecordsetCache lastSales_;
};

}  // namespace QuorAccQueries
