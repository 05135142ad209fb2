// The services of the application context: data services, settings reader, error service, utility.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "host/application/foundation.h"
#include "host/application/host.h"
#include "host/sql/types.h"
#include "platform/data_library.h"

namespace QuorHost {

/// The data services of one company.
class HostDataServices final : public QuorDataLib::DataServices {
 public:
  /// `dryRun` answers "0" for every parameter that is not overridden.
  HostDataServices(SharedSources sources, QuorDataLib::Ref<QuorDataLib::Connection> connection,
                   Sql::Dialect dialect, bool dryRun);

  QuorDataLib::Ref<QuorDataLib::Connection> DefaultConnection() override { return connection_; }
  std::int16_t EngineType() override { return static_cast<std::int16_t>(dialect_); }
  /// The parameter's text in `QuorAcctParams` or `QuorCastriaParams`; `key` when the table has no
  /// such parameter, or no value for it. Raises 5 for another table.
  std::string GetParameter(const std::string& name, const std::string& key,
                           const std::string& table, QuorDataLib::Value& value,
                           const QuorDataLib::Ref<QuorDataLib::Connection>& connection,
                           std::int32_t option) override;
  /// This host shows no data, so that nobody has to be told.
  void NotifyDataChange(const std::string& code, std::int32_t scope, std::int32_t kind,
                        const QuorDataLib::Ref<QuorDataLib::Object>& object) override;

 private:
  [[nodiscard]] std::string readParameter(
      const std::string& name, const std::string& key, const std::string& table,
      const QuorDataLib::Ref<QuorDataLib::Connection>& connection) const;

  SharedSources sources_;
  QuorDataLib::Ref<QuorDataLib::Connection> connection_;
  Sql::Dialect dialect_;
  bool dryRun_;
};

/// Reads the texts in the table `CieSetting`. The placeholders of a text are `%1` to `%9`, for the
/// arguments in their order; one without an argument stays as it is.
class HostSettingsReader final : public QuorDataLib::SettingsReader {
 public:
  explicit HostSettingsReader(SharedSources sources) : sources_(std::move(sources)) {}
  /// One company file holds one family's settings: `companyKey` makes no difference.
  std::string GetSetting(const std::string& name, const std::string& companyKey, std::int32_t kind,
                         const QuorDataLib::Ref<QuorDataLib::Connection>& connection,
                         const std::vector<QuorDataLib::Value>& arguments) override;

 private:
  SharedSources sources_;
};

/// Answers errors as the host's options say.
///
/// An error that is raised again keeps its number and description. Its source says where it was
/// met: "QuorAccQueries.CCustomerQueries.OpenCustBalance:123". When it comes out of an inner method
/// that was reported before, and the report is made while the error is being handled, the inner
/// place stays in front: "<inner>, called by QuorAccQueries.CCustomerHelper.GetCustBalance:45".
class HostErrorService final : public QuorDataLib::ErrorService {
 public:
  explicit HostErrorService(OnError onError) : onError_(onError) {}
  std::int32_t ReportError(std::int32_t number, const std::string& description,
                           const std::string& component, const std::string& className,
                           const std::string& method, std::int32_t line) override;
  void RetryEnded(const std::string& className, const std::string& method,
                  std::int32_t line) override;

 private:
  /// Class, method, line and number of an error.
  using ErrorAtStep = std::tuple<std::string, std::string, std::int32_t, std::int32_t>;
  [[nodiscard]] std::int32_t retry(const ErrorAtStep& error);

  OnError onError_;
  /// How often each error was retried at its step, until the step ended.
  std::map<ErrorAtStep, int> retries_;
};

/// The user reads English or French as they are written in Canada: the company parameter "Language"
/// says which ("F" is French, anything else English).
class HostUtility final : public QuorDataLib::Utility {
 public:
  HostUtility(Sql::Dialect dialect, QuorDataLib::Ref<QuorCastriaFoundation::Company> company)
      : dialect_(dialect), company_(std::move(company)) {}
  QuorDataLib::Parameters ParameterArray(const std::vector<QuorDataLib::Value>& values) override;
  std::string NullSafe(const std::string& expression, std::int16_t defaultValue,
                       std::int32_t flag) override;
  /// Raises 5 for a month outside 1 to 13.
  std::int32_t DaysInMonth(std::int32_t year, std::int32_t month) override;
  /// The company parameter "FurtherExpenseAccountTypes", or "6,7" where it is not set. Raises 5 for
  /// another class than 2, and where the parameter is no list of numbers.
  std::string FurtherAccountTypes(std::int32_t accountClass) override;
  /// "-$1,234.50" or "-1 234,50 $", with no-break spaces, rounded half away from zero.
  std::string FormatCurrency(QuorDataLib::Currency amount) override;
  std::string FormatNumber(QuorDataLib::Currency number) override;
  std::string DecimalSeparator() override;

 private:
  [[nodiscard]] bool inFrench() const;

  Sql::Dialect dialect_;
  QuorDataLib::Ref<QuorCastriaFoundation::Company> company_;
};

}  // namespace QuorHost
