// The list of the component's public classes.
#include <algorithm>
#include <array>

#include "core/queries.h"
#include "core/value_records.h"
#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"
#include "inventory/kit_component.h"
#include "ledger/general_ledger_helper.h"
#include "ledger/general_ledger_queries.h"
#include "payables/supplier_helper.h"
#include "payables/supplier_queries.h"
#include "payroll/employee_helper.h"
#include "payroll/employee_queries.h"
#include "projects/project_helper.h"
#include "projects/project_queries.h"
#include "receivables/customer_helper.h"
#include "receivables/customer_queries.h"
#include "setup/country_helper.h"
#include "setup/tax_helper.h"
#include "terms/term_helper.h"
#include "terms/trx_rec_helper.h"

namespace QuorAccQueries {
std::span<const ClassInfo* const> allClasses() {
  static const std::array kClasses{
      &CQueries::info(),         &CCustomerQueries::info(),      &CCustomerHelper::info(),
      &CSupplierQueries::info(), &CSupplierHelper::info(),       &CInventoryQueries::info(),
      &CInventoryHelper::info(), &CGeneralLedgerQueries::info(), &CGeneralLedgerHelper::info(),
      &CProjectQueries::info(),  &CProjectHelper::info(),        &CTermHelper::info(),
      &CTrxRecHelper::info(),    &CEmployeeQueries::info(),      &CEmployeeHelper::info(),
      &CTaxHelper::info(),       &CCountryHelper::info(),        &CCustPmtInfo::info(),
      &CCustSaleInfo::info(),    &CSupplierPmtInfo::info(),      &CSupplierPurcInfo::info(),
      &CKitComponent::info(),
  };
  return kClasses;
}

const ClassInfo* findClass(std::string_view name) noexcept {
  const auto classes = allClasses();
  const auto found = std::ranges::find_if(classes, [&](const ClassInfo* info) {
    return QuorDataLib::sameMemberName(info->name, name);
  });
  return found == classes.end() ? nullptr : *found;
}

}  // namespace QuorAccQueries
