// Rows as CSV (RFC 4180): a header row, CR LF at the end of each line, fields quoted where they
// need it. Null is an empty field, the empty text a quoted one, as `company import` reads them
// back.
#include "cli/print/row_printer.h"
#include "cli/print/value_text.h"
#include "host/company/csv/field_text.h"

namespace QuorCli {
namespace {

using QuorDataLib::Value;
using QuorDataLib::ValueType;

class CsvPrinter : public RowPrinter {
 public:
  explicit CsvPrinter(std::ostream& out) : out_(out) {}

  void begin(std::vector<ColumnHead> columns) override {
    if (columns.empty()) return;  // a dry run
    for (const ColumnHead& column : columns) {
      if (!line_.empty()) line_ += ',';
      QuorHost::Csv::appendText(line_, column.name);
    }
    writeLine();
  }

  void row(std::span<const Value> values) override {
    bool first = true;
    for (const Value& value : values) {
      if (!first) line_ += ',';
      first = false;
      if (value.type() == ValueType::Text) {
        QuorHost::Csv::appendText(line_, value.text());
      } else {
        appendPlain(line_, value);
      }
    }
    writeLine();
  }

  void end(bool /*complete*/, std::span<const NamedValue> /*outputs*/) override {}

 private:
  void writeLine() {
    line_ += "\r\n";
    out_.write(line_.data(), static_cast<std::streamsize>(line_.size()));
    line_.clear();
  }

  std::ostream& out_;
  std::string line_;
};

}  // namespace

std::unique_ptr<RowPrinter> makeCsvPrinter(std::ostream& out) {
  return std::make_unique<CsvPrinter>(out);
}

}  // namespace QuorCli
