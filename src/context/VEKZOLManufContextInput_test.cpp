// Tests of the manufacturing context record: the switchboard, the two
// groupings of the eight keywords, copies and the exact trace lines.
#include <vekzol/context/VEKZOLManufContextInput.h>

#include <cstring>
#include <deque>
#include <map>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "context/ContextTestSupport.h"

namespace {

using context_test::FixedTrace;
using context_test::Lines;

// The record with its switchboard in view.
class InspectableRecord : public VEKZOLManufContextInput {
 public:
  InspectableRecord() = default;
  InspectableRecord(const InspectableRecord& other) = default;
  InspectableRecord& operator=(const InspectableRecord& other) = default;

  // The keywords of the switchboard with their switches, in map order.
  std::vector<std::pair<std::string, bool>> Switches() const {
    std::vector<std::pair<std::string, bool>> switches;
    for (const auto& entry : m_Relations) {
      switches.emplace_back(entry.first.GetString(), entry.second);
    }
    return switches;
  }
};

const char* const kEightKeywords[] = {"proc_processes_prod",         "proc_creates_prod",
                                      "proc_firstprocesses_prod",    "process_attaches_resource",
                                      "proc_removes_prod",           "process_detaches_resource",
                                      "process_mustprecede_process", "process_runsbefore_process"};

std::vector<std::string> Texts(const std::deque<CString>& list) {
  std::vector<std::string> texts;
  for (const CString& text : list) {
    texts.emplace_back(text.GetString());
  }
  return texts;
}

std::string Text(const CString& text) { return text.GetString(); }

void SwitchAllOn(VEKZOLManufContextInput& record) {
  for (const char* keyword : kEightKeywords) {
    record.SetRelation(keyword, true);
  }
}

TEST(VEKZOLManufContextInputTest, NewRecordHasAllEightKeywordsOff) {
  VEKZOLManufContextInput record;
  for (const char* keyword : kEightKeywords) {
    EXPECT_FALSE(record.GetRelation(keyword)) << keyword;
  }
}

TEST(VEKZOLManufContextInputTest, NewRecordHoldsExactlyTheEightKeywordsInItsSwitchboard) {
  InspectableRecord record;
  const std::vector<std::pair<std::string, bool>> expected = {
      {"proc_creates_prod", false},           {"proc_firstprocesses_prod", false},
      {"proc_processes_prod", false},         {"proc_removes_prod", false},
      {"process_attaches_resource", false},   {"process_detaches_resource", false},
      {"process_mustprecede_process", false}, {"process_runsbefore_process", false}};
  EXPECT_EQ(record.Switches(), expected);
}

TEST(VEKZOLManufContextInputTest, NewRecordGivesEmptyStringsAndLeavesListsAsTheyWere) {
  VEKZOLManufContextInput record;
  EXPECT_EQ(Text(record.GetGlobalRelations()), "");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "");
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "");
  EXPECT_EQ(Text(record.GetRemoveRelations()), "");

  std::deque<CString> list = {"kept"};
  record.GetProcRelations(list);
  record.GetProdRelations(list);
  record.GetResrcRelations(list);
  EXPECT_EQ(Texts(list), std::vector<std::string>({"kept"}));
}

TEST(VEKZOLManufContextInputTest, NewRecordHasEmptyIdsOtherRelationsAndHostValue1Zero) {
  VEKZOLManufContextInput record;
  EXPECT_EQ(Text(record.ReferenceProcessID), "");
  EXPECT_EQ(Text(record.RootProcessID), "");
  EXPECT_EQ(Text(record.RootProductID), "");
  EXPECT_EQ(Text(record.RootResourceID), "");
  EXPECT_EQ(Text(record.GetOtherRelations()), "");
  EXPECT_EQ(record.HostValue1, 0);
}

TEST(VEKZOLManufContextInputTest, ConstructorSetsHostValue1AndLeavesHostValue2AsTheStorageHeldIt) {
  alignas(VEKZOLManufContextInput) unsigned char storage[sizeof(VEKZOLManufContextInput)];
  std::memset(storage, 0x5A, sizeof storage);
  auto* record = new (storage) VEKZOLManufContextInput;
  int hostValue1 = -1;
  int hostValue2 = -1;
  // Byte copies: the host value has no defined value as an int.
  std::memcpy(&hostValue1, &record->HostValue1, sizeof hostValue1);
  std::memcpy(&hostValue2, &record->HostValue2, sizeof hostValue2);
  EXPECT_EQ(hostValue1, 0);
  EXPECT_EQ(hostValue2, 0x5A5A5A5A);
  record->~VEKZOLManufContextInput();
}

