#include "platform/stock_costs.h"

#include "platform/values/rounding.h"

namespace QuorDataLib {

Currency movingAverage(Currency average, Currency quantityBefore, Currency quantity,
                       Currency unitCost) {
  const Currency quantityAfter = quantityBefore + quantity;
  if (quantityBefore < Currency() || quantityAfter.isZero()) {
    return quantityAfter < Currency() ? average : unitCost;
  }
  const Currency valueBefore = roundedProduct(average, quantityBefore, 4);
  const Currency value = roundedProduct(unitCost, quantity, 4);
  return roundedToCurrency((valueBefore + value).toDouble() / quantityAfter.toDouble());
}

}  // namespace QuorDataLib
