// A host's connection and recordset.
#include "com/proxies/proxies.h"
#include "platform/data_library.h"

namespace QuorCom {

using QuorDataLib::Connection;
using QuorDataLib::Object;
using QuorDataLib::Parameters;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;
using QuorDataLib::ValueType;

namespace {

class RecordsetProxy final : public Proxy<Recordset> {
 public:
  using Proxy::Proxy;
  bool AtEnd() override { return host_.get<bool>("AtEnd"); }
  std::int32_t FieldCount() override { return host_.get<std::int32_t>("FieldCount"); }
  std::string FieldName(std::int32_t index) override {
    return host_.call<std::string>("FieldName", index);
  }
  ValueType FieldType(std::int32_t index) override {
    return host_.call<ValueType>("FieldType", index);
  }
  Value Field(std::int32_t index) override { return host_.call<Value>("Field", Value(index)); }
  Value Field(const std::string& name) override { return host_.call<Value>("Field", Value(name)); }
  void MoveFirst() override { host_.call<void>("MoveFirst"); }
  void MoveNext() override { host_.call<void>("MoveNext"); }
  bool Find(const std::string& criterion) override { return host_.call<bool>("Find", criterion); }
  void AddNew() override { host_.call<void>("AddNew"); }
  void SetField(const std::string& name, const Value& value) override {
    host_.call<void>("SetField", name, value);
  }
  void Update() override { host_.call<void>("Update"); }
  void Close() override { host_.call<void>("Close"); }
};

class ConnectionProxy final : public Proxy<Connection> {
 public:
  using Proxy::Proxy;
  Ref<Recordset> OpenRecordset(const std::string& sql, std::int32_t mode, std::int32_t option,
                               const Parameters& parameters, std::int32_t flag) override {
    return host_.call<Ref<Recordset>>("OpenRecordset", sql, mode, option, parameters, flag);
  }
  void Execute(const std::string& sql, std::int32_t& recordsAffected, std::int32_t option,
               const Parameters& parameters) override {
    host_.call<void>("Execute", sql, recordsAffected, option, parameters);
  }
  std::int32_t CommandTimeout() override { return host_.get<std::int32_t>("CommandTimeout"); }
  void SetCommandTimeout(std::int32_t seconds) override { host_.put("CommandTimeout", seconds); }
};

}  // namespace

Ref<Object> newDataProxy(const ComPtr<IDispatch>& object, std::string_view contract) {
  return oneOf<RecordsetProxy, ConnectionProxy>(object, contract);
}

Ref<Object> newProxy(const ComPtr<IDispatch>& object, std::string_view contract) {
  Ref<Object> proxy = newDataProxy(object, contract);
  if (!proxy) proxy = newServiceProxy(object, contract);
  if (!proxy) proxy = newFoundationProxy(object, contract);
  return proxy;
}

}  // namespace QuorCom
