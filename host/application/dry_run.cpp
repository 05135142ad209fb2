#include "host/application/dry_run.h"

#include <map>

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost {
namespace {

using QuorDataLib::ErrorNumber;
using QuorDataLib::raise;
using QuorDataLib::Value;

class DryRunRecordset final : public QuorDataLib::Recordset {
 public:
  bool AtEnd() override {
    requireOpen();
    return !hasRow_;
  }
  std::int32_t FieldCount() override {
    requireOpen();
    return 0;
  }
  std::string FieldName(std::int32_t index) override { refuseColumn(index); }
  QuorDataLib::ValueType FieldType(std::int32_t index) override { refuseColumn(index); }
  Value Field(std::int32_t index) override { refuseColumn(index); }

  Value Field(const std::string& name) override {
    requireRow();
    const auto found = row_.find(Sql::lowerName(name));
    return found == row_.end() ? Value() : found->second;
  }

  void MoveFirst() override { requireOpen(); }

  void MoveNext() override {
    requireRow();
    hasRow_ = false;
  }

  bool Find(const std::string& /*criterion*/) override {
    requireOpen();
    hasRow_ = false;
    return false;
  }

  void AddNew() override {
    requireOpen();
    row_.clear();
    hasRow_ = true;
  }

  void SetField(const std::string& name, const Value& value) override {
    requireRow();
    row_[Sql::lowerName(name)] = value;
  }

  void Update() override { requireRow(); }
  void Close() override { open_ = false; }

 private:
  void requireOpen() const {
    if (!open_) raise(ErrorNumber::ObjectClosed, "The recordset is closed");
  }

  void requireRow() const {
    requireOpen();
    if (!hasRow_) {
      raise(ErrorNumber::NoCurrentRow, "No current row: in a dry run recordsets are empty");
    }
  }

  [[noreturn]] void refuseColumn(std::int32_t index) const {
    requireOpen();
    raise(ErrorNumber::UnknownItem, "The recordset has no column " + std::to_string(index) +
                                        ": in a dry run recordsets have none");
  }

  std::map<std::string, Value> row_;  // by lower-case name
  bool hasRow_ = false;
  bool open_ = true;
};

}  // namespace

QuorDataLib::Ref<QuorDataLib::Recordset> DryRunConnection::OpenRecordset(
    const std::string& /*sql*/, std::int32_t /*mode*/, std::int32_t /*option*/,
    const QuorDataLib::Parameters& /*parameters*/, std::int32_t /*flag*/) {
  return QuorDataLib::make<DryRunRecordset>();
}

void DryRunConnection::Execute(const std::string& /*sql*/, std::int32_t& recordsAffected,
                               std::int32_t /*option*/,
                               const QuorDataLib::Parameters& /*parameters*/) {
  recordsAffected = 0;
}

}  // namespace QuorHost
