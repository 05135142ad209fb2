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
///
/// The bank accounts are reconciled with the bank every month, for the last time a month before the
/// sample's last day. What the bank had by then is conciliated; what is older and was still on its
/// way, or was never cashed, is unconciliated; what came later is neither.
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

  /// Begins a transaction, or goes on with one that was ended, by its sequence number.
  void begin(const Heading& heading, std::int32_t sequence = 0);

  /// The number of the transaction that was begun last.
  [[nodiscard]] std::int32_t sequence() const { return current_; }

  /// Lines from here on are in another currency, or belong to another project.
  void inCurrency(std::int32_t currency) { heading_.currency = currency; }
  void onProject(std::int32_t project) { heading_.project = project; }

  /// Posts a line of `home` (debits positive) and `foreign`, in the transaction's currency, unless
  /// both are zero. Only accounts of income, expense and work in progress get the
  /// transaction's project.
  void line(std::int32_t account, Cents home, Cents foreign);
  /// The same in home currency.
  void line(std::int32_t account, Cents amount) { line(account, amount, amount); }

  /// Ends a transaction; raises an internal error when it does not balance.
  void end();

  /// The balance of an account in home currency.
  [[nodiscard]] Cents balance(std::int32_t account) const {
    return balances_.at(static_cast<std::size_t>(account));
  }

 private:
  enum class Bank : std::uint8_t { NotYet, Conciliated, Unconciliated };
  [[nodiscard]] Bank reconciled(std::int32_t account, bool deposit) const;

  Table lines_;
  Heading heading_;
  std::int32_t sequence_ = 0;
  std::int32_t current_ = 0;
  Cents open_ = 0;
  std::vector<Cents> balances_;
};

}  // namespace QuorHost::Sample
