#include "host/engines/postgres/server/address.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/raised.h"

namespace QuorHost::Postgres {
namespace {

/// The value that the client library is given for a name; empty for none.
std::string given(const Address& address, std::string_view name) {
  const auto at = std::ranges::find(address.names, name);
  return at == address.names.end()
             ? ""
             : address.values[static_cast<std::size_t>(at - address.names.begin())];
}

TEST(ServerAddress, AnotherMachineHasToProveItsName) {
  const auto mode = [](std::string_view text) { return given(readAddress(text), "sslmode"); };
  for (const char* const here : {"postgresql:///books", "postgresql://localhost/books",
                                 "postgresql://ann@127.0.0.1:99/books", "postgresql://[::1]/books",
                                 "postgresql:///books?host=/run/postgresql,localhost",
                                 "postgresql:///books?hostaddr=127.0.0.1"}) {
    EXPECT_EQ(mode(here), "") << here;
  }
  for (const char* const elsewhere :
       {"postgresql://db/books", "postgresql://localhost,db/books",
        "postgresql://db,localhost/books", "postgresql://localhost/books?hostaddr=10.0.0.1",
        "postgresql:///books?host=db"}) {
    EXPECT_EQ(mode(elsewhere), "verify-full") << elsewhere;
  }
  EXPECT_EQ(mode("postgresql://db/books?sslmode=require"), "require");
}

TEST(ServerAddress, IsTakenApartAndShownWithoutItsPassword) {
  const Address address =
      readAddress("postgresql://ann:p%40ss@db:99/books?schema=a%20%22b&user=bo");
  EXPECT_EQ(address.schema, "a \"b");
  EXPECT_EQ(given(address, "password"), "p@ss");
  EXPECT_EQ(given(address, "dbname"), "books");
  // One that falls silent is given up, when the text says nothing else.
  EXPECT_EQ(given(address, "tcp_user_timeout"), "90000");
  const Address patient = readAddress("postgresql://db/books?tcp_user_timeout=0");
  EXPECT_EQ(std::ranges::count(patient.names, "tcp_user_timeout"), 1);
  for (const char* const text :
       {"postgresql://ann:secret@db/books", "postgres://ann:secret@db",
        "postgresql://ann:s@secret@db/x", "postgresql://ann@db/books?password=secret&schema=a",
        "postgresql://ann:secret@[::1]:99/x"}) {
    EXPECT_EQ(shownAddress(text).find("secret"), std::string::npos) << shownAddress(text);
  }
  for (const char* const wrong :
       {"postgresql://db/books?schema=", "postgresql://db/books?schema=%4",
        "postgresql://db/books?schema=%zz", "postgresql://db/books?no=1",
        "postgresql://db/books?schema=%00"}) {
    EXPECT_EQ(QuorTest::raisedBy([&] { return readAddress(wrong); }), 5) << wrong;
  }
}

}  // namespace
}  // namespace QuorHost::Postgres
