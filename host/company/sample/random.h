// The sample's own source of chance: the same numbers on every machine, unlike the standard
// library's distributions.
#pragma once

#include <cstdint>
#include <span>

namespace QuorHost::Sample {

/// A splitmix64 generator.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }

  /// A number from 0 to `bound` - 1, `bound` being positive.
  std::int32_t below(std::int32_t bound) {
    return static_cast<std::int32_t>(((next() >> 32U) * static_cast<std::uint64_t>(bound)) >> 32U);
  }

  /// A number from `first` to `last`, both included.
  std::int32_t between(std::int32_t first, std::int32_t last) {
    return first + below(last - first + 1);
  }

  /// True in `perMille` of a thousand cases.
  bool chance(std::int32_t perMille) { return below(1000) < perMille; }

  template <class T, std::size_t N>
  const T& pick(std::span<T, N> choices) {
    return choices[static_cast<std::size_t>(below(static_cast<std::int32_t>(choices.size())))];
  }

  /// A generator of its own, so that one part of the sample does not depend on how much chance
  /// another one used up.
  Random fork() { return Random(next()); }

 private:
  std::uint64_t state_;
};

}  // namespace QuorHost::Sample
