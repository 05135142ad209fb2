// Memory for the trees of one statement, released all at once.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory_resource>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace QuorHost::Sql {

/// Owner of everything that is made for one statement. What it makes lives as long as the arena and
/// is never destroyed by itself, so only trivially destructible types are allowed.
class Arena {
 public:
  Arena() = default;
  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  template <class T>
  T* make(T value) {
    static_assert(std::is_trivially_destructible_v<T>);
    return ::new (memory_.allocate(sizeof(T), alignof(T))) T(std::move(value));
  }

  /// A lasting copy of a list that was collected elsewhere.
  template <class T>
  std::span<T> list(const std::vector<T>& items) {
    return list(std::span<const T>(items));
  }
  template <class T>
  std::span<T> list(std::span<const T> items) {
    static_assert(std::is_trivially_destructible_v<T>);
    if (items.empty()) return {};
    T* const copy = static_cast<T*>(memory_.allocate(items.size_bytes(), alignof(T)));
    std::uninitialized_copy(items.begin(), items.end(), copy);
    return {copy, items.size()};
  }

  /// A lasting copy of a text.
  std::string_view text(std::string_view characters) {
    if (characters.empty()) return {};
    char* const copy = static_cast<char*>(memory_.allocate(characters.size(), 1));
    std::copy(characters.begin(), characters.end(), copy);
    return {copy, characters.size()};
  }

 private:
  // Enough for most statements; longer ones continue on the heap.
  static constexpr std::size_t kFirstBlock = 32'768;
  alignas(std::max_align_t) std::array<std::byte, kFirstBlock> first_;
  std::pmr::monotonic_buffer_resource memory_{first_.data(), first_.size()};
};

}  // namespace QuorHost::Sql
