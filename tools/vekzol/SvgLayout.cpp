// File: SvgLayout.cpp
#include "SvgLayout.h"

#include <gvc.h>

#include <string>

#include "Platform.h"
#include "ToolError.h"

#ifndef VEKZOL_GRAPHVIZ_PLUGIN_VERSION
#error "VEKZOL_GRAPHVIZ_PLUGIN_VERSION (the plugins' file version, from libgvc.pc) is not set"
#endif

namespace vekzol_tool {

namespace {

// The plugin libraries the context is made with: their file name's stem
// and the symbol through which each tells what it holds.
struct PluginLibrary {
  const char* stem;
  const char* symbol;
};
constexpr PluginLibrary kPlugins[] = {
    {"libgvplugin_core", "gvplugin_core_LTX_library"},
    {"libgvplugin_dot_layout", "gvplugin_dot_layout_LTX_library"},
};
constexpr size_t kPluginCount = sizeof kPlugins / sizeof kPlugins[0];

// The plugins' descriptions, loaded once for the process and kept: the
// layout keeps tables of its own in them between runs.
class Plugins {
 public:
  Plugins() {
    // The plugins lie in "graphviz/" beside the libgvc this process uses.
    const std::string folder = LibraryFolderOf(reinterpret_cast<void (*)()>(&gvContextPlugins));
    if (folder.empty()) {
      error_ = "cannot find where Graphviz's libgvc lies";
      return;
    }
    for (size_t i = 0; i < kPluginCount; ++i) {
      const std::string path =
          folder + "graphviz/" + kPlugins[i].stem + ".so." + VEKZOL_GRAPHVIZ_PLUGIN_VERSION;
      std::string why;
      void* description = LoadLibrarySymbol(path, kPlugins[i].symbol, why);
      if (description == nullptr) {
        error_ = "cannot load Graphviz's plugin " + path + ": " + why;
        return;
      }
      symbols_[i] = lt_symlist_t{kPlugins[i].symbol, description};
    }
    symbols_[kPluginCount] = lt_symlist_t{nullptr, nullptr};
  }

  const std::string& Error() const { return error_; }
  const lt_symlist_t* Symbols() const { return symbols_; }

 private:
  lt_symlist_t symbols_[kPluginCount + 1] = {};
  std::string error_;
};

// Graphviz's messages of this run. Graphviz reports through one
// process-wide function; the tool lays out one graph at a time.
std::string& Messages() {
  static std::string messages;
  return messages;
}

int CollectMessage(char* message) {
  Messages() += message;
  return 0;
}

// Graphviz's errors (not its warnings) go to Messages() while it lives.
class MessageCapture {
 public:
  MessageCapture() : level_(agseterr(AGERR)), function_(agseterrf(&CollectMessage)) {
    Messages().clear();
  }
  ~MessageCapture() {
    agseterrf(function_);
    agseterr(level_);
  }
  MessageCapture(const MessageCapture&) = delete;
  MessageCapture& operator=(const MessageCapture&) = delete;

 private:
  agerrlevel_t level_;
  agusererrf function_;
};

[[noreturn]] void Fail(const std::string& what) {
  std::string message = "the drawing cannot be " + what;
  std::string said = Messages();
  while (!said.empty() && (said.back() == '\n' || said.back() == ' ')) said.pop_back();
  if (!said.empty()) message += ": Graphviz says: " + said;
  throw ToolError(message);
}

// What one layout holds, given back in the reverse order of its making.
class Layout {
 public:
  explicit Layout(const lt_symlist_t* plugins) : context_(gvContextPlugins(plugins, 0)) {}
  ~Layout() {
    if (graph_ != nullptr) {
      if (laidOut_) gvFreeLayout(context_, graph_);
      agclose(graph_);
    }
    if (context_ != nullptr) gvFreeContext(context_);
  }
  Layout(const Layout&) = delete;
  Layout& operator=(const Layout&) = delete;

  std::string Svg(const std::string& dot) {
    if (context_ == nullptr) Fail("laid out: no Graphviz context");
    graph_ = agmemread(dot.c_str());
    if (graph_ == nullptr) Fail("read as DOT");
    if (gvLayout(context_, graph_, "dot") != 0) Fail("laid out");
    laidOut_ = true;
    char* data = nullptr;
    unsigned int length = 0;
    if (gvRenderData(context_, graph_, "svg", &data, &length) != 0 || data == nullptr) {
      if (data != nullptr) gvFreeRenderData(data);
      Fail("drawn as SVG");
    }
    std::string svg;
    try {
      svg.assign(data, length);
    } catch (...) {
      gvFreeRenderData(data);
      throw;
    }
    gvFreeRenderData(data);
    return svg;
  }

 private:
  GVC_t* context_;
  Agraph_t* graph_ = nullptr;
  bool laidOut_ = false;
};

}  // namespace

std::string LayOutSvg(const std::string& dot) {
  static const Plugins plugins;
  if (!plugins.Error().empty()) throw ToolError(plugins.Error());
  MessageCapture capture;
  Layout layout(plugins.Symbols());
  return layout.Svg(dot);
}

}  // namespace vekzol_tool