TEST(VEKZOLManufContextInputTest, KeywordsAreCaseSensitive) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_creates_prod", true);
  EXPECT_TRUE(record.GetRelation("proc_creates_prod"));
  EXPECT_FALSE(record.GetRelation("PROC_CREATES_PROD"));
  EXPECT_FALSE(record.GetRelation("Proc_creates_prod"));
}

TEST(VEKZOLManufContextInputTest, GetRelationOfAnUnknownKeywordIsFalseAndDoesNotAddIt) {
  InspectableRecord record;
  EXPECT_FALSE(record.GetRelation("process_follows_process"));
  EXPECT_FALSE(record.GetRelation("PROC_CREATES_PROD"));
  InspectableRecord copy(record);
  EXPECT_EQ(copy.Switches().size(), 8u);
  for (const auto& entry : copy.Switches()) {
    EXPECT_NE(entry.first, "process_follows_process");
    EXPECT_NE(entry.first, "PROC_CREATES_PROD");
  }
}

TEST(VEKZOLManufContextInputTest, SetRelationAddsAFurtherKeywordThatOnlyGetRelationReaches) {
  InspectableRecord record;
  record.SetRelation("process_follows_process", true);
  EXPECT_TRUE(record.GetRelation("process_follows_process"));
  EXPECT_EQ(record.Switches().size(), 9u);

  EXPECT_EQ(Text(record.GetGlobalRelations()), "");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "");
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "");
  EXPECT_EQ(Text(record.GetRemoveRelations()), "");
  std::deque<CString> list;
  record.GetProcRelations(list);
  record.GetProdRelations(list);
  record.GetResrcRelations(list);
  EXPECT_TRUE(list.empty());

  record.SetRelation("process_follows_process", false);
  EXPECT_FALSE(record.GetRelation("process_follows_process"));
  EXPECT_EQ(record.Switches().size(), 9u);
}

TEST(VEKZOLManufContextInputTest, SetRelationAcceptsTheEmptyKeyword) {
  VEKZOLManufContextInput record;
  EXPECT_FALSE(record.GetRelation(""));
  record.SetRelation("", true);
  EXPECT_TRUE(record.GetRelation(""));
}

TEST(VEKZOLManufContextInputTest, GlobalAndCommonParentStringsHoldTheirOneKeyword) {
  VEKZOLManufContextInput record;
  record.SetRelation("process_mustprecede_process", true);
  EXPECT_EQ(Text(record.GetGlobalRelations()), "process_mustprecede_process");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "");
  record.SetRelation("process_runsbefore_process", true);
  EXPECT_EQ(Text(record.GetGlobalRelations()), "process_mustprecede_process");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "process_runsbefore_process");
}

TEST(VEKZOLManufContextInputTest, IntegrateStringJoinsAllFourInFixedOrderWithHashes) {
  VEKZOLManufContextInput record;
  // Switched on in reverse order: the order of composition stays fixed.
  record.SetRelation("process_attaches_resource", true);
  record.SetRelation("proc_firstprocesses_prod", true);
  record.SetRelation("proc_creates_prod", true);
  record.SetRelation("proc_processes_prod", true);
  EXPECT_EQ(Text(record.GetIntegrateRelations()),
            "proc_processes_prod#proc_creates_prod#proc_firstprocesses_prod#"
            "process_attaches_resource");
}

TEST(VEKZOLManufContextInputTest, IntegrateStringWithFirstAndLastOnHasOneHash) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_processes_prod", true);
  record.SetRelation("process_attaches_resource", true);
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "proc_processes_prod#process_attaches_resource");
}

TEST(VEKZOLManufContextInputTest, IntegrateStringWithOnlyFirstProcessesOnHasNoHash) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_firstprocesses_prod", true);
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "proc_firstprocesses_prod");
}

TEST(VEKZOLManufContextInputTest, IntegrateStringWithOnlyAttachesResourceOnHasNoLeadingHash) {
  VEKZOLManufContextInput record;
  record.SetRelation("process_attaches_resource", true);
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "process_attaches_resource");
}

TEST(VEKZOLManufContextInputTest, RemoveStringWithOnlyDetachesResourceOnHasNoLeadingHash) {
  VEKZOLManufContextInput record;
  record.SetRelation("process_detaches_resource", true);
  EXPECT_EQ(Text(record.GetRemoveRelations()), "process_detaches_resource");
}

TEST(VEKZOLManufContextInputTest, RemoveStringWithBothOnJoinsThemWithOneHash) {
  VEKZOLManufContextInput record;
  record.SetRelation("process_detaches_resource", true);
  record.SetRelation("proc_removes_prod", true);
  EXPECT_EQ(Text(record.GetRemoveRelations()), "proc_removes_prod#process_detaches_resource");
}

