// A host of its own: the data is a vector, and there is no database anywhere. It shows what an
// application implements to use the component; docs/own-host.md walks through it. The contracts:
//   Recordset        MemoryRows         rows of values
//   Connection       MemoryConnection   answers statements
//   DataServices     Services           default connection, engine type, parameters
//   ErrorService     Errors             decides what becomes of an error
//   ObjectRegistry   Registry           objects that the application holds
//   ObjectFactory    Factory            objects that it can make
//   SettingsReader   Texts              texts of settings
//   Utility          Tools              small operations of the dialect and the language
//   ApplicationContext, Application     the doors to all of these
#include <iostream>

#include "platform/current_application.h"
#include "receivables/customer_queries.h"

namespace {

using namespace QuorDataLib;  // NOLINT(google-build-using-namespace): it is all about its contracts
using Text = const std::string&;

/// What the application knows: payments of customers with something left open.
struct Credit {
  std::int32_t customer, payment;
  Date date;
  Currency open;
};
const std::vector<Credit> kCredits{{7, 501, Date::of(2025, 3, 24), Currency::fromInteger(582)},
                                   {9, 502, Date::of(2025, 3, 26), Currency::fromInteger(40)},
                                   {7, 503, Date::of(2025, 3, 28), Currency::fromInteger(100)}};

class MemoryRows : public Recordset {
 public:
  struct Column {
    std::string name;
    ValueType type;
  };
  MemoryRows(std::vector<Column> columns, std::vector<std::vector<Value>> rows)
      : columns_(std::move(columns)), rows_(std::move(rows)) {}

  bool AtEnd() override { return next_ >= rows_.size(); }
  std::int32_t FieldCount() override { return static_cast<std::int32_t>(columns_.size()); }
  std::string FieldName(std::int32_t index) override { return columns_[checked(index)].name; }
  ValueType FieldType(std::int32_t index) override { return columns_[checked(index)].type; }
  Value Field(std::int32_t index) override {
    if (AtEnd()) raise(ErrorNumber::NoCurrentRow, "there is no current row");
    return rows_[next_][checked(index)];
  }
  Value Field(Text name) override {
    std::int32_t index = 0;
    while (index < FieldCount() && FieldName(index) != name) ++index;
    return Field(index);
  }
  void MoveFirst() override { next_ = 0; }
  void MoveNext() override {
    if (AtEnd()) raise(ErrorNumber::NoCurrentRow, "there is no next row");
    ++next_;
  }
  // Members that search or write ask for these; their documentation says so.
  bool Find(Text /*criterion*/) override { refuse(); }
  void AddNew() override { refuse(); }
  void SetField(Text /*name*/, const Value& /*value*/) override { refuse(); }
  void Update() override { refuse(); }
  void Close() override { rows_.clear(); }

 private:
  [[noreturn]] static void refuse() { raise(ErrorNumber::InvalidArgument, "rows are only read"); }
  [[nodiscard]] std::size_t checked(std::int32_t index) const {
    const auto at = static_cast<std::size_t>(index);
    if (at >= columns_.size()) raise(ErrorNumber::UnknownItem, "there is no such column");
    return at;
  }
  std::vector<Column> columns_;
  std::vector<std::vector<Value>> rows_;
  std::size_t next_ = 0;
};

/// A real host sends statements to its database. This one knows a single one by heart.
class MemoryConnection : public Connection {
 public:
  Ref<Recordset> OpenRecordset(Text sql, std::int32_t /*mode*/, std::int32_t /*option*/,
                               const Parameters& parameters, std::int32_t /*flag*/) override {
    if (sql != "SELECT * FROM CustOpenCredits_View WHERE ExCustId=?") refuse(sql);
    std::vector<std::vector<Value>> rows;
    for (const Credit& credit : kCredits) {
      if (credit.customer != parameters.values().at(0).toLong()) continue;
      rows.push_back({credit.payment, credit.date, credit.open});
    }
    const std::vector<MemoryRows::Column> columns{{"InPmtId", ValueType::Long},
                                                  {"PmtDate", ValueType::Date},
                                                  {"CreditAmnt", ValueType::Currency}};
    return make<MemoryRows>(columns, std::move(rows));
  }
  void Execute(Text sql, std::int32_t& /*recordsAffected*/, std::int32_t /*option*/,
               const Parameters& /*parameters*/) override {
    refuse(sql);
  }
  std::int32_t CommandTimeout() override { return 0; }
  void SetCommandTimeout(std::int32_t /*seconds*/) override {}

