#include <unicode/ucol.h>
#include <unicode/uversion.h>

#include <array>

#include "host/engines/sqlite/functions/collator.h"
#include "platform/error.h"

namespace QuorHost::Sqlite {

struct Collator::Order {
  UCollator* collator = nullptr;
  ~Order() { ucol_close(collator); }
};

// English and French both follow the order of the root locale.
Collator::Collator(Differs by) : order_(std::make_unique<Order>()) {
  UErrorCode status = U_ZERO_ERROR;
  order_->collator = ucol_open("", &status);
  if (U_SUCCESS(status)) {
    ucol_setStrength(order_->collator, by == Differs::Letters ? UCOL_PRIMARY : UCOL_SECONDARY);
    ucol_setAttribute(order_->collator, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
  }
  if (U_FAILURE(status)) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InternalError,
                       "The order of texts cannot be loaded from the ICU library: " +
                           std::string(u_errorName(status)));
  }
}

Collator::~Collator() = default;

int Collator::compare(std::string_view a, std::string_view b) const noexcept {
  UErrorCode status = U_ZERO_ERROR;
  return ucol_strcollUTF8(order_->collator, a.data(), static_cast<std::int32_t>(a.size()), b.data(),
                          static_cast<std::int32_t>(b.size()), &status);
}

std::string Collator::version() const {
  UVersionInfo version;
  std::array<char, U_MAX_VERSION_STRING_LENGTH> text{};
  ucol_getVersion(order_->collator, version);
  u_versionToString(version, text.data());
  return text.data();
}

}  // namespace QuorHost::Sqlite
