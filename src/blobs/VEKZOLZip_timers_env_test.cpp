// File: VEKZOLZip_timers_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=1: which of the five timers run around
// which call, and their report in its order, cleared afterwards.
#include <vekzol/services/VEKZOLZip.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "unicode/UnicodeStringTestSupport.h"
#include "blobs/VEKZOLZipTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using vekzol_unicode_test::MakeBstr;
using vekzol_zip_test::Compress;
using vekzol_zip_test::Take;
using vekzol_zip_test::XmlText;
using Peer = VEKZOLTimerTestPeer;

// Samples taken so far by each of the five timers, in report order.
std::vector<long> Samples() {
  std::vector<long> samples;
  for (const VEKZOLTimer* timer :
       {&VEKZOLZip::_CompressStringTimer, &VEKZOLZip::_ZlibCompressBlobTimer,
        &VEKZOLZip::_DecompressBStringTimer, &VEKZOLZip::_DecompressCStringTimer,
        &VEKZOLZip::_ZlibDecompressBlobTimer}) {
    EXPECT_EQ(Peer::StartCount(*timer), Peer::StopCount(*timer));
    samples.push_back(timer->GetCounter());
  }
  return samples;
}

class VEKZOLZipTimersEnvTest : public ::testing::Test {
 protected:
  void SetUp() override {
    VEKZOLZip::PrintAndResetCummulativeTimes();
    FreshTrace();
  }

  TimerClockSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLZipTimersEnvTest, EachCallRunsItsTimersBehindTheNullTests) {
  unsigned long length = 0;
  VEKZOLZip::compressString("", length);
  VEKZOLZip::decompressString("");
  EXPECT_EQ(Samples(), (std::vector<long>{0, 0, 0, 0, 0}));

  const std::string blob = Compress(XmlText(100));
  EXPECT_EQ(Samples(), (std::vector<long>{1, 1, 0, 0, 0}));
  Take(VEKZOLZip::decompressString(blob.c_str()));
  EXPECT_EQ(Samples(), (std::vector<long>{1, 1, 0, 1, 1}));
  // No header: the reader's own timer only.
  Take(VEKZOLZip::decompressString("no header"));
  EXPECT_EQ(Samples(), (std::vector<long>{1, 1, 0, 2, 1}));

  unsigned short* wide = MakeBstr(u"no header either");
  Take(VEKZOLZip::decompressString(wide));
  UnicodeString::deleteBstr(wide);
  EXPECT_EQ(Samples(), (std::vector<long>{1, 1, 1, 3, 1}));

  const std::string text = XmlText(100);
  wide = MakeBstr(std::u16string(text.begin(), text.end()));
  UnicodeString::deleteStr(VEKZOLZip::compressString(wide, length));
  UnicodeString::deleteBstr(wide);
  EXPECT_EQ(Samples(), (std::vector<long>{2, 2, 1, 3, 1}));
}

TEST_F(VEKZOLZipTimersEnvTest, ReportComesInOrderAndClearsTheTimers) {
  system_.user = 20000;  // 2 ms of processor time so far
  const std::string blob = Compress(XmlText(100));
  Take(VEKZOLZip::decompressString(blob.c_str()));
  Take(VEKZOLZip::decompressString(blob.c_str()));
  VEKZOLZip::PrintAndResetCummulativeTimes();

  auto line = [](const char* name, int cpu, int calls) {
    return Line(std::string("Timer:\t ") + name + "\tCummulative CPU Time:\t" +
                std::to_string(cpu) + "\tCummulative Elapsed Time:\t0\tNb Calls:\t" +
                std::to_string(calls));
  };
  EXPECT_EQ(TraceBody(), line("VEKZOLZip - Compress String Timer", 2, 1) +
                             line("Blob Mgmt - zlib Compress Blob Timer", 2, 1) +
                             line("Blob Mgmt - Decompress B String Timer", 0, 0) +
                             line("Blob Mgmt - Decompress C String Timer", 4, 2) +
                             line("Blob Mgmt - zlib Decompress Blob Timer", 4, 2));
  EXPECT_EQ(Samples(), (std::vector<long>{0, 0, 0, 0, 0}));
}

}  // namespace
