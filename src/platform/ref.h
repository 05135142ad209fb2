// Shared ownership of the objects that cross the contracts.
#pragma once

#include <concepts>
#include <memory>
#include <utility>

#include "platform/error.h"

namespace QuorDataLib {

struct ClassInfo;

/// Base of everything that can travel in a `Value` or be handed from one side to the other.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  /// The member table of the object's class, or of the contract that it serves; null for an object
  /// that has no members of its own to offer.
  [[nodiscard]] virtual const ClassInfo* table() const { return nullptr; }
};

/// Base of the contracts. `T` says its name (`kClassName`) and its member table (`info()`).
template <class T>
class Contract : public Object {
 public:
  [[nodiscard]] const ClassInfo* table() const override { return &T::info(); }

 private:
  friend T;
  Contract() = default;
};

/// A counted reference that may be empty. Using an empty one raises 91 ("Object variable not set")
/// instead of following a null pointer, so that a method that goes on after an error meets an
/// error again and never a crash.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT(google-explicit-constructor): an empty reference is `nullptr`
  template <std::derived_from<T> U>
  Ref(std::shared_ptr<U> pointer)  // NOLINT(google-explicit-constructor)
      : pointer_(std::move(pointer)) {}
  template <std::derived_from<T> U>
  Ref(const Ref<U>& other) : pointer_(other.shared()) {}  // NOLINT(google-explicit-constructor)

  T* operator->() const { return &**this; }
  T& operator*() const {
    if (!pointer_) raise(ErrorNumber::ObjectNotSet, "Object variable not set");
    return *pointer_;
  }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }
  bool operator==(const Ref& other) const noexcept { return pointer_ == other.pointer_; }
  bool operator==(std::nullptr_t) const noexcept { return pointer_ == nullptr; }

  /// The same object as a `U`, or an empty reference when it is none.
  template <class U>
  [[nodiscard]] Ref<U> as() const {
    return std::dynamic_pointer_cast<U>(pointer_);
  }
  [[nodiscard]] const std::shared_ptr<T>& shared() const noexcept { return pointer_; }

 private:
  std::shared_ptr<T> pointer_;
};

template <class T, class... Args>
[[nodiscard]] Ref<T> make(Args&&... args) {
  return std::make_shared<T>(std::forward<Args>(args)...);
}

}  // namespace QuorDataLib
