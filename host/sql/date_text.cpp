#include "host/sql/date_text.h"

#include "host/sql/names.h"
#include "platform/error.h"

namespace QuorHost::Sql {
namespace {

using QuorDataLib::Date;

/// Reads a text from left to right; every `take` leaves it as it is when it does not match.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool atEnd() const noexcept { return rest_.empty(); }

  bool take(char c) {
    if (rest_.empty() || lowerCase(rest_.front()) != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void skipBlanks() {
    while (take(' ')) continue;
  }

  /// A whole number of `least` to `most` digits.
  bool number(std::size_t least, std::size_t most, int& value) {
    std::size_t digits = 0;
    int read = 0;
    while (digits < most && digits < rest_.size() && rest_[digits] >= '0' && rest_[digits] <= '9') {
      read = read * 10 + (rest_[digits++] - '0');
    }
    if (digits < least) return false;
    rest_.remove_prefix(digits);
    value = read;
    return true;
  }

 private:
  std::string_view rest_;
};

bool readIsoDay(Reader& text, Date::Civil& civil) {
  if (!text.number(4, 4, civil.year)) return false;
  const bool dashes = text.take('-');
  return text.number(2, 2, civil.month) && text.take('-') == dashes && text.number(2, 2, civil.day);
}

bool readSlashDay(Reader& text, Date::Civil& civil) {
  return text.number(1, 2, civil.month) && text.take('/') && text.number(1, 2, civil.day) &&
         text.take('/') && text.number(4, 4, civil.year);
}

bool readTime(Reader& text, bool twelveHours, Date::Civil& civil) {
  if (!text.number(1, 2, civil.hour) || !text.take(':') || !text.number(2, 2, civil.minute)) {
    return false;
  }
  if (text.take(':') && !text.number(2, 2, civil.second)) return false;
  text.skipBlanks();
  if (!twelveHours || text.atEnd()) return true;
  const bool afternoon = text.take('p');
  if ((!afternoon && !text.take('a')) || !text.take('m')) return false;
  if (civil.hour < 1 || civil.hour > 12) return false;
  civil.hour = civil.hour % 12 + (afternoon ? 12 : 0);
  return true;
}

std::optional<Date> readDate(std::string_view text, bool slashes) {
  Reader reader(text);
  Date::Civil civil{.hour = 0, .minute = 0, .second = 0};
  reader.skipBlanks();
  if (!(slashes ? readSlashDay(reader, civil) : readIsoDay(reader, civil))) return std::nullopt;
  const bool isoTime = !slashes && reader.take('t');
  reader.skipBlanks();
  if ((isoTime || !reader.atEnd()) && !readTime(reader, slashes, civil)) return std::nullopt;
  reader.skipBlanks();
  if (!reader.atEnd()) return std::nullopt;
  try {
    return Date::of(civil.year, civil.month, civil.day, civil.hour, civil.minute, civil.second);
  } catch (const QuorDataLib::Error&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<Date> parseDate(std::string_view text) {
  const bool slashes = text.find('/') != std::string_view::npos;
  return readDate(text, slashes);
}

}  // namespace QuorHost::Sql
