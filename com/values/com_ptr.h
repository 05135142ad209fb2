// Counted pointers of COM, and what keeps C++ exceptions inside.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <unknwn.h>

#include <utility>

namespace QuorCom {

/// Holds one reference, or none.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ~ComPtr() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  ComPtr(const ComPtr& other) : ComPtr(shared(other.pointer_)) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }

  /// Takes over a reference that the caller has.
  static ComPtr adopted(T* pointer) noexcept {
    ComPtr result;
    result.pointer_ = pointer;
    return result;
  }
  /// Takes a reference of its own.
  static ComPtr shared(T* pointer) noexcept {
    if (pointer != nullptr) pointer->AddRef();
    return adopted(pointer);
  }
  /// The same object by another of its interfaces; empty when it has it not.
  template <class U>
  [[nodiscard]] ComPtr<U> query(const IID& interfaceId) const noexcept {
    void* found = nullptr;
    if (pointer_ != nullptr && FAILED(pointer_->QueryInterface(interfaceId, &found))) {
      found = nullptr;
    }
    return ComPtr<U>::adopted(static_cast<U*>(found));
  }

  /// Where a function puts a reference for its caller; what was held is let go.
  [[nodiscard]] T** put() noexcept {
    *this = ComPtr();
    return &pointer_;
  }
  /// Hands the reference over to the caller.
  [[nodiscard]] T* detach() noexcept { return std::exchange(pointer_, nullptr); }
  [[nodiscard]] T* get() const noexcept { return pointer_; }
  T* operator->() const noexcept { return pointer_; }
  explicit operator bool() const noexcept { return pointer_ != nullptr; }

 private:
  T* pointer_ = nullptr;
};

}  // namespace QuorCom