 private:
  [[noreturn]] static void refuse(Text sql) {
    throw Error(kStatementRefused, "OwnHost", "this host has no answer to " + sql.substr(0, 6));
  }
};

class Services : public DataServices {
 public:
  Ref<Connection> DefaultConnection() override { return make<MemoryConnection>(); }
  std::int16_t EngineType() override { return kServerEngine; }
  std::string GetParameter(Text /*name*/, Text key, Text /*table*/, Value& value,
                           const Ref<Connection>& /*from*/, std::int32_t /*option*/) override {
    value = key;  // none was ever set
    return key;
  }
  void NotifyDataChange(Text /*code*/, std::int32_t /*scope*/, std::int32_t /*kind*/,
                        const Ref<Object>& /*object*/) override {}
};

/// Says where an error arose, and has the method left with what its result holds.
class Errors : public ErrorService {
 public:
  std::int32_t ReportError(std::int32_t /*number*/, Text description, Text component,
                           Text className, Text method, std::int32_t /*line*/) override {
    std::cout << component << "." << className << "." << method << ": " << description << '\n';
    return kLeaveMethod;
  }
};

class Registry : public ObjectRegistry {
 public:
  Ref<Object> Find(Text /*name*/, const ClassInfo* /*wanted*/) override { return {}; }
};

class Factory : public ObjectFactory {
 public:
  Ref<Object> Create(Text classId, std::int32_t /*flag*/, const ClassInfo* /*wanted*/) override {
    throw Error(429, "OwnHost", "this host makes no " + classId);
  }
};

class Texts : public SettingsReader {
 public:
  std::string GetSetting(Text /*name*/, Text /*companyKey*/, std::int32_t /*kind*/,
                         const Ref<Connection>& /*from*/,
                         const std::vector<Value>& /*arguments*/) override {
    return {};
  }
};

class Tools : public Utility {
 public:
  Parameters ParameterArray(const std::vector<Value>& values) override {
    return Parameters::array(values);
  }
  std::string NullSafe(Text expression, std::int16_t instead, std::int32_t /*flag*/) override {
    return "COALESCE(" + expression + "," + std::to_string(instead) + ")";
  }
  std::int32_t DaysInMonth(std::int32_t year, std::int32_t month) override {
    return Date::build(year, month + 1, 0).civil().day;
  }
  std::string FurtherAccountTypes(std::int32_t /*accountClass*/) override { return "6,7"; }
  std::string FormatCurrency(Currency amount) override { return amount.toText(2) + " $"; }
  std::string FormatNumber(Currency number) override { return number.toText(4); }
  std::string DecimalSeparator() override { return "."; }
};

class Context : public ApplicationContext {
 public:
  Ref<QuorDataLib::DataServices> DataServices() override { return make<Services>(); }
  Ref<QuorDataLib::ErrorService> ErrorService() override { return make<Errors>(); }
  Ref<ObjectRegistry> Registry() override { return make<::Registry>(); }
  Ref<ObjectFactory> Factory() override { return make<::Factory>(); }
  Ref<QuorDataLib::SettingsReader> SettingsReader() override { return make<Texts>(); }
  Ref<QuorDataLib::Utility> Utility() override { return make<Tools>(); }
};

class OwnApplication : public Application {
 public:
  Ref<ApplicationContext> Context() override { return make<::Context>(); }
};

}  // namespace

int main() {
  installApplication([] { return make<OwnApplication>(); });
  const auto queries = make<QuorAccQueries::CCustomerQueries>();
  const auto credits = queries->OpenCustOpenCredits(7);
  for (; !credits->AtEnd(); credits->MoveNext()) {
    std::cout << credits->Field("PmtDate").toText() << "  " << credits->Field("CreditAmnt").toText()
              << '\n';
  }
  // What this host cannot answer goes to its error service, and the result stays empty.
  return queries->OpenCustBalance(7, Date(), 0, "") ? 1 : 0;
}
