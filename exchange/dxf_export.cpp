// The DXF writer: every item is two lines, group code then value, each ending CR LF.
#include "exchange/dxf_export.h"

#include <charconv>
#include <cmath>
#include <ctime>
#include <unordered_set>

#include "exchange/text_exchange.h"
#include "files/text_format.h"
#include "files/whole_file.h"
#include "view/drawing.h"
#include "view/labels.h"

namespace galeris {
namespace {

constexpr float kArrowSpread = 0.3f;  // radians either side of the airway, as on screen
constexpr float kArrowShare = 0.3f;   // the head is at most this share of the airway
constexpr int kColourOther = 7, kColourFresh = 3, kColourExhaust = 1;

struct Point {
  double x = 0, y = 0, z = 0;
};

class DxfWriter {
 public:
  explicit DxfWriter(std::string& out) : out_(out) {}

  void Group(int code, std::string_view value) {
    Code(code);
    out_ += value;
    out_ += "\r\n";
  }
  void Group(int code, double value) {
    Code(code);
    char buffer[32];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, value == 0 ? 0.0 : value);
    out_.append(buffer, r.ptr);
    out_ += "\r\n";
  }
  void Line(const char* layer, int colour, const Point& a, const Point& b) {
    Group(0, "LINE");
    Group(8, layer);
    Group(62, std::to_string(colour));
    Place(a, 10);
    Place(b, 11);
  }
  void Circle(const char* layer, const Point& centre, double radius) {
    Group(0, "CIRCLE");
    Group(8, layer);
    Place(centre, 10);
    Group(40, radius);
  }
  void Text(const char* layer, const Point& at, double height, std::string_view text) {
    if (text.empty()) return;
    Group(0, "TEXT");
    Group(8, layer);
    Place(at, 10);
    Group(40, height);
    std::string line(text);
    for (char& c : line) {
      if (static_cast<unsigned char>(c) < ' ') c = ' ';  // one line of text per item
    }
    Group(1, line);
  }

 private:
  void Code(int code) {
    char buffer[8];
    const auto r = std::to_chars(buffer, buffer + sizeof buffer, code);
    out_.append(buffer, r.ptr);
    out_ += "\r\n";
  }
  void Place(const Point& p, int first) {
    Group(first, p.x);
    Group(first + 10, p.y);
    Group(first + 20, p.z);
  }
  std::string& out_;
};

// Where the export puts world and view points.
class Placement {
 public:
  Placement(const Workspace& ws, const ViewState& view, bool screen)
      : ws_(ws), view_(view), screen_(screen) {}

  Point World(const Coord3& c) const {
    if (!screen_) return {Length(c[1]), Length(c[2]), Length(c[3])};
    float x = 0, y = 0;
    ProjectPoint(view_, c[1], c[2], c[3], x, y);
    return Screen(x + view_.PanX, y + view_.PanY);
  }
  Point End(int i, bool exit) const {
    const Coord3& c = exit ? ws_.net.Coord2[i] : ws_.net.Coord1[i];
    if (!screen_) return World(c);
    // A plan view draws the coordinates themselves; a 3-D view its projection, perspective
    // included.
    if (view_.Is3D == 0) return Screen(static_cast<float>(c[1]), static_cast<float>(c[2]));
    const ViewPoint& v = exit ? ws_.net.ViewEnd2[i] : ws_.net.ViewEnd1[i];
    return Screen(v[0], v[1]);
  }
  // A size on the view's scale, in the units of the file.
  double Size(double worldUnits) const { return screen_ ? worldUnits : Length(worldUnits); }

 private:
  double Length(double stored) const { return ToDisplay(ws_.units, stored, Unit::Length); }
  // A projected point as the window draws it, with the window's downward Y turned upward.
  Point Screen(float viewX, float viewY) const {
    const Network& net = ws_.net;
    return {(viewX - view_.PanX) * net.AxisSignX, -((viewY - view_.PanY) * net.AxisSignY), 0};
  }
  const Workspace& ws_;
  const ViewState& view_;
  bool screen_;
};

int ColourOf(std::int32_t code) {
  if (code & Bit::Fresh) return kColourFresh;
  if (code & Bit::Exhaust) return kColourExhaust;
  return kColourOther;
}

bool TextLayerShown(const Network& net, int layer) {
  return layer < 1 || layer > kPrimaryLayers || net.PrimaryLayerShow[layer] != 0;
}

void WriteArrow(DxfWriter& dxf, int colour, const Point& a, const Point& b, double size) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double along = std::hypot(dx, dy);
  if (along == 0) return;
  const double length = std::min(size, kArrowShare * along);
  const Point tip{(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
  const double back = std::atan2(dy, dx) + 3.141592654;
  for (const double side : {kArrowSpread, -kArrowSpread}) {
    const Point wing{tip.x + length * std::cos(back + side), tip.y + length * std::sin(back + side),
                     tip.z};
    dxf.Line("Arrow", colour, wing, tip);
  }
}

std::string TodayStamp() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char buffer[40];
  std::strftime(buffer, sizeof buffer, "%d/%m/%Y %H:%M:%S", &local);
  return buffer;
}

}  // namespace

