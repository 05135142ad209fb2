#include <algorithm>
#include <array>

#include "host/company/company.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::Error;

/// A table, a view or an index, and the version of the schema that brought it.
struct Addition {
  int version;
  std::string_view name;
};

/// What the schema has that version 1 had not.
constexpr std::array<Addition, 4> kAdditions{
    {{2, "InvoiHdrById"}, {2, "InvoiHdrByType"}, {2, "PurcHdrById"}, {2, "PurcHdrByStatus"}}};

bool isNewSince(int version, std::string_view name) {
  return std::ranges::any_of(kAdditions, [&](const Addition& addition) {
    return addition.version > version && addition.name == name;
  });
}

/// Adds what the company's schema lacks, all or nothing.
void bringUp(Store& store) {
  const std::unique_ptr<Transaction> transaction = store.begin();
  // Another process may have been faster.
  const int version = store.schemaVersion();
  if (version >= kNewestSchemaVersion) return;
  forEachDefinition([&](std::string_view name, const std::string& statement) {
    if (isNewSince(version, name)) store.define(statement);
  });
  store.setSchemaVersion(kNewestSchemaVersion);
  transaction->commit();
}

}  // namespace

std::shared_ptr<Store> openCompany(const std::string& path, Access access) {
  std::shared_ptr<Store> store = openCompanyFile(path, access);
  const int version = store->schemaVersion();
  if (version < 1 || version >= kNewestSchemaVersion) return store;
  store.reset();
  try {
    bringUp(*openCompanyFile(path, Access::Write));
  } catch (const Error& error) {
    throw Error(error.number(), error.source(),
                "The company file has an older schema (" + std::to_string(version) + ", here " +
                    std::to_string(kNewestSchemaVersion) +
                    ") and must be brought up to date: " + error.description());
  }
  return openCompanyFile(path, access);
}

}  // namespace QuorHost
