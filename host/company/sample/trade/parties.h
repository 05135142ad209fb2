// The sample's customers and suppliers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/company/sample/directory.h"
#include "host/company/sample/money.h"
#include "host/company/sample/random.h"
#include "host/engines/store.h"

namespace QuorHost::Sample {

/// How a party pays, or is paid.
struct Habits {
  /// The term that documents have unless another one is agreed on.
  std::int32_t term = 1;
  bool takesDiscounts = false;
  /// Days after the due date on which documents are paid at the earliest.
  int lateness = 0;
  /// Payments are made every so many days, on the days whose number leaves `phase`.
  int rhythm = 7;
  int phase = 0;
  const char* method = "CHQ";
  /// Returned cheques to come.
  int returnedCheques = 0;
};

/// What the trade needs to know of a customer or supplier.
struct Party {
  std::int32_t id = 0;
  std::string name;
  /// 0 for a party without a currency, who trades in home currency.
  std::int32_t currencyId = 0;
  const Region* region = nullptr;
  Habits habits;
  /// Last day of business with the party.
  int activeUntil = 0;

  [[nodiscard]] bool paysOn(int day) const { return day % habits.rhythm == habits.phase; }
  [[nodiscard]] bool foreign() const { return currencyId != 0 && currencyId != kHomeCurrency; }
};

/// Fills `Cust` and returns the customers, in the order of their keys.
std::vector<Party> writeCustomers(Store& store, Random random, std::int32_t count);

/// Fills `Supp` and returns the suppliers.
std::vector<Party> writeSuppliers(Store& store, Random random, std::int32_t count);

}  // namespace QuorHost::Sample
