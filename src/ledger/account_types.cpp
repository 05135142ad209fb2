// Account types and tax codes.
#include "core/statement.h"
#include "ledger/account_numbers.h"
#include "ledger/chart_sql.h"
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace Sql = ChartSql;

std::string CGeneralLedgerHelper::GetAccountTypeDescription(std::int32_t AcctTypeId) {
  return trap("GetAccountTypeDescription", [&](Steps& step, std::string& result) {
    readFirst(step, Statement(Sql::kDescription).number(AcctTypeId), Pass::Nothing, "Description",
              result);
  });
}

std::string CGeneralLedgerHelper::GetAccountTypePrefix(std::int32_t AcctTypeId) {
  return trap("GetAccountTypePrefix", [&](Steps& step, std::string& result) {
    readFirst(step, Statement(Sql::kPrefix).number(AcctTypeId), Pass::Nothing, "AcctPrefix",
              result);
  });
}

std::int32_t CGeneralLedgerHelper::GetAccountTypeTypeDefinition(std::int32_t AcctTypeId) {
  return trap("GetAccountTypeTypeDefinition", [&](Steps& step, std::int32_t& result) {
    readFirst(step, Statement(Sql::kDefinition).number(AcctTypeId), Pass::Nothing,
              "ExAcctTypeDefId", result);
  });
}

bool CGeneralLedgerHelper::IsReversedBalanceAccountType(std::int32_t AcctTypeId) {
  return trap("IsReversedBalanceAccountType", [&](Steps& step, bool& result) {
    readFirst(step, Statement(Sql::kReverseBalance).number(AcctTypeId), Pass::Nothing,
              "ReverseBalance", result);
  });
}

std::int32_t CGeneralLedgerHelper::FindGLAcctTypeId(const std::string& GLAcctId) {
  return trap("FindGLAcctTypeId", [&](Steps& step, std::int32_t& result) {
    const Ref<Recordset> types = open(step, Statement(Sql::kAllTypes), Pass::Nothing);
    std::size_t longest = 0;
    for (bool more = moreRows(step, types); more; more = moveOn(step, types)) {
      std::string prefix;
      std::int32_t type = 0;
      readField(step, types, "AcctPrefix", prefix);
      readField(step, types, "ID", type);
      const bool longer = prefix.size() > longest;
      const bool same = prefix.size() == longest && type < result;
      if ((longer || same) && beginsWith(GLAcctId, prefix)) {
        longest = prefix.size();
        result = type;
      }
    }
    step([&] { types->Close(); });
  });
}

bool CGeneralLedgerHelper::IsAccountIdAndAccountTypeMatch(const std::string& GLAcctId,
                                                          std::int32_t AcctTypeId) {
  return trap("IsAccountIdAndAccountTypeMatch", [&](Steps& step, bool& result) {
    const std::int32_t found = step([&] { return FindGLAcctTypeId(GLAcctId); });
    result = found != 0 && found == AcctTypeId;
    if (found == 0 || result) return;
    const std::string prefix = step([&] { return GetAccountTypePrefix(found); });
    step([&] { result = GetAccountTypePrefix(AcctTypeId) == prefix; });
  });
}

std::string CGeneralLedgerHelper::ConvertAccountTypeIds(const Value& AcctTypeIds) {
  return trap("ConvertAccountTypeIds", [&](Steps& step, std::string& result) {
    step([&] {
      std::string given;
      if (AcctTypeIds.type() == QuorDataLib::ValueType::Object) {
        for (const Value& type : QuorDataLib::Automation<std::vector<Value>>::from(AcctTypeIds)) {
          given += type.toText() + ",";
        }
      } else {
        given = AcctTypeIds.toText();
      }
      std::string list;
      for (const std::int32_t type : accountTypesIn(given)) {
        list += (list.empty() ? "" : ",") + std::to_string(type);
      }
      result = list;
    });
  });
}

std::string CGeneralLedgerHelper::GetAccountTypeIds(std::int32_t AcctTypeDefId,
                                                    const Value& ReverseBalance) {
  return trap("GetAccountTypeIds", [&](Steps& step, std::string& result) {
    Statement statement(Sql::kTypesOfDefinition);
    statement.number(AcctTypeDefId);
    const bool noChoice = ReverseBalance.isEmpty() || ReverseBalance.isNull() ||
                          ReverseBalance == Value(std::string());
    if (!noChoice) {
      const bool reversed = step([&] { return ReverseBalance.toBoolean(); });
      statement.text(reversed ? Sql::kReversed : Sql::kNotReversed);
    }
    statement.text(Sql::kById);
    readList(step, statement, Pass::Nothing, "ID", result);
  });
}

void CGeneralLedgerHelper::FindInfoForTaxCode(std::int32_t InTaxCodeId, std::int32_t& ExAcctId,
                                              std::string& TaxCodeId, double& TaxRate) {
  trap("FindInfoForTaxCode", [&](Steps& step) {
    ExAcctId = 0;
    TaxCodeId.clear();
    TaxRate = 0;
    const Ref<Recordset> code =
        open(step, Statement(Sql::kTaxCode).number(InTaxCodeId), Pass::Nothing);
    if (hasRow(step, code)) {
      readField(step, code, "ExAcctId", ExAcctId);
      readField(step, code, "TaxCodeId", TaxCodeId);
      readField(step, code, "TaxRate", TaxRate);
    }
    step([&] { code->Close(); });
  });
}

}  // namespace QuorAccQueries
