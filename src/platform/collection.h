// Collections of values.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/ref.h"
#include "platform/values/value.h"

namespace QuorDataLib {

/// Values in their order, counted from 1. It travels in a `Value` as every object does; who holds
/// it may add to it.
class Collection : public Contract<Collection> {
 public:
  static constexpr std::string_view kClassName = "Collection";
  static const ClassInfo& info();

  Collection() = default;
  explicit Collection(std::vector<Value> values) : values_(std::move(values)) {}

  /// How many values there are.
  [[nodiscard]] std::int32_t Count() const { return static_cast<std::int32_t>(values_.size()); }

  /// The value at `Index`, from 1 to `Count`. Raises 9 outside that range.
  [[nodiscard]] Value Item(std::int32_t Index) const;

  /// Adds a value at the end.
  void Add(const Value& NewItem) { values_.push_back(NewItem); }

  /// The values themselves, for walking in C++.
  [[nodiscard]] const std::vector<Value>& values() const noexcept { return values_; }

 private:
  std::vector<Value> values_;
};

/// Walks over the values that a collection had when it was asked for them, in their order.
class Enumerator : public Contract<Enumerator> {
 public:
  static constexpr std::string_view kClassName = "Enumerator";
  static const ClassInfo& info();

  explicit Enumerator(std::vector<Value> values) : values_(std::move(values)) {}

  /// Puts the next value into `Item`. False at the end; `Item` is then as it was.
  bool Next(Value& Item);

  /// Starts over.
  void Reset() { passed_ = 0; }

  /// Another one over the same values, at the same place.
  [[nodiscard]] Ref<Enumerator> copy() const;

 private:
  std::vector<Value> values_;
  std::size_t passed_ = 0;
};

}  // namespace QuorDataLib
