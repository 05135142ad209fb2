// The sample's purchases: orders, receptions, documents and payments of its suppliers.
#pragma once

#include <cstdint>
#include <vector>

#include "host/company/sample/calendar.h"
#include "host/company/sample/plans/schedules.h"
#include "host/company/sample/stock/items.h"
#include "host/company/sample/stock/stock_room.h"
#include "host/company/sample/trade/document.h"
#include "host/company/sample/trade/parties.h"
#include "host/company/sample/trade/settlements.h"

namespace QuorHost::Sample {

class Payables {
 public:
  /// `purchases` is the number of purchases and expenses to make; orders, receptions and
  /// adjustments come on top.
  Payables(Store& store, Ledger& ledger, Stock& stock, StockRoom& stockRoom, const Rates& rates,
           std::vector<Party> suppliers, std::int64_t purchases, Random random);

  /// What happens on a day.
  void day(int day);

  /// The schedules of the agreements with suppliers.
  [[nodiscard]] const std::vector<Schedule>& schedules() const noexcept { return schedules_; }

 private:
  /// What a supplier bills again and again, by the schedule of the same place.
  struct Agreement {
    const Party* supplier;
    Cents amount;
  };
  /// Where each line of a document came from: the first line of an order, or the reception and its
  /// first line.
  struct Origin {
    std::int32_t orderLine = 0;
    std::int32_t reception = 0;
    std::int32_t receptionLine = 0;
  };
  /// Goods on their way: what is to be received or invoiced.
  struct Awaited {
    Document document;
    Origin origin;
    /// What the lines of its reception came to; empty before that.
    std::vector<Cents> received{};
  };
  /// What only orders and receptions have.
  struct OrderState {
    std::int32_t status = 0;
    int requiredDay = -1;
  };

  const Party& pickSupplier(int day);
  [[nodiscard]] std::vector<DocumentLine> pickLines(const Party& supplier, int day);
  void buy(int day);
  void order(int day);
  void receive(const Awaited& awaited, int day);
  void invoice(const Awaited& awaited, int day);
  void await(int day, Awaited awaited);
  void returnGoods(const Document& purchase, int day);
  Document begin(std::int32_t type, const Party& supplier, int day);
  void finish(Document& document);
  void owe(Document& document);
  void makeAgreements(std::int32_t count);
  void runAgreements(int day);
  /// Writes a document, and notes the key of its first line; the others follow it.
  void write(Document& document, const Origin& origin, const OrderState& state);

  Ledger& ledger_;
  Stock& stock_;
  StockRoom& stockRoom_;
  const Rates& rates_;
  std::vector<Party> suppliers_;
  Quota quota_;
  Random random_;
  Numbering numbering_;
  Table documents_;
  Table lines_;
  Settlements settlements_;
  std::vector<std::vector<Awaited>> awaited_;  // by day
  std::vector<Agreement> agreements_;
  std::vector<Schedule> schedules_;
  std::int64_t bought_ = 0;
  std::int32_t lastLine_ = 0;
  std::int32_t orders_ = 0;
  std::int32_t receptions_ = 0;
};

}  // namespace QuorHost::Sample
