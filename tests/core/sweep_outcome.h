// What a call of a member did, for comparing a call that failed on the way with a sound one.
#pragma once

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "core/fake_platform.h"
#include "core/member_table.h"
#include "platform/collection.h"

namespace sweep {

using namespace QuorAccQueries;
using namespace QuorDataLib;

/// Arguments that lead a member as deep as it goes: every filter and option set, or none.
inline std::vector<Value> arguments(const Member& member, bool all) {
  std::vector<Value> values;
  for (const Argument& argument : member.arguments) {
    switch (argument.type.type) {
      case ValueType::Boolean:
        values.emplace_back(all);
        break;
      case ValueType::Date:
        values.emplace_back(all ? Date::of(2025, 3, 31) : Date());
        break;
      case ValueType::Text:
        // Lists of account types are read; all other texts go where they go.
        values.emplace_back(!all ? "" : argument.name == "AcctTypeIds" ? "1" : "A");
        break;
      case ValueType::Object:
        if (argument.type.className == Collection::kClassName) {
          values.emplace_back(make<Collection>(std::vector<Value>{std::int32_t{1}}));
        } else {
          values.emplace_back(Ref<Object>());
        }
        break;
      default:
        values.emplace_back(std::int32_t{all ? 1 : 0});
        break;
    }
  }
  return values;
}

/// What one call did, and what the platform saw of it.
struct Outcome {
  Value result;
  std::vector<Value> outputs;
  std::optional<Error> thrown;
  std::vector<fake::Call> log;
  std::vector<fake::Opened> opened;
};

inline Outcome call(fake::Platform& platform, ComponentObject& object, const Member& member,
                    bool all) {
  Outcome outcome;
  outcome.outputs = arguments(member, all);
  platform->log.clear();
  platform->opened.clear();
  try {
    outcome.result = member.invoke(object, outcome.outputs);
  } catch (const Error& error) {
    outcome.thrown = error;
  }
  outcome.log = platform->log;
  outcome.opened = platform->opened;
  return outcome;
}

/// The single values that an outcome holds: of the result, the properties or items of objects in
/// it, the arguments after the call.
inline void collect(const Value& value, std::vector<Value>& all) {
  if (value.type() != ValueType::Object) {
    all.push_back(value);
  } else if (const auto items = value.toObject().as<Collection>()) {
    for (const Value& item : items->values()) collect(item, all);
  } else if (const auto record = value.toObject().as<ComponentObject>()) {
    for (const Member& member : record->classInfo().members) {
      if (member.kind == Member::Kind::Get && member.result->type != ValueType::Object) {
        all.push_back(member.invoke(*record, {}));
      }
    }
  }
}

inline std::vector<Value> answered(const Outcome& outcome) {
  std::vector<Value> all = outcome.outputs;
  collect(outcome.result, all);
  return all;
}

/// The texts and values that went to the database.
inline std::vector<Value> sent(const Outcome& outcome) {
  std::vector<Value> all;
  for (const fake::Opened& each : outcome.opened) {
    all.emplace_back(each.sql);
    for (const Value& value : each.parameters.values()) all.push_back(value);
  }
  return all;
}

/// Whether `given` is one of `values`, as one of their types, or a part of a text among them. A
/// boolean tells nothing.
inline bool holds(const std::vector<Value>& values, const Value& given) {
  return std::ranges::any_of(values, [&](const Value& value) {
    if (value.type() == ValueType::Boolean) return false;
    if (value.type() == ValueType::Text) {
      return value.text().find(given.toText()) != std::string::npos;
    }
    try {
      return given.convertedTo(value.type()) == value;
    } catch (const Error&) {
      return false;
    }
  });
}

/// How many of the values that calls gave are in `before`, and not in `after`.
inline std::ptrdiff_t missing(const std::vector<fake::Call>& log, const std::vector<Value>& before,
                              const std::vector<Value>& after) {
  std::set<std::string> met;
  return std::ranges::count_if(log, [&](const fake::Call& each) {
    return !each.given.isEmpty() && met.insert(each.given.toText()).second &&
           holds(before, each.given) && !holds(after, each.given);
  });
}

/// The calls that give a value and no object.
inline const std::set<std::string> kGivesAValue{"Field", "FieldName", "GetParameter", "NullSafe"};

inline std::vector<std::string> names(const std::vector<fake::Call>& log) {
  std::vector<std::string> all;
  all.reserve(log.size());
  for (const fake::Call& each : log) all.push_back(each.name);
  return all;
}

/// Which of a member's calls fail, one after the other: all of them, or a selection of very many.
inline std::vector<int> failing(int calls) {
  constexpr int kAll = 60;
  std::vector<int> chosen;
  for (int n = 1; n <= calls; n += n < kAll ? 1 : 1 + calls / kAll) chosen.push_back(n);
  return chosen;
}

/// Objects are equal when they are of one kind: a retried call makes another recordset.
inline bool alike(const Value& a, const Value& b) {
  if (a.type() != ValueType::Object || b.type() != ValueType::Object) return a == b;
  return static_cast<bool>(a.toObject()) == static_cast<bool>(b.toObject());
}

}  // namespace sweep
