// The exported interface as a host sees it: this test links the shared
// library, so every class, static and free function used here must be
// exported from it.
#include <deque>

#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

// A host class of its own behind the object interface.
class HostObject : public VEKIZOLObject {
 public:
  explicit HostObject(const char* id) : m_Id(id) {}
  CString GetID() override { return m_Id; }
  long GetID(CString& id) override {
    id = m_Id;
    return S_OK;
  }
  CString GetRefID() override { return ""; }
  long GetRefID(CString& refId) override {
    refId = "";
    return S_OK;
  }
  long GetAttribute(const CString&, CComVariant&) override { return E_FAIL; }
  CString IsA() override { return "HostObject"; }
  CString GetDisplayName() override { return "host object"; }
  long SetSCIID(const CString&) override { return S_OK; }
  CString GetSCIID() override { return ""; }
  long GetSCIID(CString& sciid) override {
    sciid = "";
    return S_OK;
  }

 private:
  CString m_Id;
};

TEST(ApiTest, StatusValuesAreNegativeFailuresWithTheWindowsBitPatterns) {
  EXPECT_EQ(0L, S_OK);
  EXPECT_EQ(1L, S_FALSE);
  EXPECT_EQ(static_cast<HRESULT>(static_cast<int>(0x80070057u)), E_INVALIDARG);
  EXPECT_EQ(static_cast<HRESULT>(static_cast<int>(0x80004005u)), E_FAIL);
  EXPECT_EQ(static_cast<HRESULT>(static_cast<int>(0x8007000Eu)), E_OUTOFMEMORY);
  EXPECT_LT(E_FAIL, 0);
  EXPECT_LT(E_INVALIDARG, 0);
  EXPECT_LT(E_OUTOFMEMORY, 0);
}

TEST(ApiTest, PortableTypesWorkThroughTheSharedLibrary) {
  CString text("PRC-0001");
  text += "/a";
  EXPECT_EQ(CString("PRC-0001/a"), text);
  CString formatted;
  formatted.Format("%s:%d", text, 7);
  EXPECT_STREQ("PRC-0001/a:7", formatted);

  CComVariant number(42);
  CComVariant copy(number);
  EXPECT_TRUE(copy == number);
  EXPECT_EQ(S_OK, copy.ChangeType(VT_BSTR));
  ASSERT_EQ(VT_BSTR, copy.vt);
  EXPECT_EQ(2u, SysStringLen(copy.bstrVal));

  try {
    text.SetAt(100, 'x');
    FAIL() << "SetAt past the end did not raise";
  } catch (const CAtlException& e) {
    EXPECT_EQ(E_INVALIDARG, static_cast<HRESULT>(e));
  }
}

TEST(ApiTest, GraphOfLibraryAndHostObjectsBuildsThroughTheSharedLibrary) {
  VEKZOLObjectImpl::_RefCounter = 0;
  VEKZOLRelationImpl::_RefCounter = 0;
  const int verticesBefore = VEKZOLGraphVertex::_RefCounter;
  const int edgesBefore = VEKZOLGraphEdge::_RefCounter;
  {
    VEKZOLObjectImpl weld("PRC-1", "REF-1");
    HostObject paint("PRC-2");
    VEKZOLRelationImpl next(&weld, &paint, "next", "R-1");
    EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
    EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
    EXPECT_EQ(S_OK, weld.SetAttribute("station", CComVariant("S1")));

    std::deque<VEKIZOLObject*> objects{&weld, &paint};
    std::deque<VEKIZOLRelation*> relations{&next};
    VEKZOLGraph graph("api");
    EXPECT_EQ(E_FAIL, graph.Build(objects, relations));
    EXPECT_EQ(verticesBefore + 2, VEKZOLGraphVertex::_RefCounter);
    EXPECT_EQ(edgesBefore + 1, VEKZOLGraphEdge::_RefCounter);

    VEKZOLGraphVertex* host = nullptr;
    ASSERT_EQ(S_OK, graph.GetVertex("PRC-2", host));
    EXPECT_STREQ("host object", host->GetName());
    VEKZOLGraph copy(graph, "copy", true);
    VEKZOLGraphEdge* edge = nullptr;
    ASSERT_EQ(S_OK, copy.GetEdge("R-1", edge));
    EXPECT_STREQ("PRC-2", edge->GetChild()->GetID());
  }
  EXPECT_EQ(0, VEKZOLObjectImpl::_RefCounter);
  EXPECT_EQ(0, VEKZOLRelationImpl::_RefCounter);
  EXPECT_EQ(verticesBefore, VEKZOLGraphVertex::_RefCounter);
  EXPECT_EQ(edgesBefore, VEKZOLGraphEdge::_RefCounter);
}

TEST(ApiTest, TraceLogStaticsAreExported) {
  VEKZOLLog::WriteMsg("Info:\t api test", 0);
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  EXPECT_EQ(VEKZOLLog::_LogFilePath, path);
  EXPECT_TRUE(VEKZOLLog::_bIsInitialized);
  EXPECT_NE(-1, path.Find(VEKZOLLog::_CreationTimeStamp));
}

}  // namespace
