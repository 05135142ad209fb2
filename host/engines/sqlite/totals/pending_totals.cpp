#include "host/engines/sqlite/totals/pending_totals.h"

#include <algorithm>
#include <new>
#include <utility>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/write/kept_totals_text.h"

namespace QuorHost::Sqlite {
namespace {

/// Groups that are kept in memory: some 20 MB.
constexpr std::size_t kMany = 1U << 16U;
/// The same while one statement runs, which cannot be interrupted.
constexpr std::size_t kMost = 1U << 19U;

// A packed key: what it is, and then a number's bytes, or a text's size as a number and its bytes.
// The highest byte comes first, with its sign turned: so packed numbers are in their own order.
constexpr char kNull = '0';
constexpr char kNumber = '1';
constexpr char kText = '2';
constexpr unsigned kBytes = 8;

constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;

void packNumber(std::string& packed, std::int64_t value) {
  const std::uint64_t number = static_cast<std::uint64_t>(value) ^ kSign;
  for (unsigned i = kBytes; i-- > 0;) {
    packed += static_cast<char>(static_cast<unsigned char>(number >> (8 * i)));
  }
}

/// Takes a number off the front.
std::int64_t unpackNumber(std::string_view& packed) {
  std::uint64_t number = 0;
  for (unsigned i = 0; i < kBytes; ++i)
    number = number << 8U | static_cast<unsigned char>(packed[i]);
  packed.remove_prefix(kBytes);
  return static_cast<std::int64_t>(number ^ kSign);
}

void pack(std::string& packed, sqlite3_value* key) {
  switch (sqlite3_value_type(key)) {
    case SQLITE_INTEGER:
      packed += kNumber;
      return packNumber(packed, sqlite3_value_int64(key));
    case SQLITE_TEXT: {
      const unsigned char* const text = sqlite3_value_text(key);
      if (text == nullptr) throw std::bad_alloc();
      const int size = sqlite3_value_bytes(key);
      packed += kText;
      packNumber(packed, size);
      packed.append(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
      return;
    }
    default:
      packed += kNull;
  }
}

}  // namespace

int bindPacked(sqlite3_stmt* statement, std::string_view packed) {
  int marker = 0;
  while (!packed.empty()) {
    const char kind = packed.front();
    packed.remove_prefix(1);
    ++marker;
    if (kind == kNumber) {
      sqlite3_bind_int64(statement, marker, unpackNumber(packed));
    } else if (kind == kText) {
      const auto size = static_cast<std::size_t>(unpackNumber(packed));
      const std::string text(packed.substr(0, size));
      sqlite3_bind_text(statement, marker, text.c_str(), static_cast<int>(size), SQLITE_TRANSIENT);
      packed.remove_prefix(size);
    } else {
      sqlite3_bind_zeroblob(statement, marker, 0);
    }
  }
  return marker;
}

void PendingTotals::attach(sqlite3* handle) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_INNOCUOUS;
  if (sqlite3_create_function_v2(handle, kTotalFunction, -1, kFlags, this, &tell, nullptr, nullptr,
                                 nullptr) != SQLITE_OK) {
    throw std::bad_alloc();
  }
  sqlite3_commit_hook(handle, &beforeCommit, this);
  sqlite3_rollback_hook(
      handle, [](void* pending) { static_cast<PendingTotals*>(pending)->forget(); }, this);
}

void PendingTotals::end(bool whole) noexcept {
  if (std::exchange(running_, Running::No) == Running::InVain) return;
  for (Changes& changes : changes_) {
    if (changes.touched && !whole) {
      changes.addUpAnew = true;
      changes.groups.clear();
    }
    changes.touched = false;
  }
}

bool PendingTotals::isMuch() const noexcept {
  return std::ranges::any_of(changes_,
                             [](const Changes& changes) { return changes.groups.size() > kMany; });
}

std::vector<PendingTotals::Changes> PendingTotals::take() {
  std::vector<Changes> nothing;
  nothing.reserve(changes_.size());
  for (const Changes& changes : changes_) {
    nothing.push_back(
        {.view = changes.view, .groups = {}, .addUpAnew = true, .untold = changes.untold});
  }
  return std::exchange(changes_, std::move(nothing));
}

void PendingTotals::beUntold(std::string_view view) {
  Changes& changes = of(view);
  changes.addUpAnew = true;
  changes.untold = true;
  changes.groups.clear();
}

int PendingTotals::beforeCommit(void* pending) noexcept {
  return static_cast<PendingTotals*>(pending)->empty() ? 0 : 1;
}

void PendingTotals::tell(sqlite3_context* context, int count, sqlite3_value** values) noexcept {
  auto& pending = *static_cast<PendingTotals*>(sqlite3_user_data(context));
  if (pending.running_ == Running::InVain) return;
  if (pending.running_ == Running::No) {
    sqlite3_result_error(context, "totals are changed with their rows alone", -1);
    return;
  }
  try {
    pending.note(count, values);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

PendingTotals::Changes& PendingTotals::of(std::string_view view) {
  const auto found = std::ranges::find(changes_, view, &Changes::view);
  if (found != changes_.end()) return *found;
  changes_.push_back({.view = std::string(view), .groups = {}});
  return changes_.back();
}

void PendingTotals::note(int count, sqlite3_value** values) {
  const unsigned char* const view = sqlite3_value_text(values[0]);
  if (view == nullptr) throw std::bad_alloc();
  Changes& changes = of(reinterpret_cast<const char*>(view));
  changes.touched = true;
  if (changes.addUpAnew) return;
  const int keys = sqlite3_value_int(values[1]);
  const std::int64_t sign = sqlite3_value_int64(values[2]);
  const int firstTotal = 3 + keys;
  key_.clear();
  for (int i = 3; i < firstTotal; ++i) pack(key_, values[i]);
  std::vector<std::int64_t>& group = changes.groups.try_emplace(key_).first->second;
  group.resize(static_cast<std::size_t>(count - firstTotal));
  bool fits = changes.groups.size() <= kMost;
  for (int i = firstTotal; i < count; ++i) {
    std::int64_t& total = group[static_cast<std::size_t>(i - firstTotal)];
    const std::int64_t value = sqlite3_value_int64(values[i]);
    const bool overflowed = sign < 0 ? __builtin_sub_overflow(total, value, &total)
                                     : __builtin_add_overflow(total, value, &total);
    fits = fits && !overflowed;
  }
  if (fits) return;
  changes.addUpAnew = true;
  changes.groups.clear();
}

}  // namespace QuorHost::Sqlite
