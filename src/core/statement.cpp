#include "core/statement.h"

#include <algorithm>
#include <utility>

#include "platform/error.h"

namespace QuorAccQueries {

Statement& Statement::text(std::string_view piece) {
  markers_ += static_cast<std::size_t>(std::ranges::count(piece, '?'));
  return fragment(piece);
}

Statement& Statement::fragment(std::string_view callersText) {
  sql_.append(callersText);
  return *this;
}

Statement& Statement::number(std::int32_t value) { return fragment(std::to_string(value)); }

Statement& Statement::bind(QuorDataLib::Value value) {
  values_.push_back(std::move(value));
  return *this;
}

void Statement::checkComplete() const {
  if (markers_ == values_.size()) return;
  QuorDataLib::raise(QuorDataLib::ErrorNumber::InternalError,
                     "The statement has " + std::to_string(markers_) + " markers and " +
                         std::to_string(values_.size()) + " values");
}

void Conditions::add(std::string_view condition, QuorDataLib::Value value) {
  statement_.text(any_ ? " AND " : " WHERE ").text(condition).bind(std::move(value));
  any_ = true;
}

}  // namespace QuorAccQueries
