// The contracts of the data library: connection, recordset, data services, error service, and the
// application object that hands them out. A host implements them; the component only calls them.
//
// Every operation may raise an `Error`; each says below which ones belong to it. Objects are shared
// by reference count (`Ref`), and every `Ref` returned may be empty unless its operation says
// otherwise. All of them are used on one thread. Each contract has a member table (`info()`), off
// which a host that is reached late-bound, by names and values, can be wrapped or offered.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ref.h"
#include "platform/values/date.h"
#include "platform/values/value.h"

namespace QuorDataLib {

/// The open result of a query. It stands on its first row when it is opened, or at the end when it
/// has none. Every operation but `Close` raises 3704 after `Close`, also when the connection it
/// came from is gone. Dropping the last reference closes it: nobody has to close a recordset that
/// is not wanted any more.
class Recordset : public Contract<Recordset> {
 public:
  static constexpr std::string_view kClassName = "Recordset";
  static const ClassInfo& info();

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

/// Modes of `Connection::OpenRecordset`. Rows are read in all but `kOpenForUpdate`; the numbers
/// tell the library for what, so that it may choose how.
inline constexpr std::int32_t kOpenDefault = 0;    ///< a row or two read at once (payment terms)
inline constexpr std::int32_t kOpenForUpdate = 1;  ///< rows to be added or changed
inline constexpr std::int32_t kOpenColumns = 2;    ///< finding out a table's columns
inline constexpr std::int32_t kOpenRows = 4;       ///< rows handed to the caller, or read once
inline constexpr std::int32_t kOpenDetails = 6;    ///< the details of a row (dates of a term)

/// A connection to one company's database.
class Connection : public Contract<Connection> {
 public:
  static constexpr std::string_view kClassName = "Connection";
  static const ClassInfo& info();

  /// Runs a query and returns its open recordset, never empty.
  ///
  /// `mode` is one of the five above. A recordset opened with `kOpenForUpdate` takes new and
  /// changed rows where the statement reads one table's own columns; where it does not, it can be
  /// read, and raises 5 when a row is to be changed. `option` is always 0. `parameters` fill the
  /// `?` markers in order. `flag` is 0 or -1, as each query states. Raises -2147217900 for a
  /// statement that the engine refuses, with the reason and its place, and 5 for another mode.
  virtual Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode,
                                       std::int32_t option, const Parameters& parameters,
                                       std::int32_t flag) = 0;

  /// Runs a statement that changes rows, in a transaction of its own. `recordsAffected` receives
  /// the number of rows changed; `option` is -1. Raises as `OpenRecordset` does; the statement has
  /// then changed nothing.
  virtual void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
                       const Parameters& parameters) = 0;

  /// Seconds that a statement may run before it is stopped with an error; 0 for no limit. It counts
  /// for statements begun from then on. Objects with a limit of their own set it on the connection
  /// that they share for the time of a call, and put it back.
  [[nodiscard]] virtual std::int32_t CommandTimeout() = 0;
  virtual void SetCommandTimeout(std::int32_t seconds) = 0;
};

/// The number of an error raised for a statement that the engine refuses.
inline constexpr std::int32_t kStatementRefused = static_cast<std::int32_t>(0x80040E14);

/// Engine types that `DataServices::EngineType` reports.
inline constexpr std::int16_t kServerEngine = 0;
inline constexpr std::int16_t kDesktopEngine = 1;

/// The data services: default connection, engine type, parameter tables, change notification.
class DataServices : public Contract<DataServices> {
 public:
  static constexpr std::string_view kClassName = "DataServices";
  static const ClassInfo& info();

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
class ErrorService : public Contract<ErrorService> {
 public:
  static constexpr std::string_view kClassName = "ErrorService";
  static const ClassInfo& info();

