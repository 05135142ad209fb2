// Rows as one JSON document, a row a line, and as JSON lines, a row an object.
#include <algorithm>
#include <string_view>

#include "cli/print/json_text.h"
#include "cli/print/row_printer.h"
#include "cli/print/value_text.h"

namespace QuorCli {
namespace {

using QuorDataLib::Value;

void write(std::ostream& out, std::string& text) {
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  text.clear();
}

class JsonPrinter : public RowPrinter {
 public:
  explicit JsonPrinter(std::ostream& out) : out_(out) {}

  void begin(std::vector<ColumnHead> columns) override {
    text_ = "{\"columns\":[";
    std::string_view separator;
    for (const ColumnHead& column : columns) {
      text_ += separator;
      text_ += "{\"name\":";
      appendJsonString(text_, column.name);
      text_ += ",\"type\":";
      appendJsonString(text_, printedType(column.type));
      text_ += '}';
      separator = ",";
    }
    text_ += "],\"rows\":[";
    write(out_, text_);
  }

  void row(std::span<const Value> values) override {
    text_ += first_ ? "\n[" : ",\n[";
    first_ = false;
    std::string_view separator;
    for (const Value& value : values) {
      text_ += separator;
      appendJson(text_, value);
      separator = ",";
    }
    text_ += ']';
    write(out_, text_);
  }

  void end(bool /*complete*/, std::span<const NamedValue> outputs) override {
    text_ = first_ ? "]" : "\n]";
    if (!outputs.empty()) {
      text_ += ",\"outputs\":";
      appendJsonTyped(text_, outputs);
    }
    text_ += "}\n";
    write(out_, text_);
  }

 private:
  std::ostream& out_;
  std::string text_;
  bool first_ = true;
};

class JsonLinesPrinter : public RowPrinter {
 public:
  explicit JsonLinesPrinter(std::ostream& out) : out_(out) {}

  void begin(std::vector<ColumnHead> columns) override {
    keys_.clear();
    for (const ColumnHead& column : columns) {
      std::string& key = keys_.emplace_back(keys_.empty() ? "{" : ",");
      appendJsonString(key, distinctName(columns, column));
      key += ':';
    }
  }

  void row(std::span<const Value> values) override {
    for (std::size_t index = 0; index < values.size(); ++index) {
      text_ += keys_[index];
      appendJson(text_, values[index]);
    }
    text_ += "}\n";
    write(out_, text_);
  }

  void end(bool /*complete*/, std::span<const NamedValue> /*outputs*/) override {}

 private:
  /// An object cannot hold two values of one name: the second `Total` becomes `Total_2`.
  static std::string distinctName(const std::vector<ColumnHead>& columns,
                                  const ColumnHead& column) {
    const auto before = std::ranges::count(columns.data(), &column, column.name, &ColumnHead::name);
    return before == 0 ? column.name : column.name + "_" + std::to_string(before + 1);
  }

  std::ostream& out_;
  std::vector<std::string> keys_;
  std::string text_;
};

}  // namespace

std::unique_ptr<RowPrinter> makeJsonPrinter(std::ostream& out) {
  return std::make_unique<JsonPrinter>(out);
}

std::unique_ptr<RowPrinter> makeJsonLinesPrinter(std::ostream& out) {
  return std::make_unique<JsonLinesPrinter>(out);
}

}  // namespace QuorCli
