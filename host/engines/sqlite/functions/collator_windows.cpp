#include <windows.h>

#include <array>

#include "host/engines/sqlite/functions/collator.h"
#include "host/engines/sqlite/functions/wide_text.h"

namespace QuorHost::Sqlite {

namespace {

// Every punctuation mark counts, as any other character does.
constexpr DWORD kAccents = LINGUISTIC_IGNORECASE | NORM_IGNOREKANATYPE | SORT_STRINGSORT;

/// A text as UTF-16, mostly without asking for memory.
class WideText {
 public:
  explicit WideText(std::string_view text) {
    size_ = text.empty() ? 0 : convert(text, short_.data(), static_cast<int>(short_.size()));
    if (size_ > 0 || text.empty()) return;
    long_ = wide(text);
    data_ = long_.data();
    size_ = static_cast<int>(long_.size());
  }
  [[nodiscard]] const wchar_t* data() const noexcept { return data_; }
  [[nodiscard]] int size() const noexcept { return size_; }

 private:
  static int convert(std::string_view text, wchar_t* into, int room) {
    return ::MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), into,
                                 room);
  }

  std::array<wchar_t, 128> short_;
  std::wstring long_;
  const wchar_t* data_ = short_.data();
  int size_ = 0;
};

}  // namespace

struct Collator::Order {
  DWORD flags;
};

Collator::Collator(Differs by)
    : order_(std::make_unique<Order>(
          Order{kAccents | (by == Differs::Letters ? LINGUISTIC_IGNOREDIACRITIC : 0U)})) {}

Collator::~Collator() = default;

int Collator::compare(std::string_view a, std::string_view b) const noexcept {
  const WideText wideA(a);
  const WideText wideB(b);
  return ::CompareStringEx(LOCALE_NAME_INVARIANT, order_->flags, wideA.data(), wideA.size(),
                           wideB.data(), wideB.size(), nullptr, nullptr, 0) -
         CSTR_EQUAL;
}

std::string Collator::version() const {
  NLSVERSIONINFOEX version{};
  version.dwNLSVersionInfoSize = sizeof version;
  ::GetNLSVersionEx(COMPARE_STRING, LOCALE_NAME_INVARIANT, &version);
  return "Windows " + std::to_string(version.dwNLSVersion) + "." +
         std::to_string(version.dwDefinedVersion);
}

}  // namespace QuorHost::Sqlite
