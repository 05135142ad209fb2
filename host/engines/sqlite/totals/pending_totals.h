// What kept totals still have to be changed by, in memory.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace QuorHost::Sqlite {

/// Adds up, by groups, what the changes of an open transaction mean for kept totals, as the
/// triggers on their tables tell it row by row. A row costs a look-up in memory that way, and the
/// stored totals are changed once for each group, however many of its rows were changed.
///
/// It is as true as the transaction itself: a rollback forgets everything, a transaction cannot be
/// committed before the changes were taken and stored, and where a statement failed in the middle,
/// or more groups were touched than memory should hold, the totals are to be added up anew.
class PendingTotals {
 public:
  /// What the groups of one view of totals change by.
  struct Changes {
    std::string view;
    /// The keys of a group, as `packed` has them, and what each other column grows by.
    std::unordered_map<std::string, std::vector<std::int64_t>> groups;
    /// The groups do not tell all: the totals must be added up from the rows.
    bool addUpAnew = false;
    /// The running statement has changed them.
    bool touched = false;
    /// Their triggers are away, as so much comes that it is added up at once.
    bool untold = false;
  };

  PendingTotals() = default;
  PendingTotals(const PendingTotals&) = delete;
  PendingTotals& operator=(const PendingTotals&) = delete;

  /// Gives the triggers their function on `handle`, and follows its commits and rollbacks. Must
  /// live as long as the handle.
  void attach(sqlite3* handle);

  /// A statement that changes rows begins. Triggers run at no other time.
  void begin() noexcept { running_ = Running::Counted; }
  /// The same for one that will be undone, whatever becomes of it; it may come before the end of
  /// another one that failed.
  void beginInVain() noexcept { running_ = Running::InVain; }
  /// It has ended; `whole` says that it has done all of it and not half.
  void end(bool whole) noexcept;

  [[nodiscard]] bool empty() const noexcept { return changes_.empty(); }
  /// There are so many groups that they should be stored before the next statement.
  [[nodiscard]] bool isMuch() const noexcept;

  /// Gives away what is to be stored. Until `forget` says that it was, the totals are to be added
  /// up anew.
  [[nodiscard]] std::vector<Changes> take();
  void forget() noexcept { changes_.clear(); }
  /// From now on nothing is told of the rows that `view` is of: its triggers were taken away.
  void beUntold(std::string_view view);

 private:
  enum class Running : std::uint8_t { No, Counted, InVain };

  static void tell(sqlite3_context* context, int count, sqlite3_value** values) noexcept;
  static int beforeCommit(void* pending) noexcept;

  Changes& of(std::string_view view);
  void note(int count, sqlite3_value** values);

  std::vector<Changes> changes_;
  std::string key_;
  Running running_ = Running::No;
};

/// Binds the keys of a group to the first markers of `statement`; gives their number.
int bindPacked(sqlite3_stmt* statement, std::string_view packed);

}  // namespace QuorHost::Sqlite
