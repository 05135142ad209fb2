// The component's entry object.
#pragma once

#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

class CCustomerHelper;
class CCustomerQueries;
class CEmployeeHelper;
class CEmployeeQueries;
class CGeneralLedgerHelper;
class CGeneralLedgerQueries;
class CInventoryHelper;
class CInventoryQueries;
class CProjectHelper;
class CSupplierHelper;
class CSupplierQueries;
class CTaxHelper;
class CTermHelper;
class CTrxRecHelper;

/// The root: a host creates one, assigns its connection and takes everything else from it.
///
/// The five query objects are made on first read, kept for the root's life, and handed the root's
/// connection on every read; an error goes to the common trap. The helpers are new on every call
/// and belong to the caller; their factories let errors pass.
class CQueries : public ComponentObject {
 public:
  static constexpr std::string_view kClassName = "CQueries";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  Ref<CCustomerQueries> Customer();
  Ref<CEmployeeQueries> Employee();
  Ref<CGeneralLedgerQueries> GeneralLedger();
  Ref<CInventoryQueries> Inventory();
  Ref<CSupplierQueries> Supplier();

  /// The connection for the objects handed out from now on; it cannot be read back. Errors name the
  /// member "CurrentConnection".
  void SetCustomConnection(const Ref<Connection>& Conn);

  [[nodiscard]] Ref<CInventoryHelper> GetNewInventoryHelper() const;
  [[nodiscard]] Ref<CGeneralLedgerHelper> GetNewGeneralLedgerHelper() const;
  [[nodiscard]] Ref<CCustomerHelper> GetNewCustomerHelper() const;
  [[nodiscard]] Ref<CSupplierHelper> GetNewSupplierHelper() const;
  [[nodiscard]] Ref<CProjectHelper> GetNewProjectHelper() const;
  [[nodiscard]] Ref<CEmployeeHelper> GetNewEmployeeHelper() const;
  [[nodiscard]] Ref<CTrxRecHelper> GetNewTrxRecHelper() const;
  [[nodiscard]] Ref<CTermHelper> GetNewTermHelper() const;
  [[nodiscard]] Ref<CTaxHelper> GetNewTaxHelper() const;

 private:
  Ref<CCustomerQueries> customer_;
  Ref<CEmployeeQueries> employee_;
  Ref<CGeneralLedgerQueries> generalLedger_;
  Ref<CInventoryQueries> inventory_;
  Ref<CSupplierQueries> supplier_;
  Ref<Connection> connection_;
};

}  // namespace QuorAccQueries
