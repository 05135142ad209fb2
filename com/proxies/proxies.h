// Objects of a host that is not ours, serving the contracts.
#pragma once

#include <string_view>
#include <utility>

#include "com/objects/identity.h"
#include "com/proxies/late_bound.h"
#include "platform/ref.h"

namespace QuorCom {

/// Base of the proxies: holds the host's object exactly as long as the component holds the proxy.
template <class Contract>
class Proxy : public Contract, public Foreign {
 public:
  explicit Proxy(ComPtr<IDispatch> object) : host_(std::move(object), Contract::info()) {}
  [[nodiscard]] IUnknown* original() const noexcept override { return host_.object(); }

 protected:
  LateBound host_;
};

/// A proxy that serves the contract of that name; empty when there is no such contract, or none
/// that a host's object could serve.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> newProxy(const ComPtr<IDispatch>& object,
                                                             std::string_view contract);

/// The same by area; `newProxy` asks one after the other.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> newDataProxy(const ComPtr<IDispatch>& object,
                                                                 std::string_view contract);
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> newServiceProxy(const ComPtr<IDispatch>& object,
                                                                    std::string_view contract);
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Object> newFoundationProxy(
    const ComPtr<IDispatch>& object, std::string_view contract);

/// One of `Proxies` that serves the contract of that name, or nothing.
template <class... Proxies>
QuorDataLib::Ref<QuorDataLib::Object> oneOf(const ComPtr<IDispatch>& object,
                                            std::string_view contract) {
  QuorDataLib::Ref<QuorDataLib::Object> proxy;
  const auto offer = [&]<class P>(const P*) {
    if (!proxy && P::kClassName == contract) proxy = QuorDataLib::make<P>(object);
  };
  (offer(static_cast<const Proxies*>(nullptr)), ...);
  return proxy;
}

}  // namespace QuorCom
