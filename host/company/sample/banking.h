// The sample's money beside the trade: journal entries, bank deposits and transfers, remittances of
// sales taxes.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "host/company/sample/ledger.h"
#include "host/company/sample/money.h"
#include "host/company/sample/plans/schedules.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

/// Writes journal entries and posts them.
class Journal {
 public:
  Journal(Store& store, Ledger& ledger);

  struct Line {
    std::int32_t account;
    Cents amount;  // debits positive
  };

  /// Writes an entry whose lines add up to zero, in home currency. `sales` is what it adds to the
  /// sales of its day. Returns the entry's key.
  std::int32_t enter(int day, std::string_view description, std::initializer_list<Line> lines,
                     Cents sales = 0);

 private:
  Ledger& ledger_;
  Table entries_;
  Table lines_;
  std::int32_t last_ = 0;
};

class Banking {
 public:
  /// Amounts grow with the company's `scale`. `PmtMeth` and `TaxCode` are filled at once.
  Banking(Store& store, Ledger& ledger, const Rates& rates, std::int32_t scale);

  /// What happens on a day.
  void day(int day);

  /// The schedules of the entries that are made every month's end.
  [[nodiscard]] const std::vector<Schedule>& schedules() const noexcept { return schedules_; }

 private:
  void found();
  void closeMonth(int day);
  void deposit(int day);
  void transfer(int day, const SampleCurrency& from);
  void remitTaxes(int day);
  void remit(int day, std::string_view authority, std::initializer_list<std::int32_t> accounts);

  Ledger& ledger_;
  const Rates& rates_;
  Cents scale_;
  Journal journal_;
  Table deposits_;
  Table depositLines_;
  Table transfers_;
  Table taxes_;
  std::vector<Schedule> schedules_;
  std::int32_t lastDeposit_ = 0;
  std::int32_t lastTransfer_ = 0;
  std::int32_t lastTax_ = 0;
};

}  // namespace QuorHost::Sample
