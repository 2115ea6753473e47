// File: VEKZOLSTLServices_shared_test.cpp
// The string-list services and the timer as a host sees them: this program
// links the shared library, so every operation and static used here must be
// exported from it.
#include <gtest/gtest.h>

#include <deque>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLSTLServicesSharedTest, SetOperationsAndTheirTimersAreExported) {
  std::deque<CString> first;
  first.push_back("c");
  first.push_back("a");
  first.push_back("a");
  std::deque<CString> second;
  second.push_back("a");
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  ASSERT_EQ(result.size(), 2u);
  EXPECT_EQ(result[0], "a");
  EXPECT_EQ(result[1], "c");
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(first, second, result), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("c", first), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(result, first), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(result), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "bc", 0), 1);
  std::deque<VEKIZOLObject*> objects;
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(objects, 0), S_OK);
  VEKZOLSTLServices::PrintAndResetCummulativeTimes();
  EXPECT_EQ(VEKZOLSTLServices::_FindInDequeTimer.GetName(), "STL Services - Find In Deque Timer");
  EXPECT_EQ(VEKZOLSTLServices::_RemoveDuplicatesTimer.GetName(),
            "STL Services - Remove Duplicates Timer");
  VEKZOLSTLServices services;
  VEKZOLSTLServices other;
  services = other;
}

TEST(VEKZOLSTLServicesSharedTest, TimerIsExportedWhole) {
  VEKZOLTimer timer("Host Timer");
  VEKZOLTimer counter("Host Counter", true);
  VEKZOLTimer* copy = new VEKZOLTimer(timer);
  *copy = counter;
  EXPECT_EQ(copy->GetName(), "Host Counter");
  delete copy;  // through the virtual destructor
  timer.StartTimer();
  timer.StopTimer();
  long cpu = 7;
  long elapsed = 9;
  timer.StopTimer(cpu, elapsed);
  timer.StopAndPrintTimer();
  timer.AddCurrentTime();
  timer.Reset();
  timer.GetCurrentTimes(cpu, elapsed);
  timer.GetTotalTimes(cpu, elapsed);
  timer.PrintCummulativeTimes();
  timer.TotalReset();
  // Timers are off in this program's environment.
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);
  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_FALSE(counter.IsJustACounter());
  EXPECT_EQ(counter.IncrementCounter(), E_FAIL);
}

}  // namespace
