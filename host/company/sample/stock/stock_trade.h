// What documents of the trade move in stock.
#pragma once

#include <vector>

#include "host/company/sample/stock/stock.h"
#include "host/company/sample/trade/document.h"

namespace QuorHost::Sample {

/// What a posted document of a customer takes out of stock, or brings back: goods by themselves,
/// kits as their components, services not at all.
StockDocument saleOf(const Document& document);

/// What a supplier's document brings: a posted purchase or credit note, or a reception, which is
/// posted with its stock. `amounts` are what its lines come to in home currency.
StockDocument purchaseOf(const Document& document, const std::vector<Cents>& amounts);

/// A posted purchase that invoices a reception whose lines came to `received`: they are taken back
/// and brought again at the invoice's cost.
StockDocument invoiceOf(const Document& document, const std::vector<Cents>& received);

}  // namespace QuorHost::Sample
