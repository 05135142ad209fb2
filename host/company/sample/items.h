// What the sample company buys and sells.
#pragma once

#include <array>
#include <cstdint>

#include "host/company/sample/money.h"
#include "host/company/sample/random.h"
#include "host/engines/store.h"

namespace QuorHost::Sample {

struct SampleItem {
  std::int32_t id;
  const char* code;
  const char* description;
  const char* unit;
  Cents price;
  Cents cost;
  /// Most units on one line of a sale.
  std::int32_t mostSold;
};

/// Fills `Item`.
void writeItems(Store& store);

const SampleItem& pickGoods(Random& random);
/// Services that the company renders by the hour.
const SampleItem& pickService(Random& random);
/// Services that it buys by the hour for its projects.
const SampleItem& pickSubcontract(Random& random);

}  // namespace QuorHost::Sample
