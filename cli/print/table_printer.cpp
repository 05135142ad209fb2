// Rows as a table for people: columns as wide as the first rows need, numbers to the right.
#include <algorithm>

#include "cli/print/display_text.h"
#include "cli/print/row_printer.h"
#include "cli/print/value_text.h"

namespace QuorCli {
namespace {

using QuorDataLib::Value;
using QuorDataLib::ValueType;

/// Rows that are kept back to decide how wide the columns are. A later, wider value pushes its line
/// out rather than being cut.
constexpr std::size_t kSampleRows = 500;
constexpr std::string_view kGap = "  ";
bool isNumber(ValueType type) {
  return type == ValueType::Integer || type == ValueType::Long || type == ValueType::Double ||
         type == ValueType::Currency;
}

constexpr std::string_view kNull = "null";

class TablePrinter : public RowPrinter {
 public:
  explicit TablePrinter(Console& console) : console_(console) {}

  void begin(std::vector<ColumnHead> columns) override {
    for (const ColumnHead& column : columns) {
      std::string title = visible(column.name);
      const std::size_t width = displayWidth(title);
      columns_.push_back({std::move(title), width, isNumber(column.type)});
    }
  }

  void row(std::span<const Value> values) override {
    ++count_;
    if (printing_) {
      for (std::size_t index = 0; index < values.size(); ++index) cell(index, values[index]);
      endLine();
      return;
    }
    for (std::size_t index = 0; index < values.size(); ++index) {
      Column& column = columns_[index];
      column.width = std::max(column.width, displayWidth(tableText(values[index])));
    }
    sample_.emplace_back(values.begin(), values.end());
    if (sample_.size() == kSampleRows) printSample();
  }

  void end(bool complete, std::span<const NamedValue> outputs) override {
    if (!printing_) printSample();
    line_ = complete ? "(" : "(first ";
    line_ += std::to_string(count_) + (count_ == 1 ? " row)" : " rows)");
    console_.out << console_.faint(line_) << '\n';
    for (const NamedValue& output : outputs) {
      console_.out << output.name << " = " << tableText(output.value) << '\n';
    }
  }

 private:
  struct Column {
    std::string title;
    std::size_t width;
    bool right;
  };

  void printSample() {
    printing_ = true;
    if (columns_.empty()) return;  // a dry run
    for (const Column& column : columns_) {
      gap();
      appendPadded(line_, column.title, column.width, column.right);
    }
    trimLine();
    line_ = console_.bold(line_);
    endLine();
    for (const Column& column : columns_) {
      gap();
      line_.append(column.width, '-');
    }
    endLine();
    for (const std::vector<Value>& values : sample_) {
      for (std::size_t index = 0; index < values.size(); ++index) cell(index, values[index]);
      endLine();
    }
    sample_.clear();
    sample_.shrink_to_fit();
  }

  void cell(std::size_t index, const Value& value) {
    const Column& column = columns_[index];
    gap();
    const std::size_t start = line_.size();
    appendPadded(line_, tableText(value), column.width, column.right);
    if (value.isNull() && console_.colour) {
      line_.replace(line_.find(kNull, start), kNull.size(), console_.faint(kNull));
    }
  }

  void gap() {
    if (!first_) line_ += kGap;
    first_ = false;
  }

  void trimLine() { line_.erase(line_.find_last_not_of(' ') + 1); }

  void endLine() {
    trimLine();
    line_ += '\n';
    console_.out.write(line_.data(), static_cast<std::streamsize>(line_.size()));
    line_.clear();
    first_ = true;
  }

  Console& console_;
  std::vector<Column> columns_;
  std::vector<std::vector<Value>> sample_;
  std::string line_;
  std::int64_t count_ = 0;
  bool printing_ = false;
  bool first_ = true;
};

}  // namespace

std::string tableText(const Value& value) {
  if (value.isNull()) return std::string(kNull);
  std::string text;
  appendPlain(text, value);
  return value.type() == ValueType::Text ? visible(text) : text;
}

std::unique_ptr<RowPrinter> makeTablePrinter(Console& console) {
  return std::make_unique<TablePrinter>(console);
}

}  // namespace QuorCli
