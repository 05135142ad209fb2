// Due dates and schedules against dates worked out by hand, in both dialects; two hosts at one
// schedule, and a host that dies on the way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <sstream>
#include <streambuf>

#include "company/company_file.h"
#include "host/another_process.h"
#include "platform/error.h"
#include "queries/company_fixture.h"
#include "terms/term_helper.h"
#include "terms/trx_rec_helper.h"

namespace {

using QuorAccQueries::CTermHelper;
using QuorAccQueries::CTrxRecHelper;
using QuorDataLib::Date;
using QuorDataLib::Error;
using QuorDataLib::ErrorNumber;
using testing::ElementsAre;
using testing::HasSubstr;

Date date(const char* text) { return Date::parse(text).value(); }

/// What `action` raises; none where it raises nothing.
template <class Action>
std::optional<Error> raisedBy(Action&& action) {
  try {
    static_cast<void>(action());
  } catch (const Error& error) {
    return error;
  }
  return std::nullopt;
}

class Terms : public testing::TestWithParam<fixture::Dialect> {
 protected:
  static void SetUpTestSuite() {
    company_ = std::make_unique<fixture::CompanyFile>();
    company_->load("Term",
                   "InTermId,TermMode,Due,DueNxtMonth,FirstPmtDay\n"
                   "1,4,30,,\n2,1,15,10,\n3,1,15,14,\n4,1,15,0,\n5,1,31,0,\n6,1,31,31,\n7,3,,,45\n"
                   "8,2,,,\n9,2,,,\n10,5,1,1,1\n11,,1,1,1\n12,4,,,\n13,1,0,0,\n14,1,40,5,\n"
                   "15,4,-10,,\n16,1,30,2,\n17,4,0,,\n18,1,0,3,\n19,1,5,,\n20,2,,,\n"
                   "21,4,3000000,,\n22,3,1,1,\n");
    company_->load("TermDet", "ExTermId,DueDate\n8,2024-05-15\n8,2024-01-01\n20,\n");
    company_->load("TrxRec",
                   "TrxType,ExTrxId,Frqncy,LastRun,NextRun\n1,7,3,2024-01-31,2024-02-29\n"
                   "7,1,6,,\n2,7,1,,2024-03-01\n");
  }
  static void TearDownTestSuite() { company_.reset(); }

  std::vector<std::string> schedule() {
    return fixture::lines(
        company_->store()
            .connect(GetParam())
            ->OpenRecordset("SELECT LastRun, NextRun FROM TrxRec WHERE TrxType = 1 AND ExTrxId = 7",
                            4, 0, {}, 0));
  }

