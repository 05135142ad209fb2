#include "core/queries.h"

#include <source_location>

#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"
#include "ledger/general_ledger_helper.h"
#include "ledger/general_ledger_queries.h"
#include "payables/supplier_helper.h"
#include "payables/supplier_queries.h"
#include "payroll/employee_helper.h"
#include "payroll/employee_queries.h"
#include "projects/project_helper.h"
#include "receivables/customer_helper.h"
#include "receivables/customer_queries.h"
#include "setup/tax_helper.h"
#include "terms/term_helper.h"
#include "terms/trx_rec_helper.h"

namespace QuorAccQueries {
namespace {

/// Reads a query property: makes the object on first use and hands it the root's connection.
template <class Query>
Ref<Query> kept(std::string_view property, Ref<Query>& object, const Ref<Connection>& connection,
                std::source_location where = std::source_location::current()) {
  return trap(CQueries::kClassName, property, [&](Steps& step, Ref<Query>& result) {
    if (!object) step([&] { object = make<Query>(); }, where);
    step([&] { object->SetCustomConnection(connection); }, where);
    result = object;
  });
}

template <class Helper>
Ref<Helper> fresh(const Ref<Connection>& connection) {
  const Ref<Helper> helper = make<Helper>();
  helper->SetCustomConnection(connection);
  return helper;
}

}  // namespace

const ClassInfo& CQueries::info() {
  static const ClassInfo info = describeClass<CQueries>(
      "The entry object: query objects and fresh helpers on one connection.",
      {
          propertyGet<&CQueries::Customer>("Customer", "The customer queries."),
          propertyGet<&CQueries::Employee>("Employee", "The payroll queries."),
          propertyGet<&CQueries::GeneralLedger>("GeneralLedger", "The general ledger queries."),
          propertyGet<&CQueries::Inventory>("Inventory", "The inventory queries."),
          propertyGet<&CQueries::Supplier>("Supplier", "The supplier queries."),
          propertyPut<&CQueries::SetCustomConnection>(
              "CustomConnection", "Assigns the connection for the objects handed out."),
          method<&CQueries::GetNewInventoryHelper>("GetNewInventoryHelper", {},
                                                   "A new inventory helper."),
          method<&CQueries::GetNewGeneralLedgerHelper>("GetNewGeneralLedgerHelper", {},
                                                       "A new general ledger helper."),
          method<&CQueries::GetNewCustomerHelper>("GetNewCustomerHelper", {},
                                                  "A new customer helper."),
          method<&CQueries::GetNewSupplierHelper>("GetNewSupplierHelper", {},
                                                  "A new supplier helper."),
          method<&CQueries::GetNewProjectHelper>("GetNewProjectHelper", {},
                                                 "A new project helper."),
          method<&CQueries::GetNewEmployeeHelper>("GetNewEmployeeHelper", {},
                                                  "A new payroll helper."),
          method<&CQueries::GetNewTrxRecHelper>("GetNewTrxRecHelper", {},
                                                "A new helper for recurring transactions."),
          method<&CQueries::GetNewTermHelper>("GetNewTermHelper", {},
                                              "A new helper for payment terms."),
          method<&CQueries::GetNewTaxHelper>("GetNewTaxHelper", {}, "A new sales-tax helper."),
      });
  return info;
}

Ref<CCustomerQueries> CQueries::Customer() { return kept("Customer", customer_, connection_); }
Ref<CEmployeeQueries> CQueries::Employee() { return kept("Employee", employee_, connection_); }
Ref<CGeneralLedgerQueries> CQueries::GeneralLedger() {
  return kept("GeneralLedger", generalLedger_, connection_);
}
Ref<CInventoryQueries> CQueries::Inventory() { return kept("Inventory", inventory_, connection_); }
Ref<CSupplierQueries> CQueries::Supplier() { return kept("Supplier", supplier_, connection_); }

void CQueries::SetCustomConnection(const Ref<Connection>& Conn) {
  trap(kClassName, "CurrentConnection", [&](Steps& step) { step([&] { connection_ = Conn; }); });
}

Ref<CInventoryHelper> CQueries::GetNewInventoryHelper() const {
  return fresh<CInventoryHelper>(connection_);
}
Ref<CGeneralLedgerHelper> CQueries::GetNewGeneralLedgerHelper() const {
  return fresh<CGeneralLedgerHelper>(connection_);
}
Ref<CCustomerHelper> CQueries::GetNewCustomerHelper() const {
  return fresh<CCustomerHelper>(connection_);
}
Ref<CSupplierHelper> CQueries::GetNewSupplierHelper() const {
  return fresh<CSupplierHelper>(connection_);
}
Ref<CProjectHelper> CQueries::GetNewProjectHelper() const {
  return fresh<CProjectHelper>(connection_);
}
Ref<CEmployeeHelper> CQueries::GetNewEmployeeHelper() const {
  return fresh<CEmployeeHelper>(connection_);
}
Ref<CTrxRecHelper> CQueries::GetNewTrxRecHelper() const {
  return fresh<CTrxRecHelper>(connection_);
}
Ref<CTermHelper> CQueries::GetNewTermHelper() const { return fresh<CTermHelper>(connection_); }
Ref<CTaxHelper> CQueries::GetNewTaxHelper() const { return fresh<CTaxHelper>(connection_); }

}  // namespace QuorAccQueries
