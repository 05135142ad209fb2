#include <utility>

#include "host/application/company_tables.h"
#include "host/application/services.h"
#include "platform/error.h"

namespace QuorHost {

using QuorDataLib::Connection;
using QuorDataLib::ErrorNumber;
using QuorDataLib::Object;
using QuorDataLib::Ref;
using QuorDataLib::Value;

namespace {

constexpr KeyedTable kSettingTexts{"CieSetting", "SettingName", "SettingText"};

/// `text` with the arguments in their places.
std::string filled(const std::string& text, const std::vector<Value>& arguments) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char digit = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '0';
    const std::size_t number =
        digit >= '1' && digit <= '9' ? static_cast<std::size_t>(digit - '0') : 0;
    if (number == 0 || number > arguments.size()) {
      result += text[i];
    } else {
      result += arguments[number - 1].toText();
      ++i;
    }
  }
  return result;
}

}  // namespace

HostDataServices::HostDataServices(SharedSources sources, Ref<Connection> connection,
                                   Sql::Dialect dialect, bool dryRun)
    : sources_(std::move(sources)),
      connection_(std::move(connection)),
      dialect_(dialect),
      dryRun_(dryRun) {}

std::string HostDataServices::readParameter(const std::string& name, const std::string& key,
                                            const std::string& table,
                                            const Ref<Connection>& connection) const {
  if (!isParameterTable(table)) {
    QuorDataLib::raise(ErrorNumber::InvalidArgument,
                       "There is no parameter table " + table +
                           ": parameters are in QuorAcctParams and QuorCastriaParams");
  }
  if (const std::string* const overridden = sources_->overrides.param(table, name)) {
    return *overridden;
  }
  if (dryRun_) return "0";
  const std::optional<Value> found =
      sources_->tables.find({table, "ParamName", "ParamValue"}, name, connection);
  return found ? found->toText() : key;
}

std::string HostDataServices::GetParameter(const std::string& name, const std::string& key,
                                           const std::string& table, Value& value,
                                           const Ref<Connection>& connection,
                                           std::int32_t /*option*/) {
  std::string text = readParameter(name, key, table, connection);
  value = text;
  return text;
}

void HostDataServices::NotifyDataChange(const std::string& /*code*/, std::int32_t /*scope*/,
                                        std::int32_t /*kind*/, const Ref<Object>& /*object*/) {}

std::string HostSettingsReader::GetSetting(const std::string& name,
                                           const std::string& /*companyKey*/, std::int32_t /*kind*/,
                                           const Ref<Connection>& connection,
                                           const std::vector<Value>& arguments) {
  const std::optional<Value> text = sources_->tables.find(kSettingTexts, name, connection);
  return text ? filled(text->toText(), arguments) : std::string();
}

}  // namespace QuorHost
