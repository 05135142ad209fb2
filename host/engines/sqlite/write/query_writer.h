// SQLite's SQL for queries.
#pragma once

#include "host/engines/sqlite/write/sql_text.h"
#include "host/sql/tree.h"

namespace QuorHost::Sqlite {

class QueryWriter {
 public:
  explicit QueryWriter(SqlText& sql) : sql_(sql) {}

  /// Adds `query`. `named` says that its columns are read by name from outside, as those of a view
  /// or a derived table are.
  void write(const Sql::Tree::Query& query, bool named);

 private:
  void writeUnion(const Sql::Tree::Query& query);
  void writeSelect(const Sql::Tree::Select& select, bool named, bool collated);
  void writeLimit(const Sql::Tree::Select& select);
  void writeOutput(const Sql::Tree::Output& output, bool named, bool collated);
  void writeFrom(const Sql::Tree::From& from);
  void writeSource(const Sql::Tree::Source& source);
  void writeOrder(const Sql::Tree::Query& query);
  void writeKey(const Sql::Tree::SortKey& key, const Sql::Tree::Query& query);

  SqlText& sql_;
};

}  // namespace QuorHost::Sqlite
