#include "cli/report/aging/page.h"

#include <utility>

#include "cli/print/amount_text.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

/// What a document is, in a word: "credit" for an open credit.
std::string documentKind(const AgingSource& source, const AgedDocument& document) {
  switch (document.kind) {
    case AgedDocument::Kind::Credit:
      return "credit";
    case AgedDocument::Kind::Payment:
      return "payment";
    case AgedDocument::Kind::Document:
      break;
  }
  if (document.amount < Currency()) return "credit note";
  const auto type = static_cast<std::size_t>(document.type);
  const bool known = document.type > 0 && type <= source.typeNames.size();
  return known ? std::string(source.typeNames[type - 1]) : "type " + std::to_string(document.type);
}

void appendParts(Line& line, const AgedAmounts& amounts) {
  line.insert(line.end(), amounts.parts.begin(), amounts.parts.end());
}

}  // namespace

std::string AgingPage::title() const {
  std::string title(context_.source->title);
  title += " as at " + context_.asOf.toText();
  if (context_.by == AgeBy::Due) title += ", by due date";
  if (context_.all) title += ", all documents";
  if (context_.byCurrency) title += ", by currency";
  return title;
}

std::vector<Column> AgingPage::columns() const {
  using enum CellKind;
  using enum Audience;
  std::vector<Column> columns{{"", "PartyId", Key, Programs}};
  if (context_.summary) {
    columns.insert(columns.end(), {{"Code", "PartyCode", Code, Everyone},
                                   {"Name", "PartyName", Name, Everyone},
                                   {"Currency", "Currency", Code, Everyone},
                                   {"Documents", "Documents", Number, Everyone}});
  } else {
    columns.insert(columns.end(), {{"", "PartyCode", Code, Programs},
                                   {"", "PartyName", Name, Programs},
                                   {"", "Currency", Code, Programs},
                                   {"Document", "", Code, People},
                                   {"Type", "Kind", Name, Everyone},
                                   {"", "Type", Key, Programs},
                                   {"", "DocumentId", Key, Programs},
                                   {"", "Number", Code, Programs},
                                   {"Date", "Date", Date, Everyone}});
    if (context_.by == AgeBy::Due) columns.push_back({"Due", "DueDate", Date, Everyone});
    columns.push_back({"Days", "Days", Number, Everyone});
  }
  columns.push_back({"Balance", "Balance", Money, Everyone});
  columns.push_back({"", "HomeBalance", Money, Programs});
  for (std::size_t bucket = 0; bucket < context_.buckets.count(); ++bucket) {
    columns.push_back(
        {context_.buckets.title(bucket), context_.buckets.columnName(bucket), MoneyPart, Everyone});
  }
  return columns;
}

void AgingPage::begin() {
  const bool summary = context_.summary;
  const AgingSource& source = *context_.source;
  std::vector<Column> all = columns();
  columns_ = all.size();
  report_.begin({.company = context_.company.name,
                 .title = title(),
                 .lines = summary ? std::string(source.parties) : "documents",
                 .headingInGroups = !summary,
                 .depth = summary && !context_.byCurrency ? 0 : 1,
                 .bars = true,
                 .limit = context_.limit},
                std::move(all));
}

void AgingPage::block(const AgingBlock& block) {
  const std::string currency = context_.company.currencyCode(block.currencyId);
  int level = 0;
  if (context_.byCurrency) {
    if (currency_ != block.currencyId) report_.group(level, currency, "");
    currency_ = block.currencyId;
    ++level;
  }
  if (context_.summary) return party(block);
  report_.group(level, (block.partyCode.empty() ? "" : block.partyCode + " ") + block.partyName,
                " (" + std::string(context_.source->party) + " " + std::to_string(block.partyId) +
                    "), " + currency);
  for (const AgedDocument& one : block.documents) document(block, one);
  report_.total(level, Weight::Plain, "Total " + currency, totalLine(block.total));
}

void AgingPage::document(const AgingBlock& block, const AgedDocument& document) {
  Line line{block.partyId,   block.partyCode,
            block.partyName, context_.company.currencyCode(block.currencyId),
            document.number, documentKind(*context_.source, document),
            document.type,   document.id,
            document.number, document.date};
  if (context_.by == AgeBy::Due) line.emplace_back(document.agesFrom);
  line.emplace_back(static_cast<std::int32_t>(document.age));
  line.emplace_back(document.balance);
  line.emplace_back(document.home.total());
  AgedAmounts aged(context_.buckets.count());
  aged.add(document.bucket, document.balance);
  appendParts(line, aged);
  report_.line(std::move(line));
}

void AgingPage::party(const AgingBlock& block) {
  Line line{block.partyId,
            block.partyCode,
            block.partyName,
            context_.company.currencyCode(block.currencyId),
            static_cast<std::int32_t>(block.documents.size()),
            block.total.balance,
            block.home};
  appendParts(line, block.total);
  report_.line(std::move(line));
}

Line AgingPage::totalLine(const AgedAmounts& amounts) const {
  Line line(columns_ - amounts.parts.size() - 2, Value::null());
  line.emplace_back(amounts.balance);
  line.push_back(Value::null());
  appendParts(line, amounts);
  return line;
}

std::string AgingPage::counted(const CurrencyTotal& sum) const {
  const AgingSource& source = *context_.source;
  return grouped(sum.parties) + " " +
         std::string(sum.parties == 1 ? source.party : source.parties) + ", " +
         grouped(sum.documents) + (sum.documents == 1 ? " document" : " documents");
}

void AgingPage::end(const AgingTotals& totals) {
  report_.summary("All " + std::string(context_.source->parties));
  for (const auto& [currency, sum] : totals.byCurrency) {
    report_.grandTotal(Weight::Plain,
                       "Total " + context_.company.currencyCode(currency) + ", " + counted(sum),
                       totalLine(sum.amounts));
  }
  if (totals.byCurrency.size() > 1) {
    report_.grandTotal(Weight::Plain,
                       "All in " + context_.company.currencyCode(context_.company.homeCurrency) +
                           ", at the documents' rates",
                       totalLine(totals.home));
  }
  report_.end();
}

}  // namespace QuorCli
