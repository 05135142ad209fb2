// What a call of a small member costs through dispatch, above the same member called in C++: a
// program for Windows, run by Wine where this is none.
#include <chrono>
#include <cstdio>

#include "core/fake_platform.h"
#include "inventory/inventory_helper.h"

// After the rest, whose names the system's headers would meet.
#include "tests/com/client.h"

namespace {

using namespace client;
using QuorDataLib::Currency;

constexpr int kCalls = 100'000;

/// Nanoseconds of one of `kCalls` calls, the best of five rounds.
template <class Call>
double nanoseconds(Call&& call) {
  using Clock = std::chrono::steady_clock;
  double best = 1e18;
  for (int round = 0; round < 5; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < kCalls; ++i) call(i);
    const std::chrono::duration<double, std::nano> time = Clock::now() - start;
    best = std::min(best, time.count() / kCalls);
  }
  return best;
}

VARIANT amount(std::int64_t units) {
  VARIANT variant{};
  variant.vt = VT_CY;
  variant.cyVal.int64 = units;
  return variant;
}

void measure(const Dll& dll) {
  const fake::Platform platform;
  const auto host = dll.create("CThreadHost");
  assignApplication(*host.get(), served(QuorDataLib::currentApplication()).get());
  const auto direct = QuorDataLib::make<QuorAccQueries::CInventoryHelper>();
  const auto object = dll.create("CInventoryHelper");
  const DISPID number = numberOf(*object.get(), L"CalculateAverageCost");
  std::int64_t sums[2] = {};

  const double inCpp = nanoseconds([&](int i) {
    sums[0] += direct
                   ->CalculateAverageCost(Currency::fromUnits(i), Currency::fromUnits(20'000),
                                          Currency::fromUnits(30'000), Currency::fromUnits(40'000))
                   .units();
  });
  const double byDispatch = nanoseconds([&](int i) {
    VARIANT arguments[] = {amount(40'000), amount(30'000), amount(20'000), amount(i)};
    DISPPARAMS parameters{arguments, nullptr, 4, 0};
    VARIANT result{};
    object->Invoke(number, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                   nullptr, nullptr);
    sums[1] += result.cyVal.int64;
  });
  assignApplication(*host.get(), nullptr);
  std::printf(
      "CalculateAverageCost, %d calls: %.0f ns in C++, %.0f ns by dispatch: %.0f ns above, "
      "%.1f times%s\n",
      kCalls, inCpp, byDispatch, byDispatch - inCpp, byDispatch / inCpp,
      sums[0] == sums[1] ? "" : " -- and the results differ");
}

}  // namespace

int main() {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  measure(Dll(L"QuorAccQueries.dll"));
  ::CoUninitialize();
}
