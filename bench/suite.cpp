#include "bench/suite.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <utility>

namespace QuorBench {
namespace {

const char* const kOurs = " / ours";
const char* const kReference = " / reference";

double median(std::vector<double> times) {
  if (times.empty()) return 0;
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

/// A time in seconds with three digits and its unit.
std::string timeText(double seconds) {
  const std::pair<double, const char*> units[] = {
      {1, "s"}, {1e-3, "ms"}, {1e-6, "us"}, {1e-9, "ns"}};
  const auto* unit = std::begin(units);
  while (seconds < unit->first && unit->first > 1e-9) ++unit;
  char text[32];
  const double scaled = seconds / unit->first;
  std::snprintf(text, sizeof text, "%.*f %s",
                scaled < 10    ? 2
                : scaled < 100 ? 1
                               : 0,
                scaled, unit->second);
  return text;
}

}  // namespace

/// Collects the times of every repetition, shows what is being measured, and prints the table.
class Suite::Reporter : public benchmark::BenchmarkReporter {
 public:
  explicit Reporter(const std::vector<Entry>& entries) : entries_(entries) {}

  bool ReportContext(const Context& /*context*/) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) {
        std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(),
                     run.error_message.c_str());
        failed_ = true;
        continue;
      }
      if (run.run_type != Run::RT_Iteration || run.iterations == 0) continue;
      // Runs that are timed by the wall have it in their name.
      const double spent =
          run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
      times_[run.run_name.function_name].push_back(spent / static_cast<double>(run.iterations));
    }
  }

  void Finalize() override {
    std::printf("%-62s %9s %9s %8s %10s\n", "", "ours", "against", "ratio", "goal");
    std::vector<std::string> missed;
    int measured = 0;
    for (const Entry& entry : entries_) {
      const double ours = entry.value.value_or(median(times_[entry.name + kOurs]));
      if (ours == 0 && !entry.value) continue;
      ++measured;
      if (!print(entry, ours)) missed.push_back(entry.name);
    }
    if (missed.empty()) {
      std::printf("\nAll %d goals are met.\n", measured);
      return;
    }
    std::printf("\n%zu of %d goals are missed:\n", missed.size(), measured);
    for (const std::string& name : missed) std::printf("  %s\n", name.c_str());
  }

  [[nodiscard]] bool failed() const { return failed_; }

 private:
  /// Prints one line; whether the goal is met.
  bool print(const Entry& entry, double ours) {
    char goal[32];
    if (entry.value) {
      std::snprintf(goal, sizeof goal, "%g%s", entry.goal, entry.unit.c_str());
      const bool met = ours < entry.goal;
      std::printf("%-62s %9s %9s %8.3f %10s  %s\n", entry.name.c_str(), "", "", ours, goal,
                  met ? "met" : "MISSED");
      return met;
    }
    if (!entry.hasReference) {
      std::snprintf(goal, sizeof goal, "%g ms", entry.goal);
      const bool met = ours * 1e3 < entry.goal;
      std::printf("%-62s %9s %9s %8s %10s  %s\n", entry.name.c_str(), timeText(ours).c_str(), "",
                  "", goal, met ? "met" : "MISSED");
      return met;
    }
    const double reference = median(times_[entry.name + kReference]);
    const double ratio = ours / reference;
    const bool met = ratio < entry.goal;
    std::snprintf(goal, sizeof goal, "%g", entry.goal);
    std::printf("%-62s %9s %9s %8.3f %10s  %s\n", entry.name.c_str(), timeText(ours).c_str(),
                timeText(reference).c_str(), ratio, goal, met ? "met" : "MISSED");
    return met;
  }

  const std::vector<Entry>& entries_;
  std::map<std::string, std::vector<double>> times_;
  bool failed_ = false;
};

void Suite::compare(std::string name, double goal, std::function<Pair()> setUp, Clock clock) {
  entries_.push_back({.name = std::move(name),
                      .goal = goal,
                      .hasReference = true,
                      .setUp = std::move(setUp),
                      .clock = clock});
}

void Suite::limit(std::string name, double milliseconds, std::function<Work()> setUp, Clock clock) {
  entries_.push_back({.name = std::move(name),
                      .goal = milliseconds,
                      .setUp = [setUp = std::move(setUp)] { return Pair{setUp(), {}}; },
                      .clock = clock});
}

void Suite::figure(std::string name, double goal, std::string unit,
                   std::function<double()> measure) {
  entries_.push_back({.name = std::move(name),
                      .goal = goal,
                      .measure = std::move(measure),
                      .unit = std::move(unit)});
}

int Suite::run(int argc, char** argv) {
  // Turns, repetitions and processor time make two medians comparable, also on a busy machine; the
  // command line may still differ.
  std::vector<std::string> defaults = {"--benchmark_enable_random_interleaving=true",
                                       "--benchmark_repetitions=7", "--benchmark_min_time=0.1"};
  std::vector<char*> arguments = {argv[0]};
  for (std::string& text : defaults) arguments.push_back(text.data());
  arguments.insert(arguments.end(), argv + 1, argv + argc);
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

  for (Entry& entry : entries_) {
    if (entry.measure) {
      const auto once = [&entry](benchmark::State& state) {
        for (auto unused : state) {
          static_cast<void>(unused);
          entry.value = entry.measure();
        }
      };
      benchmark::RegisterBenchmark(entry.name.c_str(), once)->Iterations(1)->Repetitions(1);
      continue;
    }
    // Both halves share what the setting-up made; it lives as long as the registered benchmarks.
    auto pair = std::make_shared<Pair>();
    const auto measure = [&entry, pair](benchmark::State& state, Work Pair::* half) {
      try {
        if (!pair->ours) *pair = entry.setUp();
        const Work& work = (*pair).*half;
        for (auto unused : state) {
          static_cast<void>(unused);
          work();
        }
      } catch (const std::exception& error) {
        state.SkipWithError(error.what());
      }
    };
    const auto add = [&](const char* suffix, Work Pair::* half) {
      auto* const added = benchmark::RegisterBenchmark(
          (entry.name + suffix).c_str(),
          [measure, half](benchmark::State& state) { measure(state, half); });
      if (entry.clock == Clock::Wall) added->UseRealTime();
    };
    add(kOurs, &Pair::ours);
    if (entry.hasReference) add(kReference, &Pair::reference);
  }

  Reporter reporter(entries_);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  // What was set up ends here and not with the program, when the thread's objects are gone already.
  benchmark::ClearRegisteredBenchmarks();
  benchmark::Shutdown();
  return reporter.failed() ? 1 : 0;
}

}  // namespace QuorBench
