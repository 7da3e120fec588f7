// The view's pictures: small mines built in code are rendered off screen in plan, iso, long
// section and edge-on, with levels, layers, selections and data text, and compared with the
// reference pictures beside this file (GALERIS_UPDATE_REFERENCES=1 writes them anew). Also the
// view window itself and the picture export.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QtTest>
#include <cmath>
#include <functional>
#include <memory>

#include "app/export_image.h"
#include "app/frm_window.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/network_file.h"
#include "tests/support/test_support.h"
#include "tools/mine_generator.h"
#include "view/drawing.h"
#include "view/labels.h"
#include "view/qt/view_image.h"
#include "view/view_state.h"

using namespace galeris;

namespace {

const QSize kPictureSize(480, 360);
constexpr int kChannelTolerance = 60;      // anti-aliased glyph edges differ between font builds
constexpr double kDifferingShare = 0.004;  // share of pixels allowed beyond that tolerance

struct Mine {
  Mine() : ws(ui) {
    ws.net.MaxAirways = 100;
    ResizeStore(ws.net);
    ws.units = BuiltInUnits();
    for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
    for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
    ws.net.RLCount = 3;
    ws.net.RLName[1] = "SURFACE";
    ws.net.RLBound[1] = {0, 1100, 1000};
    ws.net.RLName[2] = "900 Level";
    ws.net.RLBound[2] = {0, 920, 880};
    ws.net.RLName[3] = "800 Level";
    ws.net.RLBound[3] = {0, 820, 780};
    MakePermanentViews(ws.net);

    const int intake = Add(1000, 1000, 1000, 1000, 1000, 900, "Intake shaft", "SURF", "S900", 60);
    ws.net.BranchCode[intake] |= 1024;
    Add(1000, 1000, 900, 1400, 1000, 900, "900 East drive", "S900", "E900", 40);
    const int door = Add(1400, 1000, 900, 1400, 1300, 900, "900 crosscut", "E900", "X900", 40);
    ws.net.ResType[door] = 2;
    ws.net.Resistance[door] = 10;
    Add(1000, 1000, 900, 1000, 1000, 800, "Shaft bottom", "S900", "S800", 20);
    Add(1000, 1000, 800, 1500, 1100, 800, "800 drive", "S800", "E800", 20);
    const int stope = Add(1500, 1100, 800, 1400, 1300, 900, "Stope raise", "E800", "X900", 20);
    ws.net.SecondLayer[stope] = 2;
    ws.net.SmokeData[stope][1] = 1;
    const int exhaustDrive =
        Add(1400, 1300, 900, 1700, 1300, 900, "Return drive", "X900", "R900", 60);
    ws.net.BranchCode[exhaustDrive] |= 512;
    ws.net.SecondLayer[exhaustDrive] = 2;
    const int fan = Add(1700, 1300, 900, 1700, 1300, 1000, "Exhaust shaft", "R900", "SURF", 60);
    ws.net.BranchCode[fan] |= 512;
    ws.net.FanNumber[fan] = 1;
    ws.net.FanSlot[fan] = 1200;
    ws.net.Pressure[fan] = 1200;
    const int source = Add(1000, 1000, 800, 900, 1300, 800, "Workshop", "S800", "W800", 5);
    ws.net.BranchCode[source] |= Bit::ContaminantSource;
    ws.net.TextUsed[1] = -1;
    ws.net.TextString[1] = "Main fan";
    ws.net.TextCoord[1] = {0, 1720, 1340, 1000};
  }

