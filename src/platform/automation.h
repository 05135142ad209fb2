// How C++ types travel in a `Value`.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/class_info.h"
#include "platform/collection.h"
#include "platform/values/value.h"

namespace QuorDataLib {

/// `type()` says what a table shows, `from` reads a value by the automation rules, `to` makes one.
template <class T>
struct Automation;

template <class T, ValueType kType, T (Value::*kConvert)() const>
struct SimpleAutomation {
  static constexpr TypeInfo type() { return {kType, {}}; }
  static T from(const Value& value) { return (value.*kConvert)(); }
  static Value to(const T& value) { return value; }
};

template <>
struct Automation<bool> : SimpleAutomation<bool, ValueType::Boolean, &Value::toBoolean> {};
template <>
struct Automation<std::int16_t>
    : SimpleAutomation<std::int16_t, ValueType::Integer, &Value::toInteger> {};
template <>
struct Automation<std::int32_t> : SimpleAutomation<std::int32_t, ValueType::Long, &Value::toLong> {
};
template <>
struct Automation<double> : SimpleAutomation<double, ValueType::Double, &Value::toDouble> {};
template <>
struct Automation<Currency> : SimpleAutomation<Currency, ValueType::Currency, &Value::toCurrency> {
};
template <>
struct Automation<Date> : SimpleAutomation<Date, ValueType::Date, &Value::toDate> {};
template <>
struct Automation<std::string> : SimpleAutomation<std::string, ValueType::Text, &Value::toText> {};

/// Any type.
template <>
struct Automation<Value> {
  static constexpr TypeInfo type() { return {}; }
  static Value from(const Value& value) { return value; }
  static Value to(const Value& value) { return value; }
};

/// A type of column, as its number.
template <>
struct Automation<ValueType> {
  static constexpr TypeInfo type() { return {ValueType::Integer, {}}; }
  static ValueType from(const Value& value);
  static Value to(ValueType type) { return static_cast<std::int16_t>(type); }
};

/// An object of one class or contract, or of any (`Object`); it may be empty.
template <class T>
struct Automation<Ref<T>> {
  static constexpr std::string_view className() {
    if constexpr (std::same_as<T, Object>) {
      return "Object";
    } else {
      return T::kClassName;
    }
  }
  static constexpr TypeInfo type() { return {ValueType::Object, className()}; }
  static Ref<T> from(const Value& value) {
    const Ref<Object> object = value.toObject();
    Ref<T> typed = object.template as<T>();
    if (object && !typed) {
      raise(ErrorNumber::TypeMismatch, "The object passed is no " + std::string(className()));
    }
    return typed;
  }
  static Value to(const Ref<T>& object) { return object; }
};

/// A list of values: a collection, empty for none.
template <>
struct Automation<std::vector<Value>> {
  static constexpr TypeInfo type() { return Automation<Ref<Collection>>::type(); }
  static std::vector<Value> from(const Value& value);
  static Value to(const std::vector<Value>& values) { return make<Collection>(values); }
};

/// What fills a statement's markers: a collection, one bare value, or Empty for nothing.
template <>
struct Automation<Parameters> {
  static constexpr TypeInfo type() { return {ValueType::Empty, "Parameters"}; }
  static Parameters from(const Value& value);
  static Value to(const Parameters& parameters);
};

}  // namespace QuorDataLib
