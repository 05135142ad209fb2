#include "cli/result.h"

#include <algorithm>

#include "cli/print/row_printer.h"
#include "core/member_table.h"
#include "platform/collection.h"

namespace QuorCli {
namespace {

using QuorAccQueries::ComponentObject;
using QuorAccQueries::Member;
using QuorDataLib::Collection;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

void printJson(const Value& result, std::span<const NamedValue> outputs, Console& console) {
  std::string text = "{\"result\":";
  appendJsonTyped(text, result);
  text += ",\"outputs\":";
  appendJsonTyped(text, outputs);
  text += "}\n";
  console.out << text;
}

/// The value as columns: an object's readable properties by name, anything else as "result".
std::vector<NamedValue> flattened(const Value& result) {
  if (result.isEmpty()) return {};
  if (result.type() != ValueType::Object) return {{"result", result}};
  const Ref<ComponentObject> object = result.toObject().as<ComponentObject>();
  if (!object) return {{"result", Value::null()}};
  std::vector<NamedValue> properties;
  for (const Member& member : object->classInfo().members) {
    if (member.kind == Member::Kind::Get && member.result &&
        member.result->type != ValueType::Object) {
      properties.push_back({member.name, member.invoke(*object, {})});
    }
  }
  return properties;
}

/// A collection, or an empty reference for any other value.
Ref<Collection> collectionIn(const Value& value) {
  if (value.type() != ValueType::Object) return nullptr;
  return value.toObject().as<Collection>();
}

std::vector<Value> valuesOf(const std::vector<NamedValue>& columns) {
  std::vector<Value> values;
  values.reserve(columns.size());
  for (const NamedValue& column : columns) values.push_back(column.value);
  return values;
}

/// Prints the values of a collection as rows: of one column, or of the properties that its objects
/// have. The columns are those of the first value.
void printItems(const Collection& collection, RowPrinter& printer) {
  const std::vector<Value>& items = collection.values();
  std::vector<ColumnHead> heads{{"result", ValueType::Empty}};
  if (!items.empty()) {
    heads.clear();
    for (const NamedValue& column : flattened(items.front())) {
      heads.push_back({std::string(column.name), column.value.type()});
    }
  }
  const std::size_t width = heads.size();
  printer.begin(std::move(heads));
  for (const Value& item : items) {
    std::vector<Value> values = valuesOf(flattened(item));
    values.resize(width, Value::null());
    printer.row(values);
  }
}

void printCsv(std::vector<NamedValue> columns, std::span<const NamedValue> outputs,
              Console& console) {
  columns.insert(columns.end(), outputs.begin(), outputs.end());
  std::vector<ColumnHead> heads;
  heads.reserve(columns.size());
  for (const NamedValue& column : columns) {
    heads.push_back({std::string(column.name), column.value.type()});
  }
  const auto printer = makeRowPrinter(Format::Csv, console);
  printer->begin(std::move(heads));
  printer->row(valuesOf(columns));
  printer->end(true, {});
}

void printText(const std::vector<NamedValue>& columns, bool isObject,
               std::span<const NamedValue> outputs, Console& console) {
  for (const NamedValue& column : columns) {
    if (isObject) console.out << column.name << " = ";
    console.out << tableText(column.value) << '\n';
  }
  for (const NamedValue& output : outputs) {
    console.out << output.name << " = " << tableText(output.value) << '\n';
  }
}

}  // namespace

void printValue(const Value& result, std::span<const NamedValue> outputs, Format format,
                Console& console) {
  const bool isJson = format == Format::Json || format == Format::Jsonl;
  if (const Ref<Collection> collection = collectionIn(result); collection && !isJson) {
    const auto printer = makeRowPrinter(format, console);
    printItems(*collection, *printer);
    printer->end(true, outputs);
    return;
  }
  switch (format) {
    case Format::Json:
    case Format::Jsonl:
      printJson(result, outputs, console);
      break;
    case Format::Csv:
      printCsv(flattened(result), outputs, console);
      break;
    case Format::Table: {
      const bool isObject = result.type() == ValueType::Object && result.toObject();
      printText(flattened(result), isObject, outputs, console);
      break;
    }
  }
}

void printAnswer(const Answer& answer, const RunOptions& options, Console& console) {
  if (answer.result.type() == ValueType::Object) {
    if (const Ref<Recordset> rows = answer.result.toObject().as<Recordset>()) {
      const auto printer = makeRowPrinter(options.format, console);
      printRows(*rows, options.limit, answer.outputs, *printer);
      rows->Close();
      return;
    }
  }
  printValue(answer.result, answer.outputs, options.format, console);
}

}  // namespace QuorCli
