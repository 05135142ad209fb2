#include "cli/company_summary.h"

#include <algorithm>
#include <array>

#include "cli/print/amount_text.h"
#include "cli/print/display_text.h"

namespace QuorCli {
namespace {

using QuorHost::CompanyInfo;
using Kind = QuorHost::Sql::Relation::Kind;

/// A size as people read it: "1.4 MB".
std::string sizeText(std::int64_t bytes) {
  constexpr std::array kUnits{"bytes", "kB", "MB", "GB", "TB"};
  std::int64_t tenths = bytes * 10;
  std::size_t unit = 0;
  for (; tenths >= 10'000 && unit + 1 < kUnits.size(); ++unit) tenths = (tenths + 500) / 1000;
  std::string text = std::to_string(tenths / 10);
  if (unit > 0) text += "." + std::to_string(tenths % 10);
  return text + " " + kUnits[unit];
}

void printRelations(const CompanyInfo& info, Kind kind, std::string_view title, Console& console) {
  std::size_t nameWidth = title.size();
  std::size_t rowsWidth = std::string_view("Rows").size();
  for (const CompanyInfo::Relation& relation : info.relations) {
    if (relation.kind != kind) continue;
    nameWidth = std::max(nameWidth, displayWidth(relation.name));
    rowsWidth = std::max(rowsWidth, grouped(relation.rows).size());
  }
  const auto line = [&](std::string_view name, std::string_view rows) {
    std::string text;
    appendPadded(text, name, nameWidth, false);
    text += "  ";
    appendPadded(text, rows, rowsWidth, true);
    return text;
  };
  console.out << '\n' << console.bold(line(title, "Rows")) << '\n';
  for (const CompanyInfo::Relation& relation : info.relations) {
    if (relation.kind == kind) console.out << line(relation.name, grouped(relation.rows)) << '\n';
  }
}

}  // namespace

void printMade(const std::string& file, const CompanyInfo& info, Console& console) {
  const auto count = [&](Kind kind) {
    return std::ranges::count(info.relations, kind, &CompanyInfo::Relation::kind);
  };
  std::int64_t rows = 0;
  for (const CompanyInfo::Relation& relation : info.relations) {
    if (relation.kind == Kind::Table) rows += relation.rows;
  }
  console.out << "Made " << file << ": " << count(Kind::Table) << " tables with " << grouped(rows)
              << (rows == 1 ? " row, " : " rows, ") << count(Kind::View) << " views, "
              << sizeText(info.sizeInBytes) << " (" << info.engine << ")\n";
}

void printInfo(const std::string& file, const CompanyInfo& info, Console& console) {
  console.out << console.bold("Company file") << "  " << file << '\n'
              << console.bold("Engine") << "        " << info.engine << '\n'
              << console.bold("Size") << "          " << sizeText(info.sizeInBytes) << " ("
              << grouped(info.sizeInBytes) << " bytes)\n"
              << console.bold("Schema") << "        version " << info.schemaVersion << '\n'
              << console.bold("Documents") << "     ";
  if (info.firstDocument.empty()) {
    console.out << "none\n";
  } else {
    console.out << "from " << info.firstDocument.dateOnly().toText() << " to "
                << info.lastDocument.dateOnly().toText() << '\n';
  }
  printRelations(info, Kind::Table, "Table", console);
  printRelations(info, Kind::View, "View", console);
}

}  // namespace QuorCli