  int Add(int x1, int y1, int z1, int x2, int y2, int z2, const char* name, const char* from,
          const char* to, float quantity) {
    const int i = test::AddAirway(ws.net, x1, y1, z1, x2, y2, z2);
    Network& n = ws.net;
    n.EntryNodeId[i] = NodeKey(x1, y1, z1);
    n.ExitNodeId[i] = NodeKey(x2, y2, z2);
    const double dx = x2 - x1, dy = y2 - y1, dz = z2 - z1;
    n.Length[i] = static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
    n.BranchName[i] = name;
    n.EntryNodeName[i] = from;
    n.ExitNodeName[i] = to;
    n.Quantity[i] = quantity;
    n.PrimaryLayer[i] = 1;
    n.SecondLayer[i] = 1;
    n.AirwayNo[i] = 100 + i;
    n.ParallelCount[i] = 1;
    return i;
  }

  // A view of this mine fitted to the picture, after the changes made by `setUp`.
  ViewState FittedView(const std::function<void(ViewState&)>& setUp, int slot = 0) {
    ViewState view = MakeViewState(ws);
    view.PixelWidth = kPictureSize.width();
    view.PixelHeight = kPictureSize.height();
    view.AspectRatio = float(view.PixelHeight) / float(view.PixelWidth);
    view.DisplayBits = Show::NodeNames | Show::AirwayNames | Show::DataValues |
                       Show::ResistanceSymbols | Show::FanSymbols | Show::NodeSymbols |
                       Show::Arrows | Show::Contaminants | Show::FloatingText;
    setUp(view);
    BuildVisibleList(ws, view);
    if (slot != 0) LoadViewSlot(ws, view, slot);
    ProjectNetwork(ws, view);
    FitNetwork(ws, view);
    return view;
  }

  HeadlessUi ui;
  Workspace ws;
};

QString ReferencePath(const QString& name) {
  return QString::fromStdString(test::SourcePath("tests/app/view_reference/")) + name + ".png";
}

// Share of pixels whose channels differ by more than the tolerance; 1 for a size mismatch.
double DifferingShare(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return 1;
  const QImage x = a.convertToFormat(QImage::Format_RGB32);
  const QImage y = b.convertToFormat(QImage::Format_RGB32);
  qint64 differing = 0;
  for (int row = 0; row < x.height(); ++row) {
    const QRgb* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
    const QRgb* q = reinterpret_cast<const QRgb*>(y.constScanLine(row));
    for (int col = 0; col < x.width(); ++col) {
      if (std::abs(qRed(p[col]) - qRed(q[col])) > kChannelTolerance ||
          std::abs(qGreen(p[col]) - qGreen(q[col])) > kChannelTolerance ||
          std::abs(qBlue(p[col]) - qBlue(q[col])) > kChannelTolerance) {
        ++differing;
      }
    }
  }
  return double(differing) / (double(x.width()) * x.height());
}

int LitPixels(const QImage& image) {
  int lit = 0;
  const QImage x = image.convertToFormat(QImage::Format_RGB32);
  for (int row = 0; row < x.height(); ++row) {
    const QRgb* p = reinterpret_cast<const QRgb*>(x.constScanLine(row));
    for (int col = 0; col < x.width(); ++col) lit += (p[col] & 0xFFFFFF) != 0;
  }
  return lit;
}

void CompareWithReference(const QImage& picture, const QString& name) {
  QVERIFY(!picture.isNull());
  QVERIFY2(LitPixels(picture) > 500, qPrintable(name + " is empty"));
  const QString scratch = QString::fromStdString(test::ScratchDir());
  picture.save(scratch + name + ".png");
  const QString reference = ReferencePath(name);
  if (qEnvironmentVariable("GALERIS_UPDATE_REFERENCES") == "1") {
    QVERIFY(picture.save(reference));
    return;
  }
  const QImage expected(reference);
  QVERIFY2(!expected.isNull(), qPrintable("no reference picture " + reference +
                                          " (run with GALERIS_UPDATE_REFERENCES=1)"));
  const double share = DifferingShare(picture, expected);
  QVERIFY2(share <= kDifferingShare,
           qPrintable(QString("%1 differs from its reference in %2% of pixels; see %3")
                          .arg(name)
                          .arg(share * 100, 0, 'f', 2)
                          .arg(scratch + name + ".png")));
}

}  // namespace

