#include "bench/companies.h"

#include <cstdio>
#include <filesystem>

#include "host/company/company.h"
#include "host/engines/sqlite/opening.h"

namespace QuorBench {
namespace {

QuorHost::HostOptions reading(const std::string& path) {
  QuorHost::HostOptions options;
  options.store = QuorHost::openCompanyFile(path, QuorHost::Access::Read);
  return options;
}

}  // namespace

Company::Company(const std::string& path)
    : host_(reading(path)),
      connection_(host_.connection()),
      customers_(QuorDataLib::make<QuorAccQueries::CCustomerQueries>()),
      byHand_(QuorHost::Sqlite::openDatabase(path, QuorHost::Access::Read,
                                             QuorHost::Sqlite::kBusyTimeout)) {
  customers_->SetCustomConnection(connection_);
}

void Company::use() {
  static const Company* inUse = nullptr;
  if (inUse != this) host_.install();
  inUse = this;
}

QuorAccQueries::CCustomerQueries& Company::customers() {
  use();
  return *customers_;
}

std::shared_ptr<Company> Companies::open(int scale) {
  std::shared_ptr<Company>& company = open_[scale];
  if (company) return company;
  std::filesystem::create_directories(folder_);
  const std::string path = folder_ + "/sample-" + std::to_string(QuorHost::kSchemaVersion) + "-" +
                           std::to_string(scale) + ".db";
  if (!std::filesystem::exists(path)) {
    std::fprintf(stderr, "making %s, a company of %d,000 invoices\n", path.c_str(), scale);
    QuorHost::createCompany(path, {.sample = true, .scale = scale});
  }
  return company = std::make_shared<Company>(path);
}

}  // namespace QuorBench
