#include "host/sql/catalogue.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "host/sql/names.h"

namespace QuorHost::Sql {
const Column* Relation::find(std::string_view columnName) const noexcept {
  for (const Column& column : columns) {
    if (sameName(column.name, columnName)) return &column;
  }
  return nullptr;
}

const Relation* Catalogue::find(std::string_view name) const noexcept {
  if (name.size() > kLongestName) return nullptr;
  std::array<char, kLongestName> lower{};
  std::ranges::transform(name, lower.begin(), lowerCase);
  const auto found = byName_.find(std::string_view(lower.data(), name.size()));
  return found == byName_.end() ? nullptr : &relations_[found->second];
}

void Catalogue::add(Relation relation) {
  if (relation.name.size() > kLongestName) {
    refuse("The name is longer than " + std::to_string(kLongestName) + " bytes", Position{},
           relation.name);
  }
  const auto [entry, isNew] = byName_.try_emplace(lowerName(relation.name), relations_.size());
  if (!isNew) {
    refuse("The name is taken by another table or view", Position{}, relation.name);
  }
  try {
    relations_.push_back(std::move(relation));
  } catch (...) {
    byName_.erase(entry);
    throw;
  }
}

Catalogue Catalogue::without(std::string_view name) const {
  Catalogue others;
  for (const Relation& relation : relations_) {
    if (!sameName(relation.name, name)) others.add(relation);
  }
  return others;
}

std::vector<const Relation*> Catalogue::keptTotals(const Relation& table) const {
  std::vector<const Relation*> found;
  for (const Relation& relation : relations_) {
    if (relation.keptOf == table.name) found.push_back(&relation);
  }
  return found;
}

void Catalogue::addIndex(std::string_view table, std::string_view column) {
  Relation& relation = relations_[byName_.find(lowerName(table))->second];
  const auto isColumn = [&](const Column& other) { return sameName(other.name, column); };
  std::ranges::find_if(relation.columns, isColumn)->leadsIndex = true;
}

}  // namespace QuorHost::Sql
