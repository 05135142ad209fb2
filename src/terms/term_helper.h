// Payment terms.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/frame.h"

namespace QuorAccQueries {

/// Due dates from payment terms.
class CTermHelper : public QueryFrame {
 public:
  static constexpr std::string_view kClassName = "CTermHelper";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// When a document is due under a payment term. The term's `TermMode` tells how:
  ///
  /// - 4, net: `Due` days after the document; its time of day stays.
  /// - 1, day of the month: day `Due` of the document's month, or that month's last day where it is
  ///   shorter. With a `DueNxtMonth` above 0 it is the same day of the next month where `Due` is at
  ///   most that many days after the document's day. With a `DueNxtMonth` of 0 it is always the
  ///   document's own month, so that the due date may come before the document: what is bought on
  ///   the 20th under "the 15th" is overdue.
  /// - 3, first payment: `FirstPmtDay` days after the document's day.
  /// - 2, fixed date: the `DueDate` of the first row of the term's details that the database gives;
  ///   the document's date where there is none. Seasonal sales have such a date.
  ///
  /// Modes 1 and 3 give a day without a time of day.
  ///
  /// @param TermId   the term (`Term.InTermId`)
  /// @param DocDate  the document's date, with or without a time of day
  /// @return `DocDate` itself where there is no such term; no date for any other mode, a null one
  ///         included. Raises 94 where a column that the rule needs is null, 6 where the due date
  ///         is outside the range of dates; when the service has the method left, no date.
  Date GetDueDate(std::int32_t TermId, Date DocDate);

 private:
  Date dueDate(Steps& step, const Ref<Recordset>& term, Date document);
  /// The fixed date of a term; `otherwise` where it has none.
  Date fixedDate(Steps& step, std::int32_t term, Date otherwise);
};

}  // namespace QuorAccQueries
