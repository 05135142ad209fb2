// CSV there and back: every table and view of the sample, and texts of every shape.
#include <gmock/gmock.h>

#include "company/company_file.h"

namespace companytest {
namespace {

using QuorHost::Sql::Relation;
using testing::ElementsAre;

TEST_F(BareCompany, EveryTableAndViewOfTheSampleComesBackAsItWas) {
  QuorHost::createCompany(folder_.file("sample"), {.sample = true});
  const auto sample = QuorHost::openCompanyFile(folder_.file("sample"), QuorHost::Access::Read);
  // The catalogue lists tables after those they refer to, but for areas: parties come first.
  for (const Relation& relation : sample->catalogue().relations()) {
    if (relation.kind == Relation::Kind::Table) {
      import(*store_, relation.name, exported(*sample, relation.name), true);
    }
  }
  for (const Relation& relation : sample->catalogue().relations()) {
    EXPECT_TRUE(exported(*store_, relation.name) == exported(*sample, relation.name))
        << relation.name;
  }
  EXPECT_THAT(QuorHost::checkCompany(*store_), testing::IsEmpty());
}

TEST_F(BareCompany, TextsOfEveryShapeComeBack) {
  const std::string csv =
      "ParamName,ParamValue\r\n"
      "comma,\"a, b\"\r\n"
      "quote,\"said \"\"yes\"\"\"\r\n"
      "lines,\"one\r\ntwo\nthree\"\r\n"
      "blanks,\"  inside  \"\r\n"
      "accents,Échéance à Trois-Rivières — 10 €\r\n"
      "empty,\"\"\r\n"
      "null,\r\n";
  EXPECT_EQ(import(*store_, "QuorCastriaParams", csv, true), 7);
  EXPECT_THAT(rows(*store_, "SELECT ParamName FROM QuorCastriaParams WHERE ParamValue IS NULL"),
              ElementsAre("null"));
  EXPECT_THAT(rows(*store_, "SELECT ParamName FROM QuorCastriaParams WHERE ParamValue = ''"),
              ElementsAre("empty"));
  const std::string once = exported(*store_, "QuorCastriaParams");
  EXPECT_NE(once.find("lines,\"one\r\ntwo\nthree\""), std::string::npos);
  EXPECT_EQ(import(*store_, "QuorCastriaParams", once, true), 7);
  EXPECT_EQ(exported(*store_, "QuorCastriaParams"), once);
}

TEST_F(BareCompany, ValuesOfEveryTypeComeBack) {
  EXPECT_EQ(import(*store_, "Item",
                   "\xEF\xBB\xBFinitemid,ItemId,Servc,FacSales,Price1,Hours\n"
                   "7,A,true,0.0001,-922337203685477.5808,\n"
                   "\n"
                   ",B,0,+12,922337203685477.5807,1.5"),
            2);
  EXPECT_THAT(rows(*store_,
                   "SELECT InItemId, ItemId, Servc, FacSales, Price1, Hours FROM Item "
                   "ORDER BY InItemId"),
              ElementsAre("7|A|True|0.0001|-922337203685477.5808|-",
                          "8|B|False|12|922337203685477.5807|1.5"));
  import(*store_, "Cust", "InCustId,NSFChqNb\n1,-32768\n");
  import(*store_, "InvoiHdr",
         "InInvoiId,InvoiType,ExCustId,InvoiDate,ExchangeRate\n"
         "1,1,1,2024-02-29 23:59:59,1.3450000000000002\n2,1,1,0100-01-01,1e-7\n");
  EXPECT_THAT(rows(*store_,
                   "SELECT InvoiDate, ExchangeRate, TaxAmnt FROM InvoiHdr ORDER BY "
                   "InInvoiId"),
              ElementsAre("2024-02-29 23:59:59|1.3450000000000002|0", "0100-01-01|1e-07|0"));
  EXPECT_NE(exported(*store_, "Item").find(",0.0001,-922337203685477.5808,"), std::string::npos);
}

TEST_F(BareCompany, RowsAreAddedOrReplaced) {
  import(*store_, "AccountType", "ID,ExAcctTypeDefId\n1,1\n2,1\n");
  import(*store_, "AccountType", "ID,ExAcctTypeDefId\n3,2\n");
  EXPECT_THAT(rows(*store_, "SELECT ID FROM AccountType ORDER BY ID"), ElementsAre("1", "2", "3"));
  import(*store_, "AccountType", "ID,ExAcctTypeDefId\n2,2\n", true);
  EXPECT_THAT(rows(*store_, "SELECT ID FROM AccountType"), ElementsAre("2"));
}

}  // namespace
}  // namespace companytest
