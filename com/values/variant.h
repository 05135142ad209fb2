// The only place where values become variants and variants values.
//
// Text is UTF-16 there; amounts are currencies, dates automation dates, true is -1. An object that
// only passes through leaves as the object that came in (`objects/identity.h`). An array comes in
// as a collection; the parameters of a statement go out as an array.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include "platform/class_info.h"
#include "platform/values/value.h"

namespace QuorCom {

/// A variant that is cleared at the end.
class Variant {
 public:
  Variant() { ::VariantInit(&variant_); }
  ~Variant() { ::VariantClear(&variant_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;
  [[nodiscard]] VARIANT* get() noexcept { return &variant_; }
  [[nodiscard]] VARIANT& operator*() noexcept { return variant_; }
  [[nodiscard]] const VARIANT& operator*() const noexcept { return variant_; }
  VARIANT* operator->() noexcept { return &variant_; }

 private:
  VARIANT variant_;
};

/// Whether a variant stands for an argument that the caller has left out.
[[nodiscard]] bool isOmitted(const VARIANT& variant) noexcept;

/// The value of a variant, through references. `type` is what the receiver is going to use it for:
/// an object becomes a proxy of that contract, and one that is to give a plain value is asked for
/// its default member. Raises 13 for a kind of variant that no value can be, 6 for a date or a
/// number outside the range.
[[nodiscard]] QuorDataLib::Value readVariant(const VARIANT& variant,
                                             const QuorDataLib::TypeInfo& type);

/// Fills `variant`, which holds nothing that has to be freed, with a value of `type`.
void writeVariant(VARIANT& variant, const QuorDataLib::Value& value,
                  const QuorDataLib::TypeInfo& type);

/// Writes a value to where a variant by reference points, converted to the type that is there. Does
/// nothing for a variant that is no reference.
void writeBack(const VARIANT& reference, const QuorDataLib::Value& value,
               const QuorDataLib::TypeInfo& type);

}  // namespace QuorCom
