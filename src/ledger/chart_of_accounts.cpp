// New accounts: their number, their group, their row.
#include <optional>

#include "core/platform_access.h"
#include "core/statement.h"
#include "ledger/account_numbers.h"
#include "ledger/chart_sql.h"
#include "ledger/general_ledger_helper.h"

namespace QuorAccQueries {

namespace Sql = ChartSql;

namespace {

/// Characters of a description.
constexpr std::size_t kDescriptionLength = 50;

std::int64_t numberOf(const Ref<Recordset>& account) { return account->Field("GLAcctId").toLong(); }

std::int32_t typeOf(const Ref<Recordset>& account) {
  return valueOrEmpty(account, "AcctType").toLong();
}

/// The group of an account that follows one of group `previous`; nothing where the rule has none.
std::optional<std::int32_t> groupAfter(std::int32_t previous) {
  switch (previous) {
    case -2:
    case 5:
    case 6:
      return 6;
    case 1:
    case 2:
      return 2;
    case 3:
    case 4:
    case 7:
      return 4;
    default:
      return std::nullopt;
  }
}

}  // namespace

std::int64_t CGeneralLedgerHelper::firstGap(Steps& step, const Ref<Recordset>& accounts,
                                            const std::vector<std::int32_t>& types, Where where) {
  std::int64_t candidate = 0;
  bool more = moreRows(step, accounts, where);
  for (const std::int32_t type : types) {
    if (more) step([&] { candidate = numberOf(accounts); }, where);
    while (more) {
      if (step([&] { return typeOf(accounts) > type; }, where)) break;
      if (step([&] { return numberOf(accounts) > candidate; }, where)) break;
      step([&] { candidate = numberOf(accounts) + 1; }, where);
      more = moveOn(step, accounts, where);
    }
    if (more && step([&] { return candidate < numberOf(accounts); }, where)) break;
  }
  return candidate;
}

std::string CGeneralLedgerHelper::FindNextGLAcctId(const std::string& AcctTypeIds,
                                                   const Value& AcctPrefix) {
  return trap("FindNextGLAcctId", [&](Steps& step, std::string& result) {
    const std::vector<std::int32_t> types = step([&] { return accountTypesIn(AcctTypeIds); });
    Statement statement(Sql::kAccounts);
    std::string firstPrefix;
    for (const std::int32_t& type : types) {
      const std::string prefix = step([&] { return GetAccountTypePrefix(type); });
      const bool first = &type == &types.front();
      if (first) firstPrefix = prefix;
      statement.text(first ? Sql::kFirstPrefix : Sql::kFurtherPrefix);
      statement.fragment(prefix).text(Sql::kPrefixEnd);
    }
    statement.text(Sql::kByNumber);
    const Ref<Recordset> accounts = open(step, statement, Pass::Nothing);
    const std::int32_t chart =
        askCompany(step, &QuorCastriaFoundation::Company::CieAccountTypeChart);

    if (chart == kFixedChart) {
      const std::int64_t number = firstGap(step, accounts, types);
      if (number == 0) {
        const bool sixDigits = parameterIsOn(step, "Use6DigitAccounts");
        step([&] {
          result = (AcctPrefix.isNull() ? std::string() : AcctPrefix.toText()) +
                   (sixDigits ? "00000" : "000");
        });
      } else {
        result = std::to_string(number);
      }
    } else {
      std::string number;
      for (std::int32_t counter = 0;; ++counter) {
        step([&] { number = accountNumber(firstPrefix, counter, chart == kFrenchChart); });
        if (!step([&] { return accounts->Find("GLAcctId='" + number + "'"); })) break;
      }
      result = number;
    }
    step([&] { accounts->Close(); });
  });
}

std::int32_t CGeneralLedgerHelper::previousGroupType(Steps& step, const std::string& number,
                                                     Where where) {
  const std::int32_t chart =
      askCompany(step, &QuorCastriaFoundation::Company::CieAccountTypeChart, where);
  const std::int16_t engine = engineType(step, where);
  // The user's own chart may have numbers with letters in them, which the engine cannot compare by
  // value; its numbers are in the order of their texts, as they are listed.
  const bool byValue = (chart == kFixedChart || chart == kFrenchChart) && isWholeNumber(number);
  Statement statement(byValue ? Sql::kPreviousGroup.of(engine) : Sql::kPreviousGroupByText);
  statement.bind(number);
  std::int32_t group = 0;
  readFirst(step, statement, Pass::Single, "GroupType", group, where);
  return group;
}

std::int32_t CGeneralLedgerHelper::CreateGLAccount(const std::string& AcctTypeIds, bool ChqAcct,
                                                   std::int32_t AcctType, const Value& CurrencyId,
                                                   const std::string& Descr, bool CreatedByUser) {
  return trap("CreateGLAccount", [&](Steps& step, std::int32_t& result) {
    std::string number;
    if (!AcctTypeIds.empty()) {
      const std::string prefix = step([&] { return GetAccountTypePrefix(AcctType); });
      number = step([&] { return FindNextGLAcctId(AcctTypeIds, prefix); });
    }
    std::string description = Descr;
    if (description.empty()) {
      description = step([&] { return GetAccountTypeDescription(AcctType); }) + " (" + number + ")";
    }
    const std::optional<std::int32_t> group = groupAfter(previousGroupType(step, number));

    const Ref<Recordset> accounts = open(step, Statement(Sql::kAllAccounts), Pass::Nothing,
                                         {.mode = QuorDataLib::kOpenForUpdate});
    step([&] { accounts->AddNew(); });
    step([&] { accounts->SetField("GLAcctId", number); });
    step([&] { accounts->SetField("Descr", firstCharacters(description, kDescriptionLength)); });
    step([&] { accounts->SetField("AcctType", AcctType); });
    step([&] { accounts->SetField("ChqAcct", ChqAcct); });
    if (group) step([&] { accounts->SetField("GroupType", *group); });
    step([&] { accounts->SetField("ExCurrencyId", MUtils::SafeExternalId(CurrencyId)); });
    step([&] { accounts->SetField("CreatedByUser", CreatedByUser); });
    step([&] { accounts->Update(); });
    step([&] { result = accounts->Field("InGLAcctId").toLong(); });
    step([&] { accounts->Close(); });
  });
}

void CGeneralLedgerHelper::ChangeAccountDescription(std::int32_t InGLAcctId,
                                                    const std::string& Descr) {
  trap("ChangeAccountDescription", [&](Steps& step) {
    const Ref<Recordset> accounts = open(step, Statement(Sql::kAccountToChange).number(InGLAcctId),
                                         Pass::Nothing, {.mode = QuorDataLib::kOpenForUpdate});
    if (hasRow(step, accounts)) {
      step([&] { accounts->SetField("Descr", Descr); });
      step([&] { accounts->Update(); });
    }
    step([&] { accounts->Close(); });
  });
}

std::string CGeneralLedgerHelper::GetAccountCodeDesc(std::int32_t InGLAcctId) {
  return trap("GetAccountCodeDesc", [&](Steps& step, std::string& result) {
    const Ref<Recordset> account =
        open(step, Statement(Sql::kAccountNames).number(InGLAcctId), Pass::Nothing);
    std::string number;
    std::string description;
    const bool found = hasRow(step, account);
    if (found) {
      readField(step, account, "GLAcctId", number);
      readField(step, account, "Descr", description);
    }
    step([&] { account->Close(); });
    if (!found) return;
    const bool withNumber = parameterIsOn(step, "UseAccountNumbers");
    result = withNumber ? number + " - " + description : description;
  });
}

std::int32_t CGeneralLedgerHelper::GetGLAccountCount(bool CreatedByUser, std::int32_t AcctType) {
  return trap("GetAccountCount", [&](Steps& step, std::int32_t& result) {
    Statement statement(Sql::kCount);
    statement.text(CreatedByUser ? Sql::kMadeByUser : Sql::kNotMadeByUser);
    statement.text(Sql::kOfType).number(AcctType);
    readFirst(step, statement, Pass::Nothing, "RecordCount", result);
  });
}

}  // namespace QuorAccQueries
