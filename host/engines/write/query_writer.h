// The walk over queries, which an engine's form fills in.
#pragma once

#include <span>

#include "host/engines/write/engine_form.h"
#include "host/engines/write/filter.h"
#include "host/engines/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Write {

class QueryWriter {
 public:
  QueryWriter(SqlText& sql, const EngineForm& form) : sql_(sql), form_(form) {}

  /// Adds `query`. `named` says that its columns are read by name from outside, as those of a view
  /// or a derived table are; `first`, that of its rows the first is wanted.
  void write(const Sql::Tree::Query& query, bool named, bool first = false);

 private:
  using From = Sql::Tree::From;
  using Select = Sql::Tree::Select;
  using Keys = std::span<const Sql::Tree::SortKey>;

  void writeShared(const Sql::Tree::Query& query);
  void writeUnion(const Sql::Tree::Query& query);
  void writeSelect(const Select& select, Keys keys, bool named, bool collated);
  void writeApart(const Select& select, const Apart& apart, Keys keys, bool named, bool collated);
  void writeInside(const From& from, const Apart& apart);
  void writeOutputs(const Select& select, bool named, bool collated);
  void writeWhere(const From* from, const Conditions& terms);
  void writeGroups(const Select& select);
  void writeLimit(const Select& select, bool first = false);
  /// `ofTotal` has the engine know by this column that the select is a total over all rows.
  void writeOutput(const Sql::Tree::Output& output, bool named, bool collated, bool ofTotal);
  void writeFrom(const From& from);
  void writeSource(const Sql::Tree::Source& source);
  /// `select` is the one that is ordered, or null for what has several.
  void writeOrder(Keys keys, const Select* select);
  void writeKey(const Sql::Tree::SortKey& key, const Select* select);

  SqlText& sql_;
  const EngineForm& form_;
};

}  // namespace QuorHost::Write
