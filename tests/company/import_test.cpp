// CSV that cannot be imported: the error names the place, and nothing is kept.
#include <gmock/gmock.h>

#include <streambuf>

#include "company/company_file.h"

namespace companytest {
namespace {

using testing::HasSubstr;

struct BadCsv {
  std::string table;
  std::string csv;
  std::vector<std::string> expected;  // parts of the message
};

class BadImport : public BareCompany {
 protected:
  void expectRefused(const BadCsv& bad) {
    const std::string before = exported(*store_, "Cust") + exported(*store_, "InvoiHdr") +
                               exported(*store_, "QuorCastriaParams");
    for (const bool replace : {false, true}) {
      const std::string message = failure([&] { import(*store_, bad.table, bad.csv, replace); });
      for (const std::string& part : bad.expected) {
        EXPECT_THAT(message, HasSubstr(part)) << bad.csv;
      }
      EXPECT_FALSE(message.empty()) << bad.csv;
    }
    EXPECT_EQ(exported(*store_, "Cust") + exported(*store_, "InvoiHdr") +
                  exported(*store_, "QuorCastriaParams"),
              before)
        << bad.csv;
  }
};

TEST_F(BadImport, ValuesThatTheColumnCannotHold) {
  const std::string head =
      "InCustId,ExTermId,CreditLim,Discount,CredOfficeDate,CustFee,NSFChqNb,Zip\n";
  const std::string good = "1,1,1.5,2,2024-01-31,true,1,H2X\n";
  const auto bad = [&](const std::string& row, const std::string& column, const std::string& what) {
    return BadCsv{"Cust", head + good + row + "\n", {"Line 3", "column " + column, what}};
  };
  for (const BadCsv& each : {
           bad("2,1x,1,1,,,,", "ExTermId", "\"1x\" is no whole number"),
           bad("2,2147483648,1,1,,,,", "ExTermId", "outside the range -2147483648"),
           bad("2, 1,1,1,,,,", "ExTermId", "\" 1\" is no whole number"),
           bad("2,\"\",1,1,,,,", "ExTermId", "\"\" is no whole number"),
           bad("2,1,1.23456,1,,,,", "CreditLim", "more than four decimals"),
           bad("2,1,\"1,5\",1,,,,", "CreditLim", "\"1,5\" is no decimal number"),
           bad("2,1,1e5,1,,,,", "CreditLim", "no decimal number"),
           bad("2,1,.,1,,,,", "CreditLim", "no decimal number"),
           bad("2,1,922337203685477.5808,1,,,,", "CreditLim", "too large"),
           bad("2,1,1,1,31/01/2024,,,", "CredOfficeDate", "no date"),
           bad("2,1,1,1,2023-02-29,,,", "CredOfficeDate", "no date"),
           bad("2,1,1,1,,yes,,", "CustFee", "no boolean"),
           bad("2,1,1,1,,,32768,", "NSFChqNb", "outside the range -32768"),
           bad("2,1,1,1,,,,ÉÉÉÉÉÉÉÉÉÉÉÉÉ", "Zip", "longer than 12 characters"),
       }) {
    expectRefused(each);
  }
  EXPECT_EQ(import(*store_, "Cust", head + "2,1,1,1,,,,ÉÉÉÉÉÉÉÉÉÉÉÉ\n"), 1);
}

TEST_F(BadImport, RowsThatTheTableCannotHold) {
  import(*store_, "Cust", "InCustId,Name\n1,Aubé\n");
  expectRefused({"Cust", "InCustId,Name\n2,Baker\n2,Cyr\n", {"Line 3"}});
  expectRefused(
      {"InvoiHdr", "InvoiType,ExCustId,InvoiDate\n1,1,2024-01-01\n1,99,2024-01-01\n", {"Line 3"}});
  expectRefused({"InvoiHdr",
                 "InvoiType,ExCustId,InvoiDate\n1,1,2024-01-01\n1,1,\n",
                 {"Line 3", "column InvoiDate", "a value is missing"}});
  expectRefused({"InvoiHdr", "InvoiType,ExCustId\n1,1\n", {"Line 2", "InvoiDate"}});
  import(*store_, "InvoiHdr", "InvoiType,ExCustId,InvoiDate\n1,1,2024-01-01\n");
  EXPECT_THAT(failure([&] { import(*store_, "Cust", "InCustId\n2\n", true); }),
              HasSubstr("rows of Cust cannot be replaced"));
  EXPECT_EQ(rows(*store_, "SELECT InCustId FROM Cust"), std::vector<std::string>{"1"});
}

TEST_F(BadImport, TextThatIsNoCsvOrNoText) {
  const auto bad = [](const std::string& csv, const std::string& line, const std::string& what) {
    return BadCsv{"QuorCastriaParams", "ParamName,ParamValue\n" + csv, {"Line " + line, what}};
  };
  for (const BadCsv& each : {
           bad("a,b\nc,d\"e\n", "3", "a quote inside a field"),
           bad("a,\"b\"c\n", "2", "after the closing quote"),
           bad("a,\"two\nlines\"\nb,\"open\n\n", "4", "never closed"),
           bad("a,b\nc\n", "3", "1 fields where the header row has 2"),
           bad("a,b,c\n", "2", "3 fields where the header row has 2"),
           bad("a,b\rc,d\n", "2", "carriage return"),
           bad("a,b\nc,\xC3(\n", "3", "not UTF-8"),
           bad("a,\xC0\xAF\n", "2", "not UTF-8"),
           bad("a,\xED\xA0\x80\n", "2", "not UTF-8"),
           bad("a,\xF4\x90\x80\x80\n", "2", "not UTF-8"),
           bad("a,\xE2\x82", "2", "not UTF-8"),
           bad(std::string("a,b\0c\n", 6), "2", "not UTF-8"),
       }) {
    expectRefused(each);
  }
}

TEST_F(BadImport, TablesAndHeadersThatDoNotFit) {
  expectRefused({"Customers", "InCustId\n1\n", {"no table Customers"}});
  expectRefused({"CustAgingDet", "DocNo\n1\n", {"CustAgingDet is a view"}});
  expectRefused({"Cust", "", {"empty"}});
  expectRefused({"Cust", "InCustId,Nome\n1,A\n", {"no column \"Nome\"", "Name"}});
  expectRefused({"Cust", "InCustId,INCUSTID\n1,1\n", {"InCustId is named twice"}});
  std::ostringstream output;
  EXPECT_THAT(failure([&] { QuorHost::exportCsv(*store_, "Nothing", output); }),
              HasSubstr("no table or view Nothing"));
}

TEST_F(BareCompany, DocumentsAreOwedWhatTheirAmountsSay) {
  import(*store_, "Cust", "InCustId\n1\n");
  import(*store_, "Supp", "InSuppId\n1\n");
  import(*store_, "InvoiHdr",
         "InInvoiId,TotAmnt,RecAmnt,InvoiType,ExCustId,InvoiDate\n1,10,2.5,1,1,2024-01-01\n");
  import(*store_, "InvoiHdr", "InvoiType,ExCustId,InvoiDate,RecAmnt\n2,1,2024-01-01,4\n");
  import(*store_, "InvoiHdr", "InvoiType,ExCustId,InvoiDate,TotAmnt,Balance\n1,1,2024-01-01,9,1\n");
  import(*store_, "PurcHdr",
         "PurcType,ExSuppId,PurcDate,PaidAmnt,TotAmnt\n1,1,2024-01-01,1,-7.0001\n");
  EXPECT_EQ(rows(*store_, "SELECT Balance FROM InvoiHdr ORDER BY InInvoiId"),
            (std::vector<std::string>{"7.5", "-4", "1"}));
  EXPECT_EQ(rows(*store_, "SELECT Balance FROM PurcHdr"), std::vector<std::string>{"-8.0001"});
  EXPECT_THAT(failure([&] {
                import(*store_, "PurcHdr",
                       "PurcType,ExSuppId,PurcDate,TotAmnt,PaidAmnt\n"
                       "1,1,2024-01-01,-922337203685477.5808,1\n");
              }),
              HasSubstr("Line 2"));
}

/// An input that has more to say only after `meanwhile` is done.
class SlowInput : public std::streambuf {
 public:
  SlowInput(std::string text, std::function<void()> meanwhile)
      : text_(std::move(text)), meanwhile_(std::move(meanwhile)) {
    setg(text_.data(), text_.data(), text_.data() + text_.size() / 2);
  }

 protected:
  int_type underflow() override {
    if (egptr() == text_.data() + text_.size()) return traits_type::eof();
    meanwhile_();
    setg(text_.data(), egptr(), text_.data() + text_.size());
    return traits_type::to_int_type(*gptr());
  }

 private:
  std::string text_;
  std::function<void()> meanwhile_;
};

TEST_F(BareCompany, ASlowInputKeepsNobodyFromWriting) {
  std::string csv = "Name\n";
  const std::size_t count = 30'000;  // more than is kept in memory
  for (std::size_t i = 0; i < count; ++i) csv += std::string(40, 'a') + "\n";
  SlowInput slow(csv, [&] {
    import(*QuorHost::openCompanyFile(path_, QuorHost::Access::Write), "Cust", "Name\nMoi\n");
  });
  std::istream input(&slow);
  EXPECT_EQ(QuorHost::importCsv(*store_, "Cust", input, false), std::int64_t{count});
  EXPECT_EQ(rows(*store_, "SELECT COUNT(*) AS N FROM Cust"), std::vector<std::string>{"30001"});
}

}  // namespace
}  // namespace companytest
