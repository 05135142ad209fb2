// Any words of a command line: they are refused as wrong use, or what is read of them prints as a
// word that reads the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "cli/console.h"
#include "cli/print/value_text.h"
#include "cli/report/buckets.h"
#include "cli/report/period.h"
#include "cli/words/options.h"
#include "cli/words/statement_word.h"

namespace {

using QuorDataLib::Value;
using QuorDataLib::ValueType;

void require(bool condition) {
  if (!condition) std::abort();
}

/// Does what may find the words wrong.
template <class Work>
void attempt(const Work& work) {
  try {
    work();
  } catch (const QuorCli::UsageError&) {
    // Refused, which is an answer.
  }
}

void checkValue(const std::string& word) {
  for (const ValueType type :
       {ValueType::Boolean, ValueType::Integer, ValueType::Long, ValueType::Double,
        ValueType::Currency, ValueType::Date, ValueType::Text, ValueType::Empty}) {
    const std::optional<Value> value = QuorCli::parseValue(word, type);
    if (!value) continue;
    std::string printed;
    QuorCli::appendPlain(printed, *value);
    require(QuorCli::parseValue(printed, type) == value);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // A word ends where the system would end it.
  const std::string word(std::string(reinterpret_cast<const char*>(data), size).c_str());
  checkValue(word);
  require(QuorCli::plainArgument(QuorCli::guardedArgument(word)) == word);
  attempt([&] { (void)QuorCli::foundationValues({word}); });
  attempt([&] { (void)QuorCli::AgeBuckets::parse(word); });
  attempt([&] {
    const QuorDataLib::Date day = QuorCli::parseDay("--as-of", word);
    require(QuorCli::endOfDay(day).dateOnly() == day);
  });
  require(word.find(QuorCli::firstWord(word)) != std::string::npos);
  return 0;
}
