// What a company file may hold, and in which form.
#pragma once

#include <vector>

#include "host/engines/sqlite/database.h"
#include "host/engines/sqlite/stored_catalogue.h"

namespace QuorHost::Sqlite {

/// Sees that the file holds nothing but what its own definitions name: any other trigger, a virtual
/// table or any other object has been put there by somebody else, and would work
/// behind everybody's back. Raises 75 with the file and the object otherwise. Nothing but the
/// engine's list of objects and the definitions' names are read for that.
void requireKnownObjects(Database& database);

/// Sees that every object has the form that this program gives it; a table's checks may be those of
/// an older build, a view may be written otherwise. Where the file may be written, these are
/// brought to the form of this build. Raises 75 with the file and the object for any other
/// difference.
void requireKnownForms(Database& database, const std::vector<StoredDefinition>& definitions);

}  // namespace QuorHost::Sqlite
