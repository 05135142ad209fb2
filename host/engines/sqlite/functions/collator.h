// The linguistic comparison of the library that knows languages: ICU's, or the system's own where
// there is none (Windows).
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace QuorHost::Sqlite {

/// Compares texts in the order that English and French both follow.
class Collator {
 public:
  enum class Differs : std::uint8_t { Letters, LettersAndAccents };

  /// Raises 51 when the order cannot be loaded.
  explicit Collator(Differs by);
  ~Collator();
  Collator(const Collator&) = delete;
  Collator& operator=(const Collator&) = delete;

  /// Negative, zero or positive. What is no character of UTF-8 sorts as a replacement character.
  [[nodiscard]] int compare(std::string_view a, std::string_view b) const noexcept;

  /// Tells the order apart from every other one, of another version or library.
  [[nodiscard]] std::string version() const;

 private:
  struct Order;
  std::unique_ptr<Order> order_;
};

}  // namespace QuorHost::Sqlite