class ViewRenderTest : public QObject {
  Q_OBJECT
 private slots:
  void PlanOfAllLevels();
  void SingleLevelPlan();
  void MultipleLevelPlan();
  void IsoView();
  void LongSectionShowsTheLevelScale();
  void CrossSectionEdgeOn();
  void PlanWithGrid();
  void DimLayers();
  void InvisibleLayers();
  void SelectedAndProblemAirways();
  void DataTextOfSeveralTypes_data();
  void DataTextOfSeveralTypes();
  void ColoursFollowTheNetworksTable();
  void ViewWindowPaintsAndFollowsItsSize();
  void ViewWindowLevelsAndViews();
  void ExportPictureWritesTheFile();
  void ExportCommandRefusesBadArguments();
  void ExportCommandRendersASavedNetwork();
  void WindowStateGoesToItsSlot();
  void LargeMineAtFitScaleWithAndWithoutDeclutter();
};

void ViewRenderTest::PlanOfAllLevels() {
  Mine mine;
  const ViewState view = mine.FittedView([](ViewState&) {});
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "plan_all_levels");
}

void ViewRenderTest::SingleLevelPlan() {
  Mine mine;
  ViewState view = mine.FittedView([](ViewState&) {});
  SelectLevel(mine.ws, view, 2);
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "plan_single_level");
}

void ViewRenderTest::MultipleLevelPlan() {
  Mine mine;
  const ViewState view = mine.FittedView([](ViewState& v) {
    v.LevelMode = LevelModeOf::Multiple;
    v.SelectedLevels = {2, 3};
  });
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "plan_multiple_levels");
}

void ViewRenderTest::IsoView() {
  Mine mine;
  const ViewState view = mine.FittedView([](ViewState&) {}, 5);
  QCOMPARE(ViewKind(view), 1);
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "iso_view");
}

void ViewRenderTest::LongSectionShowsTheLevelScale() {
  Mine mine;
  mine.ws.defaults.GridSpacing = 50;
  const ViewState view = mine.FittedView([](ViewState&) {}, 3);
  QCOMPARE(ViewKind(view), 2);
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "long_section");
}

void ViewRenderTest::CrossSectionEdgeOn() {
  Mine mine;
  mine.ws.net.AxisSignY = -1;
  MakePermanentViews(mine.ws.net);
  const ViewState view = mine.FittedView([](ViewState&) {}, 4);
  QCOMPARE(ViewKind(view), 2);
  QVERIFY(view.TiltAngle < 0);
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "cross_section");
}

void ViewRenderTest::PlanWithGrid() {
  Mine mine;
  mine.ws.defaults.GridSpacing = 100;
  const ViewState view = mine.FittedView([](ViewState& v) { v.GridOn = true; });
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "plan_grid");
}

void ViewRenderTest::DimLayers() {
  Mine mine;
  mine.ws.net.SecondLayerShow[2] = 0;
  const ViewState view = mine.FittedView([](ViewState& v) { v.DisplayFlags = LineOpt::Dim; });
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "dim_layers");
}

void ViewRenderTest::InvisibleLayers() {
  Mine mine;
  mine.ws.net.SecondLayerShow[2] = 0;
  const ViewState view = mine.FittedView([](ViewState& v) { v.DisplayFlags = LineOpt::Invisible; });
  QCOMPARE(view.VisibleCount, 7);
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "invisible_layers");
}

void ViewRenderTest::SelectedAndProblemAirways() {
  Mine mine;
  mine.ws.net.BranchCode[2] |= Bit::Selected;
  mine.ws.net.BranchCode[5] |= Bit::ErrorMark;
  mine.ws.net.Comment[5] = "check it";
  const ViewState view = mine.FittedView([](ViewState&) {});
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), "selected_problem");
}

