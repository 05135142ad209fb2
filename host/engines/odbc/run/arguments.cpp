#include "host/engines/odbc/run/arguments.h"

#include <algorithm>

#include "host/engines/rows/passed_value.h"

namespace QuorHost::Odbc {
namespace {

using QuorDataLib::ValueType;

// Money as every server's money can be: 15 digits, a point and four decimals.
constexpr SQLULEN kMoneyDigits = 19;
constexpr SQLSMALLINT kMoneyDecimals = 4;

/// "2024-12-31 23:59:59" has so many characters.
constexpr SQLULEN kDateSize = 19;

/// Longer texts go as what drivers keep for long ones.
constexpr std::size_t kLongestPlain = 4000;

}  // namespace

Argument::Argument(const QuorDataLib::Value& value) {
  switch (value.type()) {
    case ValueType::Empty:
    case ValueType::Null:
      break;
    case ValueType::Boolean:
      bit_ = value.toBoolean() ? 1 : 0;
      show(SQL_C_BIT, SQL_BIT, &bit_, sizeof bit_);
      break;
    case ValueType::Integer:
      integer_ = value.toInteger();
      show(SQL_C_SSHORT, SQL_SMALLINT, &integer_, sizeof integer_);
      break;
    case ValueType::Long:
      long_ = value.toLong();
      show(SQL_C_SLONG, SQL_INTEGER, &long_, sizeof long_);
      break;
    case ValueType::Double:
      double_ = value.toDouble();
      Rows::requireFinite(double_);
      show(SQL_C_DOUBLE, SQL_DOUBLE, &double_, sizeof double_);
      break;
    case ValueType::Currency:
      amount_ = value.toCurrency().toText(kMoneyDecimals);
      show(SQL_C_CHAR, SQL_DECIMAL, amount_.data(), static_cast<SQLLEN>(amount_.size()));
      size_ = kMoneyDigits;
      decimals_ = kMoneyDecimals;
      break;
    case ValueType::Date:
      showDate(value.toDate());
      break;
    default:
      showText(value.toText());
      break;
  }
}

void Argument::show(SQLSMALLINT type, SQLSMALLINT sqlType, SQLPOINTER data, SQLLEN bytes) {
  type_ = type;
  sqlType_ = sqlType;
  data_ = data;
  bytes_ = bytes;
}

void Argument::showDate(QuorDataLib::Date date) {
  const QuorDataLib::Date::Civil civil = date.civil();
  date_ = {.year = static_cast<SQLSMALLINT>(civil.year),
           .month = static_cast<SQLUSMALLINT>(civil.month),
           .day = static_cast<SQLUSMALLINT>(civil.day),
           .hour = static_cast<SQLUSMALLINT>(civil.hour),
           .minute = static_cast<SQLUSMALLINT>(civil.minute),
           .second = static_cast<SQLUSMALLINT>(civil.second),
           .fraction = 0};
  show(SQL_C_TYPE_TIMESTAMP, SQL_TYPE_TIMESTAMP, &date_, sizeof date_);
  size_ = kDateSize;
}

void Argument::showText(const std::string& text) {
  Rows::requireStorable(text);
  text_ = WideText(text);
  const bool isLong = text_.size() > kLongestPlain;
  show(SQL_C_WCHAR, isLong ? SQL_WLONGVARCHAR : SQL_WVARCHAR, text_.data(),
       static_cast<SQLLEN>(text_.size() * sizeof(SQLWCHAR)));
  size_ = std::max<SQLULEN>(text_.size(), 1);
}

SQLRETURN Argument::bind(SQLHSTMT statement, SQLUSMALLINT marker) {
  return SQLBindParameter(statement, marker, SQL_PARAM_INPUT, type_, sqlType_, size_, decimals_,
                          data_, std::max<SQLLEN>(bytes_, 0), &bytes_);
}

std::vector<Argument> argumentsOf(const std::vector<QuorDataLib::Value>& values) {
  std::vector<Argument> arguments;
  arguments.reserve(values.size());
  Rows::giveMarkers(values.size(), {}, values,
                    [&](std::size_t, const auto& value) { arguments.emplace_back(value); });
  return arguments;
}

}  // namespace QuorHost::Odbc
