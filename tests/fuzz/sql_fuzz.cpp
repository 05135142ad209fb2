// Any text, read in both dialects against the company's schema: it is refused with a message, or
// the storage engine accepts its translation, and a query has the same rows plain and rewritten, on
// the sample company and on tables whose rows keep no rule.
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/sql_mutator.h"
#include "host/company/company.h"
#include "host/sql/front_end.h"
#include "platform/data_library.h"
#include "platform/error.h"
#include "sql/both_forms.h"
#include "sql/database.h"
#include "sql/untidy.h"

namespace {

using namespace QuorHost;
using namespace QuorHost::Sql::Testing;
using QuorDataLib::Error;

/// What one run of a statement may take, in thousands of the engine's steps and in bytes.
constexpr int kSteps = 400;
constexpr int kLongestText = 1 << 20;

[[noreturn]] void fail(std::string_view what, std::string_view sql) {
  std::fprintf(stderr, "%.*s\n%.*s\n", static_cast<int>(what.size()), what.data(),
               static_cast<int>(sql.size()), sql.data());
  std::abort();
}

/// Makes a sample company and returns its path.
std::string sampleCompany() {
  std::string path =
      (std::filesystem::temp_directory_path() / ("quoracc-sql-fuzz-" + std::to_string(::getpid())))
          .string();
  createCompany(path, {.sample = true, .force = true});
  return path;
}

/// The rows without their order and their letters' case: of texts that are alike any may stand for
/// a group.
std::vector<std::string> loosely(std::vector<std::string> rows) {
  for (std::string& row : rows) {
    std::ranges::transform(row, row.begin(), [](unsigned char c) { return std::tolower(c); });
  }
  std::ranges::sort(rows);
  return rows;
}

/// Whether the rows may differ from one run to the next: the first of rows in no full order.
bool isOpen(const std::string& text) {
  return loosely({text}).front().find("top") != std::string::npos;
}

class Companies {
 public:
  Companies() {
    fillUntidily(untidy_, 1);
    // Once read it stays open, and needs its names no longer: nothing is left behind by a crash.
    (void)sample_.rows("SELECT COUNT(*) AS N FROM Cust", kServer);
    for (const char* const suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_ + suffix);
    for (const Database* const database : databases_) {
      sqlite3_limit(database->handle(), SQLITE_LIMIT_LENGTH, kLongestText);
      sqlite3_progress_handler(
          database->handle(), 1'000,
          [](void* left) { return --*static_cast<int*>(left) < 0 ? 1 : 0; }, &left_);
    }
  }
  Companies(const Companies&) = delete;
  Companies& operator=(const Companies&) = delete;
  ~Companies() {
    std::fprintf(stderr, "sql_fuzz: %zu texts, %zu understood, %zu compared, %zu shared\n", texts_,
                 understood_, compared_, shared_);
  }

  [[nodiscard]] const Sql::Catalogue& catalogue() const { return untidy_.catalogue(); }

  void read(const std::string& text) {
    ++texts_;
    const std::size_t before = understood_;
    for (const Sql::Dialect dialect : kBoth) read(text, dialect);
    understood_ = std::min(understood_, before + 1);
  }

 private:
  void read(const std::string& text, Sql::Dialect dialect) {
    try {
      for (const Sql::Rewriting form : {Sql::Rewriting::None, Sql::Rewriting::Faster}) {
        const Sql::Translation translation = untidy_.translate(text, dialect, form);
        const std::string error = untidy_.preparationError(translation);
        if (!error.empty()) fail(error, translation.sql);
      }
      ++understood_;
      compare(text, dialect);
    } catch (const Error& error) {
      if (error.number() != QuorDataLib::kStatementRefused) fail(error.what(), text);
    }
  }

  void compare(const std::string& text, Sql::Dialect dialect) {
    const Sql::Translation translation = untidy_.translate(text, dialect);
    if (translation.columns.empty()) return;
    for (Database* const database : databases_) {
      left_ = kSteps;
      const BothForms forms = runBoth(*database, text, dialect, markerValues(translation));
      // What is promised to guard a value guards it in both forms, which has tests of its own; what
      // else keeps a form from computing a value that ends it need not keep the other one. And one
      // may have had its time where the other was done.
      if (left_ < 0 || !forms.plainError.empty() || !forms.fasterError.empty()) continue;
      if (isOpen(text)) continue;
      ++compared_;
      if (loosely(forms.plain) != loosely(forms.faster)) {
        fail(difference(forms, "", translation), text + "\n" + forms.fasterSql);
      }
      const auto source = cache_.take(text, dialect, database->catalogue(), writer_).source;
      if (source->shape == nullptr) continue;
      ++shared_;
      left_ = kSteps;
      const auto rows = database->rows(*source, markerValues(translation));
      if (left_ >= 0 && loosely(rows) != loosely(forms.faster)) {
        fail("As one of its shape it has other rows", text + "\n" + source->translation().sql);
      }
    }
  }

  const std::string path_ = sampleCompany();
  Database untidy_{companySchema()};
  Database sample_{path_, openCompany(path_, Access::Read)->catalogue()};
  std::array<Database*, 2> databases_{&untidy_, &sample_};
  const Sqlite::SqlWriter writer_;
  /// Of both companies, whose catalogues are alike.
  TranslationCache cache_;
  /// Steps that the statement may still take.
  int left_ = kSteps;
  std::size_t texts_ = 0;
  std::size_t understood_ = 0;
  std::size_t compared_ = 0;
  std::size_t shared_ = 0;
};

Companies& companies() {
  static Companies companies;
  return companies;
}

/// Names of the company's tables, views and columns.
const std::vector<std::string>& vocabulary() {
  static const std::vector<std::string> kWords = [] {
    std::vector<std::string> words;
    for (const Sql::Relation& relation : companies().catalogue().relations()) {
      for (const Sql::Column& column : relation.columns) words.push_back(column.name);
      words.insert(words.end(), relation.columns.size(), relation.name);
    }
    return words;
  }();
  return kWords;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t longest);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t longest, unsigned seed) {
  std::minstd_rand random(seed + 1);
  if (random() % 16 == 0) return LLVMFuzzerMutate(data, size, longest);
  std::string text(reinterpret_cast<const char*>(data), size);
  text = mutated(text, vocabulary(), random);
  if (random() % 3 == 0) text = mutated(text, vocabulary(), random);
  text.resize(std::min(text.size(), longest));
  std::ranges::copy(text, data);
  return text.size();
}

/// Makes the companies before the first input, whose time they would take.
extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
  companies();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  companies().read(text);
  try {
    (void)Sql::splitStatements(text);
  } catch (const Error&) {
    // Refused, which is an answer.
  }
  return 0;
}
