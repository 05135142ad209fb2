// A folder of its own for company files, and small readings of them.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/company/company.h"
#include "platform/error.h"

namespace companytest {

using QuorDataLib::Error;
using QuorHost::Store;

/// A folder that is removed with the object.
class Folder {
 public:
  Folder() {
    static int count = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("quoracc-company-" + std::to_string(::getpid()) + "-" + std::to_string(++count));
    std::filesystem::create_directory(path_);
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  [[nodiscard]] std::string file(const std::string& name) const { return (path_ / name).string(); }

  /// Names of what is in the folder.
  [[nodiscard]] std::vector<std::string> content() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

 private:
  std::filesystem::path path_;
};

inline std::string bytesOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The rows of a query, fields as text separated by "|"; null is "-".
inline std::vector<std::string> rows(
    Store& store, const std::string& sql,
    QuorHost::Sql::Dialect dialect = QuorHost::Sql::Dialect::Server,
    const QuorDataLib::Parameters& parameters = {}) {
  const auto records = store.connect(dialect)->OpenRecordset(sql, 4, 0, parameters, 0);
  std::vector<std::string> all;
  for (; !records->AtEnd(); records->MoveNext()) {
    std::string row;
    for (std::int32_t i = 0; i < records->FieldCount(); ++i) {
      if (i > 0) row += '|';
      row += records->Field(i).isNull() ? "-" : records->Field(i).toText();
    }
    all.push_back(row);
  }
  return all;
}

inline std::int64_t import(Store& store, const std::string& table, const std::string& csv,
                           bool replace = false) {
  std::istringstream text(csv);
  return QuorHost::importCsv(store, table, text, replace);
}

inline std::string exported(Store& store, const std::string& relation) {
  std::ostringstream text;
  QuorHost::exportCsv(store, relation, text);
  return text.str();
}

/// The description of the error that `action` raises; empty when it raises none.
inline std::string failure(const std::function<void()>& action) {
  try {
    action();
    return {};
  } catch (const Error& error) {
    return error.description();
  }
}

/// A company without data, open for writing.
class BareCompany : public testing::Test {
 protected:
  void SetUp() override {
    QuorHost::createCompany(path_, {});
    store_ = QuorHost::openCompanyFile(path_, QuorHost::Access::Write);
  }

  Folder folder_;
  std::string path_ = folder_.file("bare");
  std::shared_ptr<Store> store_;
};

}  // namespace companytest