DxfExportChoices ExportChoicesOf(const Defaults& defaults) {
  const auto& flags = defaults.ExportLayers;
  DxfExportChoices c;
  c.BranchNames = flags[0] != 0;
  c.DataValues = flags[1] != 0;
  c.Arrows = flags[2] != 0;
  c.NodeNames = flags[3] != 0;
  c.NodeCircles = flags[4] != 0;
  c.TextSize = std::clamp<int>(defaults.ExportOption, 0, 2);
  return c;
}

void StoreExportChoices(Defaults& defaults, const DxfExportChoices& c) {
  auto truth = [](bool b) { return static_cast<std::int16_t>(b ? -1 : 0); };
  defaults.ExportLayers = {truth(c.BranchNames), truth(c.DataValues), truth(c.Arrows),
                           truth(c.NodeNames), truth(c.NodeCircles)};
  defaults.ExportOption = static_cast<std::int16_t>(std::clamp(c.TextSize, 0, 2));
}

std::string FormatDxf(Workspace& ws, ViewState& view, bool screen, const DxfExportChoices& choices,
                      const std::string& stamp) {
  Network& net = ws.net;
  BuildVisibleList(ws, view);
  // The view's last projection pass stands: its angles and pan are kept, only the ends of the
  // airways in the list are projected again.
  if (screen && view.Is3D != 0) {
    for (int k = 1; k <= view.VisibleCount && net.SmokeQueue[k] != 0; ++k)
      ProjectAirway(ws, view, net.SmokeQueue[k]);
  }

  std::string out;
  out.reserve(static_cast<std::size_t>(view.VisibleCount) * 160 + 512);
  DxfWriter dxf(out);
  dxf.Group(999, kDxfBanner);
  dxf.Group(999, "       DXF Export - Created " + stamp);
  dxf.Group(999, kDxfBanner);
  dxf.Group(0, "SECTION");
  dxf.Group(2, "ENTITIES");

  const Placement place(ws, view, screen);
  const double scale = std::fabs(view.ScaleWidth);
  const double textHeight = place.Size(scale / 150 * (1 << (2 * choices.TextSize)));
  const double radius = place.Size(scale / 400);

  if (ws.defaults.ViewDetail & Show::FloatingText) {
    for (std::int16_t t : view.VisibleTexts) {
      if (!TextLayerShown(net, net.TextLayer[t])) continue;
      dxf.Text("FLOAT", place.World(net.TextCoord[t]), textHeight, net.TextString[t]);
    }
  }

  const bool nodeData = IsNodeDataType(view.DataTypeCode);
  LabelSettings labels;
  labels.SmokeState = view.SmokeState;
  labels.ResistanceSymbols = (view.DisplayBits & Show::ResistanceSymbols) != 0;
  std::unordered_set<Key> circled;
  for (int k = 1; k <= view.VisibleCount; ++k) {
    const int i = net.SmokeQueue[k];
    if (i == 0) break;
    const Point a = place.End(i, false), b = place.End(i, true);
    const Point middle{(a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2};
    const int colour = ColourOf(net.BranchCode[i]);
    dxf.Line("Branch", colour, a, b);
    if (choices.Arrows) WriteArrow(dxf, colour, a, b, textHeight);
    if (choices.NodeNames) dxf.Text("NNAMES", b, textHeight, net.ExitNodeName[i].Trimmed());
    if (choices.BranchNames) dxf.Text("BNAMES", middle, textHeight, net.BranchName[i].Trimmed());
    if (choices.DataValues && !nodeData) {
      const Point below{middle.x, middle.y - 1.5 * textHeight, middle.z};
      dxf.Text("DATA", below, textHeight, AirwayLabel(ws, view.DataTypeCode, i, 1, labels));
    }
    if (choices.NodeCircles) {
      if (circled.insert(net.EntryNodeId[i]).second) dxf.Circle("NODES", a, radius);
      if (circled.insert(net.ExitNodeId[i]).second) dxf.Circle("NODES", b, radius);
    }
  }
  dxf.Group(0, "ENDSEC");
  dxf.Group(0, "EOF");
  return out;
}

bool ExportDxf(Workspace& ws, ViewState& view, bool screen, const std::string& path) {
  return WriteWholeFile(path,
                           FormatDxf(ws, view, screen, ExportChoicesOf(ws.defaults), TodayStamp()));
}

}  // namespace galeris
