// A company file in a temporary folder, read by the component in either dialect.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/application/host.h"
#include "host/company/company.h"
#include "host/engines/store.h"
#include "platform/current_application.h"

namespace fixture {

using QuorDataLib::Connection;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorHost::Sql::Dialect;

inline constexpr Dialect kDialects[] = {Dialect::Server, Dialect::Desktop};

/// The current row's fields of some columns, or of all, as text separated by "|"; null is "-".
inline std::string line(const Ref<Recordset>& rows, std::initializer_list<const char*> columns) {
  std::string text;
  const auto add = [&](const Value& value) {
    if (!text.empty()) text += "|";
    text += value.isNull() ? "-" : value.toText();
  };
  for (const char* column : columns) add(rows->Field(std::string(column)));
  if (columns.size() == 0) {
    for (std::int32_t i = 0; i < rows->FieldCount(); ++i) add(rows->Field(i));
  }
  return text;
}

/// All rows of a recordset in their order, each as `line` has it; the recordset is closed.
inline std::vector<std::string> lines(const Ref<Recordset>& rows,
                                      std::initializer_list<const char*> columns = {}) {
  std::vector<std::string> all;
  for (; !rows->AtEnd(); rows->MoveNext()) all.push_back(line(rows, columns));
  rows->Close();
  return all;
}

/// A company file that is removed with the object.
class CompanyFile {
 public:
  explicit CompanyFile(const QuorHost::CreateOptions& options = {}) {
    static int count = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("quoracc-test-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
    QuorHost::createCompany(path_.string(), options);
    store_ = QuorHost::openCompanyFile(path_.string(), QuorHost::Access::Write);
  }
  ~CompanyFile() {
    QuorDataLib::installApplication({});
    store_.reset();
    for (const char* suffix : {"", "-wal", "-shm"}) {
      std::error_code ignored;
      std::filesystem::remove(path_.string() + suffix, ignored);
    }
  }
  CompanyFile(const CompanyFile&) = delete;
  CompanyFile& operator=(const CompanyFile&) = delete;

  void load(const std::string& table, const std::string& csv, bool replace = false) {
    std::istringstream text(csv);
    QuorHost::importCsv(*store_, table, text, replace);
  }

  /// A host of this company, installed on the thread while it lives.
  [[nodiscard]] std::unique_ptr<QuorHost::Host> host(
      Dialect dialect, std::map<std::string, std::string> overrides = {}) const {
    auto host = std::make_unique<QuorHost::Host>(QuorHost::HostOptions{
        .store = store_, .dialect = dialect, .overrides = std::move(overrides)});
    host->install();
    return host;
  }

  [[nodiscard]] QuorHost::Store& store() const { return *store_; }
  [[nodiscard]] std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
  std::shared_ptr<QuorHost::Store> store_;
};

}  // namespace fixture
