// The sample's sales: orders, documents and payments of its customers.
#pragma once

#include <cstdint>
#include <vector>

#include "host/company/sample/calendar.h"
#include "host/company/sample/plans/schedules.h"
#include "host/company/sample/stock/items.h"
#include "host/company/sample/stock/stock.h"
#include "host/company/sample/trade/document.h"
#include "host/company/sample/trade/parties.h"
#include "host/company/sample/trade/settlements.h"

namespace QuorHost::Sample {

class Receivables {
 public:
  /// `sales` is the number of sales documents to make; orders and adjustments come on top.
  Receivables(Store& store, Ledger& ledger, Stock& stock, const Rates& rates,
              std::vector<Party> customers, std::int64_t sales, Random random);

  /// What happens on a day.
  void day(int day);

  /// The schedules of the contracts that customers have.
  [[nodiscard]] const std::vector<Schedule>& schedules() const noexcept { return schedules_; }

 private:
  /// What a customer is invoiced again and again, by the schedule of the same place.
  struct Contract {
    const Party* customer;
    DocumentLine line;
  };
  /// An order on its way to delivery.
  struct Order {
    Document document;
    OpenCredit deposit;
  };

  const Party& pickCustomer(int day);
  [[nodiscard]] std::vector<DocumentLine> pickLines(const SampleItem& (*pick)(Random&),
                                                    const Party& customer, int day);
  void deliver(int day);
  void sell(int day);
  void order(int day);
  void giveCredit(const Party& customer, int day);
  void chargeReturnedCheque(const Party& customer, int day);
  void makeContracts(std::int32_t count);
  void runContracts(int day);
  Document begin(std::int32_t type, const Party& customer, int day);
  void finish(Document& document, bool taxed = true);
  std::vector<DocumentLine> splitOff(std::vector<DocumentLine>& lines);
  void write(Document& document, std::int32_t order);

  Ledger& ledger_;
  Stock& stock_;
  const Rates& rates_;
  std::vector<Party> customers_;
  Quota quota_;
  Random random_;
  Numbering numbering_;
  Table documents_;
  Table lines_;
  Settlements settlements_;
  std::vector<std::vector<Order>> deliveries_;  // by day
  std::vector<Contract> contracts_;
  std::vector<Schedule> schedules_;
  std::int64_t sold_ = 0;
  std::int32_t invoices_ = 100'000;
  std::int32_t adjustments_ = 0;
  std::int32_t orders_ = 0;
  std::int32_t lastLine_ = 0;
};

}  // namespace QuorHost::Sample