void ViewRenderTest::DataTextOfSeveralTypes_data() {
  QTest::addColumn<int>("dataType");
  QTest::newRow("velocity") << DataType::Velocity;
  QTest::newRow("dimensions") << DataType::Dimensions;
  QTest::newRow("boost") << DataType::Boost;
  QTest::newRow("airway_number") << DataType::AirwayNumber;
  QTest::newRow("node_coordinates") << DataType::Coordinates;
}

void ViewRenderTest::DataTextOfSeveralTypes() {
  QFETCH(int, dataType);
  Mine mine;
  const ViewState view = mine.FittedView([dataType](ViewState& v) {
    v.DataTypeCode = static_cast<std::int16_t>(dataType);
    v.DisplayBits = Show::DataValues | Show::FanSymbols;
  });
  CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize),
                       QString("data_%1").arg(QTest::currentDataTag()));
}

void ViewRenderTest::ColoursFollowTheNetworksTable() {
  Mine mine;
  for (int k = 1; k <= 8; ++k) mine.ws.defaults.ColourTable[k] = RGBColour(0, 0, 200);
  const ViewState view = mine.FittedView([](ViewState& v) { v.DisplayBits = 0; });
  const QImage picture = RenderViewImage(mine.ws, view, kPictureSize);
  bool sawBlue = false;
  for (int y = 0; y < picture.height() && !sawBlue; ++y) {
    for (int x = 0; x < picture.width() && !sawBlue; ++x) {
      sawBlue = picture.pixel(x, y) == qRgb(0, 0, 200);
    }
  }
  QVERIFY(sawBlue);
}

void ViewRenderTest::ViewWindowPaintsAndFollowsItsSize() {
  Mine mine;
  FrmWindow window(mine.ws);
  window.resize(400, 300);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  QVERIFY(window.View().AirwayLineCount > 0);
  const float width = window.View().ScaleWidth;
  QVERIFY(LitPixels(window.grab().toImage()) > 500);
  window.resize(400, 600);
  QCoreApplication::processEvents();
  QCOMPARE(window.View().ScaleWidth, width);
  QCOMPARE(window.View().AspectRatio, 1.5f);
  QVERIFY(std::fabs(window.View().ScaleHeight - width * 1.5f) < 1e-2f);
}

void ViewRenderTest::ViewWindowLevelsAndViews() {
  Mine mine;
  FrmWindow window(mine.ws);
  window.resize(400, 300);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  window.SetLevel(3);
  QCOMPARE(window.windowTitle(), QString("View 0 : 800 Level (RL 780 to 820)"));
  QCOMPARE(window.View().VisibleCount, 4);
  window.ToggleLevels();
  QCOMPARE(window.View().LevelMode, LevelModeOf::All);
  window.SetThreeD(true);
  QVERIFY(window.ApplyView(" 5. Iso View"));
  QCOMPARE(window.View().SpinAngle, 2 * kPi - 0.391f);
  window.SetThreeD(false);
  QCOMPARE(window.View().Is3D, std::int16_t{0});
  window.SetDataType(DataType::AirwayNumber);
  QCOMPARE(window.View().DataTypeCode, std::int16_t{52});
  window.BeginRotation();
  QVERIFY(window.RotateStep(10, 28));
  window.EndRotation();
  QVERIFY(window.View().SpinAngle > 0);
  QVERIFY(mine.ui.MessageTexts().empty());
}

void ViewRenderTest::ExportPictureWritesTheFile() {
  Mine mine;
  const ViewState view = mine.FittedView([](ViewState&) {});
  const QString path = QString::fromStdString(test::ScratchDir()) + "plan.png";
  QVERIFY(ExportPicture(mine.ws, view, path, QSize(320, 200)));
  const QImage written(path);
  QCOMPARE(written.size(), QSize(320, 200));
  QVERIFY(!ExportPicture(mine.ws, view, "/nonexistent/folder/plan.png", QSize(320, 200)));
  QCOMPARE(mine.ui.MessageTexts().size(), std::size_t{1});
}