  /// Reports an error and answers one of the three actions above. It may raise an error instead,
  /// which then reaches the caller of the method as it is. `line` is the source line of the step
  /// that failed, 0 when none was reached. It is called while the error is being handled, so that a
  /// service may look at it (`currentError`), at its source for instance: an error that a service
  /// raised in an inner method comes by again in the outer one.
  virtual std::int32_t ReportError(std::int32_t number, const std::string& description,
                                   const std::string& component, const std::string& className,
                                   const std::string& method, std::int32_t line) = 0;

  /// Tells that the step at `line`, an error of which was answered with `kRetryStep`, has ended: it
  /// was done in the end, was given up or raised. The next error there is a new one. What it raises
  /// is ignored; a service that does not count needs none.
  virtual void RetryEnded(const std::string& /*className*/, const std::string& /*method*/,
                          std::int32_t /*line*/) {}
};

/// Objects that the application already holds, by name.
///
/// `wanted` is the contract that the caller is going to use, or null when any object will do. A
/// host whose objects are late-bound makes its proxy for that contract; others need not look at it:
/// the caller checks what it gets.
class ObjectRegistry : public Contract<ObjectRegistry> {
 public:
  static constexpr std::string_view kClassName = "ObjectRegistry";
  static const ClassInfo& info();

  /// The object registered under `name`, or an empty reference.
  virtual Ref<Object> Find(const std::string& name, const ClassInfo* wanted) = 0;
};

/// Creates objects from class identifiers such as "QuorCastriaFoundation.CCastriaHelper". `wanted`
/// is as above.
class ObjectFactory : public Contract<ObjectFactory> {
 public:
  static constexpr std::string_view kClassName = "ObjectFactory";
  static const ClassInfo& info();

  /// A new object, never empty; `flag` is 0. Raises 429 for a class it does not know.
  virtual Ref<Object> Create(const std::string& classId, std::int32_t flag,
                             const ClassInfo* wanted) = 0;
};

/// Reads the texts of company settings.
class SettingsReader : public Contract<SettingsReader> {
 public:
  static constexpr std::string_view kClassName = "SettingsReader";
  static const ClassInfo& info();

  /// The text of setting `name` of the company family `companyKey`; `kind` is 2, `arguments` fill
  /// the text's own placeholders. An unknown setting is an empty text.
  virtual std::string GetSetting(const std::string& name, const std::string& companyKey,
                                 std::int32_t kind, const Ref<Connection>& connection,
                                 const std::vector<Value>& arguments) = 0;
};

/// Small operations that depend on the active database engine, on the host's configuration or on
/// the user's language.
class Utility : public Contract<Utility> {
 public:
  static constexpr std::string_view kClassName = "Utility";
  static const ClassInfo& info();

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

  /// An amount in home currency as the user reads money: rounded to the currency's decimals, with
  /// the currency's sign and the separators of the user's language.
  virtual std::string FormatCurrency(Currency amount) = 0;

  /// A number as the user reads it: with as many decimals as it needs and the user's decimal
  /// separator, not grouped.
  virtual std::string FormatNumber(Currency number) = 0;

  /// The user's decimal separator, as `FormatNumber` writes it; never empty.
  virtual std::string DecimalSeparator() = 0;
};

/// What the application offers to its components. None of the objects returned is empty.
class ApplicationContext : public Contract<ApplicationContext> {
 public:
  static constexpr std::string_view kClassName = "ApplicationContext";
  static const ClassInfo& info();

  virtual Ref<QuorDataLib::DataServices> DataServices() = 0;
  virtual Ref<QuorDataLib::ErrorService> ErrorService() = 0;
  virtual Ref<ObjectRegistry> Registry() = 0;
  virtual Ref<ObjectFactory> Factory() = 0;
  virtual Ref<QuorDataLib::SettingsReader> SettingsReader() = 0;
  virtual Ref<QuorDataLib::Utility> Utility() = 0;
};

/// The global object of the data library, one per thread.
class Application : public Contract<Application> {
 public:
  static constexpr std::string_view kClassName = "Application";
  static const ClassInfo& info();

  virtual Ref<ApplicationContext> Context() = 0;
};

}  // namespace QuorDataLib