  static inline std::unique_ptr<fixture::CompanyFile> company_;
};

INSTANTIATE_TEST_SUITE_P(Dialects, Terms, testing::ValuesIn(fixture::kDialects),
                         [](const auto& dialect) {
                           return dialect.param == fixture::Dialect::Server ? "Server" : "Desktop";
                         });

TEST_P(Terms, GiveTheDueDatesThatTheyMean) {
  struct Case {
    std::int32_t term;
    const char* document;
    const char* due;
  };
  constexpr Case kCases[] = {
      // Net days keep the time of day.
      {1, "2023-01-31", "2023-03-02"},
      {1, "2024-01-31 14:30:00", "2024-03-01 14:30:00"},
      {1, "2023-12-15", "2024-01-14"},
      {15, "2024-03-05", "2024-02-24"},
      {17, "2024-03-05 08:00:00", "2024-03-05 08:00:00"},
      // A day of the month, and when it moves to the next one.
      {2, "2023-03-03", "2023-03-15"},
      {2, "2023-03-05", "2023-04-15"},
      {2, "2023-12-10", "2024-01-15"},
      {3, "2023-03-03", "2023-04-15"},
      {4, "2023-03-20", "2023-03-15"},
      // The last day of a shorter month.
      {5, "2023-02-05", "2023-02-28"},
      {5, "2024-02-05 23:59:59", "2024-02-29"},
      {5, "2023-04-30", "2023-04-30"},
      {5, "2023-12-31", "2023-12-31"},
      {6, "2023-01-15", "2023-02-28"},
      {6, "2024-01-31", "2024-02-29"},
      {6, "2024-02-29", "2024-03-31"},
      {6, "2023-11-30", "2023-12-31"},
      {6, "2023-12-10", "2024-01-31"},
      {16, "2024-01-29", "2024-02-29"},
      {16, "2023-02-10", "2023-02-28"},
      // Days that no month has, and the day before the first.
      {14, "2023-02-10", "2023-02-28"},
      {14, "2023-02-25", "2023-03-31"},
      {14, "2023-12-28", "2024-01-31"},
      {13, "2024-03-10", "2024-02-29"},
      {18, "2024-03-10", "2024-03-31"},
      {18, "2023-12-10", "2023-12-31"},
      // A first payment drops the time of day.
      {7, "2024-01-15 09:00:00", "2024-02-29"},
      {7, "2023-11-30", "2024-01-14"},
      // A fixed date, or none.
      {8, "2024-03-03 08:00:00", "2024-05-15"},
      {9, "2024-03-03 08:00:00", "2024-03-03 08:00:00"},
      // No rule, and no term.
      {10, "2024-03-03", ""},
      {11, "2024-03-03", ""},
      {99, "2024-03-03 08:00:00", "2024-03-03 08:00:00"},
  };
  const auto host = company_->host(GetParam());
  for (const Case& each : kCases) {
    EXPECT_EQ(CTermHelper().GetDueDate(each.term, date(each.document)), date(each.due))
        << "term " << each.term << " of " << each.document;
  }
}

TEST_P(Terms, RaiseWhatTheirRuleLacks) {
  const auto host = company_->host(GetParam());
  const auto numberOf = [](std::int32_t term) {
    const auto error = raisedBy([&] { return CTermHelper().GetDueDate(term, date("2024-03-03")); });
    EXPECT_THAT(error ? error->source() : "", HasSubstr("CTermHelper.GetDueDate")) << term;
    return error ? error->number() : 0;
  };
  for (const std::int32_t term : {12, 19, 20, 22}) EXPECT_EQ(numberOf(term), 94) << term;
  EXPECT_EQ(numberOf(21), 6);
  QuorHost::Host leaving(
      {.store = QuorHost::openCompanyFile(company_->path(), QuorHost::Access::Read),
       .dialect = GetParam(),
       .onError = QuorHost::OnError::Leave});
  leaving.install();
  EXPECT_TRUE(CTermHelper().GetDueDate(12, date("2024-03-03")).empty());
}

TEST_P(Terms, SchedulesGoOnByThePeriodsOfTheirFrequency) {
  const auto host = company_->host(GetParam());
  CTrxRecHelper helper;
  // By frequency: the dates after the 28th to the 31st of January.
  const std::map<std::int16_t, std::array<const char*, 4>> kNext{
      {1, {"2023-01-29", "2023-01-30", "2023-01-31", "2023-02-01"}},
      {2, {"2023-02-04", "2023-02-05", "2023-02-06", "2023-02-07"}},
      {3, {"2023-02-28", "2023-02-28", "2023-02-28", "2023-02-28"}},
      {4, {"2023-02-11", "2023-02-12", "2023-02-13", "2023-02-14"}},
      {5, {"2024-01-28", "2024-01-29", "2024-01-30", "2024-01-31"}},
      {6, {"2023-04-28", "2023-04-29", "2023-04-30", "2023-04-30"}},
      {7, {"2023-07-28", "2023-07-29", "2023-07-30", "2023-07-31"}},
      {0, {"", "", "", ""}},
      {8, {"", "", "", ""}},
      {-1, {"", "", "", ""}}};
  for (const auto& [frequency, dates] : kNext) {
    for (int day = 28; day <= 31; ++day) {
      const char* const next = dates.at(static_cast<std::size_t>(day - 28));
      EXPECT_EQ(helper.GetNextDate(Date::of(2023, 1, day), frequency), date(next)) << frequency;
    }
  }
  EXPECT_EQ(helper.GetNextDate(date("2024-01-30 07:00:00"), 3), date("2024-02-29 07:00:00"));
  EXPECT_EQ(helper.GetNextDate(date("2024-02-29"), 5), date("2025-02-28"));
  EXPECT_EQ(raisedBy([&] { return helper.GetNextDate(date("9999-12-31"), 1); })->number(), 6);
}

TEST_P(Terms, SchedulesAreReadAsTheyAre) {
  const auto host = company_->host(GetParam());
  CTrxRecHelper helper;
  std::int16_t frequency = 77;
  Date last = date("2000-01-01");
  Date next = date("2000-01-02");
  EXPECT_FALSE(helper.GetTrxRecInfo(7, 7, frequency, last, next));
  EXPECT_EQ(frequency, 77);
  EXPECT_TRUE(helper.GetTrxRecInfo(7, 1, frequency, last, next));
  EXPECT_EQ(frequency, 6);
  EXPECT_EQ(last, date("2000-01-01")) << "a null leaves the output";
  EXPECT_EQ(next, date("2000-01-02"));
  EXPECT_TRUE(helper.GetTrxRecInfo(2, 7, frequency, last, next));
  EXPECT_EQ(next, date("2024-03-01"));
  EXPECT_TRUE(helper.GetTrxRecLastRun(7, 1).empty());
  EXPECT_EQ(helper.GetTrxRecFrequency(2, 7), 1);
  for (const auto member : {&CTrxRecHelper::GetTrxRecLastRun, &CTrxRecHelper::GetTrxRecNextRun}) {
    const auto error = raisedBy([&] { return (helper.*member)(7, 7); });
    EXPECT_TRUE(error->is(ErrorNumber::ObjectDefined));
    EXPECT_EQ(error->description(), "GetTrxRecInfo returned false.");
    EXPECT_THAT(error->source(), HasSubstr("CTrxRecHelper"));
  }
}

TEST_P(Terms, SchedulesAreStoredAndThenTold) {
  std::ostringstream trace;
  QuorHost::Host host(
      {.store = QuorHost::openCompanyFile(company_->path(), QuorHost::Access::Write),
       .dialect = GetParam(),
       .trace = &trace});
  host.install();
  CTrxRecHelper helper;
  helper.UpdateRecurringTransactionDates(1, 7, date("2024-02-29"), date("2024-03-29"));
  EXPECT_THAT(schedule(), ElementsAre("2024-02-29|2024-03-29"));
  const std::string told = trace.str();
  EXPECT_LT(told.find("\"affected\":1"), told.find("\"event\":\"notify\",\"code\":\"42\""));
  EXPECT_THAT(told, HasSubstr("\"values\":[0,3]"));
  // A time of day alone is a date, too; no date is null.
  helper.UpdateRecurringTransactionDates(1, 7, {}, Date::of(1899, 12, 30, 6));
  EXPECT_THAT(schedule(), ElementsAre("1899-12-30|1899-12-30 06:00:00"));
  helper.UpdateRecurringTransactionDates(1, 7, date("2024-03-29"), {});
  EXPECT_THAT(schedule(), ElementsAre("2024-03-29|-"));
  // A schedule that is not there is told all the same.
  trace.str("");
  helper.UpdateRecurringTransactionDates(9, 9, date("2024-03-29"), date("2024-04-29"));
  EXPECT_THAT(trace.str(), HasSubstr("\"affected\":0"));
  EXPECT_THAT(trace.str(), HasSubstr("notify"));
}

/// A company of one daily schedule, in processes of their own.
class OneSchedule : public testing::Test {
 protected:
  void SetUp() override {
    QuorHost::createCompany(path_, {});
    const auto store = QuorHost::openCompanyFile(path_, QuorHost::Access::Write);
    companytest::import(*store, "GJTrxHdr", "InGJTrxId,TrxDate\n7,2023-12-31\n");
    companytest::import(*store, "TrxRec",
                        "TrxType,ExTrxId,Frqncy,LastRun,NextRun\n3,7,1,2023-12-31,2024-01-01\n");
  }

