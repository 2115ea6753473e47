// File: VEKZOLTimer_test.cpp
// The timer's switches against a private environment table, read once per
// process, and what holds with timers on or off alike: names, counts at
// construction, slots taken and given back, copies sharing a slot. The
// process's own environment has both switches empty; the scenarios with
// timers on, off or in a batch run are the VEKZOLTimer_*env_test programs.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "state/LibraryState.h"

namespace {

using vekzol::state::kNoTimerSlot;
using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::TimerClockSystem;
using Peer = VEKZOLTimerTestPeer;

// The timer clock with an environment of its own, whose reads are counted.
class FakeEnvSystem : public TimerClockSystem {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    ++envReads[name];
    const auto found = env.find(name);
    if (found == env.end()) {
      return false;
    }
    *value = found->second;
    return true;
  }

  std::map<std::string, std::string> env;
  std::map<std::string, int> envReads;
};

// Each test starts before the first read of the switches and puts the
// process's answer back afterwards.
class VEKZOLTimerTest : public ::testing::Test {
 protected:
  void SetUp() override { Peer::ForgetTimersEnabled(); }
  void TearDown() override { Peer::ForgetTimersEnabled(); }

  FakeEnvSystem system_;
  ScopedSystem scopedSystem_{&system_};
};

struct SwitchCase {
  const char* timersEnabled;  // null: not set
  const char* batchInput;     // null: not set
  bool expected;
};

TEST_F(VEKZOLTimerTest, SwitchesAreTrueOrOneExactlyOrANonEmptyBatchInput) {
  const SwitchCase cases[] = {
      {"TRUE", nullptr, true},
      {"1", nullptr, true},
      {"true", nullptr, false},
      {"True", nullptr, false},
      {"11", nullptr, false},
      {" 1", nullptr, false},
      {"TRUE ", nullptr, false},
      {"FALSE", nullptr, false},
      {"0", nullptr, false},
      {"", "", false},
      {nullptr, nullptr, false},
      {nullptr, "request.xml", true},
      {"FALSE", "request", true},
      {"true", "request", true},
      {"1", "", true},
      {"", " ", true},
  };
  for (const SwitchCase& test : cases) {
    Peer::ForgetTimersEnabled();
    system_.env.clear();
    if (test.timersEnabled != nullptr) system_.env["VEK_ZOL_TIMERS_ENABLED"] = test.timersEnabled;
    if (test.batchInput != nullptr) system_.env["JBM_RQT_IN"] = test.batchInput;
    EXPECT_EQ(Peer::AreTimersEnabled(), test.expected)
        << (test.timersEnabled ? test.timersEnabled : "(unset)") << " / "
        << (test.batchInput ? test.batchInput : "(unset)");
    EXPECT_TRUE(Peer::TimersEnabledRead());
  }
}

TEST_F(VEKZOLTimerTest, SwitchesAreReadOnceAndTheAnswerStands) {
  system_.env["VEK_ZOL_TIMERS_ENABLED"] = "1";
  EXPECT_TRUE(Peer::AreTimersEnabled());
  EXPECT_EQ(system_.envReads["VEK_ZOL_TIMERS_ENABLED"], 1);
  EXPECT_EQ(system_.envReads["JBM_RQT_IN"], 1);
  system_.env["VEK_ZOL_TIMERS_ENABLED"] = "0";
  VEKZOLTimer timer("Switch Timer", true);
  EXPECT_TRUE(timer.IsJustACounter());
  EXPECT_EQ(timer.IncrementCounter(), S_OK);
  EXPECT_TRUE(Peer::AreTimersEnabled());
  EXPECT_EQ(system_.envReads["VEK_ZOL_TIMERS_ENABLED"], 1);
  EXPECT_EQ(system_.envReads["JBM_RQT_IN"], 1);
}

TEST_F(VEKZOLTimerTest, ConstructionDoesNotReadTheSwitches) {
  system_.env["VEK_ZOL_TIMERS_ENABLED"] = "1";
  VEKZOLTimer timer("Quiet Timer");
  VEKZOLTimer counter("Quiet Counter", true);
  EXPECT_FALSE(Peer::TimersEnabledRead());
  EXPECT_TRUE(system_.envReads.empty());
  EXPECT_EQ(timer.GetName(), "Quiet Timer");
  EXPECT_FALSE(Peer::TimersEnabledRead());
}

