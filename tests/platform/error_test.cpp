#include "platform/error.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "platform/raised.h"
#include "platform/ref.h"

namespace QuorDataLib {
namespace {

struct Plain : Object {
  int number = 7;
};
struct Other : Object {};

template <class Exception>
Error caught(const Exception& exception) {
  try {
    throw exception;
  } catch (...) {
    return currentError();
  }
}

TEST(Error, EveryExceptionBecomesOne) {
  const Error own = caught(Error(ErrorNumber::ObjectDefined, "CTermHelper", "no term"));
  EXPECT_EQ(own.number(), -2'147'221'504);
  EXPECT_EQ(own.source(), "CTermHelper");
  EXPECT_EQ(own.description(), "no term");
  EXPECT_EQ(caught(std::bad_alloc()).number(), 7);
  EXPECT_EQ(caught(std::runtime_error("broken")).number(), 51);
  EXPECT_EQ(caught(42).number(), 51);
  EXPECT_STREQ(caught(std::runtime_error("broken")).what(), "broken");
}

TEST(Ref, AnEmptyReferenceRaisesInsteadOfCrashing) {
  const Ref<Plain> empty;
  EXPECT_EQ(QuorTest::raisedBy([&] { return empty->number; }), 91);
  EXPECT_EQ(QuorTest::raisedBy([&] { return (*empty).number; }), 91);
  const Ref<Object> object = make<Plain>();
  EXPECT_EQ(object.as<Plain>()->number, 7);
  EXPECT_FALSE(object.as<Other>());
}

}  // namespace
}  // namespace QuorDataLib
