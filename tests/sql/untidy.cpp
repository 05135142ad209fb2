#include "sql/untidy.h"

#include <random>
#include <string>

#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace QuorHost::Sql::Testing {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Date;
using QuorDataLib::Value;

constexpr int kRows = 60;

class Untidy {
 public:
  explicit Untidy(unsigned seed) : random_(seed) {}

  void fill(Database& database) {
    for (const Relation& table : database.catalogue().relations()) {
      if (table.kind == Relation::Kind::Table) fill(database, table);
    }
  }

 private:
  void fill(Database& database, const Relation& table) {
    std::string insert = "INSERT INTO " + table.name + " VALUES (";
    for (std::size_t i = 0; i < table.columns.size(); ++i) insert += i == 0 ? "?" : ", ?";
    const Translation translation = database.translate(insert + ")", kServer);
    for (int row = 1; row <= kRows; ++row) {
      Values values;
      for (const Column& column : table.columns) values.push_back(valueOf(column, row));
      database.rows(translation, values);
    }
  }

  Value valueOf(const Column& column, int row) {
    if (column.primaryKey) return Value(row);
    // Numbers of accounts are unique.
    if (column.name == "GLAcctId") return Value(std::to_string(row));
    if (column.nullable && below(8) == 0) return {};
    switch (column.type) {
      case Type::Boolean:
        return Value(below(2) == 1);
      case Type::Integer:
      case Type::Long: {
        // The keys that the statements ask for, and some that lead nowhere.
        constexpr int kKeys[] = {5, 7, 42};
        constexpr int kNumbers[] = {0, 1, 2, 3, 4, 51, 99};
        if (!column.name.starts_with("Ex")) return Value(kNumbers[below(7)]);
        return Value(below(3) == 0 ? kKeys[below(3)] : 1 + below(kRows + 5));
      }
      case Type::Double:
        return Value(0.25 * below(6));
      case Type::Currency:
        return Value(Currency::fromUnits(std::int64_t{1'000} * (below(7) - 2)));
      case Type::Date:
        return Value(Date::of(2024, 1, 1 + below(28)));
      default:
        return Value(std::string(1, static_cast<char>((below(2) == 0 ? 'A' : 'a') + below(4))));
    }
  }

  int below(int count) { return std::uniform_int_distribution<>(0, count - 1)(random_); }

  std::mt19937 random_;
};

}  // namespace

void fillUntidily(Database& database, unsigned seed) { Untidy(seed).fill(database); }

}  // namespace QuorHost::Sql::Testing
