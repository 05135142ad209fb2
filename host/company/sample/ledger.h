// The sample's general ledger.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/company/sample/accounts.h"
#include "host/company/sample/money.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

/// Posts transactions to `GLDet` one after the other, each in balance.
class Ledger {
 public:
  explicit Ledger(Store& store);

  /// What all lines of a transaction share.
  struct Heading {
    int day = 0;
    std::string_view source;
    std::int32_t key = 0;
    std::string_view reference;
    std::string_view description;
    std::int32_t currency = kHomeCurrency;
    std::int32_t project = 0;
    std::int32_t segment = 0;
  };

  /// Begins a transaction.
  void begin(const Heading& heading);

  /// Posts a line of `home` (debits positive) and `foreign`, in the transaction's currency, unless
  /// both are zero. Only accounts of income, expense and work in progress get the
  /// transaction's project.
  void line(std::int32_t account, Cents home, Cents foreign);

  /// Ends a transaction; raises an internal error when it does not balance.
  void end();

  /// A journal entry of two lines in home currency that moves `amount` from one account to another.
  void transfer(int day, std::string_view description, std::int32_t from, std::int32_t to,
                Cents amount);

  /// The balance of an account in home currency.
  [[nodiscard]] Cents balance(std::int32_t account) const {
    return balances_.at(static_cast<std::size_t>(account));
  }

 private:
  Table lines_;
  Heading heading_;
  std::int32_t sequence_ = 0;
  std::int32_t journal_ = 0;
  Cents open_ = 0;
  std::vector<Cents> balances_;
};

}  // namespace QuorHost::Sample
