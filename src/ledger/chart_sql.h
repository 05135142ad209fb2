// The fixed texts of the chart of accounts.
#pragma once

#include <string_view>

#include "core/dialect_text.h"

namespace QuorAccQueries::ChartSql {

// The accounts whose numbers begin with one of some prefixes.
inline constexpr std::string_view kAccounts = "SELECT * FROM GLAcct WHERE ";
inline constexpr std::string_view kFirstPrefix = "(GLAcctId LIKE '";
inline constexpr std::string_view kFurtherPrefix = " OR (GLAcctId LIKE '";
inline constexpr std::string_view kPrefixEnd = "%')";
inline constexpr std::string_view kByNumber = " ORDER BY GLAcctId";

inline constexpr std::string_view kAllAccounts = "SELECT * FROM GLAcct";
inline constexpr std::string_view kAccountToChange = "SELECT * FROM GLAcct WHERE InGLAcctId = ";
inline constexpr std::string_view kAccountNames =
    "SELECT GLAcctId, Descr FROM GLAcct WHERE InGLAcctId = ";

/// The group of the account before a number: by the numbers' value, and by their text.
inline constexpr DialectText kPreviousGroup{
    .desktop =
        "SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(CLng(GLAcct.GLAcctId)) FROM "
        "GLAcct INNER JOIN (SELECT * FROM GLAcct WHERE ISNUMERIC(GLAcctId) <> 0) AS X ON "
        "GLAcct.InGLAcctId = X.InGLAcctId WHERE CLng(GLAcct.GLAcctId) < ?)",
    .server =
        "SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(CAST(GLAcct.GLAcctId AS "
        "integer)) FROM GLAcct INNER JOIN (SELECT * FROM GLAcct WHERE ISNUMERIC(GLAcctId) <> 0) "
        "AS X ON GLAcct.InGLAcctId = X.InGLAcctId WHERE CAST(GLAcct.GLAcctId AS integer) < ?)"};
inline constexpr std::string_view kPreviousGroupByText =
    "SELECT GroupType FROM GLAcct WHERE GLAcctId = (SELECT MAX(GLAcct.GLAcctId) FROM GLAcct WHERE "
    "GLAcct.GLAcctId < ?)";

inline constexpr std::string_view kCount = "SELECT COUNT(*) AS RecordCount FROM GLAcct WHERE";
inline constexpr std::string_view kMadeByUser =
    " (CreatedByUser IS NOT NULL AND CreatedByUser <> 0)";
inline constexpr std::string_view kNotMadeByUser = " (CreatedByUser IS NULL OR CreatedByUser=0)";
inline constexpr std::string_view kOfType = " AND AcctType=";

// Account types.
inline constexpr std::string_view kDescription = "SELECT Description FROM AccountType WHERE ID=";
inline constexpr std::string_view kPrefix = "SELECT AcctPrefix FROM AccountType WHERE ID=";
inline constexpr std::string_view kDefinition = "SELECT ExAcctTypeDefId FROM AccountType WHERE ID=";
inline constexpr std::string_view kReverseBalance =
    "SELECT ReverseBalance FROM AccountType WHERE ID=";
inline constexpr std::string_view kAllTypes = "SELECT * FROM AccountType";

inline constexpr std::string_view kTypesOfDefinition =
    "SELECT ID FROM AccountType "
    " WHERE "
    "ExAcctTypeDefId = ";
inline constexpr std::string_view kReversed =
    " AND "
    "(ReverseBalance IS NOT NULL AND ReverseBalance<>0)";
inline constexpr std::string_view kNotReversed =
    " AND "
    "(ReverseBalance IS NULL OR ReverseBalance=0)";
inline constexpr std::string_view kById = " ORDER BY ID";

inline constexpr std::string_view kTaxCode = "SELECT * FROM TaxCode WHERE InTaxCodeId=";

}  // namespace QuorAccQueries::ChartSql
