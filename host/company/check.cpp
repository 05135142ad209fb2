#include "host/company/checks/check.h"

#include <algorithm>

#include "host/company/company.h"
#include "platform/error.h"

namespace QuorHost {

namespace {

using QuorDataLib::Recordset;
using QuorDataLib::Ref;

/// The text of a finding on one line, whatever the data in it hold.
std::string onOneLine(std::string text) {
  constexpr unsigned char kDelete = 0x7F;
  std::ranges::replace_if(
      text,
      [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < ' ' || byte == kDelete;
      },
      ' ');
  return text;
}

/// A field of a breach, which may itself be what is wrong with the row.
std::string fieldText(Recordset& row, std::int32_t index) {
  try {
    const QuorDataLib::Value value = row.Field(index);
    return value.isNull() ? "null" : value.toText();
  } catch (const QuorDataLib::Error&) {
    return "a value that cannot be read";
  }
}

std::string findingOf(const Check& check, Recordset& row) {
  std::string text;
  for (std::size_t i = 0; i < check.finding.size(); ++i) {
    if (check.finding[i] == '{') {
      text += fieldText(row, check.finding[i + 1] - '0');
      i += 2;
    } else {
      text += check.finding[i];
    }
  }
  return text;
}

void lookWithQuery(const Check& check, QuorDataLib::Connection& connection,
                   const Findings& report) {
  const Ref<Recordset> breaches = connection.OpenRecordset(std::string(check.query), 4, 0, {}, 0);
  for (; !breaches->AtEnd(); breaches->MoveNext()) report(findingOf(check, *breaches));
}

/// Counts findings on their way and puts each on one line.
class Report {
 public:
  explicit Report(const Findings& report) : report_(report) {}
  void operator()(const std::string& finding) {
    ++count_;
    report_(onOneLine(finding));
  }
  [[nodiscard]] std::int64_t count() const noexcept { return count_; }

 private:
  const Findings& report_;
  std::int64_t count_ = 0;
};

}  // namespace

std::int64_t checkCompany(Store& store, const Findings& report) {
  // Where the definitions are not known, there is nothing to check by, and no finding either.
  static_cast<void>(store.catalogue());
  Report counted(report);
  const Findings reportLine = std::ref(counted);
  const auto connection = store.connect(Sql::Dialect::Server);
  for (const auto area : kCheckedAreas) {
    for (const Check& check : area()) {
      try {
        if (check.look != nullptr) {
          check.look(store, reportLine);
        } else {
          lookWithQuery(check, *connection, reportLine);
        }
      } catch (const QuorDataLib::Error& error) {
        // What stops one check is a finding, and no reason to leave the others out.
        reportLine("It could not be checked whether " + std::string(check.rule) + ": " +
                   error.description());
      }
    }
  }
  return counted.count();
}

std::int64_t checkCompany(const std::string& path, const Findings& report) {
  std::shared_ptr<Store> store;
  Report counted(report);
  try {
    store = openCompany(path, Access::Read);
  } catch (const QuorDataLib::Error& error) {
    const std::vector<std::string> findings = companyFileFindings(path);
    counted(error.description());
    for (const std::string& finding : findings) counted(finding);
    return counted.count();
  }
  return checkCompany(*store, report);
}

std::vector<std::string> checkCompany(Store& store) {
  std::vector<std::string> findings;
  checkCompany(store, [&](const std::string& finding) { findings.push_back(finding); });
  return findings;
}

}  // namespace QuorHost