void ViewRenderTest::ExportCommandRefusesBadArguments() {
  const QString out = QString::fromStdString(test::ScratchDir()) + "x.png";
  QByteArray program("galeris"), option("--export-image"), file(out.toUtf8()),
      network("missing.sim"), size("--size"), badSize("12by9");
  char* tooShort[] = {program.data(), option.data(), file.data()};
  QVERIFY(IsExportImageCommand(3, tooShort));
  QCOMPARE(RunExportImage(3, tooShort), 1);
  char* badSizeArgs[] = {program.data(), option.data(), file.data(),
                         network.data(), size.data(),   badSize.data()};
  QCOMPARE(RunExportImage(6, badSizeArgs), 1);
  char* plain[] = {program.data(), network.data()};
  QVERIFY(!IsExportImageCommand(2, plain));
}

void ViewRenderTest::ExportCommandRendersASavedNetwork() {
  Mine mine;
  const std::string folder = test::ScratchDir();
  mine.ws.net.FileName = folder + "mine.sim";
  QVERIFY(SaveNetwork(mine.ws));
  const QString out = QString::fromStdString(folder) + "iso.png";
  QByteArray program("galeris"), option("--export-image"), file(out.toUtf8()),
      network(mine.ws.net.FileName.c_str()), view("--view"), iso("Iso View"), size("--size"),
      wxh("400x300"), data("--data"), velocity("13");
  char* args[] = {program.data(), option.data(), file.data(), network.data(), view.data(),
                  iso.data(),     size.data(),   wxh.data(),  data.data(),    velocity.data()};
  QCOMPARE(RunExportImage(10, args), 0);
  const QImage written(out);
  QCOMPARE(written.size(), QSize(400, 300));
  QVERIFY(LitPixels(written) > 500);

  QByteArray unknown("Nowhere");
  char* badView[] = {program.data(), option.data(), file.data(),
                     network.data(), view.data(),   unknown.data()};
  QCOMPARE(RunExportImage(6, badView), 1);
}

void ViewRenderTest::WindowStateGoesToItsSlot() {
  Mine mine;
  FrmWindow window(mine.ws);
  window.resize(400, 300);
  window.show();
  QVERIFY(QTest::qWaitForWindowExposed(&window));
  window.SetWindowNumber(2);
  window.SetLevel(2);
  const float width = window.View().ScaleWidth;
  window.StoreState();
  QCOMPARE(mine.ws.net.ViewValue[kWindowSlotBase + 2][5], width);
  window.ToggleLevels();
  window.RestoreState();
  QCOMPARE(window.View().LevelMode, LevelModeOf::Single);
  QCOMPARE(window.View().LevelTop, 920.0f);
}

// A mine of 5 000 airways at fit scale: without declutter the circles and texts run into a
// solid block; with it every node, symbol and text that stands has its own place.
void ViewRenderTest::LargeMineAtFitScaleWithAndWithoutDeclutter() {
  HeadlessUi ui;
  Workspace ws(ui);
  ws.units = BuiltInUnits();
  GenerateMine(ws, 5000);
  for (int n = 1; n <= kPrimaryLayers; ++n) ws.net.PrimaryLayerShow[n] = -1;
  for (int n = 1; n <= kSecondLayers; ++n) ws.net.SecondLayerShow[n] = -1;
  const QSize size(800, 600);
  ViewState view = MakeViewState(ws);
  view.PixelWidth = size.width();
  view.PixelHeight = size.height();
  view.DisplayBits = 0x1FF;
  BuildVisibleList(ws, view);
  FitNetwork(ws, view);
  const QImage cluttered = RenderViewImage(ws, view, size);
  CompareWithReference(cluttered, "large_mine_cluttered");
  view.Declutter = true;
  const QImage decluttered = RenderViewImage(ws, view, size);
  CompareWithReference(decluttered, "large_mine_decluttered");
  QVERIFY(LitPixels(decluttered) < LitPixels(cluttered));
}

QTEST_MAIN(ViewRenderTest)
#include "qt_view_render.moc"
