#include "cli/report/printer.h"

#include "cli/report/source.h"

namespace QuorCli {

std::string AgingContext::currencyCode(std::int32_t currencyId) const {
  const auto found = currencyCodes.find(currencyId);
  return found == currencyCodes.end() ? "currency " + std::to_string(currencyId) : found->second;
}

std::string documentKind(const AgingSource& source, const AgedDocument& document) {
  switch (document.kind) {
    case AgedDocument::Kind::Credit:
      return "credit";
    case AgedDocument::Kind::Payment:
      return "payment";
    case AgedDocument::Kind::Document:
      break;
  }
  if (document.amount < QuorDataLib::Currency()) return "credit note";
  const auto type = static_cast<std::size_t>(document.type);
  const bool known = document.type > 0 && type <= source.typeNames.size();
  return known ? std::string(source.typeNames[type - 1]) : "type " + std::to_string(document.type);
}

}  // namespace QuorCli
