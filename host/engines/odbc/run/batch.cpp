#include "host/engines/odbc/run/batch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "host/engines/odbc/driver/wide_text.h"
#include "host/engines/rows/refusal.h"
#include "platform/error.h"

namespace QuorHost::Odbc {
namespace {

using Rows::Cell;

/// Bytes of the rows that are fetched in one go, and their number at most.
constexpr std::size_t kBytes = std::size_t{256} << 10U;
constexpr std::size_t kMostRows = 256;
/// Units of the pieces in which a long text is fetched.
constexpr std::size_t kPiece = 4096;

template <class T>
T valueAt(const std::byte* place) {
  T value{};
  std::memcpy(&value, place, sizeof value);
  return value;
}

std::string dateText(const SQL_TIMESTAMP_STRUCT& date) {
  std::string text;
  const auto add = [&](const char* separator, unsigned number, std::size_t digits) {
    const std::string plain = std::to_string(number);
    text.append(separator).append(digits - std::min(digits, plain.size()), '0').append(plain);
  };
  if (date.year < 0) text = "-";
  add("", static_cast<unsigned>(std::abs(date.year)), 4);
  add("-", date.month, 2);
  add("-", date.day, 2);
  if (date.hour == 0 && date.minute == 0 && date.second == 0) return text;
  add(" ", date.hour, 2);
  add(":", date.minute, 2);
  add(":", date.second, 2);
  return text;
}

Cell realOf(double number, const std::string& column) {
  if (!std::isfinite(number)) {
    QuorDataLib::raise(
        QuorDataLib::ErrorNumber::Overflow,
        "Overflow: column " + column + " holds a number that is not finite, as no company can");
  }
  return {.kind = Cell::Kind::Real, .real = number};
}

}  // namespace

Batch::Batch(Statement& statement, std::vector<DrivenColumn> columns)
    : columns_(std::move(columns)),
      bound_(std::ranges::none_of(columns_,
                                  [](const DrivenColumn& column) { return column.width == 0; })),
      rows_(1),
      buffers_(columns_.size()),
      texts_(columns_.size()) {
  std::size_t rowBytes = 0;
  for (const DrivenColumn& column : columns_) rowBytes += column.width + sizeof(SQLLEN);
  if (bound_)
    rows_ = std::clamp<std::size_t>(kBytes / std::max<std::size_t>(rowBytes, 1), 1, kMostRows);
  states_.resize(rows_);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    buffers_[i].bytes.resize(columns_[i].width * rows_);
    buffers_[i].lengths.resize(rows_, SQL_NULL_DATA);
  }
  if (bound_) bind(statement);
}

void Batch::bind(Statement& statement) {
  statement.set(SQL_ATTR_ROW_ARRAY_SIZE, static_cast<SQLULEN>(rows_));
  statement.set(SQL_ATTR_ROWS_FETCHED_PTR, static_cast<SQLPOINTER>(&fetched_));
  statement.set(SQL_ATTR_ROW_STATUS_PTR, static_cast<SQLPOINTER>(states_.data()));
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    statement.check(SQLBindCol(statement.handle(), static_cast<SQLUSMALLINT>(i + 1),
                               columns_[i].form, buffers_[i].bytes.data(),
                               static_cast<SQLLEN>(columns_[i].width), buffers_[i].lengths.data()));
  }
}

void Batch::fetch(Statement& statement) {
  longTexts_.clear();
  fetched_ = 0;
  const SQLRETURN result = SQLFetch(statement.handle());
  statement.check(result);
  if (result == SQL_NO_DATA) {
    fetched_ = 0;
    ended_ = true;
    return;
  }
  if (!bound_) {
    fetched_ = 1;
    getValues(statement);
    return;
  }
  ended_ = fetched_ < rows_;
  requireRows(statement);
  getCutTexts(statement);
}

void Batch::requireRows(const Statement& statement) const {
  for (std::size_t row = 0; row < fetched_; ++row) {
    if (states_[row] != SQL_ROW_ERROR) continue;
    statement.session().check(SQL_ERROR, SQL_HANDLE_STMT, statement.handle(), statement.text());
  }
}

bool Batch::isCut(std::size_t row, std::size_t column) const {
  const SQLLEN length = buffers_[column].lengths[row];
  if (length == SQL_NULL_DATA) return false;
  return length == SQL_NO_TOTAL ||
         static_cast<std::size_t>(length) > columns_[column].width - sizeof(SQLWCHAR);
}

