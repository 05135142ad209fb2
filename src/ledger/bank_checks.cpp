// Whether cheques and deposits are reconciled, and cheque numbers taken.
#include "core/statement.h"
#include "ledger/bank_sql.h"
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace Sql = BankSql;

namespace {

/// The source document of a cheque is part of the text.
Statement cheque(std::string_view flag, const std::string& source, const std::string& reference,
                 std::int32_t account, std::int32_t document) {
  Statement statement(flag);
  statement.text(Sql::kOfCheque).bind(source).number(account);
  statement.text(Sql::kChequeReference).bind(reference).number(document);
  return statement;
}

/// That of a deposit is a marker's value, and may be left open.
Statement deposit(std::string_view flag, const std::string& source, const std::string& reference,
                  std::int32_t account, std::int32_t document) {
  Statement statement(flag);
  statement.text(Sql::kOfDeposit).bind(source).number(account);
  statement.text(Sql::kDepositReference).bind(reference);
  if (document != 0) statement.text(Sql::kDepositDocument).bind(document);
  return statement;
}

}  // namespace

bool CGeneralLedgerHelper::ChequeIsConciliated(const std::string& Source, const std::string& DetRef,
                                               std::int32_t GLAcctId, std::int32_t ExSrcKeyVal) {
  return trap("ChequeIsConciliated", [&](Steps& step, bool& result) {
    if (Source.empty()) return;
    readFirst(step, cheque(Sql::kConciliated, Source, DetRef, GLAcctId, ExSrcKeyVal), Pass::Array,
              "Conciliated", result);
  });
}

bool CGeneralLedgerHelper::ChequeIsUnconciliated(const std::string& Source,
                                                 const std::string& DetRef, std::int32_t GLAcctId,
                                                 std::int32_t ExSrcKeyVal) {
  return trap("ChequeIsUnconciliated", [&](Steps& step, bool& result) {
    if (Source.empty()) return;
    readFirst(step, cheque(Sql::kUnconciliated, Source, DetRef, GLAcctId, ExSrcKeyVal), Pass::Array,
              "Unconciliated", result);
  });
}

bool CGeneralLedgerHelper::DepositIsConciliated(const std::string& Source,
                                                const std::string& DetRef, std::int32_t GLAcctId,
                                                std::int32_t ExSrcKeyVal) {
  return trap("DepositIsConciliated", [&](Steps& step, bool& result) {
    if (Source.empty()) return;
    readFirst(step, deposit(Sql::kConciliated, Source, DetRef, GLAcctId, ExSrcKeyVal), Pass::Array,
              "Conciliated", result);
  });
}

bool CGeneralLedgerHelper::DepositIsUnconciliated(const std::string& Source,
                                                  const std::string& DetRef,
                                                  std::int32_t GLAcctId) {
  return trap("DepositIsUnconciliated", [&](Steps& step, bool& result) {
    if (Source.empty()) return;
    readFirst(step, deposit(Sql::kUnconciliated, Source, DetRef, GLAcctId, 0), Pass::Array,
              "Unconciliated", result);
  });
}

bool CGeneralLedgerHelper::IsCheckNumberDuplicateByAccount(const std::string& /*UnusedText*/,
                                                           const std::string& ChqNo,
                                                           std::int32_t GLAcctId,
                                                           const Value& /*UnusedObject*/) {
  return trap("IsCheckNumberDuplicateByAccount", [&](Steps& step, bool& result) {
    if (ChqNo.empty()) return;
    Statement statement(Sql::kChequesOfAccount);
    statement.number(GLAcctId).text(Sql::kOfNumber).bind(ChqNo);
    result = anyRow(step, statement, Pass::Single);
  });
}

}  // namespace QuorAccQueries
