// Where a thread's application object comes from, and what becomes of it.
#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "platform/current_application.h"
#include "platform/raised.h"

namespace QuorDataLib {
namespace {

/// An application object that tells how many of its kind there are.
class Counted : public Application {
 public:
  explicit Counted(std::shared_ptr<int> alive) : alive_(std::move(alive)) { ++*alive_; }
  ~Counted() override { --*alive_; }
  Ref<ApplicationContext> Context() override { return nullptr; }

 private:
  std::shared_ptr<int> alive_;
};

class CurrentApplication : public testing::Test {
 protected:
  void TearDown() override {
    installApplication({});
    installDefaultApplication({});
    setAtThreadEnd(AtThreadEnd::Release);
  }

  [[nodiscard]] ApplicationFactory counting() const {
    return [alive = alive] { return make<Counted>(alive); };
  }
  template <class Body>
  static void onAnotherThread(Body body) {
    std::thread(body).join();
  }

  std::shared_ptr<int> alive = std::make_shared<int>(0);
};

TEST_F(CurrentApplication, ThreadsWithoutTheirOwnUseTheDefaultOne) {
  installDefaultApplication(counting());
  EXPECT_FALSE(heldApplication());
  const Ref<Application> shared = currentApplication();
  EXPECT_EQ(shared, currentApplication());
  onAnotherThread([&] {
    EXPECT_FALSE(currentApplication() == shared) << "each thread has its own object";
    const Ref<Application> own = make<Counted>(alive);
    installApplication([&own] { return Ref<Application>(own); });
    EXPECT_EQ(currentApplication(), own);
    installApplication({});
    EXPECT_FALSE(currentApplication() == own);
  });
  EXPECT_EQ(*alive, 1);
  installDefaultApplication({});
  EXPECT_EQ(currentApplication(), shared) << "kept until it is released";
  releaseHeldObjects();
  EXPECT_EQ(QuorTest::raisedBy([] { return currentApplication(); }), 91);
}

TEST_F(CurrentApplication, WhatAThreadHoldsIsReleasedInTimeOrNotAtAll) {
  installDefaultApplication(counting());
  onAnotherThread([] { (void)currentApplication(); });
  EXPECT_EQ(*alive, 0);
  setAtThreadEnd(AtThreadEnd::Abandon);
  onAnotherThread([&] {
    (void)currentApplication();
    releaseHeldObjects();
    EXPECT_EQ(*alive, 0);
    (void)currentApplication();
  });
  EXPECT_EQ(*alive, 1);
}

TEST_F(CurrentApplication, AFactoryThatAsksForItsOwnProductIsRefused) {
  installApplication([] { return currentApplication(); });
  EXPECT_EQ(QuorTest::raisedBy([] { return currentApplication(); }), 91);
  installApplication([]() -> Ref<Application> { raise(ErrorNumber::Overflow, "none left"); });
  EXPECT_EQ(QuorTest::raisedBy([] { return currentApplication(); }), 6);
  EXPECT_EQ(QuorTest::raisedBy([] { return currentApplication(); }), 6) << "asked again";
}

/// Uses the thread's application in its own end.
class Clinging : public Application {
 public:
  ~Clinging() override { held = static_cast<bool>(heldApplication()); }
  Ref<ApplicationContext> Context() override { return nullptr; }
  static inline bool held = true;
};

TEST_F(CurrentApplication, AnObjectMayAskForItInItsEnd) {
  installApplication([] { return make<Clinging>(); });
  (void)currentApplication();
  installApplication(counting());
  EXPECT_FALSE(Clinging::held);
}

}  // namespace
}  // namespace QuorDataLib
