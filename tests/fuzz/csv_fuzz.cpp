// Any bytes as CSV: they are refused with a place, or read; and what a column takes of a field is
// written so that it reads back to the same value.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "host/company/csv/field_text.h"
#include "host/company/csv/reader.h"
#include "platform/error.h"

namespace {

namespace Csv = QuorHost::Csv;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Value;
using QuorHost::Sql::Column;
using QuorHost::Sql::Type;

void require(bool condition) {
  if (!condition) std::abort();
}

void readBack(const Column& column, const Value& value) {
  std::string line;
  Csv::appendField(line, value);
  // A null alone on its line would be an empty line.
  std::istringstream text(line + ",\r\n");
  Csv::Reader reader(text);
  std::vector<Csv::Field> fields;
  require(reader.next(fields) && fields.size() == 2);
  require(Csv::fieldValue(column, fields[0]) == value);
}

void tryTypes(const Csv::Field& field) {
  for (const Type type : {Type::Boolean, Type::Integer, Type::Long, Type::Double, Type::Currency,
                          Type::Date, Type::Text}) {
    const Column column{.name = "Column", .type = type, .size = type == Type::Text ? 40 : 0};
    try {
      readBack(column, Csv::fieldValue(column, field));
    } catch (const Error& error) {
      require(error.is(ErrorNumber::TypeMismatch));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream text(std::string(reinterpret_cast<const char*>(data), size));
  try {
    Csv::Reader reader(text);
    for (std::vector<Csv::Field> fields; reader.next(fields);) {
      for (const Csv::Field& field : fields) tryTypes(field);
    }
  } catch (const Error& error) {
    require(error.is(ErrorNumber::InvalidArgument) &&
            error.description().find("Line ") != std::string::npos);
  }
  return 0;
}