TEST(VEKZOLManufContextInputTest, StringGroupsKeepToTheirOwnKeywords) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_removes_prod", true);
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "");
  EXPECT_EQ(Text(record.GetRemoveRelations()), "proc_removes_prod");
  EXPECT_EQ(Text(record.GetGlobalRelations()), "");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "");
}

TEST(VEKZOLManufContextInputTest, ListGettersAppendTheKeywordsThatAreOnInFixedOrder) {
  VEKZOLManufContextInput record;
  SwitchAllOn(record);

  std::deque<CString> processes = {"first"};
  record.GetProcRelations(processes);
  EXPECT_EQ(Texts(processes), std::vector<std::string>({"first", "process_mustprecede_process",
                                                        "process_runsbefore_process"}));

  std::deque<CString> products = {"first"};
  record.GetProdRelations(products);
  EXPECT_EQ(Texts(products),
            std::vector<std::string>({"first", "proc_processes_prod", "proc_creates_prod",
                                      "proc_firstprocesses_prod", "proc_removes_prod"}));

  std::deque<CString> resources = {"first"};
  record.GetResrcRelations(resources);
  EXPECT_EQ(Texts(resources), std::vector<std::string>({"first", "process_attaches_resource",
                                                        "process_detaches_resource"}));
}

TEST(VEKZOLManufContextInputTest, ProductListTakesRemovesProdButNotAttachesResource) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_removes_prod", true);
  record.SetRelation("process_attaches_resource", true);
  std::deque<CString> products;
  record.GetProdRelations(products);
  EXPECT_EQ(Texts(products), std::vector<std::string>({"proc_removes_prod"}));
  std::deque<CString> resources;
  record.GetResrcRelations(resources);
  EXPECT_EQ(Texts(resources), std::vector<std::string>({"process_attaches_resource"}));
}

TEST(VEKZOLManufContextInputTest, ProdRelationsCalledTwiceOnOneDequeListsEachKeywordTwice) {
  VEKZOLManufContextInput record;
  record.SetRelation("proc_creates_prod", true);
  record.SetRelation("proc_removes_prod", true);
  std::deque<CString> products;
  record.GetProdRelations(products);
  record.GetProdRelations(products);
  EXPECT_EQ(Texts(products), std::vector<std::string>({"proc_creates_prod", "proc_removes_prod",
                                                       "proc_creates_prod", "proc_removes_prod"}));
}

TEST(VEKZOLManufContextInputTest, SetRelationFalseTurnsAKeywordOffForEveryGetter) {
  VEKZOLManufContextInput record;
  SwitchAllOn(record);
  for (const char* keyword : kEightKeywords) {
    record.SetRelation(keyword, false);
  }
  for (const char* keyword : kEightKeywords) {
    EXPECT_FALSE(record.GetRelation(keyword)) << keyword;
  }
  EXPECT_EQ(Text(record.GetGlobalRelations()), "");
  EXPECT_EQ(Text(record.GetCommonParentRelations()), "");
  EXPECT_EQ(Text(record.GetIntegrateRelations()), "");
  EXPECT_EQ(Text(record.GetRemoveRelations()), "");
  std::deque<CString> list;
  record.GetProcRelations(list);
  record.GetProdRelations(list);
  record.GetResrcRelations(list);
  EXPECT_TRUE(list.empty());
}

TEST(VEKZOLManufContextInputTest, OtherRelationsAreStoredAndHandedBackAsGiven) {
  VEKZOLManufContextInput record;
  record.SetOtherRelations(" proc_a#proc_b ;x ");
  EXPECT_EQ(Text(record.GetOtherRelations()), " proc_a#proc_b ;x ");
  EXPECT_FALSE(record.GetRelation("proc_a"));
  record.SetOtherRelations("");
  EXPECT_EQ(Text(record.GetOtherRelations()), "");
}

TEST(VEKZOLManufContextInputTest, CopyKeepsSwitchesKeywordsIdsOtherRelationsAndHostValues) {
  InspectableRecord source;
  source.ReferenceProcessID = "REF-1";
  source.RootProcessID = "PRC-1";
  source.RootProductID = "PRD-1";
  source.RootResourceID = "RES-1";
  source.SetRelation("proc_creates_prod", true);
  source.SetRelation("process_runsbefore_process", true);
  source.SetRelation("custom_relation", true);
  source.SetOtherRelations("other text");
  source.HostValue1 = 17;
  source.HostValue2 = -23;

  InspectableRecord copy(source);
  EXPECT_EQ(Text(copy.ReferenceProcessID), "REF-1");
  EXPECT_EQ(Text(copy.RootProcessID), "PRC-1");
  EXPECT_EQ(Text(copy.RootProductID), "PRD-1");
  EXPECT_EQ(Text(copy.RootResourceID), "RES-1");
  EXPECT_EQ(copy.Switches(), source.Switches());
  EXPECT_TRUE(copy.GetRelation("custom_relation"));
  EXPECT_EQ(Text(copy.GetOtherRelations()), "other text");
  EXPECT_EQ(copy.HostValue1, 17);
  EXPECT_EQ(copy.HostValue2, -23);
}

