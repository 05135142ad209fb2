#include "host/engines/sqlite/totals/kept_totals.h"

#include <algorithm>

#include "host/engines/sqlite/engine_error.h"
#include "host/engines/sqlite/run/binding.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {
namespace {

using Changes = PendingTotals::Changes;

void addUp(Database& database, const KeptTotals& totals) {
  database.run(totals.clear());
  database.run(totals.fill());
}

void dropTriggers(Database& database, const KeptTotals& totals) {
  for (const std::string& name : keptTriggerNames(totals.view())) {
    database.run("DROP TRIGGER IF EXISTS " + quotedName(name));
  }
}

/// Adds to each group what it has changed by, in the order of the groups.
void addChanges(Database& database, const KeptTotals& totals, const Changes& changes) {
  using Group = std::pair<const std::string, std::vector<std::int64_t>>;
  std::vector<const Group*> groups;
  for (const Group& group : changes.groups) {
    const bool changed = std::ranges::any_of(group.second, [](auto by) { return by != 0; });
    if (changed) groups.push_back(&group);
  }
  std::ranges::sort(groups, {},
                    [](const Group* group) -> const std::string& { return group->first; });
  Statement add(database.handle(), totals.add());
  Statement removeEmpty(database.handle(), totals.removeEmpty());
  for (const Group* const group : groups) {
    int marker = bindPacked(add.get(), group->first);
    for (const std::int64_t by : group->second) sqlite3_bind_int64(add.get(), ++marker, by);
    add.step();
    add.reset();
    if (group->second[totals.rowCount()] >= 0) continue;
    bindPacked(removeEmpty.get(), group->first);
    removeEmpty.step();
    removeEmpty.reset();
  }
}

void store(Database& database, const Changes& changes) {
  const auto totals = std::ranges::find(database.kept(), changes.view, &KeptTotals::view);
  if (totals == database.kept().end()) {
    refuseStatement("The totals " + changes.view + " are not known; open the company again");
  }
  try {
    if (changes.untold) {
      dropTriggers(database, *totals);
      goOnKeeping(database, *totals);
    }
    if (changes.addUpAnew) {
      addUp(database, *totals);
    } else {
      addChanges(database, *totals, changes);
    }
  } catch (const QuorDataLib::Error& error) {
    // A sum that is too large for its column becomes a float, which that refuses.
    const bool tooLarge = error.is(QuorDataLib::ErrorNumber::Overflow) ||
                          sqlite3_extended_errcode(database.handle()) == SQLITE_CONSTRAINT_DATATYPE;
    if (!tooLarge) throw;
    QuorDataLib::raise(QuorDataLib::ErrorNumber::Overflow,
                       "Overflow: what rows of " + totals->table() +
                           " add up to is too large for the totals " + totals->view());
  }
}

/// The keys in a row of differences, in words.
std::string groupOf(const Statement& row) {
  std::string group;
  for (int i = 0; i < sqlite3_column_count(row.get()); ++i) {
    const Rows::Cell key = cellOf(row, i);
    group.append(i == 0 ? "" : ", ").append(sqlite3_column_name(row.get(), i)).append(" ");
    group += key.kind == Rows::Cell::Kind::Text      ? std::string(key.text)
             : key.kind == Rows::Cell::Kind::Integer ? std::to_string(key.integer)
                                                     : "null";
  }
  return group;
}

}  // namespace

void beginToKeep(Database& database, const KeptTotals& totals) {
  database.run(totals.fill());
  goOnKeeping(database, totals);
}

void goOnKeeping(Database& database, const KeptTotals& totals) {
  for (const std::string& trigger : totals.triggers()) database.run(trigger);
}

void expectMany(Database& database, const std::string& table) {
  for (const KeptTotals& totals : database.kept()) {
    if (totals.table() != table) continue;
    const std::string any = "SELECT EXISTS (SELECT 1 FROM " + quotedName(table) + ")";
    if (database.number(any) != 0) return;
    dropTriggers(database, totals);
    database.session()->totals.beUntold(totals.view());
  }
}

void storeTotals(Database& database) {
  PendingTotals& pending = database.session()->totals;
  if (pending.empty()) return;
  database.prepareForChange();
  // Should this fail half-way, the transaction may go on all the same.
  for (const Changes& changes : pending.take()) store(database, changes);
  pending.forget();
}

std::vector<std::string> wrongTotals(Database& database) {
  std::vector<std::string> findings;
  for (const KeptTotals& totals : database.kept()) {
    try {
      Statement wrong(database.handle(), totals.differences());
      while (wrong.step()) {
        findings.push_back("the totals kept in " + totals.view() + " for " + groupOf(wrong) +
                           " are not what the rows of " + totals.table() + " add up to");
      }
    } catch (const QuorDataLib::Error& error) {
      findings.push_back("the totals kept in " + totals.view() +
                         " could not be compared with the rows of " + totals.table() + ": " +
                         error.description());
    }
  }
  return findings;
}

RowChange::RowChange(Database& database, std::string_view text)
    : database_(database), own_(!database.inTransaction()) {
  if (own_) {
    Statement(database.handle(), "BEGIN IMMEDIATE").step(text);
  } else if (database.session()->totals.isMuch()) {
    storeTotals(database);
  }
  database.session()->totals.begin();
}

RowChange::~RowChange() {
  if (finished_) return;
  // After a failure the engine may have ended the transaction, and the database its handle.
  if (!database_.usable()) return;
  database_.session()->totals.end(false);
  if (own_) database_.rollBack();
}

void RowChange::finish() {
  database_.session()->totals.end(true);
  if (own_) {
    storeTotals(database_);
    database_.run("COMMIT");
  }
  finished_ = true;
}

}  // namespace QuorHost::Sqlite
