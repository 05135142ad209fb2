// The contracts of the data library: connection, recordset, data services, error service, and the
// application object that hands them out. A host implements them; the component only calls them.
//
// Every operation may raise an `Error`; each says below which ones belong to it. Objects are shared
// by reference count (`Ref`), and every `Ref` returned may be empty unless its operation says
// otherwise. All of them are used on one thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/date.h"
#include "platform/ref.h"
#include "platform/value.h"

namespace QuorDataLib {

/// The open result of a query. It stands on its first row when it is opened, or at the end when it
/// has none. Every operation but `Close` raises 3704 after `Close`, also when the connection it
/// came from is gone.
class Recordset : public Object {
 public:
  /// True when there is no current row: after the last one, or in an empty result.
  [[nodiscard]] virtual bool AtEnd() = 0;

  /// Number of columns; also known when there are no rows.
  [[nodiscard]] virtual std::int32_t FieldCount() = 0;

  /// Name of the column at `index` (from 0), spelled as the statement or the table spells it.
  /// Raises 3265 outside the range.
  [[nodiscard]] virtual std::string FieldName(std::int32_t index) = 0;

  /// Type of the column at `index`; `Empty` where the statement leaves it open (`SELECT NULL`).
  /// Raises 3265 outside the range.
  [[nodiscard]] virtual ValueType FieldType(std::int32_t index) = 0;

  /// Value of the current row in the column at `index`, of the column's type or Null. Raises 3265
  /// outside the range and 3021 when there is no current row.
  [[nodiscard]] virtual Value Field(std::int32_t index) = 0;

  /// The same by column name, matched without regard to case; of several columns of one name, the
  /// first. Raises 3265 for an unknown name.
  [[nodiscard]] virtual Value Field(const std::string& name) = 0;

  /// Moves to the first row, or to the end of an empty result.
  virtual void MoveFirst() = 0;

  /// Moves to the next row. Raises 3021 at the end.
  virtual void MoveNext() = 0;

  /// Moves to the first row, searched from the first, that meets `criterion`: `Column = number`,
  /// `Column='text'` (a quote inside doubled) or `Column = #date#`. Returns whether there is one;
  /// when there is none, the recordset is at its end. Raises 5 for another form of criterion and
  /// 3265 for an unknown column.
  virtual bool Find(const std::string& criterion) = 0;

  /// Starts a new row in a recordset opened for update; its fields are null until they are set.
  /// Raises 5 when the recordset cannot be updated.
  virtual void AddNew() = 0;

  /// Sets a field of the new or of the current row; `Update` stores it. Raises 3265 for an unknown
  /// column, 5 when the recordset cannot be updated, and the errors of the value's conversion to
  /// the column's type.
  virtual void SetField(const std::string& name, const Value& value) = 0;

  /// Stores the row begun with `AddNew` or changed with `SetField`, which becomes the current row
  /// with the values that the database gave it. Raises 5 when nothing is pending, and the errors of
  /// the storage engine; the row is then stored in whole or not at all.
  virtual void Update() = 0;

  /// Releases the result. Closing twice is allowed.
  virtual void Close() = 0;
};

/// A connection to one company's database.
class Connection : public Object {
 public:
  /// Runs a query and returns its open recordset, never empty.
  ///
  /// `mode` is 4 for rows handed to the caller or read once, 2 for finding out a table's columns, 0
  /// and 6 for the rows of payment terms; rows to be added or changed need mode 1. `option` is
  /// always 0. `parameters` fill the `?` markers in order. `flag` is 0 or -1, as each query states.
  /// Raises -2147217900 for a statement that the engine refuses, with the reason and its place.
  virtual Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                       std::int32_t option, const Parameters& parameters,
                                       std::int32_t flag) = 0;

  /// Runs a statement that changes rows, in a transaction of its own. `recordsAffected` receives
  /// the number of rows changed; `option` is -1. Raises as `OpenRecordset` does; the statement has
  /// then changed nothing.
  virtual void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
                       const Parameters& parameters) = 0;

  /// Seconds that a statement may run before it is stopped with an error; 0 for no limit.
  [[nodiscard]] virtual std::int32_t CommandTimeout() = 0;
  virtual void SetCommandTimeout(std::int32_t seconds) = 0;
};

/// The number of an error raised for a statement that the engine refuses.
inline constexpr std::int32_t kStatementRefused = static_cast<std::int32_t>(0x80040E14);

