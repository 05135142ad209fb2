// The aging report for people: a block for each party, a line for each document, totals at the end.
#include <algorithm>
#include <array>
#include <utility>

#include "cli/print/amount_text.h"
#include "cli/print/display_text.h"
#include "cli/report/printer.h"
#include "cli/report/share.h"

namespace QuorCli {
namespace {

using QuorDataLib::Currency;

/// Widths that most reports fit in; a wider value widens its column for the rest of the report.
constexpr std::size_t kNumberWidth = 10;
constexpr std::size_t kKindWidth = 12;
constexpr std::size_t kDateWidth = 10;
constexpr std::size_t kDaysWidth = 5;
constexpr std::size_t kAmountWidth = 13;
constexpr std::string_view kIndent = "  ";

class AgingSheet : public AgingPrinter {
 public:
  AgingSheet(AgingContext context, Console& console)
      : context_(std::move(context)), console_(console) {}

  void begin() override {
    if (!context_.companyName.empty()) {
      console_.out << console_.bold(visible(context_.companyName)) << '\n';
    }
    std::string title(context_.source->title);
    title += " as at " + context_.asOf.toText();
    if (context_.all) title += ", all documents";
    if (context_.byCurrency) title += ", by currency";
    console_.out << console_.bold(title) << '\n';
  }

  void block(const AgingBlock& block) override {
    documents_ += static_cast<std::int64_t>(block.documents.size());
    if (printed_ == context_.limit) return;
    widen(block);
    if (context_.byCurrency && currency_ != block.currencyId) {
      currency_ = block.currencyId;
      console_.out << '\n' << console_.bold(context_.currencyCode(block.currencyId)) << '\n';
    }
    console_.out << '\n'
                 << console_.bold(visible(block.partyName)) << " (" << context_.source->party << ' '
                 << block.partyId << "), " << context_.currencyCode(block.currencyId) << '\n';
    documentHeading();
    for (const AgedDocument& document : block.documents) {
      if (printed_ == context_.limit) break;
      ++printed_;
      line(document);
    }
    total("Total " + context_.currencyCode(block.currencyId), block.total);
  }

  [[nodiscard]] bool wantsMore() const override { return true; }

  void end(const AgingTotals& totals) override {
    if (totals.byCurrency.empty()) {
      console_.out << "\nNothing to show.\n";
      return;
    }
    for (const auto& [currency, sum] : totals.byCurrency) widen(sum.amounts);
    widen(totals.home);
    console_.out << '\n' << console_.bold("All " + std::string(context_.source->parties)) << '\n';
    heading(std::string(kIndent.size() + leadWidth(), ' '));
    for (const auto& [currency, sum] : totals.byCurrency) {
      total("Total " + context_.currencyCode(currency) + ", " + counted(sum), sum.amounts);
    }
    if (totals.byCurrency.size() > 1) {
      total("All in " + context_.currencyCode(context_.homeCurrency) + ", at the documents' rates",
            totals.home);
    }
    if (printed_ < documents_) {
      console_.out << console_.faint("The first " + grouped(printed_) + " of " +
                                     grouped(documents_) +
                                     " documents are printed; the totals are of all of them.")
                   << '\n';
    }
  }

 private:
  /// Columns of the text before the amounts.
  [[nodiscard]] std::size_t leadWidth() const {
    return numberWidth_ + kKindWidth + kDateWidth + kDaysWidth + 3 * kIndent.size();
  }

  void widen(const AgingBlock& block) {
    for (const AgedDocument& document : block.documents) {
      numberWidth_ = std::max(numberWidth_, displayWidth(visible(document.number)));
      amountWidth_ = std::max(amountWidth_, amountText(document.balance).size());
    }
    widen(block.total);
  }

  void widen(const AgedAmounts& amounts) {
    amountWidth_ = std::max(amountWidth_, amountText(amounts.balance).size());
    for (const Currency part : amounts.parts) {
      amountWidth_ = std::max(amountWidth_, amountText(part).size());
    }
  }

  [[nodiscard]] std::string counted(const CurrencyTotal& sum) const {
    return grouped(sum.parties) + " " +
           std::string(sum.parties == 1 ? context_.source->party : context_.source->parties) +
           ", " + grouped(sum.documents) + (sum.documents == 1 ? " document" : " documents");
  }

  void documentHeading() {
    std::string text(kIndent);
    lead(text, "Document", "Type", "Date", "Days");
    heading(std::move(text));
  }

  /// Adds the titles of the amounts behind those of the columns before them.
  void heading(std::string text) {
    text += kIndent;
    appendPadded(text, "Balance ", amountWidth_, true);
    for (std::size_t bucket = 0; bucket < context_.buckets.count(); ++bucket) {
      text += kIndent;
      appendPadded(text, context_.buckets.title(bucket) + " ", amountWidth_, true);
    }
    finish(console_.faint(trimmed(text)));
  }

  void line(const AgedDocument& document) {
    std::string text(kIndent);
    lead(text, visible(document.number), documentKind(*context_.source, document),
         document.date.dateOnly().toText(), std::to_string(document.age));
    text += kIndent;
    appendPadded(text, amountText(document.balance), amountWidth_, true);
    for (std::size_t bucket = 0; bucket <= document.bucket; ++bucket) {
      const bool here = bucket == document.bucket && !document.balance.isZero();
      text += kIndent;
      appendPadded(text, here ? amountText(document.balance) : "", amountWidth_, true);
    }
    finish(trimmed(text));
  }

  void total(const std::string& label, const AgedAmounts& amounts) {
    std::string text(kIndent);
    appendPadded(text, label, leadWidth(), false);
    text += kIndent;
    appendPadded(text, amountText(amounts.balance), amountWidth_, true);
    for (const Currency part : amounts.parts) {
      text += kIndent;
      appendPadded(text, part.isZero() ? "- " : amountText(part), amountWidth_, true);
    }
    finish(console_.bold(trimmed(text)));
    if (console_.outIsTerminal) shares(amounts);
  }

  /// A bar for the share of each bucket, below its amount.
  void shares(const AgedAmounts& amounts) {
    const std::vector<int> percents = sharesOf(amounts.parts);
    if (percents.empty()) return;
    std::string text(kIndent.size() + leadWidth() + kIndent.size() + amountWidth_, ' ');
    for (const int percent : percents) {
      text += kIndent;
      appendPadded(text, percent == 0 ? "" : shareBar(percent) + " ", amountWidth_, true);
    }
    finish(console_.faint(trimmed(text)));
  }

  void lead(std::string& text, std::string_view number, std::string_view kind,
            std::string_view date, std::string_view days) const {
    appendPadded(text, number, numberWidth_, false);
    text += kIndent;
    appendPadded(text, kind, kKindWidth, false);
    text += kIndent;
    appendPadded(text, date, kDateWidth, false);
    text += kIndent;
    appendPadded(text, days, kDaysWidth, true);
  }

  static std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
  }

  void finish(const std::string& text) { console_.out << text << '\n'; }

  AgingContext context_;
  Console& console_;
  std::size_t numberWidth_ = kNumberWidth;
  std::size_t amountWidth_ = kAmountWidth;
  std::optional<std::int32_t> currency_;
  std::int64_t printed_ = 0;
  std::int64_t documents_ = 0;
};

}  // namespace

std::unique_ptr<AgingPrinter> makeAgingSheet(AgingContext context, Console& console) {
  return std::make_unique<AgingSheet>(std::move(context), console);
}

}  // namespace QuorCli