void Batch::getCutTexts(Statement& statement) {
  SQLUINTEGER abilities = 0;
  for (std::size_t row = 0; row < fetched_; ++row) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      if (columns_[i].form != SQL_C_WCHAR || !isCut(row, i)) continue;
      if (abilities == 0) {
        abilities = statement.session().number<SQLUINTEGER>(SQL_GETDATA_EXTENSIONS);
      }
      constexpr SQLUINTEGER kAgain = SQL_GD_BLOCK | SQL_GD_BOUND;
      if ((abilities & kAgain) != kAgain) {
        Rows::refuseStatement("Column " + columns_[i].name +
                              " holds a text that is longer than the driver says it can be: cast "
                              "it to a longer type" +
                              Rows::inStatement(statement.text()));
      }
      statement.check(SQLSetPos(statement.handle(), static_cast<SQLSETPOSIROW>(row + 1),
                                SQL_POSITION, SQL_LOCK_NO_CHANGE));
      longTexts_[{row, i}] =
          wholeText(statement, static_cast<SQLUSMALLINT>(i + 1), buffers_[i].lengths[row]);
    }
  }
}

void Batch::getValues(Statement& statement) {
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const auto number = static_cast<SQLUSMALLINT>(i + 1);
    SQLLEN& length = buffers_[i].lengths[0];
    if (columns_[i].form == SQL_C_WCHAR) {
      longTexts_[{0, i}] = wholeText(statement, number, length);
    } else {
      statement.check(SQLGetData(statement.handle(), number, columns_[i].form,
                                 buffers_[i].bytes.data(), static_cast<SQLLEN>(columns_[i].width),
                                 &length));
    }
  }
}

std::string Batch::wholeText(Statement& statement, SQLUSMALLINT number, SQLLEN& length) {
  std::vector<SQLWCHAR> units;
  std::array<SQLWCHAR, kPiece> piece{};
  for (;;) {
    SQLLEN left = 0;
    const SQLRETURN result = SQLGetData(statement.handle(), number, SQL_C_WCHAR, piece.data(),
                                        static_cast<SQLLEN>(sizeof piece), &left);
    statement.check(result);
    if (result == SQL_NO_DATA) break;
    if (left == SQL_NULL_DATA) {
      length = SQL_NULL_DATA;
      return {};
    }
    // All but the unit that ends each piece.
    const bool more =
        left == SQL_NO_TOTAL || static_cast<std::size_t>(left) > sizeof piece - sizeof(SQLWCHAR);
    const std::size_t count = more ? kPiece - 1 : static_cast<std::size_t>(left) / sizeof(SQLWCHAR);
    units.insert(units.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
    if (!more) break;
  }
  length = 0;
  return narrow(units.data(), units.size());
}

Cell Batch::cell(std::size_t row, std::size_t column) const {
  const DrivenColumn& shape = columns_[column];
  const SQLLEN length = buffers_[column].lengths[row];
  if (length == SQL_NULL_DATA) return {};
  const std::byte* const place = buffers_[column].bytes.data() + row * shape.width;
  std::string& text = texts_[column];
  const auto whole = [](std::int64_t number) {
    return Cell{.kind = Cell::Kind::Integer, .integer = number};
  };
  switch (shape.form) {
    case SQL_C_BIT:
      return whole(valueAt<unsigned char>(place) != 0 ? 1 : 0);
    case SQL_C_SLONG:
      return whole(valueAt<SQLINTEGER>(place));
    case SQL_C_SBIGINT:
      return whole(valueAt<SQLBIGINT>(place));
    case SQL_C_DOUBLE:
      return realOf(valueAt<double>(place), shape.name);
    case SQL_C_CHAR: {
      const auto size =
          std::min(static_cast<std::size_t>(std::max<SQLLEN>(length, 0)), shape.width);
      text.assign(reinterpret_cast<const char*>(place), size);
      return Rows::moneyOf(text);
    }
    case SQL_C_TYPE_TIMESTAMP:
      text = dateText(valueAt<SQL_TIMESTAMP_STRUCT>(place));
      break;
    default:
      if (const auto found = longTexts_.find({row, column}); found != longTexts_.end()) {
        text = found->second;
        break;
      }
      text.clear();
      appendNarrow(reinterpret_cast<const SQLWCHAR*>(place),
                   static_cast<std::size_t>(length) / sizeof(SQLWCHAR), text);
  }
  return {.kind = Cell::Kind::Text, .text = text};
}

}  // namespace QuorHost::Odbc
