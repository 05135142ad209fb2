// Any text as a criterion of `Find`: it is refused, or it means the same when it is written anew.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "host/engines/rows/criterion.h"
#include "platform/error.h"

namespace {

using namespace QuorHost;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using Sql::Type;

void require(bool condition) {
  if (!condition) std::abort();
}

std::string written(const Rows::Criterion& criterion) {
  std::string text = "[" + criterion.column + "] =\t";
  switch (criterion.kind) {
    case Rows::Criterion::Kind::Number:
      return text + criterion.value;
    case Rows::Criterion::Kind::Date:
      return text + "#" + criterion.value + "#";
    case Rows::Criterion::Kind::Text:
      break;
  }
  text += '\'';
  for (const char c : criterion.value) text.append(c == '\'' ? 2 : 1, c);
  return text + "'";
}

std::optional<Rows::FindKey> keyIn(const Rows::Criterion& criterion, Type type) {
  try {
    return Rows::keyOf(criterion, type);
  } catch (const Error& error) {
    require(error.is(ErrorNumber::InvalidArgument));
    return std::nullopt;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::optional<Rows::Criterion> criterion;
  try {
    criterion = Rows::parseCriterion({reinterpret_cast<const char*>(data), size});
  } catch (const Error& error) {
    require(error.is(ErrorNumber::InvalidArgument));
    return 0;
  }
  const Rows::Criterion again = Rows::parseCriterion(written(*criterion));
  require(again.column == criterion->column && again.kind == criterion->kind &&
          again.value == criterion->value);
  for (const Type type : {Type::Boolean, Type::Integer, Type::Long, Type::Double, Type::Currency,
                          Type::Date, Type::Text, Type::Unknown}) {
    require(keyIn(again, type) == keyIn(*criterion, type));
  }
  return 0;
}
