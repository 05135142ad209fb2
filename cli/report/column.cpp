#include "cli/report/column.h"

#include <charconv>
#include <iterator>

#include "cli/print/amount_text.h"
#include "cli/print/display_text.h"
#include "platform/values/currency.h"

namespace QuorCli {

using QuorDataLib::Currency;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

ValueType typeOf(CellKind kind) noexcept {
  switch (kind) {
    case CellKind::Code:
    case CellKind::Name:
      return ValueType::Text;
    case CellKind::Date:
      return ValueType::Date;
    case CellKind::Number:
    case CellKind::Key:
      return ValueType::Long;
    case CellKind::Money:
    case CellKind::MoneyPart:
    case CellKind::Quantity:
      return ValueType::Currency;
    case CellKind::Percent:
      return ValueType::Double;
  }
  return ValueType::Empty;
}

bool isFigure(CellKind kind) noexcept {
  return kind == CellKind::Money || kind == CellKind::MoneyPart || kind == CellKind::Quantity ||
         kind == CellKind::Percent;
}

int decimalsOf(const Value& quantity) {
  if (quantity.isNull()) return 0;
  std::int64_t units = quantity.toCurrency().units() % Currency::kUnitsPerOne;
  int decimals = units == 0 ? 0 : 4;
  for (; units != 0 && units % 10 == 0; units /= 10) --decimals;
  return decimals;
}

std::string cellText(CellKind kind, const Value& value, int decimals) {
  if (value.isNull()) return {};
  switch (kind) {
    case CellKind::Code:
    case CellKind::Name:
      return visible(value.toText());
    case CellKind::Date:
      return value.toDate().empty() ? std::string() : value.toDate().dateOnly().toText();
    case CellKind::Number:
      return grouped(value.toLong());
    case CellKind::Key:
      return std::to_string(value.toLong());
    case CellKind::Money:
      return amountText(value.toCurrency());
    case CellKind::MoneyPart:
      return value.toCurrency().isZero() ? std::string() : amountText(value.toCurrency());
    case CellKind::Quantity:
      return quantityText(value.toCurrency(), decimals);
    case CellKind::Percent: {
      char text[400];  // enough for the longest fixed form of a double
      const auto [end, error] = std::to_chars(std::begin(text), std::end(text), value.toDouble(),
                                              std::chars_format::fixed, 1);
      return std::string(std::begin(text), end) + "%";
    }
  }
  return {};
}

std::string totalText(CellKind kind, const Value& value, int decimals) {
  if (kind == CellKind::MoneyPart && !value.isNull() && value.toCurrency().isZero()) return "- ";
  return cellText(kind, value, decimals);
}

}  // namespace QuorCli
