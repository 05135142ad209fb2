// Roles that read a company and do no more.
#pragma once

#include <string>

#include "host/engines/postgres/server/link.h"
#include "host/sql/catalogue.h"

namespace QuorHost::Postgres {

/// Lets `role` into the schema and at its catalogue: whoever may read that is a reader of the
/// company. Raises 75 with what to do where there is no such role.
void letRead(Link& link, const Address& address, const std::string& role);

/// Lets the company's readers read all of its tables and views and run its functions.
void handDownReading(Link& link, const Sql::Catalogue& catalogue);

}  // namespace QuorHost::Postgres
