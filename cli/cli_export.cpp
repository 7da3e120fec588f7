// galeris-sim export: a network file written as a text table or as a DXF drawing, in true
// coordinates or as a saved view shows it.
#include <algorithm>
#include <cctype>
#include <ostream>

#include "cli/cli_command.h"
#include "exchange/dxf_export.h"
#include "exchange/text_exchange.h"
#include "view/drawing.h"

namespace galeris::cli {
namespace {

constexpr const char* kUsage =
    "usage: galeris-sim export IN.sim -o OUT.txt|OUT.dxf [--screen VIEWNAME]\n";

std::string Lower(std::string text) {
  for (char& ch : text) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return text;
}

bool EndsWith(const std::string& text, const std::string& ending) {
  return text.size() > ending.size() && Lower(text.substr(text.size() - ending.size())) == ending;
}

// A saved view by its name, its bare name after "n. " or its slot number; 0 when none.
int FindView(const Network& net, const std::string& wanted) {
  const std::string key = Lower(wanted);
  for (int slot = 1; slot <= kLastUserView; ++slot) {
    const std::string name = Lower(net.ViewName[slot]);
    if (name.empty()) continue;
    const std::size_t dot = name.find(". ");
    const std::string bare = dot != std::string::npos ? name.substr(dot + 2) : name;
    if (name == key || bare == key || std::to_string(slot) == key) return slot;
  }
  return 0;
}

int RunExport(CliContext& c) {
  const std::string output = TakeOption(c.args, "-o");
  const std::string viewName = TakeOption(c.args, "--screen");
  const bool dxf = EndsWith(output, ".dxf");
  if (c.args.size() != 1 || (!dxf && !EndsWith(output, ".txt")) || (!dxf && !viewName.empty())) {
    c.err << kUsage;
    return kExitBadInput;
  }
  Workspace& ws = c.ws;
  if (!LoadInput(c, c.args[0])) return kExitBadInput;
  bool written = false;
  if (!dxf) {
    written = ExportText(ws, output);
  } else {
    if (ws.net.ViewName[1].empty()) MakePermanentViews(ws.net);
    ViewState view = MakeViewState(ws);
    BuildVisibleList(ws, view);
    bool fit = true;
    if (!viewName.empty()) {
      const int slot = FindView(ws.net, viewName);
      if (slot == 0) {
        c.err << "galeris-sim: no view named " << viewName << "\n";
        return kExitBadInput;
      }
      LoadViewSlot(ws, view, slot);
      fit = slot <= kPermanentViews || ws.net.ViewValue[slot][5] == 0;
    }
    ProjectNetwork(ws, view);
    if (fit) FitNetwork(ws, view);
    written = ExportDxf(ws, view, !viewName.empty(), output);
  }
  if (!written) {
    c.err << "galeris-sim: cannot write " << output << "\n";
    return kExitFailed;
  }
  c.out << "Exported " << ws.net.BranchCount << " airways to " << output << "\n";
  return kExitOk;
}

const RegisterCommand registered({"export", "export IN.sim -o OUT.txt|OUT.dxf [--screen VIEWNAME]",
                                  "writes the airways as a text table or a DXF drawing; "
                                  "--screen draws them as the saved view shows them",
                                  RunExport});

}  // namespace
}  // namespace galeris::cli
