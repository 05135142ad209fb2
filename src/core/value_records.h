// The answers of the last-activity questions of the customer and supplier helpers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/member_table.h"
#include "platform/values/currency.h"
#include "platform/values/date.h"

namespace QuorAccQueries {

using QuorDataLib::Currency;
using QuorDataLib::Date;

/// What the payment records of both sides hold. A new record is empty; a helper fills it. Every
/// accessor raises its errors again with the record's class and its own name in the description.
template <class Record>
class LastPayment : public ComponentObject {
 public:
  [[nodiscard]] const ClassInfo& classInfo() const override { return Record::info(); }

  /// Date of the payment; no date when there is none.
  [[nodiscard]] Date LastPmtDate() const;
  void SetLastPmtDate(Date Value);
  /// Total amount of the payment, in the payment's currency.
  [[nodiscard]] Currency LastPmtAmnt() const;
  void SetLastPmtAmnt(Currency Value);
  /// Key of the payment.
  [[nodiscard]] std::int32_t LastPmtCode() const;
  void SetLastPmtCode(std::int32_t Value);
  /// Kind of the payment, a text (unlike the kind of a sale or a purchase).
  [[nodiscard]] std::string LastPmtType() const;
  void SetLastPmtType(const std::string& Value);

 private:
  friend Record;
  LastPayment() = default;

  Date date_;
  Currency amount_;
  std::int32_t code_ = 0;
  std::string type_;
};

/// The last payment received from a customer.
class CCustPmtInfo : public LastPayment<CCustPmtInfo> {
 public:
  static constexpr std::string_view kClassName = "CCustPmtInfo";
  static const ClassInfo& info();
};

/// The last payment made to a supplier.
class CSupplierPmtInfo : public LastPayment<CSupplierPmtInfo> {
 public:
  static constexpr std::string_view kClassName = "CSupplierPmtInfo";
  static const ClassInfo& info();
};

/// The last sale to a customer.
class CCustSaleInfo : public ComponentObject {
 public:
  static constexpr std::string_view kClassName = "CCustSaleInfo";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Date of the sales document; no date when there is none.
  [[nodiscard]] Date LastSaleDate() const;
  void SetLastSaleDate(Date Value);
  /// Total amount of the document, in its currency.
  [[nodiscard]] Currency LastSaleAmnt() const;
  void SetLastSaleAmnt(Currency Value);
  /// Key of the document.
  [[nodiscard]] std::int32_t LastSaleCode() const;
  void SetLastSaleCode(std::int32_t Value);
  /// Type of the document, a number.
  [[nodiscard]] std::int32_t LastSaleType() const;
  void SetLastSaleType(std::int32_t Value);

 private:
  Date date_;
  Currency amount_;
  std::int32_t code_ = 0;
  std::int32_t type_ = 0;
};

/// The last purchase from a supplier.
class CSupplierPurcInfo : public ComponentObject {
 public:
  static constexpr std::string_view kClassName = "CSupplierPurcInfo";
  static const ClassInfo& info();
  [[nodiscard]] const ClassInfo& classInfo() const override { return info(); }

  /// Date of the purchase; no date when there is none.
  [[nodiscard]] Date LastPurcDate() const;
  void SetLastPurcDate(Date Value);
  /// Total amount of the purchase, in its currency.
  [[nodiscard]] Currency LastPurcAmnt() const;
  void SetLastPurcAmnt(Currency Value);
  /// Key of the purchase.
  [[nodiscard]] std::int32_t LastPurcCode() const;
  void SetLastPurcCode(std::int32_t Value);
  /// Type of the purchase, a number.
  [[nodiscard]] std::int32_t LastPurcType() const;
  void SetLastPurcType(std::int32_t Value);

 private:
  Date date_;
  Currency amount_;
  std::int32_t code_ = 0;
  std::int32_t type_ = 0;
};

}  // namespace QuorAccQueries
