// Tests of the volume filter record: defaults, copies and the exact trace
// lines with "%lf" numbers and the two condition texts.
#include <vekzol/context/VEKZOLVolumeFilterCondValues.h>

#include <string>

#include <gtest/gtest.h>

#include "context/ContextTestSupport.h"

namespace {

using context_test::FixedTrace;
using context_test::Lines;

// The condition line that Print writes for `condition`.
std::string ConditionLineOf(int condition) {
  FixedTrace trace;
  VEKZOLVolumeFilterCondValues filter;
  filter.FilterCondition = condition;
  filter.Print();
  const std::string body = trace.Body();
  const std::string marker = "Filter Condition : ";
  const size_t start = body.find(marker);
  if (start == std::string::npos) {
    return "";
  }
  return body.substr(start + marker.size(), body.find('\n', start) - start - marker.size());
}

TEST(VEKZOLVolumeFilterCondValuesTest, NewFilterHasZeroBoundsAndClearanceAndConditionOne) {
  VEKZOLVolumeFilterCondValues filter;
  EXPECT_EQ(filter.Xmin, 0.0);
  EXPECT_EQ(filter.Xmax, 0.0);
  EXPECT_EQ(filter.Ymin, 0.0);
  EXPECT_EQ(filter.Ymax, 0.0);
  EXPECT_EQ(filter.Zmin, 0.0);
  EXPECT_EQ(filter.Zmax, 0.0);
  EXPECT_EQ(filter.Clearance, 0.0);
  EXPECT_EQ(filter.FilterCondition, 1);
}

TEST(VEKZOLVolumeFilterCondValuesTest, PrintOfANewFilterWritesZerosWithSixPlacesAndFullyIn) {
  FixedTrace trace;
  VEKZOLVolumeFilterCondValues filter;
  filter.Print();
  EXPECT_EQ(
      trace.Body(),
      Lines({"Info:\t Volume Filter -->", "Info:\t Xmin : 0.000000", "Info:\t Xmax : 0.000000",
             "Info:\t Ymin : 0.000000", "Info:\t Ymax : 0.000000", "Info:\t Zmin : 0.000000",
             "Info:\t Zmax : 0.000000", "Info:\t Clearance : 0.000000",
             "Info:\t Filter Condition : Fully In", "Info:\t Volume Filter <--"}));
}

TEST(VEKZOLVolumeFilterCondValuesTest, PrintWritesEachFieldInItsLineWithSixPlaces) {
  FixedTrace trace;
  VEKZOLVolumeFilterCondValues filter;
  // Unchecked bounds: the minimum of X lies above its maximum.
  filter.Xmin = 12.5;
  filter.Xmax = -3.25;
  filter.Ymin = 0.1;
  filter.Ymax = 1234567.125;
  filter.Zmin = -0.0000004;
  filter.Zmax = 2.0000016;
  filter.Clearance = 0.75;
  filter.FilterCondition = 2;
  filter.Print();
  EXPECT_EQ(
      trace.Body(),
      Lines({"Info:\t Volume Filter -->", "Info:\t Xmin : 12.500000", "Info:\t Xmax : -3.250000",
             "Info:\t Ymin : 0.100000", "Info:\t Ymax : 1234567.125000", "Info:\t Zmin : -0.000000",
             "Info:\t Zmax : 2.000002", "Info:\t Clearance : 0.750000",
             "Info:\t Filter Condition : Partly In", "Info:\t Volume Filter <--"}));
}

TEST(VEKZOLVolumeFilterCondValuesTest, ConditionOneIsFullyInAndEveryOtherValuePartlyIn) {
  EXPECT_EQ(ConditionLineOf(1), "Fully In");
  EXPECT_EQ(ConditionLineOf(0), "Partly In");
  EXPECT_EQ(ConditionLineOf(2), "Partly In");
  EXPECT_EQ(ConditionLineOf(-1), "Partly In");
}

TEST(VEKZOLVolumeFilterCondValuesTest, CopyAndAssignmentTakeEveryFieldAsItStands) {
  VEKZOLVolumeFilterCondValues source;
  source.Xmin = 1.5;
  source.Xmax = -2.5;
  source.Ymin = 3.5;
  source.Ymax = 4.5;
  source.Zmin = 5.5;
  source.Zmax = 6.5;
  source.Clearance = 7.5;
  source.FilterCondition = -8;

  VEKZOLVolumeFilterCondValues copy(source);
  VEKZOLVolumeFilterCondValues assigned;
  assigned = source;
  for (const VEKZOLVolumeFilterCondValues* filter : {&copy, &assigned}) {
    EXPECT_EQ(filter->Xmin, 1.5);
    EXPECT_EQ(filter->Xmax, -2.5);
    EXPECT_EQ(filter->Ymin, 3.5);
    EXPECT_EQ(filter->Ymax, 4.5);
    EXPECT_EQ(filter->Zmin, 5.5);
    EXPECT_EQ(filter->Zmax, 6.5);
    EXPECT_EQ(filter->Clearance, 7.5);
    EXPECT_EQ(filter->FilterCondition, -8);
  }
}

}  // namespace
