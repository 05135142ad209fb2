// What a report can be about: one customer, item, account or project, named as people name it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/engines/store.h"

namespace QuorCli {

/// Where the company keeps its subjects of one kind.
struct SubjectKind {
  /// "customer".
  std::string_view name;
  std::string_view table;
  std::string_view keyColumn;
  std::string_view codeColumn;
  std::string_view nameColumn;
};

extern const SubjectKind kCustomers;
extern const SubjectKind kSuppliers;
extern const SubjectKind kItems;
extern const SubjectKind kAccounts;
extern const SubjectKind kProjects;
extern const SubjectKind kWarehouses;

struct Subject {
  std::int32_t key = 0;
  std::string code;
  std::string name;
};

/// The subject whose code is `word`, or else whose key it is; codes come first because they are
/// what people see, and many are numbers. Raises `Failure`, naming what is near, when there is
/// none, and when several share the code.
[[nodiscard]] Subject findSubject(const SubjectKind& kind, const std::string& word,
                                  QuorHost::Store& store);

}  // namespace QuorCli
