// A recordset of rows given as values, and a console on strings.
#pragma once

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "cli/console.h"
#include "cli/print/row_printer.h"
#include "platform/data_library.h"

namespace QuorTest {

using QuorDataLib::Value;
using QuorDataLib::ValueType;

class RowsInMemory : public QuorDataLib::Recordset {
 public:
  RowsInMemory(std::vector<QuorCli::ColumnHead> columns, std::vector<std::vector<Value>> rows)
      : columns_(std::move(columns)), rows_(std::move(rows)) {}

  bool AtEnd() override { return next_ == rows_.size(); }
  std::int32_t FieldCount() override { return static_cast<std::int32_t>(columns_.size()); }
  std::string FieldName(std::int32_t index) override { return columns_.at(at(index)).name; }
  ValueType FieldType(std::int32_t index) override { return columns_.at(at(index)).type; }
  Value Field(std::int32_t index) override { return rows_.at(next_).at(at(index)); }
  Value Field(const std::string& /*name*/) override { return unused(); }
  void MoveFirst() override { next_ = 0; }
  void MoveNext() override { ++next_; }
  bool Find(const std::string& /*criterion*/) override { return unused().toBoolean(); }
  void AddNew() override { unused(); }
  void SetField(const std::string& /*name*/, const Value& /*value*/) override { unused(); }
  void Update() override { unused(); }
  void Close() override {}

 private:
  static std::size_t at(std::int32_t index) { return static_cast<std::size_t>(index); }
  static Value unused() {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::UnknownMember, "rows in memory are only read");
  }

  std::vector<QuorCli::ColumnHead> columns_;
  std::vector<std::vector<Value>> rows_;
  std::size_t next_ = 0;
};

/// A console whose streams are strings.
struct TextConsole {
  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  QuorCli::Console console{in, out, err};
};

}  // namespace QuorTest
