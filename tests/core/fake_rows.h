// The fake platform's script, and its rows and connections.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/current_application.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace fake {

using namespace QuorDataLib;

inline constexpr std::int32_t kFailure = 4711;

struct Report {
  std::int32_t number;
  std::string description, component, className, method;
  std::int32_t line;
};

/// A call that reached the platform, and what it gave where that can be told from other values: a
/// text, or a number of its own.
struct Call {
  std::string name;
  Value given;
};

struct Opened {
  std::string sql;
  std::int32_t mode, option, flag;
  Parameters parameters;
  std::string connection;
  std::int32_t timeout;
};

/// What the platform is told to do, and what it saw.
struct Script {
  // Orders.
  int failAt = 0;    // number of the call that fails; 0 for none
  int failures = 1;  // how many calls fail from there on
  std::int32_t answer = kLeaveMethod;
  std::optional<Error> serviceRaises;
  std::int16_t engine = kServerEngine;
  bool foreignCurrency = true;
  bool cacheAllowed = true;
  std::vector<std::string> columns{"A"};
  std::map<std::string, Value> row;  // the row of every recordset; empty for no row
  int rowCount = 1;                  // how often it comes
  std::int32_t otherFields = 1;      // what fields hold that are not in the row; 0: each its own
  // Observations.
  int calls = 0;
  std::vector<Call> log;   // the calls that did not fail, without those of reports
  std::string failed;      // the last call that did
  int openRecordsets = 0;  // recordsets alive and not closed
  int retriesEnded = 0;
  std::vector<Report> reports;
  std::vector<Opened> opened;
  std::int32_t commandTimeout = 30;  // of every connection

  void enter(const char* call) {
    ++calls;
    if (failAt != 0 && calls >= failAt && calls < failAt + failures) {
      failed = call;
      throw Error(kFailure, "Fake", failed + " failed");
    }
    log.push_back({call, {}});
  }

  /// Notes what the last call gives, and gives it.
  template <class T>
  T give(T value) {
    log.back().given = value;
    return value;
  }

  /// A number of its own for everything that has a name.
  std::int32_t numberOf(const std::string& name) {
    constexpr std::int32_t kFirst = 1001;
    return numbers_.try_emplace(name, kFirst + static_cast<std::int32_t>(numbers_.size()))
        .first->second;
  }

 private:
  std::map<std::string, std::int32_t> numbers_;
};
using ScriptPtr = std::shared_ptr<Script>;

class FakeRecordset : public Recordset {
 public:
  explicit FakeRecordset(ScriptPtr script) : script_(std::move(script)) {
    ++script_->openRecordsets;
  }
  ~FakeRecordset() override { forget(); }

  bool AtEnd() override { return enter("AtEnd"), position_ >= rowCount(); }
  std::int32_t FieldCount() override {
    return enter("FieldCount"), static_cast<std::int32_t>(script_->columns.size());
  }
  std::string FieldName(std::int32_t index) override {
    enter("FieldName");
    return script_->give(script_->columns.at(static_cast<std::size_t>(index)));
  }
  ValueType FieldType(std::int32_t) override { return enter("FieldType"), ValueType::Long; }
  Value Field(std::int32_t index) override { return Field(std::to_string(index)); }
  Value Field(const std::string& name) override {
    enter("Field");
    const auto found = script_->row.find(name);
    if (found != script_->row.end()) return script_->give(found->second);
    if (script_->otherFields != 0) return script_->otherFields;
    return script_->give(Value(script_->numberOf(name)));
  }
  void MoveFirst() override { enter("MoveFirst"), position_ = 0; }
  void MoveNext() override { enter("MoveNext"), ++position_; }
  /// There is a row unless the criterion has a 2 in it, so that a search for what is free ends.
  bool Find(const std::string& criterion) override {
    enter("Find");
    position_ = criterion.find('2') == std::string::npos ? 0 : rowCount();
    return position_ < rowCount();
  }
  void AddNew() override { enter("AddNew"); }
  void SetField(const std::string&, const Value&) override { enter("SetField"); }
  void Update() override { enter("Update"); }
  void Close() override {
    script_->enter("Close");
    forget();
  }

 private:
  void enter(const char* call) {
    script_->enter(call);
    if (closed_) raise(ErrorNumber::ObjectClosed, "The recordset is closed");
  }
  void forget() {
    if (!closed_) --script_->openRecordsets;
    closed_ = true;
  }
  int rowCount() const { return script_->row.empty() ? 0 : script_->rowCount; }

  ScriptPtr script_;
  int position_ = 0;
  bool closed_ = false;
};

class FakeConnection : public Connection {
 public:
  FakeConnection(ScriptPtr script, std::string name)
      : script_(std::move(script)), name_(std::move(name)) {}
  Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode, std::int32_t option,
                               const Parameters& parameters, std::int32_t flag) override {
    script_->enter("OpenRecordset");
    script_->opened.push_back(
        {sql, mode, option, flag, parameters, name_, script_->commandTimeout});
    return make<FakeRecordset>(script_);
  }
  void Execute(const std::string&, std::int32_t& affected, std::int32_t,
               const Parameters&) override {
    script_->enter("Execute");
    affected = 1;
  }
  std::int32_t CommandTimeout() override {
    return script_->enter("CommandTimeout"), script_->commandTimeout;
  }
  void SetCommandTimeout(std::int32_t seconds) override {
    script_->enter("SetCommandTimeout");
    script_->commandTimeout = seconds;
  }

 private:
  ScriptPtr script_;
  std::string name_;
};

}  // namespace fake
