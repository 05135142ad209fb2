#include "bench/column_source.h"

#include <utility>
#include <vector>

namespace QuorBench {
namespace {

using namespace QuorDataLib;

class NoRows final : public Recordset {
 public:
  explicit NoRows(const Ref<Recordset>& like) {
    for (std::int32_t index = 0; index < like->FieldCount(); ++index) {
      names_.push_back(like->FieldName(index));
    }
  }

  bool AtEnd() override { return true; }
  std::int32_t FieldCount() override { return static_cast<std::int32_t>(names_.size()); }
  std::string FieldName(std::int32_t index) override { return names_.at(std::size_t(index)); }
  ValueType FieldType(std::int32_t /*index*/) override { return ValueType::Empty; }
  Value Field(std::int32_t /*index*/) override { none(); }
  Value Field(const std::string& /*name*/) override { none(); }
  void MoveFirst() override {}
  void MoveNext() override { none(); }
  bool Find(const std::string& /*criterion*/) override { return false; }
  void AddNew() override { none(); }
  void SetField(const std::string& /*name*/, const Value& /*value*/) override { none(); }
  void Update() override { none(); }
  void Close() override {}

 private:
  [[noreturn]] static void none() { raise(ErrorNumber::NoCurrentRow, "There are no rows"); }

  std::vector<std::string> names_;
};

class ColumnSource final : public Connection {
 public:
  explicit ColumnSource(Ref<Recordset> answer) : answer_(std::move(answer)) {}

  Ref<Recordset> OpenRecordset(const std::string& /*sql*/, std::int32_t /*mode*/,
                               std::int32_t /*option*/, const Parameters& /*parameters*/,
                               std::int32_t /*flag*/) override {
    return answer_;
  }
  void Execute(const std::string& /*sql*/, std::int32_t& recordsAffected, std::int32_t /*option*/,
               const Parameters& /*parameters*/) override {
    recordsAffected = 0;
  }
  std::int32_t CommandTimeout() override { return 0; }
  void SetCommandTimeout(std::int32_t /*seconds*/) override {}

 private:
  Ref<Recordset> answer_;
};

}  // namespace

Ref<Connection> columnSource(const Ref<Connection>& connection, const std::string& sql) {
  return make<ColumnSource>(make<NoRows>(connection->OpenRecordset(sql, 2, 0, {}, -1)));
}

}  // namespace QuorBench
