// File: VEKZOLTimer_load_test.cpp
// A process in which no timer has been built yet but the library's static
// ones: they hold the first eleven slots in load order, the string-list
// services' six first and then blob compression's five, so the first timer
// built afterwards gets slot 11 and the table has 12 slots.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <vekzol/services/VEKZOLSTLServices.h>
#include <vekzol/services/VEKZOLZip.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"

namespace {

using Peer = VEKZOLTimerTestPeer;

TEST(VEKZOLTimerLoadTest, StaticTimersHoldElevenSlotsAndTheFirstNewTimerGetsSlot11) {
  EXPECT_EQ(Peer::Capacity(), 11u);
  EXPECT_EQ(Peer::Used(), 11u);
  EXPECT_EQ(Peer::FreeList(), nullptr);

  const VEKZOLTimer* const services[] = {&VEKZOLSTLServices::_FindInDequeTimer,
                                         &VEKZOLSTLServices::_AppendToDequeTimer,
                                         &VEKZOLSTLServices::_IntersectionTimer,
                                         &VEKZOLSTLServices::_DifferenceTimer,
                                         &VEKZOLSTLServices::_SymmetricDifferenceTimer,
                                         &VEKZOLSTLServices::_RemoveDuplicatesTimer,
                                         &VEKZOLZip::_CompressStringTimer,
                                         &VEKZOLZip::_DecompressBStringTimer,
                                         &VEKZOLZip::_DecompressCStringTimer,
                                         &VEKZOLZip::_ZlibCompressBlobTimer,
                                         &VEKZOLZip::_ZlibDecompressBlobTimer};
  const char* const names[] = {
      "STL Services - Find In Deque Timer",        "STL Services - Append To Deque Timer",
      "STL Services - Intersection Timer",         "STL Services - Difference Timer",
      "STL Services - Symmetric Difference Timer", "STL Services - Remove Duplicates Timer",
      "VEKZOLZip - Compress String Timer",         "Blob Mgmt - Decompress B String Timer",
      "Blob Mgmt - Decompress C String Timer",     "Blob Mgmt - zlib Compress Blob Timer",
      "Blob Mgmt - zlib Decompress Blob Timer"};
  for (uint32_t i = 0; i < 11; ++i) {
    EXPECT_EQ(Peer::SlotId(*services[i]), i);
    EXPECT_EQ(services[i]->GetName(), names[i]);
  }
  for (uint32_t i = 0; i < 11; ++i) {
    EXPECT_EQ(Peer::Slot(i).slotId, i);
  }

  VEKZOLTimer first("First Host Timer");
  EXPECT_EQ(Peer::SlotId(first), 11u);
  EXPECT_EQ(Peer::Capacity(), 12u);
  EXPECT_EQ(Peer::Used(), 12u);
}

}  // namespace
