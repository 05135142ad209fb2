#include "host/company/sample/stock/stock_trade.h"

#include "host/company/sample/stock/items.h"
#include "platform/values/rounding.h"

namespace QuorHost::Sample {

namespace {

namespace MovementType = QuorDataLib::MovementType;
using QuorDataLib::roundedProduct;

constexpr int kQuantityDecimals = 4;

StockDocument start(const Document& document, std::int32_t type, std::int32_t account,
                    std::string_view source) {
  return {.type = type,
          .key = document.id,
          .ledgerSequence = document.ledgerSequence,
          .account = account,
          .segment = document.party->region->segment,
          .source = source,
          .reference = document.number,
          .description = document.party->name};
}

}  // namespace

StockDocument saleOf(const Document& document) {
  StockDocument stock = start(document, MovementType::kSale, Acct::kCostOfSales, "INV");
  const std::int32_t warehouse = warehouseOf(stock.segment);
  std::int32_t key = document.firstLine;
  for (const DocumentLine& line : document.lines) {
    const auto take = [&](const SampleItem& item, Currency saleUnits) {
      stock.movements.push_back(
          {.item = item.id,
           .quantity = -roundedProduct(saleUnits, item.stockUnits(), kQuantityDecimals),
           .line = key,
           .warehouse = warehouse});
    };
    const Currency sold = Currency::fromInteger(line.quantity);
    if (const SampleItem* const item = stockedItem(line.item)) {
      take(*item, sold);
    } else {
      for (const SampleComponent& component : componentsOf(line.item)) {
        const SampleItem* const part = stockedItem(component.item);
        if (part != nullptr)
          take(*part, roundedProduct(sold, component.quantity, kQuantityDecimals));
      }
    }
    ++key;
  }
  return stock;
}

StockDocument purchaseOf(const Document& document, const std::vector<Cents>& amounts) {
  const bool invoiced = document.type != DocType::kReception;
  StockDocument stock =
      start(document, MovementType::kPurchase, Acct::kGoodsReceived, invoiced ? "PUR" : "REC");
  for (std::size_t i = 0; i < amounts.size(); ++i) {
    const DocumentLine& line = document.lines[i];
    stock.movements.push_back({.item = line.item,
                               .quantity = Currency::fromInteger(line.quantity),
                               .line = document.firstLine + static_cast<std::int32_t>(i),
                               .project = line.project,
                               .amount = amounts[i],
                               .invoiced = invoiced});
  }
  return stock;
}

StockDocument invoiceOf(const Document& document, const std::vector<Cents>& received) {
  StockDocument stock = purchaseOf(document, lineAmountsHome(document));
  std::vector<Movement> movements;
  for (std::size_t i = 0; i < received.size(); ++i) {
    Movement back = stock.movements[i];
    back.quantity = -back.quantity;
    back.amount = -received[i];
    back.invoiced = false;
    back.adjustsReception = true;
    movements.push_back(back);
    movements.push_back(stock.movements[i]);
  }
  stock.movements = std::move(movements);
  return stock;
}

}  // namespace QuorHost::Sample
