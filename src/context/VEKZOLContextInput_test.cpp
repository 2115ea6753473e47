// Tests of the named context record: the switches of its two parts, the
// order of its trace lines, and copies with their own relation switches.
#include <vekzol/context/VEKZOLContextInput.h>

#include <cstring>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "context/ContextTestSupport.h"

namespace {

using context_test::FixedTrace;
using context_test::Lines;

std::string Text(const CString& text) { return text.GetString(); }

// The ten lines of a new relations part.
std::string NewRelationLines() {
  return Lines({"Info:\t Mfg Context Input -->", "Info:\t Reference  Process ID : ",
                "Info:\t Root Process ID : ", "Info:\t Root Product ID : ",
                "Info:\t Root Resource ID : ", "Info:\t Global Relations ",
                "Info:\t CommonParent Relations ", "Info:\t Integrating Relations ",
                "Info:\t Removing Relations : ", "Info:\t Mfg Context Input <--"});
}

// The ten lines of a new volume part.
std::string NewVolumeLines() {
  return Lines({"Info:\t Volume Filter -->", "Info:\t Xmin : 0.000000", "Info:\t Xmax : 0.000000",
                "Info:\t Ymin : 0.000000", "Info:\t Ymax : 0.000000", "Info:\t Zmin : 0.000000",
                "Info:\t Zmax : 0.000000", "Info:\t Clearance : 0.000000",
                "Info:\t Filter Condition : Fully In", "Info:\t Volume Filter <--"});
}

TEST(VEKZOLContextInputTest, NewContextHasAnEmptyNameBothSwitchesOffAndNewParts) {
  VEKZOLContextInput context;
  EXPECT_EQ(Text(context.GetContextName()), "");
  EXPECT_EQ(context.HasVolumeFilter, 0);
  EXPECT_EQ(context.HasManufContextInput, 0);
  EXPECT_EQ(context.VolumeFilter.FilterCondition, 1);
  EXPECT_EQ(context.VolumeFilter.Clearance, 0.0);
  EXPECT_FALSE(context.ManufContextInput.GetRelation("proc_creates_prod"));
  EXPECT_EQ(context.ManufContextInput.HostValue1, 0);
}

TEST(VEKZOLContextInputTest, ConstructorLeavesHostValue3AsTheStorageHeldIt) {
  alignas(VEKZOLContextInput) unsigned char storage[sizeof(VEKZOLContextInput)];
  std::memset(storage, 0x5A, sizeof storage);
  auto* context = new (storage) VEKZOLContextInput;
  int hostValue3 = -1;
  // A byte copy: the host value has no defined value as an int.
  std::memcpy(&hostValue3, &context->HostValue3, sizeof hostValue3);
  EXPECT_EQ(hostValue3, 0x5A5A5A5A);
  EXPECT_EQ(context->HasVolumeFilter, 0);
  EXPECT_EQ(context->HasManufContextInput, 0);
  context->~VEKZOLContextInput();
}

TEST(VEKZOLContextInputTest, PrintOfANewContextWritesOnlyTheNameLine) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : "}));
}

TEST(VEKZOLContextInputTest, SetContextNameIsWhatGetContextNameAndPrintGiveBack) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.SetContextName("Line 4 / Station 12");
  EXPECT_EQ(Text(context.GetContextName()), "Line 4 / Station 12");
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : Line 4 / Station 12"}));
}

TEST(VEKZOLContextInputTest, FilledPartsWithTheirSwitchesOffPrintNothing) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.VolumeFilter.Xmin = 3.0;
  context.ManufContextInput.SetRelation("proc_creates_prod", true);
  context.ManufContextInput.RootProcessID = "PRC-1";
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : "}));
  EXPECT_EQ(context.HasVolumeFilter, 0);
  EXPECT_EQ(context.HasManufContextInput, 0);
}

TEST(VEKZOLContextInputTest, HasVolumeFilterFiveCountsAsOn) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.SetContextName("ctx");
  context.HasVolumeFilter = 5;
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : ctx"}) + NewVolumeLines());
}

TEST(VEKZOLContextInputTest, NegativeHasManufContextInputCountsAsOn) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.HasManufContextInput = -1;
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : "}) + NewRelationLines());
}

