#include "host/company/company.h"
#include "host/company/parameters.h"
#include "host/company/place/new_file.h"
#include "host/company/sample/sample.h"
#include "host/company/schema.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

void fill(Store& store, const CreateOptions& options, const Progress& progress) {
  const std::unique_ptr<Transaction> transaction = store.begin();
  defineRelations(store);
  writeParameters(store);
  if (options.sample) Sample::writeSample(store, options, progress);
  defineIndexes(store, [&](int done, int total) {
    if (progress) progress("building the indexes", done, total);
  });
  store.setSchemaVersion(kNewestSchemaVersion);
  transaction->commit();
}

}  // namespace

void createCompany(const std::string& path, const CreateOptions& options,
                   const Progress& progress) {
  if (options.scale < 1 || options.scale > kLargestScale) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InvalidArgument,
                       "The scale must be from 1 to " + std::to_string(kLargestScale));
  }
  const OnServer onServer{.replace = options.force, .readers = options.readers};
  if (isServer(path)) {
    fill(*createCompanyFile(path, Durability::Full, onServer), options, progress);
    return;
  }
  NewFile file(path, options.force);
  fill(*createCompanyFile(file.path(), Durability::Bulk, onServer), options, progress);
  file.putInPlace();
}

}  // namespace QuorHost
