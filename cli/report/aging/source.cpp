#include "cli/report/aging/source.h"

#include <utility>

#include "cli/report/period.h"
#include "cli/words/names.h"

namespace QuorCli {

using QuorAccQueries::Member;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;
using QuorDataLib::Value;

const AgingSource kCustomerAging{
    .title = "Customer aging",
    .party = "customer",
    .parties = "customers",
    .className = "CCustomerQueries",
    .member = "OpenCustAgingTransactions",
    .allArgument = "AllTransactions",
    .partyArgument = "CustomerId",
    .dateArgument = "AsOfDate",
    .fieldsArgument = "FieldList",
    .subjects = &kCustomers,
    .partyColumn = "ExCustId",
    .codeColumn = "CustId",
    .keyColumn = "InInvoiId",
    .numberColumn = "InvoiId",
    .typeColumn = "InvoiType",
    .dateColumn = "InvoiDate",
    .rowsName = "CustAgingList",
    .documentColumn = "ExInvoiId",
    .documentTable = "InvoiHdr",
    .documentKey = "InInvoiId",
    .typeNames = {"invoice", "counter sale", "services", "adjustment"},
};

const AgingSource kSupplierAging{
    .title = "Supplier aging",
    .party = "supplier",
    .parties = "suppliers",
    .className = "CSupplierQueries",
    .member = "OpenSuppAgingTransactions",
    .allArgument = "ShowAllTransactions",
    .partyArgument = "SuppId",
    .dateArgument = "AgingDate",
    .fieldsArgument = "FieldsList",
    .subjects = &kSuppliers,
    .partyColumn = "ExSuppId",
    .codeColumn = "SuppId",
    .keyColumn = "InPurcId",
    .numberColumn = "DocNo",
    .typeColumn = "PurcType",
    .dateColumn = "PurcDate",
    .rowsName = "SuppAgingList_View",
    .documentColumn = "ExPurcId",
    .documentTable = "PurcHdr",
    .documentKey = "InPurcId",
    .typeNames = {"purchase", "expense", "services", "adjustment"},
};

Target agingTarget(const AgingSource& source) {
  const QuorAccQueries::ClassInfo* const owner = QuorAccQueries::findClass(source.className);
  const Member* const member =
      owner == nullptr ? nullptr : owner->find(source.member, Member::Kind::Method);
  if (member == nullptr) {
    throw Failure("this build has no aging of " + std::string(source.parties) + ": " +
                  std::string(source.className) + "." + std::string(source.member) + " is missing");
  }
  return {owner, member};
}

namespace {

/// The columns that the reader reads, with the due dates of documents.
std::string fieldsWithDueDate(const AgingSource& source, const AgingRequest& request) {
  const std::string rows(source.rowsName);
  const std::string subjects(source.subjects->table);
  std::string list;
  for (const std::string_view column :
       {source.partyColumn, source.keyColumn, source.numberColumn, source.typeColumn,
        source.dateColumn, std::string_view("DocOrderId"), std::string_view("DocOrderDate"),
        std::string_view("Balance"), std::string_view("ExchangeRate")}) {
    list += rows + "." + std::string(column) + ", ";
  }
  list += subjects + "." + std::string(source.codeColumn) + ", " + subjects + ".Name, ";
  list += "(SELECT Dated.DueDate FROM " + std::string(source.documentTable) +
          " AS Dated WHERE Dated." + std::string(source.documentKey) + " = " + rows + "." +
          std::string(source.documentColumn) + ") AS DueDate, ";
  const std::string currency = rows + ".ExCurrencyId";
  if (!request.byCurrency) return list + currency;
  const bool desktop = request.dialect == QuorHost::Sql::Dialect::Desktop;
  return list +
         (desktop ? "IIf(IsNull(" + currency + "),1," + currency + ")"
                  : "COALESCE(" + currency + ",1)") +
         " AS InnerViewExCurrencyId";
}

}  // namespace

std::vector<Value> agingArguments(const Target& target, const AgingSource& source,
                                  const AgingRequest& request) {
  return bindArguments(
      target, {{source.allArgument, request.all},
               {source.partyArgument, request.party},
               {source.dateArgument, endOfDay(request.asOf)},
               {source.fieldsArgument,
                request.by == AgeBy::Due ? fieldsWithDueDate(source, request) : std::string()},
               {"ByCurrency", request.byCurrency}});
}

AgingAnswer openAging(const AgingSource& source, const AgingRequest& request,
                      const RunOptions& options, const Session& session) {
  const Target target = agingTarget(source);
  Answer answer = callMember(target, agingArguments(target, source, request), options, session);
  const Ref<Recordset> rows = answer.result.toObject().as<Recordset>();
  if (!rows) throw Failure(target.name() + " has returned no rows");
  return {std::move(answer), rows};
}

AgingReader::AgingReader(const AgingSource& source, AgeBy by, Ref<Recordset> rows)
    : rows_(std::move(rows)),
      party_(column(source.partyColumn)),
      code_(column(source.codeColumn)),
      name_(column("Name")),
      currency_(column("ExCurrencyId")),
      orderId_(column("DocOrderId")),
      orderDate_(column("DocOrderDate")),
      key_(column(source.keyColumn)),
      number_(column(source.numberColumn)),
      type_(column(source.typeColumn)),
      date_(column(source.dateColumn)),
      balance_(column("Balance")),
      rate_(column("ExchangeRate")) {
  if (by == AgeBy::Due) due_ = column("DueDate");
}

std::int32_t AgingReader::column(std::string_view name) const {
  for (std::int32_t index = 0; index < rows_->FieldCount(); ++index) {
    if (sameName(rows_->FieldName(index), name)) return index;
  }
  throw Failure("the aging rows have no column " + std::string(name));
}

bool AgingReader::next(AgingRow& row) {
  while (!rows_->AtEnd() && rows_->Field(party_).isNull()) rows_->MoveNext();
  if (rows_->AtEnd()) return false;
  const auto orZero = [](const Value& value) { return value.isNull() ? Value() : value; };
  // The query itself counts a row without currency as currency 1.
  const Value currency = rows_->Field(currency_);
  row.partyId = rows_->Field(party_).toLong();
  row.partyCode = orZero(rows_->Field(code_)).toText();
  row.partyName = orZero(rows_->Field(name_)).toText();
  row.currencyId = currency.isNull() ? 1 : currency.toLong();
  row.orderId = orZero(rows_->Field(orderId_)).toLong();
  row.orderDate = orZero(rows_->Field(orderDate_)).toDate();
  row.key = orZero(rows_->Field(key_)).toLong();
  row.number = orZero(rows_->Field(number_)).toText();
  row.type = orZero(rows_->Field(type_)).toLong();
  row.date = orZero(rows_->Field(date_)).toDate();
  row.due = due_ ? orZero(rows_->Field(*due_)).toDate() : QuorDataLib::Date();
  row.balance = orZero(rows_->Field(balance_)).toCurrency();
  row.rate = rows_->Field(rate_);
  rows_->MoveNext();
  return true;
}

}  // namespace QuorCli