TEST(VEKZOLContextInputTest, WithBothSwitchesOnTheRelationsPartPrintsBeforeTheVolumePart) {
  FixedTrace trace;
  VEKZOLContextInput context;
  context.SetContextName("both");
  context.HasVolumeFilter = 1;
  context.HasManufContextInput = 1;
  context.ManufContextInput.RootProductID = "PRD-7";
  context.ManufContextInput.SetRelation("process_detaches_resource", true);
  context.VolumeFilter.Zmax = 250.5;
  context.VolumeFilter.FilterCondition = 0;
  context.Print();
  EXPECT_EQ(trace.Body(), Lines({"Info:\t Context Name : both",
                                 "Info:\t Mfg Context Input -->",
                                 "Info:\t Reference  Process ID : ",
                                 "Info:\t Root Process ID : ",
                                 "Info:\t Root Product ID : PRD-7",
                                 "Info:\t Root Resource ID : ",
                                 "Info:\t Global Relations ",
                                 "Info:\t CommonParent Relations ",
                                 "Info:\t Integrating Relations ",
                                 "Info:\t Removing Relations : process_detaches_resource",
                                 "Info:\t Mfg Context Input <--",
                                 "Info:\t Volume Filter -->",
                                 "Info:\t Xmin : 0.000000",
                                 "Info:\t Xmax : 0.000000",
                                 "Info:\t Ymin : 0.000000",
                                 "Info:\t Ymax : 0.000000",
                                 "Info:\t Zmin : 0.000000",
                                 "Info:\t Zmax : 250.500000",
                                 "Info:\t Clearance : 0.000000",
                                 "Info:\t Filter Condition : Partly In",
                                 "Info:\t Volume Filter <--"}));
}

TEST(VEKZOLContextInputTest, ClearingASwitchKeepsThePartsValues) {
  VEKZOLContextInput context;
  context.HasVolumeFilter = 1;
  context.VolumeFilter.Ymin = -4.0;
  context.HasVolumeFilter = 0;
  EXPECT_EQ(context.VolumeFilter.Ymin, -4.0);
}

TEST(VEKZOLContextInputTest, CopyTakesEveryFieldHostValue3Included) {
  VEKZOLContextInput source;
  source.SetContextName("source");
  source.HasVolumeFilter = 2;
  source.HasManufContextInput = 3;
  source.HostValue3 = 77;
  source.VolumeFilter.Clearance = 0.5;
  source.ManufContextInput.RootResourceID = "RES-3";
  source.ManufContextInput.SetRelation("process_mustprecede_process", true);
  source.ManufContextInput.HostValue2 = 44;

  VEKZOLContextInput copy(source);
  VEKZOLContextInput assigned;
  assigned = source;
  for (VEKZOLContextInput* context : {&copy, &assigned}) {
    EXPECT_EQ(Text(context->GetContextName()), "source");
    EXPECT_EQ(context->HasVolumeFilter, 2);
    EXPECT_EQ(context->HasManufContextInput, 3);
    EXPECT_EQ(context->HostValue3, 77);
    EXPECT_EQ(context->VolumeFilter.Clearance, 0.5);
    EXPECT_EQ(Text(context->ManufContextInput.RootResourceID), "RES-3");
    EXPECT_TRUE(context->ManufContextInput.GetRelation("process_mustprecede_process"));
    EXPECT_EQ(context->ManufContextInput.HostValue2, 44);
  }
}

TEST(VEKZOLContextInputTest, ACopyHasItsOwnRelationSwitches) {
  VEKZOLContextInput source;
  source.ManufContextInput.SetRelation("proc_creates_prod", true);
  VEKZOLContextInput copy(source);
  copy.ManufContextInput.SetRelation("proc_creates_prod", false);
  copy.ManufContextInput.SetRelation("custom_relation", true);
  EXPECT_TRUE(source.ManufContextInput.GetRelation("proc_creates_prod"));
  EXPECT_FALSE(source.ManufContextInput.GetRelation("custom_relation"));

  VEKZOLContextInput assigned;
  assigned = source;
  assigned.ManufContextInput.SetRelation("proc_creates_prod", false);
  EXPECT_TRUE(source.ManufContextInput.GetRelation("proc_creates_prod"));
  EXPECT_FALSE(assigned.ManufContextInput.GetRelation("proc_creates_prod"));
}

}  // namespace
