#include "cli/print/json_text.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "cli/print/value_text.h"
#include "core/member_table.h"
#include "platform/collection.h"

namespace QuorCli {
namespace {

using QuorAccQueries::ComponentObject;
using QuorAccQueries::Member;
using QuorDataLib::Collection;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

/// Objects within objects are followed this far, in case two ever refer to each other.
constexpr int kDeepest = 4;

void appendDouble(std::string& out, const Value& value) {
  if (!std::isfinite(value.toDouble())) {
    out += "null";
    return;
  }
  const std::size_t start = out.size();
  appendPlain(out, value);
  // A whole number keeps a decimal, so that every reader takes it for a double (and keeps -0).
  if (out.find_first_of(".e", start) == std::string::npos) out += ".0";
}

void append(std::string& out, const Value& value, int depth);

void appendItems(std::string& out, const Collection& collection, int depth) {
  out += '[';
  std::string_view separator;
  for (const Value& item : collection.values()) {
    out += separator;
    append(out, item, depth + 1);
    separator = ",";
  }
  out += ']';
}

void appendObject(std::string& out, const Ref<Object>& object, int depth) {
  if (!object) {
    out += "null";
    return;
  }
  if (const auto collection = object.as<Collection>(); collection && depth < kDeepest) {
    return appendItems(out, *collection, depth);
  }
  out += '{';
  if (const auto component = object.as<ComponentObject>(); component && depth < kDeepest) {
    std::string_view separator;
    for (const Member& member : component->classInfo().members) {
      if (member.kind != Member::Kind::Get) continue;
      out += separator;
      appendJsonString(out, member.name);
      out += ':';
      append(out, member.invoke(*component, {}), depth + 1);
      separator = ",";
    }
  }
  out += '}';
}

void append(std::string& out, const Value& value, int depth) {
  switch (value.type()) {
    case ValueType::Empty:
    case ValueType::Null:
      out += "null";
      break;
    case ValueType::Object:
      appendObject(out, value.toObject(), depth);
      break;
    case ValueType::Double:
      appendDouble(out, value);
      break;
    case ValueType::Text:
      appendJsonString(out, value.text());
      break;
    case ValueType::Currency:
    case ValueType::Date:
      out += '"';
      appendPlain(out, value);
      out += '"';
      break;
    case ValueType::Boolean:
    case ValueType::Integer:
    case ValueType::Long:
      appendPlain(out, value);
      break;
  }
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  const bool plain = std::ranges::all_of(
      text, [](char c) { return c >= ' ' && c < '\x7f' && c != '"' && c != '\\'; });
  if (plain) {
    out += '"';
    out += text;
    out += '"';
  } else {
    out += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  }
}

void appendJson(std::string& out, const Value& value) { append(out, value, 0); }

void appendJsonTyped(std::string& out, const Value& value) {
  if (value.type() == ValueType::Object) return appendJson(out, value);
  out += "{\"type\":";
  appendJsonString(out, printedType(value.type()));
  out += ",\"value\":";
  appendJson(out, value);
  out += '}';
}

void appendJsonTyped(std::string& out, std::span<const NamedValue> values) {
  out += '{';
  std::string_view separator;
  for (const NamedValue& named : values) {
    out += separator;
    appendJsonString(out, named.name);
    out += ':';
    appendJsonTyped(out, named.value);
    separator = ",";
  }
  out += '}';
}

}  // namespace QuorCli
