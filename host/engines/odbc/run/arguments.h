// Values on their way to a driver.
#pragma once

#include <string>
#include <vector>

#include "host/engines/odbc/driver/api.h"
#include "host/engines/odbc/driver/wide_text.h"
#include "platform/values/value.h"

namespace QuorHost::Odbc {

/// A value for a marker in the form in which drivers read it. It must stay where it is as long as
/// the statement runs.
class Argument {
 public:
  /// Takes the value as it is, with its own type; Empty is null. Raises 5 or 6 for what no company
  /// can hold.
  explicit Argument(const QuorDataLib::Value& value);

  /// Binds it to the marker of that number, from 1.
  SQLRETURN bind(SQLHSTMT statement, SQLUSMALLINT marker);

 private:
  /// Lets the driver read `data`.
  void show(SQLSMALLINT type, SQLSMALLINT sqlType, SQLPOINTER data, SQLLEN bytes);
  void showText(const std::string& text);
  void showDate(QuorDataLib::Date date);

  SQLSMALLINT type_ = SQL_C_WCHAR;
  SQLSMALLINT sqlType_ = SQL_WVARCHAR;
  SQLULEN size_ = 1;  // of the column that it would fit
  SQLSMALLINT decimals_ = 0;
  SQLPOINTER data_ = nullptr;
  SQLLEN bytes_ = SQL_NULL_DATA;

  unsigned char bit_ = 0;
  SQLSMALLINT integer_ = 0;
  SQLINTEGER long_ = 0;
  double double_ = 0;
  SQL_TIMESTAMP_STRUCT date_{};
  std::string amount_;
  WideText text_{{}};
};

/// The values of a statement's markers. An error names the marker.
[[nodiscard]] std::vector<Argument> argumentsOf(const std::vector<QuorDataLib::Value>& values);

}  // namespace QuorHost::Odbc
