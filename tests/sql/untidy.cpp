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

  using Add = std::function<void(const Relation& table, const Values& row)>;

  void fill(const Catalogue& catalogue, const Add& add) {
    for (const Relation& table : catalogue.relations()) {
      if (table.kind != Relation::Kind::Table) continue;
      for (int row = 1; row <= kRows; ++row) {
        Values values;
        for (const Column& column : table.columns) values.push_back(valueOf(column, row));
        add(table, values);
      }
    }
  }

 private:
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

void untidyRows(const Catalogue& catalogue, unsigned seed,
                const std::function<void(const Relation& table, const Values& row)>& add) {
  Untidy(seed).fill(catalogue, add);
}

void fillUntidily(Database& database, unsigned seed) {
  const Relation* filled = nullptr;
  Translation insert;
  untidyRows(database.catalogue(), seed, [&](const Relation& table, const Values& row) {
    if (&table != filled) {
      filled = &table;
      std::string text = "INSERT INTO " + table.name + " VALUES (";
      for (std::size_t i = 0; i < table.columns.size(); ++i) text += i == 0 ? "?" : ", ?";
      insert = database.translate(text + ")", kServer);
    }
    database.rows(insert, row);
  });
}

}  // namespace QuorHost::Sql::Testing
