#include "platform/values/two_words.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/values/wide_integer.h"

#ifdef __SIZEOF_INT128__

namespace QuorDataLib {
namespace {

/// The compiler's own number of the same bits.
WideInteger known(TwoWords number) {
  constexpr int kWord = 64;
  return WideInteger{static_cast<std::int64_t>(number >> kWord)} * (WideInteger{1} << kWord) +
         static_cast<std::uint64_t>(number);
}

TEST(TwoWords, CalculatesAsTheCompilerDoes) {
  std::mt19937_64 random{20'251'130};
  // Of all sizes, and so small that no product wraps around.
  const auto next = [&] {
    const auto word = [&] { return static_cast<std::int64_t>(random()) >> (random() % 64); };
    return random() % 2 == 0 ? TwoWords(word()) : TwoWords(word()) * word();
  };
  for (int i = 0; i < 100'000; ++i) {
    const TwoWords a = next();
    const TwoWords b = next();
    const std::int64_t small = static_cast<std::int64_t>(random()) >> (random() % 64);
    const WideInteger left = known(a);
    const WideInteger right = known(b);
    const auto bits = static_cast<int>(random() % 127);
    ASSERT_TRUE(known(a + b) == left + right) << i;
    ASSERT_TRUE(known(a - b) == left - right) << i;
    ASSERT_TRUE(known(-a) == -left) << i;
    ASSERT_TRUE(known(TwoWords(small) * small) == WideInteger{small} * small) << i;
    ASSERT_TRUE(known(a & b) == (left & right)) << i;
    ASSERT_TRUE(known(a >> bits) == left >> bits) << i;
    ASSERT_TRUE(known(TwoWords(1) << bits) == WideInteger{1} << bits) << i;
    ASSERT_TRUE((a <=> b) == (left <=> right) && (a == b) == (left == right)) << i;
    ASSERT_EQ(static_cast<std::int64_t>(a), static_cast<std::int64_t>(left)) << i;
    if (b == 0) continue;
    ASSERT_TRUE(known(a / b) == left / right) << i;
    ASSERT_TRUE(known(a % b) == left % right) << i;
  }
}

}  // namespace
}  // namespace QuorDataLib

#endif
