#include "cli/report/subject.h"

#include <charconv>
#include <vector>

#include "cli/print/display_text.h"
#include "cli/report/company_facts.h"
#include "cli/words/names.h"

namespace QuorCli {
namespace {

using QuorDataLib::Parameters;
using QuorDataLib::Value;

std::string selectOf(const SubjectKind& kind, const std::string& condition) {
  return "SELECT " + std::string(kind.keyColumn) + ", " + std::string(kind.codeColumn) + ", " +
         std::string(kind.nameColumn) + " FROM " + std::string(kind.table) + condition;
}

std::vector<Subject> subjects(const SubjectKind& kind, const std::string& column,
                              const std::string& comparison, const Value& value,
                              QuorHost::Store& store) {
  const auto rows = readBeside(
      store,
      selectOf(kind, " WHERE " + column + comparison + " ORDER BY " + std::string(kind.keyColumn)),
      Parameters::array({value}));
  std::vector<Subject> found;
  const auto text = [&](std::int32_t index) {
    return rows->Field(index).isNull() ? std::string() : rows->Field(index).toText();
  };
  for (; !rows->AtEnd(); rows->MoveNext()) {
    found.push_back({rows->Field(0).toLong(), text(1), text(2)});
  }
  return found;
}

/// A pattern for texts that contain `word`.
std::string containing(std::string_view word) {
  std::string pattern = "%";
  for (const char c : word) {
    const bool special = c == '%' || c == '_' || c == '[';
    pattern += special ? std::string("[") + c + "]" : std::string(1, c);
  }
  return pattern + "%";
}

/// " By that name there are LEG (Léger Ltée) and ...", or the codes that are near.
std::string whatIsNear(const SubjectKind& kind, const std::string& word, QuorHost::Store& store) {
  const std::vector<Subject> all =
      subjects(kind, std::string(kind.keyColumn), " >= ?", std::int32_t{0}, store);
  std::vector<std::string_view> codes;
  codes.reserve(all.size());
  for (const Subject& subject : all) {
    if (!subject.code.empty()) codes.push_back(subject.code);
  }
  std::string near = suggestion(word, codes);
  if (!near.empty()) return near;
  constexpr std::size_t kMost = 3;
  std::vector<Subject> named;
  if (!word.empty()) {
    named = subjects(kind, std::string(kind.nameColumn), " LIKE ?", containing(word), store);
  }
  for (std::size_t index = 0; index < named.size() && index < kMost; ++index) {
    near += near.empty() ? " By that name there is " : ", ";
    near +=
        named[index].code.empty() ? "key " + std::to_string(named[index].key) : named[index].code;
    near += " (" + named[index].name + ")";
  }
  if (named.size() > kMost) near += " and others";
  return near.empty() ? nearestNames(word, codes) : near + ".";
}

}  // namespace

const SubjectKind kCustomers{"customer", "Cust", "InCustId", "CustId", "Name"};
const SubjectKind kSuppliers{"supplier", "Supp", "InSuppId", "SuppId", "Name"};
const SubjectKind kItems{"item", "Item", "InItemId", "ItemId", "Descr1"};
const SubjectKind kAccounts{"account", "GLAcct", "InGLAcctId", "GLAcctId", "Descr"};
const SubjectKind kProjects{"project", "Proj", "InProjId", "ProjId", "Descr"};
const SubjectKind kWarehouses{"warehouse", "Warehouse", "InWarehouseId", "WarehouseId", "Descr"};

Subject findSubject(const SubjectKind& kind, const std::string& word, QuorHost::Store& store) {
  const std::vector<Subject> coded =
      subjects(kind, std::string(kind.codeColumn), " = ?", word, store);
  if (coded.size() == 1) return coded.front();
  if (coded.size() > 1) {
    std::string keys;
    for (const Subject& subject : coded) {
      keys += (keys.empty() ? "" : ", ") + std::to_string(subject.key);
    }
    throw Failure("several of the company's " + std::string(kind.name) + "s have the code '" +
                  word + "': give the key of one of them, " + keys);
  }
  std::int32_t key = 0;
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, key);
  if (error == std::errc() && stop == end) {
    const std::vector<Subject> keyed =
        subjects(kind, std::string(kind.keyColumn), " = ?", key, store);
    if (!keyed.empty()) return keyed.front();
  }
  throw Failure("there is no " + std::string(kind.name) + " with the code or key '" +
                visible(word) + "'." + whatIsNear(kind, word, store));
}

}  // namespace QuorCli
