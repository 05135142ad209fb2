#include "core/value_records.h"

#include "core/error_trap.h"
#include "core/frame.h"

namespace QuorAccQueries {
namespace {

template <class Record, class T>
T read(std::string_view property, const T& field,
       std::source_location where = std::source_location::current()) {
  return raisingAgain(Record::kClassName, property, [&] { return field; }, where);
}

template <class Record, class T>
void assign(std::string_view property, T& field, const T& value,
            std::source_location where = std::source_location::current()) {
  raisingAgain(Record::kClassName, property, [&] { field = value; }, where);
}

/// The member table of a payment record.
template <class Record>
ClassInfo describePayment(std::string_view summary) {
  return describeClass<Record>(
      summary,
      {
          propertyGet<&Record::LastPmtDate>("LastPmtDate", "Date of the payment."),
          propertyPut<&Record::SetLastPmtDate>("LastPmtDate", "Date of the payment."),
          propertyGet<&Record::LastPmtAmnt>("LastPmtAmnt", "Total amount of the payment."),
          propertyPut<&Record::SetLastPmtAmnt>("LastPmtAmnt", "Total amount of the payment."),
          propertyGet<&Record::LastPmtCode>("LastPmtCode", "Key of the payment."),
          propertyPut<&Record::SetLastPmtCode>("LastPmtCode", "Key of the payment."),
          propertyGet<&Record::LastPmtType>("LastPmtType", "Kind of the payment."),
          propertyPut<&Record::SetLastPmtType>("LastPmtType", "Kind of the payment."),
      });
}

}  // namespace

const ClassInfo& CCustPmtInfo::info() {
  static const ClassInfo info =
      describePayment<CCustPmtInfo>("Last payment received from a customer.");
  return info;
}

const ClassInfo& CSupplierPmtInfo::info() {
  static const ClassInfo info =
      describePayment<CSupplierPmtInfo>("Last payment made to a supplier.");
  return info;
}

template <class Record>
Date LastPayment<Record>::LastPmtDate() const {
  return read<Record>("LastPmtDate", date_);
}
template <class Record>
void LastPayment<Record>::SetLastPmtDate(Date Value) {
  assign<Record>("LastPmtDate", date_, Value);
}
template <class Record>
Currency LastPayment<Record>::LastPmtAmnt() const {
  return read<Record>("LastPmtAmnt", amount_);
}
template <class Record>
void LastPayment<Record>::SetLastPmtAmnt(Currency Value) {
  assign<Record>("LastPmtAmnt", amount_, Value);
}
template <class Record>
std::int32_t LastPayment<Record>::LastPmtCode() const {
  return read<Record>("LastPmtCode", code_);
}
template <class Record>
void LastPayment<Record>::SetLastPmtCode(std::int32_t Value) {
  assign<Record>("LastPmtCode", code_, Value);
}
template <class Record>
std::string LastPayment<Record>::LastPmtType() const {
  return read<Record>("LastPmtType", type_);
}
template <class Record>
void LastPayment<Record>::SetLastPmtType(const std::string& Value) {
  assign<Record>("LastPmtType", type_, Value);
}

template class LastPayment<CCustPmtInfo>;
template class LastPayment<CSupplierPmtInfo>;

const ClassInfo& CCustSaleInfo::info() {
  static const ClassInfo info = describeClass<CCustSaleInfo>(
      "Last sale to a customer.",
      {
          propertyGet<&CCustSaleInfo::LastSaleDate>("LastSaleDate", "Date of the sales document."),
          propertyPut<&CCustSaleInfo::SetLastSaleDate>("LastSaleDate",
                                                       "Date of the sales document."),
          propertyGet<&CCustSaleInfo::LastSaleAmnt>("LastSaleAmnt",
                                                    "Total amount of the document."),
          propertyPut<&CCustSaleInfo::SetLastSaleAmnt>("LastSaleAmnt",
                                                       "Total amount of the document."),
          propertyGet<&CCustSaleInfo::LastSaleCode>("LastSaleCode", "Key of the document."),
          propertyPut<&CCustSaleInfo::SetLastSaleCode>("LastSaleCode", "Key of the document."),
          propertyGet<&CCustSaleInfo::LastSaleType>("LastSaleType", "Type of the document."),
          propertyPut<&CCustSaleInfo::SetLastSaleType>("LastSaleType", "Type of the document."),
      });
  return info;
}

Date CCustSaleInfo::LastSaleDate() const { return read<CCustSaleInfo>("LastSaleDate", date_); }
void CCustSaleInfo::SetLastSaleDate(Date Value) {
  assign<CCustSaleInfo>("LastSaleDate", date_, Value);
}
Currency CCustSaleInfo::LastSaleAmnt() const {
  return read<CCustSaleInfo>("LastSaleAmnt", amount_);
}
void CCustSaleInfo::SetLastSaleAmnt(Currency Value) {
  assign<CCustSaleInfo>("LastSaleAmnt", amount_, Value);
}
std::int32_t CCustSaleInfo::LastSaleCode() const {
  return read<CCustSaleInfo>("LastSaleCode", code_);
}
void CCustSaleInfo::SetLastSaleCode(std::int32_t Value) {
  assign<CCustSaleInfo>("LastSaleCode", code_, Value);
}
std::int32_t CCustSaleInfo::LastSaleType() const {
  return read<CCustSaleInfo>("LastSaleType", type_);
}
void CCustSaleInfo::SetLastSaleType(std::int32_t Value) {
  assign<CCustSaleInfo>("LastSaleType", type_, Value);
}

const ClassInfo& CSupplierPurcInfo::info() {
  static const ClassInfo info = describeClass<CSupplierPurcInfo>(
      "Last purchase from a supplier.",
      {
          propertyGet<&CSupplierPurcInfo::LastPurcDate>("LastPurcDate", "Date of the purchase."),
          propertyPut<&CSupplierPurcInfo::SetLastPurcDate>("LastPurcDate", "Date of the purchase."),
          propertyGet<&CSupplierPurcInfo::LastPurcAmnt>("LastPurcAmnt",
                                                        "Total amount of the purchase."),
          propertyPut<&CSupplierPurcInfo::SetLastPurcAmnt>("LastPurcAmnt",
                                                           "Total amount of the purchase."),
          propertyGet<&CSupplierPurcInfo::LastPurcCode>("LastPurcCode", "Key of the purchase."),
          propertyPut<&CSupplierPurcInfo::SetLastPurcCode>("LastPurcCode", "Key of the purchase."),
          propertyGet<&CSupplierPurcInfo::LastPurcType>("LastPurcType", "Type of the purchase."),
          propertyPut<&CSupplierPurcInfo::SetLastPurcType>("LastPurcType", "Type of the purchase."),
      });
  return info;
}

Date CSupplierPurcInfo::LastPurcDate() const {
  return read<CSupplierPurcInfo>("LastPurcDate", date_);
}
void CSupplierPurcInfo::SetLastPurcDate(Date Value) {
  assign<CSupplierPurcInfo>("LastPurcDate", date_, Value);
}
Currency CSupplierPurcInfo::LastPurcAmnt() const {
  return read<CSupplierPurcInfo>("LastPurcAmnt", amount_);
}
void CSupplierPurcInfo::SetLastPurcAmnt(Currency Value) {
  assign<CSupplierPurcInfo>("LastPurcAmnt", amount_, Value);
}
std::int32_t CSupplierPurcInfo::LastPurcCode() const {
  return read<CSupplierPurcInfo>("LastPurcCode", code_);
}
void CSupplierPurcInfo::SetLastPurcCode(std::int32_t Value) {
  assign<CSupplierPurcInfo>("LastPurcCode", code_, Value);
}
std::int32_t CSupplierPurcInfo::LastPurcType() const {
  return read<CSupplierPurcInfo>("LastPurcType", type_);
}
void CSupplierPurcInfo::SetLastPurcType(std::int32_t Value) {
  assign<CSupplierPurcInfo>("LastPurcType", type_, Value);
}

}  // namespace QuorAccQueries
