// Type libraries in the interface definition language, off the member tables.
#pragma once

#include <iosfwd>

#include "com/server/library.h"

namespace QuorCom {

/// Writes a library: an interface that dispatches for each table, and a class for each public
/// class. Objects of other libraries are any that dispatch.
void writeIdl(std::ostream& out, const Library& library);

}  // namespace QuorCom
