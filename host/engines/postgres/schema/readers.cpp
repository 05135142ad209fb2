#include "host/engines/postgres/schema/readers.h"

#include "host/engines/postgres/server/server_error.h"
#include "platform/values/shown_text.h"

namespace QuorHost::Postgres {
namespace {

/// The roles of the readers, quoted and separated by commas.
constexpr const char* kReaders =
    "SELECT string_agg(DISTINCT CASE a.grantee WHEN 0 THEN 'PUBLIC' ELSE quote_ident(r.rolname) "
    "END, ', ') FROM pg_class c CROSS JOIN aclexplode(c.relacl) a LEFT JOIN pg_roles r ON r.oid = "
    "a.grantee WHERE c.oid = 'quor_catalogue'::regclass AND a.privilege_type = 'SELECT' AND "
    "a.grantee <> c.relowner AND (a.grantee = 0 OR r.oid IS NOT NULL)";

/// The functions that statements call: all but those of triggers.
constexpr const char* kFunctions =
    "SELECT string_agg(oid::regprocedure::text, ', ') FROM pg_proc WHERE pronamespace = "
    "to_regnamespace(quote_ident(current_schema())) AND proname LIKE 'quor\\_%' AND prorettype <> "
    "'trigger'::regtype";

std::string textOf(Link& link, const char* sql) {
  const Result result = link.run(sql);
  return std::string(textAt(result, 0, 0));
}

}  // namespace

void letRead(Link& link, const Address& address, const std::string& role) {
  // As a text: a name that is too long for the server would be that of another role.
  if (link.number("SELECT count(*) FROM pg_roles WHERE rolname::text = " + Link::literal(role)) ==
      0) {
    refuseServer(address.shown, "cannot be read by " + QuorDataLib::shownText(role) +
                                    ": there is no such role on the server; see that it is spelled "
                                    "as it is there, or make it first (CREATE ROLE)");
  }
  const std::string to = " TO " + Link::quoted(role);
  link.run("GRANT USAGE ON SCHEMA " + Link::quoted(address.schema) + to +
           "; GRANT SELECT ON quor_catalogue" + to);
}

void handDownReading(Link& link, const Sql::Catalogue& catalogue) {
  const std::string readers = textOf(link, kReaders);
  if (readers.empty() || catalogue.relations().empty()) return;
  std::string relations;
  for (const Sql::Relation& relation : catalogue.relations()) {
    relations += (relations.empty() ? "" : ", ") + Link::nameOf(relation.name);
  }
  link.run("GRANT SELECT ON " + relations + " TO " + readers + "; GRANT EXECUTE ON FUNCTION " +
           textOf(link, kFunctions) + " TO " + readers);
}

}  // namespace QuorHost::Postgres
