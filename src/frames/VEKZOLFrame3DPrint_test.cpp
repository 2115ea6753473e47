// Tests of VEKZOLFrame3D::Print: four lines on standard output.
#include <vekzol/services/VEKZOLFrame3D.h>

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>
#include <string>

namespace {

// Collects what is written to std::cout while it lives.
class CoutCapture {
 public:
  CoutCapture() : m_Previous(std::cout.rdbuf(m_Text.rdbuf())) {}
  ~CoutCapture() { std::cout.rdbuf(m_Previous); }
  CoutCapture(const CoutCapture&) = delete;
  CoutCapture& operator=(const CoutCapture&) = delete;

  std::string Text() const { return m_Text.str(); }

 private:
  std::ostringstream m_Text;
  std::streambuf* m_Previous;
};

std::string PrintedText(const VEKZOLFrame3D& frame) {
  CoutCapture capture;
  frame.Print();
  return capture.Text();
}

TEST(VEKZOLFrame3DPrintTest, DefaultFramePrintsIdentityRowsZeroOriginAndTheFixedBottomRow) {
  EXPECT_EQ(
      "\t1\t0\t0\t0\n"
      "\t0\t1\t0\t0\n"
      "\t0\t0\t1\t0\n"
      "\t0\t0\t0\t1\n",
      PrintedText(VEKZOLFrame3D()));
}

TEST(VEKZOLFrame3DPrintTest, PrintShowsRowsOfTheRotationWithTheOriginLastInTheDefaultFormat) {
  const double u[3] = {0.5, -2.25, 1.0 / 3.0};
  const double v[3] = {100.0, 2.0 / 3.0, -7.125};
  const double w[3] = {3.0, 4.0, 5.0};
  const double o[3] = {10.0, -20.5, 0.1};
  EXPECT_EQ(
      "\t0.5\t100\t3\t10\n"
      "\t-2.25\t0.666667\t4\t-20.5\n"
      "\t0.333333\t-7.125\t5\t0.1\n"
      "\t0\t0\t0\t1\n",
      PrintedText(VEKZOLFrame3D(u, v, w, o)));
}

TEST(VEKZOLFrame3DPrintTest, PrintShowsTheBottomRowEvenThoughTheSixteenValueFormEndsInZero) {
  double m[16];
  for (int k = 0; k < 16; ++k) m[k] = k + 1.0;
  const VEKZOLFrame3D frame(m);
  EXPECT_EQ(
      "\t1\t5\t9\t13\n"
      "\t2\t6\t10\t14\n"
      "\t3\t7\t11\t15\n"
      "\t0\t0\t0\t1\n",
      PrintedText(frame));
}

}  // namespace
