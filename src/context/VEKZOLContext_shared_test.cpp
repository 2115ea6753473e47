// The context records as a host sees them: this program links the shared
// library, so every member used here must be exported from it.
#include <deque>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

// The whole trace file of this process, read in text mode as it was
// written, so that Windows line ends come back as "\n".
std::string TraceText() {
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  std::ifstream in(path.GetString());
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

TEST(VEKZOLContextSharedTest, EveryMemberOfTheThreeRecordsIsReachable) {
  VEKZOLContextInput context;
  context.SetContextName("shared");
  context.HasManufContextInput = 1;
  context.HasVolumeFilter = 1;
  context.HostValue3 = 3;

  VEKZOLManufContextInput& relations = context.ManufContextInput;
  relations.ReferenceProcessID = "REF";
  relations.SetRelation("proc_processes_prod", true);
  relations.SetRelation("proc_removes_prod", true);
  relations.SetRelation("process_mustprecede_process", true);
  relations.SetRelation("process_runsbefore_process", true);
  relations.SetRelation("process_attaches_resource", true);
  relations.SetOtherRelations("other");
  relations.HostValue1 = 1;
  relations.HostValue2 = 2;
  EXPECT_TRUE(relations.GetRelation("proc_removes_prod"));
  EXPECT_STREQ(relations.GetGlobalRelations(), "process_mustprecede_process");
  EXPECT_STREQ(relations.GetCommonParentRelations(), "process_runsbefore_process");
  EXPECT_STREQ(relations.GetIntegrateRelations(), "proc_processes_prod#process_attaches_resource");
  EXPECT_STREQ(relations.GetRemoveRelations(), "proc_removes_prod");
  EXPECT_STREQ(relations.GetOtherRelations(), "other");
  std::deque<CString> list;
  relations.GetProcRelations(list);
  relations.GetProdRelations(list);
  relations.GetResrcRelations(list);
  EXPECT_EQ(list.size(), 5u);

  VEKZOLVolumeFilterCondValues filter;
  filter.Xmax = 2.0;
  VEKZOLVolumeFilterCondValues filterCopy(filter);
  context.VolumeFilter = filterCopy;

  VEKZOLManufContextInput relationsCopy(relations);
  relationsCopy = relations;
  VEKZOLContextInput copy(context);
  VEKZOLContextInput assigned;
  assigned = copy;
  EXPECT_STREQ(assigned.GetContextName(), "shared");
  EXPECT_EQ(assigned.HostValue3, 3);
  EXPECT_EQ(assigned.ManufContextInput.HostValue2, 2);
  EXPECT_EQ(assigned.VolumeFilter.Xmax, 2.0);

  assigned.Print();
  const std::string trace = TraceText();
  EXPECT_NE(trace.find("\tInfo:\t Context Name : shared\n"), std::string::npos);
  EXPECT_NE(trace.find("\tInfo:\t Reference  Process ID : REF\n"), std::string::npos);
  EXPECT_NE(trace.find("\tInfo:\t Xmax : 2.000000\n"), std::string::npos);
  EXPECT_LT(trace.find("Mfg Context Input <--"), trace.find("Volume Filter -->"));
}

}  // namespace
