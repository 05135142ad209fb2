// The two sides of the aging report, and the rows that the component gives for them.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/report/buckets.h"
#include "cli/report/subject.h"
#include "cli/words/invocation.h"
#include "platform/data_library.h"

namespace QuorCli {

/// Type of the rows that are payments, applied or open.
inline constexpr std::int32_t kPaymentType = 99;
/// Type of the rows that are discounts taken.
inline constexpr std::int32_t kDiscountType = 100;

/// One side of the books: how the component's member, its arguments and its rows are named.
struct AgingSource {
  std::string_view title;
  /// What a party is called, one and several.
  std::string_view party;
  std::string_view parties;
  std::string_view className;
  std::string_view member;

  std::string_view allArgument;
  std::string_view partyArgument;
  std::string_view dateArgument;
  std::string_view fieldsArgument;

  /// The customers or suppliers.
  const SubjectKind* subjects;

  std::string_view partyColumn;
  std::string_view codeColumn;
  std::string_view keyColumn;
  std::string_view numberColumn;
  std::string_view typeColumn;
  std::string_view dateColumn;

  /// The columns above and the others that the report reads, for a list of its own: the rows' name
  /// in the member's statement, the column that ties a row to its document, and where documents
  /// have their due dates.
  std::string_view rowsName;
  std::string_view documentColumn;
  std::string_view documentTable;
  std::string_view documentKey;

  /// The documents' types from 1 on, in words.
  std::array<std::string_view, 4> typeNames;
};

extern const AgingSource kCustomerAging;
extern const AgingSource kSupplierAging;

/// What to ask the component for.
struct AgingRequest {
  QuorDataLib::Date asOf;
  /// One party, or 0 for all.
  std::int32_t party = 0;
  bool all = false;
  bool byCurrency = false;
  /// With the due dates of documents, which the member's own list does not have.
  AgeBy by = AgeBy::Document;
  QuorHost::Sql::Dialect dialect = QuorHost::Sql::Dialect::Server;
};

/// The component's member for a side. Raises `Failure` where this build has none.
[[nodiscard]] Target agingTarget(const AgingSource& source);

/// The member's arguments for a request; the order is the member's own, and so is the field list
/// but by due date.
[[nodiscard]] std::vector<QuorDataLib::Value> agingArguments(const Target& target,
                                                             const AgingSource& source,
                                                             const AgingRequest& request);

/// The rows of a side, and the object that they may still need.
struct AgingAnswer {
  Answer answer;
  QuorDataLib::Ref<QuorDataLib::Recordset> rows;
};

/// Calls the member. Raises `Failure` where it returns no rows, and what the component raises.
[[nodiscard]] AgingAnswer openAging(const AgingSource& source, const AgingRequest& request,
                                    const RunOptions& options, const Session& session);

/// One row: a document, something applied to one, or an open credit.
struct AgingRow {
  std::int32_t partyId = 0;
  std::string partyCode;
  std::string partyName;
  std::int32_t currencyId = 0;
  /// The document that the row belongs to; of an open credit, its own payment.
  std::int32_t orderId = 0;
  QuorDataLib::Date orderDate;
  /// The row's own document.
  std::int32_t key = 0;
  std::string number;
  std::int32_t type = 0;
  QuorDataLib::Date date;
  /// When its document is due; none where nobody has said, or asked.
  QuorDataLib::Date due;
  QuorDataLib::Currency balance;
  /// Exchange rate to home currency; Null where there is none.
  QuorDataLib::Value rate;

  [[nodiscard]] bool isDocument() const noexcept {
    return type != kPaymentType && type != kDiscountType;
  }
  /// An open credit has no document beside its payment. A payment that happens to bear the key and
  /// the day of the document it is applied to looks the same, so this holds only where that
  /// document is not there.
  [[nodiscard]] bool looksOpen() const noexcept {
    return type == kPaymentType && key == orderId && date == orderDate;
  }
};

/// Reads the rows of a side in their order.
class AgingReader {
 public:
  AgingReader(const AgingSource& source, AgeBy by, QuorDataLib::Ref<QuorDataLib::Recordset> rows);

  /// Reads the next row that has a party (a currency without items comes as a row of nulls). False
  /// at the end.
  bool next(AgingRow& row);

 private:
  [[nodiscard]] std::int32_t column(std::string_view name) const;

  QuorDataLib::Ref<QuorDataLib::Recordset> rows_;
  std::int32_t party_, code_, name_, currency_, orderId_, orderDate_, key_, number_, type_, date_,
      balance_, rate_;
  /// Only by due date.
  std::optional<std::int32_t> due_;
};

}  // namespace QuorCli
