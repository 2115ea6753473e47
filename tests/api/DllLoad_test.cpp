// Loads VEKZOLBase.dll at run time, as a host that loads it on demand does,
// and unloads it again. This program links the library's objects, not the
// DLL, so the load below is the DLL's first. The entry point reports
// success, the library's static objects exist once it is loaded, and
// nothing touches the disk at load or unload.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/CString.h>

namespace {

std::vector<std::string> Entries(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

TEST(DllLoadTest, LoadsAndUnloadsWithoutTouchingTheDisk) {
  const char* temp = std::getenv("TEMP");
  ASSERT_NE(nullptr, temp);
  ASSERT_EQ(nullptr, GetModuleHandleA("VEKZOLBase.dll"));

  HMODULE dll = LoadLibraryA("VEKZOLBase.dll");
  ASSERT_NE(nullptr, dll) << GetLastError();
  // The trace log's path, one of the static objects made at load: an empty
  // string, since no line has been written.
  const auto* path = reinterpret_cast<const CString*>(
      reinterpret_cast<void*>(GetProcAddress(dll, "_ZN9VEKZOLLog12_LogFilePathE")));
  ASSERT_NE(nullptr, path);
  EXPECT_EQ(0, path->GetLength());
  EXPECT_NE(nullptr, GetProcAddress(dll, "_ZN17VEKZOLGraphVertex11_RefCounterE"));
  EXPECT_EQ(nullptr, GetProcAddress(dll, "DllMain"));

  EXPECT_TRUE(FreeLibrary(dll));
  EXPECT_EQ(nullptr, GetModuleHandleA("VEKZOLBase.dll"));
  EXPECT_TRUE(Entries(temp).empty());
}

}  // namespace
