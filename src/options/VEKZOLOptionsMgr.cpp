// File: VEKZOLOptionsMgr.cpp
// The option store. The map is defined in LibraryState.cpp at its place in
// the library's load order; the printed flag is constant-initialised here.
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include <deque>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include "platform/MbString.h"
#include "platform/System.h"

bool VEKZOLOptionsMgr::s_OptionsPrinted = false;

namespace {

using vekzol::platform::Mbscmp;
using vekzol::platform::Mbsicmp;

// The options that the listing always reports, whether anyone asked for
// them or not. The order is that of collection; the listing sorts them.
constexpr const char* kKnownOptions[] = {
    "KRN_VIEW_WORKINSTRUCTIONLIBRARY",
    "KRN_VIEW_PROCESS_ATTACHMENTS",
    "KRN_SHOW_PMI_ON_LOAD",
    "KRN_MANAGE_COLLABORATIONS",
    "KRN_KEEP_SESSION_DIR",
    "KRN_ENABLE_LMQ_UPDATE",
    "KRN_ENABLE_BLOB_COMPRESSION",
    "PX_7GRUN_YTFGRAPHIC",
    "PX_7GRUN_CONTEXT_YTFGRAPHIC",
    "VEK_ZOL_TIMERS_ENABLED",
    "VEK_ZOL_IGNORE_DERIVED_WI_TYPES",
    "VEK_ZOL_DISABLE_PRODUCT_BUILDUP",
    "VEK_ZOL_DISABLE_LOD",
    "VEK_ZOL_DEBUG_MODE",
    "VEK_ZOL_BYPASS_ANNOTATION_CLEANING",
    "VEK_ZOL_BYPASS_ANNOTATION_ANCHOR_MGT",
    "VEK_KRN_REPARENTBLOB_EDIT_DISABLED",
    "KRN_REVISION_PRODUCT_FILE",
};

// The environment variable `name` as it is; "" when it is unset or empty.
CString RawEnvironmentValue(const CString& name) {
  std::string value;
  if (!vekzol::platform::Sys().GetEnv(name, &value)) {
    return CString();
  }
  return CString(value);
}

// The booleans' spellings become "TRUE" and "FALSE"; every other value,
// "yes", "2" or " true" among them, stays exactly as it is.
CString Normalised(const CString& value) {
  if (Mbscmp(value, "1") == 0 || Mbsicmp(value, "true") == 0) {
    return CString("TRUE");
  }
  if (Mbscmp(value, "0") == 0 || Mbsicmp(value, "false") == 0) {
    return CString("FALSE");
  }
  return value;
}

}  // namespace

VEKZOLOptionsMgr& VEKZOLOptionsMgr::operator=(const VEKZOLOptionsMgr&) { return *this; }

CString VEKZOLOptionsMgr::GetValue(const CString& key) {
  const auto found = _OptionValueMap.find(key);
  if (found != _OptionValueMap.end()) {
    return found->second;
  }
  CString value = RawEnvironmentValue(key);
  if (!value.IsEmpty()) {
    value = Normalised(value);
  }
  // The empty answer is kept as well: the environment is not asked again.
  _OptionValueMap.emplace(key, value);
  return value;
}

void VEKZOLOptionsMgr::SetValue(const CString& key, const CString& value) {
  _OptionValueMap[key] = value;
}

long VEKZOLOptionsMgr::PrintAllOptions() {
  if (!VEKZOLLog::IsVerbosityEnabled() || s_OptionsPrinted) {
    return E_FAIL;
  }

  std::deque<CString> keys;
  for (const char* key : kKnownOptions) {
    keys.push_back(CString(key));
  }
  for (const auto& entry : _OptionValueMap) {
    if (!entry.first.IsEmpty()) {
      keys.push_back(entry.first);
    }
  }
  // Sorts the keys and leaves each once; its status says nothing.
  VEKZOLSTLServices::RemoveDuplicates(keys);

  for (const CString& key : keys) {
    if (key.IsEmpty()) {
      continue;
    }
    // A key the store does not know prints the environment's raw text, and
    // the store does not learn it: the listing changes nothing.
    const auto found = _OptionValueMap.find(key);
    const CString value = found != _OptionValueMap.end() ? found->second : RawEnvironmentValue(key);
    VEKZOLLog::WriteMsg("Option:\t " + key + " = " + value, 1);
  }

  s_OptionsPrinted = true;
  return E_FAIL;
}
