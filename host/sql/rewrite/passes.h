// The passes of a rewriting, in the order in which they run.
#pragma once

#include <functional>

#include "host/sql/arena.h"
#include "host/sql/rewrite/rewrite.h"
#include "host/sql/tree.h"

namespace QuorHost::Sql {

/// Puts the select of each view in the view's place. The engine would do it as well, but the passes
/// that follow could not look inside.
/// With `wanted`, only those views of whose select, its own views opened, that is true.
void openViews(Tree::Query& query, const ViewReader& views,
               const std::function<bool(const Tree::Query&)>& wanted = {});

/// Makes the selects of a union branches of the union that only picks columns from it:
///   A UNION ALL (SELECT x FROM (B UNION ALL C) WHERE y)  becomes  A UNION ALL B' UNION ALL C'
/// where x and y are said in the terms of B and C. The engine hands every row of an inner union to
/// the outer one, value by value.
/// Conditions: nothing but UNION ALL; no DISTINCT, grouping, TOP or order in between; x and y read
/// nothing but the union, and have no sub-select.
void foldUnions(Tree::Query& query, Arena& arena);

/// Sums each branch of a union before the union, and then the sums:
///   SELECT k, SUM(a) FROM (A UNION ALL B) WHERE c GROUP BY k
/// becomes SELECT k, SUM(s) FROM (A' UNION ALL B') GROUP BY k, where A' is the branch with c,
/// grouped by its k. The engine then hands on and sorts a row for each group, not for each row.
/// Conditions: nothing but UNION ALL of plain selects; the select reads nothing else, and has no
/// sub-select; SUM, COUNT, MIN, MAX of what is exact and without DISTINCT; no key, or one, a whole
/// number by which an index of the table groups the rows of each branch, and no primary key.
void sumBranches(Tree::Query& query, Arena& arena);

/// Reads totals that are kept instead of the rows that they are of:
///   SELECT SUM(d.a) FROM d WHERE d.k = 5   becomes   SELECT SUM(t.a) FROM t WHERE t.k = 5
/// where t has a row for all rows of d of the same k.
/// Conditions: the select is grouped; besides keys of t, whatever it reads of d stands in a SUM
/// that adds and takes away columns that t has the sums of, or chooses by keys whether to, or is
/// COUNT(*); the other tables' columns are in no SUM, AVG or COUNT. Where an index of d begins with
/// another key that WHERE or a join asks for, and no constant is asked for t's first key, d is read
/// by that index; the same where a derived table or view has such a key in its groups.
void useKeptTotals(Tree::Query& query, const Catalogue& catalogue, Arena& arena);

/// Looks totals up where few of them are wanted, or where that costs no more:
///   p LEFT JOIN (SELECT k, SUM(a) AS t FROM d WHERE c GROUP BY k) AS g ON p.id = g.k
/// loses the join, and g.t becomes (SELECT SUM(a) FROM d WHERE c AND k = p.id). The engine builds a
/// grouped table whole before it takes the first row from it.
/// Conditions: k is the only key of the groups, a whole number, and an index begins with it; p.id
/// is known to be another one in each row, since a key that came again would be looked up again;
/// and no sub-select reads g. Besides, that it is no more work: d is one table, one place reads a
/// total, and c has nothing to do with another index; or a few keys narrow the select that holds
/// the join, or one around it.
void lookUpTotals(Tree::Query& query, Arena& arena);

/// Leaves out the columns of derived tables that nothing reads; the engine would compute and carry
/// them, and end the statement where one of them cannot be computed. Where none is read at all, a
/// constant stands for the first.
/// Conditions: dropping a column changes no rows, so no DISTINCT and no plain UNION. A total over
/// all rows stays one.
void dropUnreadColumns(Tree::Query& query, Arena& arena);

/// Keeps the order of the text where a union comes first and tables are joined to it by their
/// primary keys, and joins first what WHERE then throws rows out by:
///   u INNER JOIN t ON u.x = t.id LEFT JOIN v ON u.y = v.y WHERE v.y IS NOT NULL
/// is read as u LEFT JOIN v, then t. The engine does not know that a union is best read once, row
/// after row, and builds it as a table to look rows up in it.
void orderJoins(Tree::Query& query);

/// Builds a table of keys once, where a union is joined to it and only rows with such a key pass,
/// and begins each branch of the union with them:
///   u LEFT JOIN g ON u.x = g.k WHERE g.k IS NOT NULL OR u.x = 0
/// stays as it is, but each branch of u that takes its x from a column t.c gets the condition
/// t.c IN (SELECT k FROM g UNION ALL SELECT 0), and g stands in front of the query. The engine
/// would make all rows of the union only to throw most of them out. Conditions: u is a UNION ALL of
/// plain selects and comes first; x and k are whole numbers, t.c one that an index begins with; the
/// join asks for nothing else; WHERE has the condition among those joined by AND, with no
/// alternatives but constants; g is one that the engine would build in any case. It stays away
/// where the select, one around it, or the branch asks for few values of an indexed column or for
/// those above one. The last of the passes: after it, g has several readers.
void startFromKeys(Tree::Query& query, Arena& arena);

}  // namespace QuorHost::Sql
