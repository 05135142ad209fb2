// The sample's payroll: employees, their pays every two weeks, and what is withheld and remitted.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "host/company/sample/ledger.h"
#include "host/company/sample/money.h"
#include "host/company/sample/random.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

class Payroll {
 public:
  static constexpr std::size_t kPayCodes = 10;

  /// Fills `Empl` and `PayCode`. The number of employees grows with the company's `scale`.
  Payroll(Store& store, Ledger& ledger, std::int32_t scale, Random random);

  /// What happens on a day.
  void day(int day);

 private:
  struct Employee {
    std::int32_t id;
    std::string name;
    Cents rate;  // for an hour
    std::int32_t segment;
    int firstDay;
    int lastDay;
  };
  /// Amounts by pay code, the one of key n at index n - 1.
  using Amounts = std::array<Cents, kPayCodes>;
  struct Hours {
    std::int32_t code;
    std::int32_t units;
    Cents rate;
    std::int32_t project;
  };

  void hire(Store& store, std::int32_t count);
  void pay(const Employee& employee, int day);
  void write(const Employee& employee, int day, const std::vector<Hours>& hours,
             const Amounts& amounts, bool canceled);
  void post(const Employee& employee, int day, const std::vector<Hours>& hours,
            const Amounts& amounts, int sign);
  void remit(int day);

  Ledger& ledger_;
  Random random_;
  std::vector<Employee> employees_;
  Table pays_;
  Table payLines_;
  Table remittances_;
  Table remittanceLines_;
  std::int32_t lastPay_ = 0;
  std::int32_t lastRemittance_ = 0;
  /// Deducted and contributed in this month, and in the month that is remitted next.
  Amounts thisMonth_{};
  Amounts lastMonth_{};
};

}  // namespace QuorHost::Sample