TEST_F(VEKZOLTimerTest, BothConstructorsStartWithEverythingAtZero) {
  VEKZOLTimer timer("Plain");
  VEKZOLTimer counter("Counter", true);
  VEKZOLTimer notCounter("Not Counter", false);
  for (const VEKZOLTimer* each : {&timer, &counter, &notCounter}) {
    EXPECT_EQ(Peer::CurrentCPU(*each), 0);
    EXPECT_EQ(Peer::TotalCPU(*each), 0);
    EXPECT_EQ(Peer::CurrentElapsed(*each), 0);
    EXPECT_EQ(Peer::TotalElapsed(*each), 0);
    EXPECT_EQ(Peer::StartCount(*each), 0);
    EXPECT_EQ(Peer::StopCount(*each), 0);
    EXPECT_EQ(each->GetCounter(), 0);
  }
  EXPECT_FALSE(Peer::JustACounterField(timer));
  EXPECT_TRUE(Peer::JustACounterField(counter));
  EXPECT_FALSE(Peer::JustACounterField(notCounter));
  EXPECT_EQ(timer.GetName(), "Plain");
  EXPECT_EQ(counter.GetName(), "Counter");
}

TEST_F(VEKZOLTimerTest, NameAndCounterAnswerWithTimersOff) {
  VEKZOLTimer timer("Off Timer", true);
  EXPECT_EQ(timer.GetName(), "Off Timer");
  EXPECT_EQ(timer.IncrementCounter(), E_FAIL);
  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_FALSE(timer.IsJustACounter());
  EXPECT_TRUE(Peer::JustACounterField(timer));
}

TEST_F(VEKZOLTimerTest, EachTimerTakesASlotAndGivesItBack) {
  Peer::ScopedEmptyTable table;
  system_.ticks = 345;
  {
    VEKZOLTimer first("First");
    VEKZOLTimer second("Second", true);
    EXPECT_EQ(Peer::SlotId(first), 0u);
    EXPECT_EQ(Peer::SlotId(second), 1u);
    EXPECT_EQ(Peer::Slot(1).startTicks, 345u);
    EXPECT_EQ(Peer::Capacity(), 2u);
  }
  // Destroyed in reverse: the first timer's slot is the head.
  ASSERT_EQ(Peer::FreeList(), &Peer::Slot(0));
  EXPECT_EQ(Peer::Slot(0).nextFree, &Peer::Slot(1));
  VEKZOLTimer third("Third");
  EXPECT_EQ(Peer::SlotId(third), 0u);
  EXPECT_EQ(Peer::Capacity(), 2u);
}

TEST_F(VEKZOLTimerTest, TimerBuiltWhenTheTableCannotBeMadeHasNoSlot) {
  Peer::ScopedEmptyTable table;
  Peer::SetReallocator([](void*, size_t) -> void* { return nullptr; });
  VEKZOLTimer timer("No Slot Timer");
  EXPECT_EQ(Peer::SlotId(timer), kNoTimerSlot);
  EXPECT_EQ(timer.GetName(), "No Slot Timer");
  EXPECT_EQ(Peer::Capacity(), 0u);
}

TEST_F(VEKZOLTimerTest, CopiesShareTheSlotAndCarryEveryField) {
  Peer::ScopedEmptyTable table;
  VEKZOLTimer original("Original", true);
  VEKZOLTimer copy(original);
  EXPECT_EQ(Peer::SlotId(copy), 0u);
  EXPECT_EQ(copy.GetName(), "Original");
  EXPECT_TRUE(Peer::JustACounterField(copy));
  EXPECT_EQ(Peer::Used(), 1u);

  VEKZOLTimer target("Target");
  EXPECT_EQ(Peer::SlotId(target), 1u);
  target = original;
  EXPECT_EQ(Peer::SlotId(target), 0u);
  EXPECT_EQ(target.GetName(), "Original");
  EXPECT_TRUE(Peer::JustACounterField(target));
  // The slot the target held is not given back.
  EXPECT_EQ(Peer::FreeList(), nullptr);
  EXPECT_EQ(Peer::Used(), 2u);
}

TEST_F(VEKZOLTimerTest, DestroyingACopyAndItsOriginalGivesTheSlotBackTwice) {
  Peer::ScopedEmptyTable table;
  {
    VEKZOLTimer original("Original");
    VEKZOLTimer copy(original);
  }
  // The second release finds the slot at the head and links it to itself,
  // so the next two timers both get it.
  ASSERT_EQ(Peer::FreeList(), &Peer::Slot(0));
  EXPECT_EQ(Peer::Slot(0).nextFree, &Peer::Slot(0));
  VEKZOLTimer first("First");
  VEKZOLTimer second("Second");
  EXPECT_EQ(Peer::SlotId(first), 0u);
  EXPECT_EQ(Peer::SlotId(second), 0u);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  VEKZOLTimer third("Third");
  EXPECT_EQ(Peer::SlotId(third), 1u);
}

}  // namespace
