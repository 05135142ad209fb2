// What the host itself reads from and writes to the company file.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/engines/store.h"
#include "platform/data_library.h"

namespace QuorHost {

/// Whether `name` is one of the tables of parameters, `QuorAcctParams` and `QuorCastriaParams`,
/// matched without regard to case.
[[nodiscard]] bool isParameterTable(std::string_view name);

/// A table of values by key.
struct KeyedTable {
  std::string_view table;
  std::string_view key;
  std::string_view value;
};

/// The host's own way to a company's tables; it shows in no trace. Whatever a company does not have
/// (in a dry run there is no company at all) is simply not found.
class CompanyTables {
 public:
  /// `store` may be empty.
  explicit CompanyTables(std::shared_ptr<Store> store);

  /// The value that stands under `key`; nothing when there is no such table, row or value.
  /// `connection` is the one to read through; the host's own when it is empty.
  [[nodiscard]] std::optional<QuorDataLib::Value> find(
      const KeyedTable& table, const QuorDataLib::Value& key,
      const QuorDataLib::Ref<QuorDataLib::Connection>& connection = {}) const;

  /// The value of `expression` in the first row of `table` that meets `condition` (empty for any
  /// row), whose markers are filled with `values`; nothing when there is none or it is null.
  [[nodiscard]] std::optional<QuorDataLib::Value> first(
      std::string_view table, const std::string& expression, const std::string& condition = {},
      std::vector<QuorDataLib::Value> values = {}) const;

  /// Stores `value` under `key`, over a value that is there. False when the company cannot be
  /// changed or has no such table.
  bool put(const KeyedTable& table, const QuorDataLib::Value& key,
           const QuorDataLib::Value& value) const;

 private:
  [[nodiscard]] bool has(std::string_view table) const;

  std::shared_ptr<Store> store_;
  QuorDataLib::Ref<QuorDataLib::Connection> connection_;
};

}  // namespace QuorHost
