// Where an account may be named, in the order in which it is looked for.
#pragma once

#include <array>
#include <string_view>

namespace QuorAccQueries::AccountUseSql {

/// A statement whose pieces are each followed by the account's number; empty pieces are none.
struct Use {
  std::string_view first;
  std::string_view second;
  std::string_view third;
};

inline constexpr std::array kUses{
    Use{"SELECT * FROM PayCode WHERE ExLiaAcct=", " OR ExExpAcct=", ""},
    Use{"SELECT * FROM BankTransfer WHERE ExGLAcctIdFrom=", " OR ExGLAcctIdTo=", ""},
    Use{"SELECT * FROM CieInfo WHERE ExGLAcctCurrencyId=", "", ""},
    Use{"SELECT * FROM Cust WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM DepDet WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM DepHdr WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM GLDet WHERE ExAcctId=", "", ""},
    Use{"SELECT * FROM InvoiDet WHERE ExSaleAcctId=", "", ""},
    Use{"SELECT * FROM InvoiHdr WHERE RecExGLAcctId=", "", ""},
    Use{"SELECT * FROM Item WHERE ExSaleAcctId=", " OR ExPurcAcctId=", ""},
    Use{"SELECT * FROM QuorAcctParams WHERE ParamValue =", "", ""},
    Use{"SELECT * FROM PmtHdr WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM PmtMeth WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM PurcDet WHERE ExPurcAcctId=", "", ""},
    Use{"SELECT * FROM PurcHdr WHERE PaidExGLAcctId=", "", ""},
    Use{"SELECT * FROM RPDPmtDet WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM RPDPmtHdr WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM Supp WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM SuppPmtHdr WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM TaxCode WHERE ExAcctId=", " OR ExAcctIdPassif=", ""},
    Use{"SELECT * FROM TaxTrxHdr WHERE ExGLAcctId=", "", ""},
    Use{"SELECT * FROM TrxPay WHERE ExGLAcctId=", "", ""},
};

/// The last place, and the same without the accounts of one currency.
inline constexpr Use kCurrencies{"SELECT * FROM WorldCurrency WHERE ExGLAcctId = ",
                                 " OR ExCustAcctId = ", " OR ExSuppAcctId = "};
inline constexpr Use kOtherCurrencies{"SELECT * FROM WorldCurrency WHERE (ExGLAcctId = ",
                                      " OR ExCustAcctId = ", " OR ExSuppAcctId = "};
inline constexpr std::string_view kThanCurrency = ") AND InCurrencyID <> ";

}  // namespace QuorAccQueries::AccountUseSql
