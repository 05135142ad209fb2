#include "platform/contracts.h"

#include <algorithm>
#include <array>

#include "platform/collection.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorDataLib {

std::span<const ClassInfo* const> allContracts() {
  static const std::array kContracts{
      &Application::info(),
      &ApplicationContext::info(),
      &DataServices::info(),
      &Connection::info(),
      &Recordset::info(),
      &ErrorService::info(),
      &ObjectRegistry::info(),
      &ObjectFactory::info(),
      &SettingsReader::info(),
      &Utility::info(),
      &QuorCastriaFoundation::CCastriaHelper::info(),
      &QuorCastriaFoundation::CastriaApplication::info(),
      &QuorCastriaFoundation::Company::info(),
      &QuorCastriaFoundation::CurrencyInfo::info(),
      &QuorCastriaFoundation::Settings::info(),
      &QuorCastriaFoundation::Declares::info(),
      &Collection::info(),
      &Enumerator::info(),
  };
  return kContracts;
}

const ClassInfo* findContract(std::string_view name) noexcept {
  const auto contracts = allContracts();
  const auto found = std::ranges::find_if(
      contracts, [&](const ClassInfo* info) { return sameMemberName(info->name, name); });
  return found == contracts.end() ? nullptr : *found;
}

}  // namespace QuorDataLib
