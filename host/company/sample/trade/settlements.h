// How the documents of one side of the trade are paid.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/company/sample/ledger.h"
#include "host/company/sample/money.h"
#include "host/company/sample/trade/document.h"
#include "host/company/sample/trade/parties.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

/// A document with something left to pay. Only these are kept in memory.
struct OpenDocument {
  std::int32_t id = 0;
  int dueDay = 0;
  Rate rate = kParity;
  /// Left to pay, negative on a credit note, and its value in the books.
  Cents remaining = 0;
  Cents remainingHome = 0;
  /// Discount for payment in full until `discountUntil`.
  Cents discount = 0;
  int discountUntil = 0;
  /// Never paid.
  bool disputed = false;
};

/// A payment with something left open.
struct OpenCredit {
  std::int32_t payment = 0;
  int since = 0;
  Rate rate = kParity;
  Cents remaining = 0;
  Cents remainingHome = 0;
};

/// A line of a payment: money applied to a document, a deposit on an order, or (negative) the use
/// of an earlier payment's credit.
struct PaymentLine {
  enum class Kind : std::uint8_t { Document, Order, Credit };
  Kind kind = Kind::Document;
  std::int32_t id = 0;
  Cents amount = 0;
  Cents discount = 0;
  /// What the line takes off the control account, in home currency.
  Cents valueHome = 0;
};

struct Payment {
  const Party* party = nullptr;
  int day = 0;
  Rate rate = kParity;
  const char* type = "";
  /// Number of the cheque or transfer; given when the payment is written.
  std::string reference;
  std::vector<PaymentLine> lines;
  /// Paid beyond the lines and left open as a credit.
  Cents kept = 0;

  /// The money that moves.
  [[nodiscard]] Cents total() const;
  [[nodiscard]] bool usesCredits() const;
};

/// How often, in thousandths of the payments, something out of the ordinary happens.
struct Oddities {
  std::int32_t partial;
  std::int32_t overpaid;
  std::int32_t creditUsed;
  std::int32_t refunded;
};

/// Keeps the open items of all parties of one side, writes the payments and posts them.
class Settlements {
 public:
  /// `header` and `detail` take the columns of `paymentColumns` and `lineColumns` in their order.
  Settlements(Table header, Table detail, Ledger& ledger, const Rates& rates, const Side& side,
              const Oddities& oddities, Numbering& numbering, Random random, std::size_t parties);

  /// Adds a document to what is open with its party. A disputed one is never paid.
  void owe(const Document& document, bool disputed);

  /// Pays what the party's habits call for on a day: documents that are due or carry a discount,
  /// with credits where there are some.
  void payDue(const Party& party, int day);

  /// Pays a deposit on an order, and returns the credit that it leaves.
  OpenCredit payDeposit(const Party& party, int day, std::int32_t order, Cents amount);

  /// Puts a credit to use on the document that was opened last with the party.
  void useCredit(const Party& party, int day, OpenCredit credit);

  /// Pays an amount in advance, for no document.
  void payInAdvance(const Party& party, int day, Cents amount);

  /// Takes back the cheques that come back unpaid on a day, and returns who had written them.
  std::vector<const Party*> returnCheques(int day);

  /// The document that was opened last with the party, or null.
  [[nodiscard]] const OpenDocument* latest(const Party& party) const;

 private:
  struct OpenItems {
    std::vector<OpenDocument> documents;
    std::vector<OpenCredit> credits;
    int chequesReturned = 0;
  };

  OpenItems& itemsOf(const Party& party) { return items_[static_cast<std::size_t>(party.id) - 1]; }
  [[nodiscard]] Payment start(const Party& party, int day, const char* type);
  static void apply(Payment& payment, OpenDocument& document, Cents amount, Cents discount);
  static void draw(Payment& payment, OpenCredit& credit, Cents amount);
  void collect(Payment& payment, OpenItems& items);
  void refund(const Party& party, int day, OpenItems& items);
  OpenCredit write(Payment& payment);
  void postToLedger(std::int32_t id, const Payment& payment, Cents totalHome, Cents discountHome,
                    Cents exchangeDifference);
  std::string reference(const char* type);

  Table header_;
  Table detail_;
  Ledger& ledger_;
  const Rates& rates_;
  const Side& side_;
  Oddities oddities_;
  Numbering& numbering_;
  Random random_;
  std::vector<OpenItems> items_;
  std::vector<std::vector<Payment>> returns_;  // by day
  std::int32_t cheques_ = 3'000;
  std::int32_t transfers_ = 0;
};

}  // namespace QuorHost::Sample