/// Engine types that `DataServices::EngineType` reports.
inline constexpr std::int16_t kServerEngine = 0;
inline constexpr std::int16_t kDesktopEngine = 1;

/// The data services: default connection, engine type, parameter tables, change notification.
class DataServices : public Object {
 public:
  /// The connection for objects that were given none.
  virtual Ref<Connection> DefaultConnection() = 0;

  /// The database engine: 1 for the desktop engine, 0 for the server engine.
  [[nodiscard]] virtual std::int16_t EngineType() = 0;

  /// Reads a parameter from a parameter table ("QuorAcctParams", "QuorCastriaParams") and returns
  /// its text. `key` is the parameter store's second key; the reference host answers it when the
  /// table has no such parameter. `value` receives what is returned. `option` is 0.
  virtual std::string GetParameter(const std::string& name, const std::string& key,
                                   const std::string& table, Value& value,
                                   const Ref<Connection>& connection, std::int32_t option) = 0;

  /// Tells the application that the data set of `code` has changed. `scope` is 0 and `kind` 3 for
  /// rows that were updated; `object` may be empty.
  virtual void NotifyDataChange(const std::string& code, std::int32_t scope, std::int32_t kind,
                                const Ref<Object>& object) = 0;
};

/// What the error service answers to a method whose step failed. Any other number leaves, too.
inline constexpr std::int32_t kRetryStep = 0;
inline constexpr std::int32_t kContinueAfterStep = 1;
inline constexpr std::int32_t kLeaveMethod = 2;

/// Receives every error that a method of the component meets.
class ErrorService : public Object {
 public:
  /// Reports an error and answers one of the three actions above. It may raise an error instead,
  /// which then reaches the caller of the method as it is. `line` is the source line of the step
  /// that failed, 0 when none was reached.
  virtual std::int32_t ReportError(std::int32_t number, const std::string& description,
                                   const std::string& component, const std::string& className,
                                   const std::string& method, std::int32_t line) = 0;
};

/// Objects that the application already holds, by name.
class ObjectRegistry : public Object {
 public:
  /// The object registered under `name`, or an empty reference.
  virtual Ref<Object> Find(const std::string& name) = 0;
};

/// Creates objects from class identifiers such as "QuorCastriaFoundation.CCastriaHelper".
class ObjectFactory : public Object {
 public:
  /// A new object, never empty; `flag` is 0. Raises 429 for a class it does not know.
  virtual Ref<Object> Create(const std::string& classId, std::int32_t flag) = 0;
};

/// Reads the texts of company settings.
class SettingsReader : public Object {
 public:
  /// The text of setting `name` of the company family `companyKey`; `kind` is 2, `arguments` fill
  /// the text's own placeholders. An unknown setting is an empty text.
  virtual std::string GetSetting(const std::string& name, const std::string& companyKey,
                                 std::int32_t kind, const Ref<Connection>& connection,
                                 const std::vector<Value>& arguments) = 0;
};

/// Small operations that depend on the active database engine or on the host's configuration.
class Utility : public Object {
 public:
  /// The parameter array made of `values`, in their order.
  virtual Parameters ParameterArray(const std::vector<Value>& values) = 0;

  /// An expression of the active dialect whose value is that of `expression`, or `defaultValue`
  /// where it is null. `flag` is -1.
  virtual std::string NullSafe(const std::string& expression, std::int16_t defaultValue,
                               std::int32_t flag) = 0;

  /// Number of days of `month` of `year`; month 13 is January of the next year.
  virtual std::int32_t DaysInMonth(std::int32_t year, std::int32_t month) = 0;

  /// The expense account types of the fixed chart of accounts beside type 5, as a list of numbers
  /// separated by commas, never empty. `accountClass` is 2 (expenses).
  virtual std::string FurtherAccountTypes(std::int32_t accountClass) = 0;
};

/// What the application offers to its components. None of the objects returned is empty.
class ApplicationContext : public Object {
 public:
  virtual Ref<QuorDataLib::DataServices> DataServices() = 0;
  virtual Ref<QuorDataLib::ErrorService> ErrorService() = 0;
  virtual Ref<ObjectRegistry> Registry() = 0;
  virtual Ref<ObjectFactory> Factory() = 0;
  virtual Ref<QuorDataLib::SettingsReader> SettingsReader() = 0;
  virtual Ref<QuorDataLib::Utility> Utility() = 0;
};

/// The global object of the data library, one per thread.
class Application : public Object {
 public:
  virtual Ref<ApplicationContext> Context() = 0;
};

}  // namespace QuorDataLib