TEST(VEKZOLManufContextInputTest, ChangingACopysSwitchesLeavesTheSourceAlone) {
  VEKZOLManufContextInput source;
  source.SetRelation("proc_creates_prod", true);
  VEKZOLManufContextInput copy(source);
  copy.SetRelation("proc_creates_prod", false);
  copy.SetRelation("proc_removes_prod", true);
  copy.SetRelation("custom_relation", true);
  EXPECT_TRUE(source.GetRelation("proc_creates_prod"));
  EXPECT_FALSE(source.GetRelation("proc_removes_prod"));
  EXPECT_FALSE(source.GetRelation("custom_relation"));
  EXPECT_EQ(Text(source.GetIntegrateRelations()), "proc_creates_prod");
}

TEST(VEKZOLManufContextInputTest, AssignmentReplacesTheSwitchboardAndCopiesEveryField) {
  InspectableRecord source;
  source.RootProductID = "PRD-2";
  source.SetRelation("proc_removes_prod", true);
  source.SetOtherRelations("from source");
  source.HostValue1 = 5;
  source.HostValue2 = 6;

  InspectableRecord target;
  target.ReferenceProcessID = "REF-T";
  target.SetRelation("target_only", true);
  target.SetRelation("proc_creates_prod", true);
  target.HostValue2 = 99;

  target = source;
  EXPECT_EQ(target.Switches(), source.Switches());
  EXPECT_FALSE(target.GetRelation("target_only"));
  EXPECT_FALSE(target.GetRelation("proc_creates_prod"));
  EXPECT_TRUE(target.GetRelation("proc_removes_prod"));
  EXPECT_EQ(Text(target.ReferenceProcessID), "");
  EXPECT_EQ(Text(target.RootProductID), "PRD-2");
  EXPECT_EQ(Text(target.GetOtherRelations()), "from source");
  EXPECT_EQ(target.HostValue1, 5);
  EXPECT_EQ(target.HostValue2, 6);

  target.SetRelation("proc_removes_prod", false);
  EXPECT_TRUE(source.GetRelation("proc_removes_prod"));
}

TEST(VEKZOLManufContextInputTest, PrintOfANewRecordWritesTheTenLinesWithEmptyValues) {
  FixedTrace trace;
  VEKZOLManufContextInput record;
  record.Print();
  EXPECT_EQ(trace.Body(),
            Lines({"Info:\t Mfg Context Input -->", "Info:\t Reference  Process ID : ",
                   "Info:\t Root Process ID : ", "Info:\t Root Product ID : ",
                   "Info:\t Root Resource ID : ", "Info:\t Global Relations ",
                   "Info:\t CommonParent Relations ", "Info:\t Integrating Relations ",
                   "Info:\t Removing Relations : ", "Info:\t Mfg Context Input <--"}));
}

TEST(VEKZOLManufContextInputTest, PrintWritesIdsAndComposedStringsButNoOtherRelations) {
  FixedTrace trace;
  VEKZOLManufContextInput record;
  record.ReferenceProcessID = "REF-9";
  record.RootProcessID = "PRC-9";
  record.RootProductID = "PRD-9";
  record.RootResourceID = "RES-9";
  SwitchAllOn(record);
  record.SetRelation("custom_relation", true);
  record.SetOtherRelations("not printed");
  record.HostValue1 = 1234;
  record.HostValue2 = 5678;
  record.Print();
  EXPECT_EQ(trace.Body(),
            Lines({"Info:\t Mfg Context Input -->", "Info:\t Reference  Process ID : REF-9",
                   "Info:\t Root Process ID : PRC-9", "Info:\t Root Product ID : PRD-9",
                   "Info:\t Root Resource ID : RES-9",
                   "Info:\t Global Relations process_mustprecede_process",
                   "Info:\t CommonParent Relations process_runsbefore_process",
                   "Info:\t Integrating Relations proc_processes_prod#proc_creates_prod#"
                   "proc_firstprocesses_prod#process_attaches_resource",
                   "Info:\t Removing Relations : proc_removes_prod#process_detaches_resource",
                   "Info:\t Mfg Context Input <--"}));
}

}  // namespace
