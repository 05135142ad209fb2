// Payment terms, and the schedules of recurring transactions.
#include <array>
#include <map>
#include <optional>

#include "host/company/checks/check.h"
#include "host/company/due_dates.h"

namespace QuorHost {
namespace {

using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

struct NamedTerm {
  std::string code;
  PaymentTerm rule;
};
using Terms = std::map<std::int32_t, NamedTerm>;

Ref<Recordset> readRows(Store& store, const std::string& query) {
  return store.connect(Sql::Dialect::Server)->OpenRecordset(query, 4, 0, {}, 0);
}

std::optional<std::int32_t> numberOrNone(const Value& value) {
  if (value.isNull()) return std::nullopt;
  return value.toLong();
}

Terms readTerms(Store& store) {
  Terms terms;
  const Ref<Recordset> rows =
      readRows(store, "SELECT InTermId, TermId, TermMode, Due, DueNxtMonth, FirstPmtDay FROM Term");
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::int32_t key = rows->Field(0).toLong();
    const Value code = rows->Field(1);
    terms[key] = {code.isNull() ? std::to_string(key) : code.toText(),
                  {.mode = numberOrNone(rows->Field(2)),
                   .due = numberOrNone(rows->Field(3)),
                   .dueNextMonth = numberOrNone(rows->Field(4)),
                   .firstPaymentDay = numberOrNone(rows->Field(5)),
                   .fixedDate = {}}};
  }
  const Ref<Recordset> dates = readRows(
      store,
      "SELECT ExTermId, DueDate FROM TermDet WHERE NOT DueDate IS NULL ORDER BY InTermDetId");
  for (; !dates->AtEnd(); dates->MoveNext()) {
    const auto term = terms.find(dates->Field(0).toLong());
    if (term == terms.end() || term->second.rule.fixedDate) continue;
    term->second.rule.fixedDate = dates->Field(1).toDate();
  }
  return terms;
}

/// Documents of a table whose due date is not what their term gives.
void lookAtDueDates(Store& store, const Findings& report, const Terms& terms,
                    const std::string& table, const std::string& key, const std::string& date) {
  const Ref<Recordset> rows =
      readRows(store, "SELECT " + key + ", " + date + ", DueDate, ExTermId FROM " + table +
                          " WHERE NOT ExTermId IS NULL ORDER BY " + key);
  for (; !rows->AtEnd(); rows->MoveNext()) {
    const std::string document = "Document " + rows->Field(0).toText() + " of " + table;
    const std::int32_t termKey = rows->Field(3).toLong();
    const auto term = terms.find(termKey);
    if (term == terms.end()) {
      report(document + " has the payment term " + std::to_string(termKey) +
             ", which is missing in Term");
      continue;
    }
    const std::optional<Date> due = dueDate(term->second.rule, rows->Field(1).toDate());
    if (!due) {
      report(document + " has the payment term " + term->second.code +
             ", which gives no due date: its mode or a number of its rule is missing");
      continue;
    }
    const Value stored = rows->Field(2);
    if (!stored.isNull() && stored.toDate() == *due) continue;
    report(document + " is due on " + (stored.isNull() ? "no day" : stored.toDate().toText()) +
           ", but by its payment term " + term->second.code + " on " + due->toText());
  }
}

void lookAtAllDueDates(Store& store, const Findings& report) {
  const Terms terms = readTerms(store);
  lookAtDueDates(store, report, terms, "InvoiHdr", "InInvoiId", "InvoiDate");
  lookAtDueDates(store, report, terms, "PurcHdr", "InPurcId", "PurcDate");
}

constexpr std::array kTermChecks{
    Check{.rule = "due dates agree with payment terms", .look = lookAtAllDueDates},
    Check{.rule = "customers have payment terms that there are",
          .query = "SELECT Cust.InCustId, Cust.ExTermId FROM Cust "
                   "LEFT JOIN Term ON Term.InTermId = Cust.ExTermId "
                   "WHERE NOT Cust.ExTermId IS NULL AND Term.InTermId IS NULL "
                   "AND EXISTS (SELECT Known.InTermId FROM Term AS Known) ORDER BY Cust.InCustId",
          .finding = "Customer {0} of Cust has the payment term {1}, which is missing in Term"},
    Check{.rule = "suppliers have payment terms that there are",
          .query = "SELECT Supp.InSuppId, Supp.ExTermId FROM Supp "
                   "LEFT JOIN Term ON Term.InTermId = Supp.ExTermId "
                   "WHERE NOT Supp.ExTermId IS NULL AND Term.InTermId IS NULL "
                   "AND EXISTS (SELECT Known.InTermId FROM Term AS Known) ORDER BY Supp.InSuppId",
          .finding = "Supplier {0} of Supp has the payment term {1}, which is missing in Term"},
    Check{.rule = "schedules run as often as there are codes for",
          .query = "SELECT TrxType, ExTrxId, Frqncy FROM TrxRec WHERE Frqncy NOT BETWEEN 0 AND 7 "
                   "ORDER BY TrxType, ExTrxId",
          .finding = "The schedule of transaction {1} of type {0} in TrxRec has the frequency {2}, "
                     "which is unknown"},
    Check{.rule = "schedules go forward",
          .query = "SELECT TrxType, ExTrxId, LastRun, NextRun FROM TrxRec "
                   "WHERE NextRun <= LastRun ORDER BY TrxType, ExTrxId",
          .finding = "The schedule of transaction {1} of type {0} in TrxRec ran last on {2} and is "
                     "to run next on {3}, which is not after it"},
    Check{.rule = "schedules are those of transactions that there are",
          .query =
              "SELECT TrxRec.TrxType, TrxRec.ExTrxId FROM TrxRec WHERE NOT CASE TrxRec.TrxType "
              "WHEN 1 THEN (SELECT COUNT(*) FROM InvoiHdr WHERE InInvoiId = TrxRec.ExTrxId) "
              "WHEN 2 THEN (SELECT COUNT(*) FROM PurcHdr WHERE InPurcId = TrxRec.ExTrxId) "
              "WHEN 3 THEN (SELECT COUNT(*) FROM GJTrxHdr WHERE InGJTrxId = TrxRec.ExTrxId) "
              "ELSE 0 END = 1 ORDER BY TrxRec.TrxType, TrxRec.ExTrxId",
          .finding = "The schedule of transaction {1} of type {0} in TrxRec is that of a document "
                     "that is missing"},
};

}  // namespace

std::span<const Check> termChecks() { return kTermChecks; }

}  // namespace QuorHost
