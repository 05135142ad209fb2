#include <ostream>

#include "host/company/company.h"
#include "host/company/csv/field_text.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

constexpr std::size_t kFlushSize = std::size_t{1} << 16U;

void write(std::ostream& output, std::string& text) {
  output.write(text.data(), static_cast<std::streamsize>(text.size()));
  text.clear();
  if (!output) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument, "The CSV cannot be written");
  }
}

}  // namespace

std::int64_t exportCsv(Store& store, const std::string& relation, std::ostream& csv) {
  const Sql::Relation* const source = store.catalogue().find(relation);
  if (source == nullptr) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "The company has no table or view " + relation);
  }
  const QuorDataLib::Ref<QuorDataLib::Recordset> rows =
      store.connect(Sql::Dialect::Server)
          ->OpenRecordset("SELECT * FROM [" + source->name + "]", 4, 0, {}, 0);
  const std::int32_t columns = rows->FieldCount();
  std::string text;
  for (std::int32_t i = 0; i < columns; ++i) {
    if (i > 0) text += ',';
    Csv::appendText(text, rows->FieldName(i));
  }
  text += "\r\n";
  std::int64_t count = 0;
  for (; !rows->AtEnd(); rows->MoveNext()) {
    for (std::int32_t i = 0; i < columns; ++i) {
      if (i > 0) text += ',';
      Csv::appendField(text, rows->Field(i));
    }
    text += "\r\n";
    ++count;
    if (text.size() >= kFlushSize) write(csv, text);
  }
  write(csv, text);
  csv.flush();
  return count;
}

}  // namespace QuorHost
