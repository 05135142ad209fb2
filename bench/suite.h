// What is measured, against what, and the goal it has to meet.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace QuorBench {

/// Which time counts: the program's own, or also that of a server which it waits for.
enum class Clock : std::uint8_t { Processor, Wall };

/// Something to be timed; called once per iteration.
using Work = std::function<void()>;

/// Two pieces of work measured in turns in one run, so that both see the same machine.
struct Pair {
  Work ours;
  Work reference;
};

/// The measurements of a run. Each is set up when its turn comes and not before, so a filtered run
/// makes no company that it does not need.
class Suite {
 public:
  /// Our work against the reference's; `goal` is the ratio of times to stay under.
  void compare(std::string name, double goal, std::function<Pair()> setUp,
               Clock clock = Clock::Processor);

  /// Our work against a fixed time to stay under, in milliseconds.
  void limit(std::string name, double milliseconds, std::function<Work()> setUp,
             Clock clock = Clock::Processor);

  /// A figure of its own to stay under, measured once. `unit` stands behind it (" KiB").
  void figure(std::string name, double goal, std::string unit, std::function<double()> measure);

  /// Measures, prints the table of ratios and what is missed. The arguments are Google Benchmark's;
  /// the result is the program's exit code, 0 also where goals are missed.
  int run(int argc, char** argv);

 private:
  struct Entry {
    std::string name;
    double goal = 0;
    bool hasReference = false;
    std::function<Pair()> setUp;
    Clock clock = Clock::Processor;
    // Of a figure, in place of the two.
    std::function<double()> measure;
    std::string unit;
    std::optional<double> value;
  };

  class Reporter;

  std::vector<Entry> entries_;
};

}  // namespace QuorBench
