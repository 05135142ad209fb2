// What is changed in a resolved query so that the storage engine answers it faster.
//
// A rewritten query gives the rows of the plain one, in the order that it asks for. Each pass is
// small, works on the tree alone and has its reason and its conditions beside it; docs/dialects.md
// shows them together.
#pragma once

#include <functional>

#include "host/sql/arena.h"
#include "host/sql/catalogue.h"
#include "host/sql/tree.h"
#include "host/sql/writer.h"

namespace QuorHost::Sql {

/// The query of a view, made anew for each call, or null where it is not known.
using ViewReader = std::function<Tree::Query*(const Relation& view)>;

/// Runs all passes over `query`, a whole statement, in place.
void rewrite(Tree::Query& query, const Catalogue& catalogue, const ViewReader& views, Arena& arena);

/// Leaves out of all queries in `statement` what nothing reads and might end it with an error, for
/// an engine that computes columns of derived tables and views whether they are read or not. Views
/// are opened where `writer` says that a column of theirs may raise, and stay views otherwise.
void leaveUnread(const Tree::Statement& statement, const ViewReader& views, const Writer& writer,
                 Arena& arena);

}  // namespace QuorHost::Sql