  /// Moves the schedule on by one run.
  static void advance() {
    CTrxRecHelper helper;
    const Date run = helper.GetTrxRecNextRun(3, 7);
    helper.UpdateRecurringTransactionDates(3, 7, run, helper.GetNextDate(run, 1));
  }

  std::string dates() {
    const auto store = QuorHost::openCompanyFile(path_, QuorHost::Access::Read);
    EXPECT_THAT(QuorHost::checkCompany(*store), testing::IsEmpty());
    return companytest::rows(*store, "SELECT LastRun, NextRun FROM TrxRec").at(0);
  }

  companytest::Folder folder_;
  std::string path_ = folder_.file("company");
};

TEST_F(OneSchedule, LosesNothingToTwoHostsThatHoldATransaction) {
  constexpr int kTurns = 20;
  std::array<pid_t, 2> children{};
  for (pid_t& child : children) {
    child = QuorHost::Testing::inAnotherProcess([&] {
      const auto store = QuorHost::openCompanyFile(path_, QuorHost::Access::Write);
      QuorHost::Host host({.store = store});
      host.install();
      for (int turn = 0; turn < kTurns; ++turn) {
        const auto transaction = store->begin();
        advance();
        transaction->commit();
      }
      return true;
    });
  }
  for (const pid_t child : children) EXPECT_EQ(QuorHost::Testing::statusOf(child), 0);
  EXPECT_EQ(dates(), "2024-02-09|2024-02-10") << "forty days on";
}

/// A trace at which the process dies when the data set of recurring transactions is asked for: the
/// update is done, and nobody has been told.
class Killing : public std::stringbuf {
 protected:
  std::streamsize xsputn(const char* text, std::streamsize count) override {
    if (std::string_view(text, static_cast<std::size_t>(count)).find("DATA_TRX_REC") !=
        std::string_view::npos) {
      kill(getpid(), SIGKILL);
    }
    return std::stringbuf::xsputn(text, count);
  }
};

TEST_F(OneSchedule, IsWholeWhenTheHostDiesBeforeItIsTold) {
  const pid_t child = QuorHost::Testing::inAnotherProcess([&] {
    Killing killing;
    std::ostream trace(&killing);
    QuorHost::Host host(
        {.store = QuorHost::openCompanyFile(path_, QuorHost::Access::Write), .trace = &trace});
    host.install();
    advance();
    return true;
  });
  const int status = QuorHost::Testing::statusOf(child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  EXPECT_EQ(dates(), "2024-01-01|2024-01-02");
}

}  // namespace
