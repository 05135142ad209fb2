// The fixed texts of the bank checks. The two blanks after the sign are part of them.
#pragma once

#include <string_view>

namespace QuorAccQueries::BankSql {

inline constexpr std::string_view kConciliated = "SELECT Conciliated ";
inline constexpr std::string_view kUnconciliated = "SELECT Unconciliated ";

inline constexpr std::string_view kOfCheque =
    "FROM GLDet INNER JOIN GLAcct ON GLDet.ExAcctId = GLAcct.InGLAcctId "
    "WHERE ChqAcct <> 0 AND DetAmnt < 0  AND "
    "GLDet.Source=? AND GLAcct.InGLAcctID = ";
inline constexpr std::string_view kChequeReference = " AND DetRef = ? AND ExSrcKeyVal = ";

inline constexpr std::string_view kOfDeposit =
    "FROM GLDet INNER JOIN GLAcct ON GLDet.ExAcctId = GLAcct.InGLAcctId "
    "WHERE ChqAcct <> 0 AND DetAmnt > 0  AND "
    "GLDet.Source=? AND GLAcct.InGLAcctID=";
inline constexpr std::string_view kDepositReference = " AND DetRef=?";
inline constexpr std::string_view kDepositDocument = " AND ExSrcKeyVal=?";

inline constexpr std::string_view kChequesOfAccount =
    "SELECT ChqId, ExGLAcctId, ChqDate, ChqNo, ChqAmnt, PayTo, TrxType "
    "FROM AllIssuedChecks_View "
    "WHERE ExGLAcctId = ";
/// With a blank at its end, unlike in the query of issued cheques.
inline constexpr std::string_view kOfNumber = " AND ChqNo = ? ";

}  // namespace QuorAccQueries::BankSql
