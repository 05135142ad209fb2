// The member tables of the data library's contracts and of collections.
#include "platform/collection.h"
#include "platform/data_library.h"
#include "platform/member_table.h"

namespace QuorDataLib {
namespace {

/// A column by its number or its name.
Value fieldOf(Recordset& rows, const Value& column) {
  if (column.type() == ValueType::Text) return rows.Field(column.text());
  return rows.Field(column.toLong());
}

Ref<Enumerator> enumeratorOf(Collection& collection) {
  return make<Enumerator>(collection.values());
}

// Who calls by name takes an object of any contract.
Ref<Object> findObject(ObjectRegistry& registry, const std::string& name) {
  return registry.Find(name, nullptr);
}
Ref<Object> createObject(ObjectFactory& factory, const std::string& classId, std::int32_t flag) {
  return factory.Create(classId, flag, nullptr);
}

}  // namespace

const ClassInfo& Collection::info() {
  static const ClassInfo info = describeContract<Collection>(
      "Values in their order, counted from 1.",
      {
          withNumber(kDefaultMember,
                     method<&Collection::Item>("Item", {"Index"}, "The value at a place.")),
          withNumber(kEnumeratorMember,
                     propertyGet<&enumeratorOf>("_NewEnum", "Walks over the values.")),
          propertyGet<&Collection::Count>("Count", "How many values there are."),
          method<&Collection::Add>("Add", {"NewItem"}, "Adds a value at the end."),
      });
  return info;
}

const ClassInfo& Enumerator::info() {
  static const ClassInfo info = describeContract<Enumerator>(
      "Walks over a collection.",
      {
          method<&Enumerator::Next>("Next", {"Item"}, "Gives the next value; false at the end."),
          method<&Enumerator::Reset>("Reset", {}, "Starts over."),
      });
  return info;
}

const ClassInfo& Recordset::info() {
  static const ClassInfo info = describeContract<Recordset>(
      "The open result of a query.",
      {
          propertyGet<&Recordset::AtEnd>("AtEnd", "Whether there is no current row."),
          propertyGet<&Recordset::FieldCount>("FieldCount", "Number of columns."),
          method<&Recordset::FieldName>("FieldName", {"Index"}, "Name of a column, from 0."),
          method<&Recordset::FieldType>("FieldType", {"Index"}, "Type of a column, as its number."),
          method<&fieldOf>("Field", {"Column"},
                           "The current row's value in a column, by its number or name."),
          method<&Recordset::MoveFirst>("MoveFirst", {}, "Moves to the first row."),
          method<&Recordset::MoveNext>("MoveNext", {}, "Moves to the next row."),
          method<&Recordset::Find>("Find", {"Criterion"},
                                   "Moves to the first row that meets a criterion."),
          method<&Recordset::AddNew>("AddNew", {}, "Starts a new row."),
          method<&Recordset::SetField>("SetField", {"Name", "Value"},
                                       "Sets a field of the new or the current row."),
          method<&Recordset::Update>("Update", {}, "Stores the row."),
          method<&Recordset::Close>("Close", {}, "Releases the result."),
      });
  return info;
}

const ClassInfo& Connection::info() {
  static const ClassInfo info = describeContract<Connection>(
      "A connection to one company's database.",
      {
          method<&Connection::OpenRecordset>(
              "OpenRecordset", {"Sql", "Mode", "Option", "Parameters", "Flag"}, "Runs a query."),
          method<&Connection::Execute>("Execute",
                                       {"Sql", "RecordsAffected", "Option", "Parameters"},
                                       "Runs a statement that changes rows."),
          propertyGet<&Connection::CommandTimeout>("CommandTimeout",
                                                   "Seconds that a statement may run."),
          propertyPut<&Connection::SetCommandTimeout>("CommandTimeout",
                                                      "Seconds that a statement may run."),
      });
  return info;
}

const ClassInfo& DataServices::info() {
  static const ClassInfo info = describeContract<DataServices>(
      "Default connection, engine type, parameter tables, change notification.",
      {
          propertyGet<&DataServices::DefaultConnection>(
              "DefaultConnection", "The connection for objects that were given none."),
          propertyGet<&DataServices::EngineType>("EngineType", "1 for the desktop engine."),
          method<&DataServices::GetParameter>(
              "GetParameter", {"Name", "Key", "Table", "Value", "Connection", "Option"},
              "Reads a parameter from a parameter table."),
          method<&DataServices::NotifyDataChange>("NotifyDataChange",
                                                  {"Code", "Scope", "Kind", "Object"},
                                                  "Tells that a data set has changed."),
      });
  return info;
}

const ClassInfo& ErrorService::info() {
  static const ClassInfo info = describeContract<ErrorService>(
      "Receives every error that a method of the component meets.",
      {
          method<&ErrorService::ReportError>(
              "ReportError", {"Number", "Description", "Component", "ClassName", "Method", "Line"},
              "Reports an error; 0 retries the step, 1 goes on after it, 2 leaves the method."),
          method<&ErrorService::RetryEnded>("RetryEnded", {"ClassName", "Method", "Line"},
                                            "Tells that a step which was retried has ended."),
      });
  return info;
}

const ClassInfo& ObjectRegistry::info() {
  static const ClassInfo info = describeContract<ObjectRegistry>(
      "Objects that the application already holds, by name.",
      {method<&findObject>("Find", {"Name"}, "The object of a name, or nothing.")});
  return info;
}

const ClassInfo& ObjectFactory::info() {
  static const ClassInfo info = describeContract<ObjectFactory>(
      "Creates objects from class identifiers.",
      {method<&createObject>("Create", {"ClassId", "Flag"}, "A new object.")});
  return info;
}

const ClassInfo& SettingsReader::info() {
  static const ClassInfo info = describeContract<SettingsReader>(
      "Reads the texts of company settings.",
      {method<&SettingsReader::GetSetting>(
          "GetSetting", {"Name", "CompanyKey", "Kind", "Connection", "Arguments"},
          "The text of a setting.")});
  return info;
}

const ClassInfo& Utility::info() {
  static const ClassInfo info = describeContract<Utility>(
      "Small operations that depend on the database engine, the user or the host's configuration.",
      {
          method<&Utility::ParameterArray>("ParameterArray", {"Values"},
                                           "The parameter array of a collection of values."),
          method<&Utility::NullSafe>("NullSafe", {"Expression", "DefaultValue", "Flag"},
                                     "An expression that is never null."),
          method<&Utility::DaysInMonth>("DaysInMonth", {"Year", "Month"},
                                        "Number of days of a month."),
          method<&Utility::FurtherAccountTypes>(
              "FurtherAccountTypes", {"AccountClass"},
              "The further account types of a class in the fixed chart."),
          method<&Utility::FormatCurrency>("FormatCurrency", {"Amount"},
                                           "An amount as the user reads money."),
          method<&Utility::FormatNumber>("FormatNumber", {"Number"},
                                         "A number as the user reads it."),
          propertyGet<&Utility::DecimalSeparator>("DecimalSeparator",
                                                  "The user's decimal separator."),
      });
  return info;
}

const ClassInfo& ApplicationContext::info() {
  static const ClassInfo info = describeContract<ApplicationContext>(
      "What the application offers to its components.",
      {
          propertyGet<&ApplicationContext::DataServices>("DataServices", "The data services."),
          propertyGet<&ApplicationContext::ErrorService>("ErrorService", "The error service."),
          propertyGet<&ApplicationContext::Registry>("Registry", "The objects by name."),
          propertyGet<&ApplicationContext::Factory>("Factory", "Creates objects."),
          propertyGet<&ApplicationContext::SettingsReader>("SettingsReader",
                                                           "Reads company settings."),
          propertyGet<&ApplicationContext::Utility>("Utility", "The utility object."),
      });
  return info;
}

const ClassInfo& Application::info() {
  static const ClassInfo info = describeContract<Application>(
      "The global object of the data library.",
      {propertyGet<&Application::Context>("Context", "The application context.")});
  return info;
}

}  // namespace QuorDataLib
