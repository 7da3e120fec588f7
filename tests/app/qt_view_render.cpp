// The view's pictures: small mines built in code are rendered off screen in plan, iso, long
// section and edge-on, with levels, layers, selections and data text, and compared with the
// reference pictures beside this file. Also the view window itself, its rotation button and the
// picture export.
#include "app/export_image.h"
#include "app/rotator_button.h"
#include "files/network_file.h"
#include "tests/app/qt_test_support.h"
#include "tools/mine_generator.h"
#include "view/drawing.h"
#include "view/labels.h"
#include "view/qt/view_image.h"

using namespace galeris;
using test::LitPixels;

namespace {

const QSize kPictureSize(480, 360);

void CompareWithReference(const QImage& picture, const QString& name) {
  QVERIFY2(LitPixels(picture) > 500, qPrintable(name + " is empty"));
  // Anti-aliased glyph edges differ between font builds: 60 per channel on 0.4% of pixels.
  test::CompareWithReference(picture, "tests/app/view_reference/" + name.toStdString() + ".png", 60,
                             0.004);
}

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
    Network& n = ws.net;
    n.BranchCode[Add(1000, 1000, 1000, 1000, 1000, 900, "Intake shaft", "SURF", "S900", 60)] |=
        1024;
    Add(1000, 1000, 900, 1400, 1000, 900, "900 East drive", "S900", "E900", 40);
    const int door = Add(1400, 1000, 900, 1400, 1300, 900, "900 crosscut", "E900", "X900", 40);
    n.ResType[door] = 2;
    n.Resistance[door] = 10;
    Add(1000, 1000, 900, 1000, 1000, 800, "Shaft bottom", "S900", "S800", 20);
    Add(1000, 1000, 800, 1500, 1100, 800, "800 drive", "S800", "E800", 20);
    const int stope = Add(1500, 1100, 800, 1400, 1300, 900, "Stope raise", "E800", "X900", 20);
    n.SecondLayer[stope] = 2;
    n.SmokeData[stope][1] = 1;
    const int back = Add(1400, 1300, 900, 1700, 1300, 900, "Return drive", "X900", "R900", 60);
    n.BranchCode[back] |= 512;
    n.SecondLayer[back] = 2;
    const int fan = Add(1700, 1300, 900, 1700, 1300, 1000, "Exhaust shaft", "R900", "SURF", 60);
    n.BranchCode[fan] |= 512;
    n.FanNumber[fan] = 1;
    n.FanSlot[fan] = n.Pressure[fan] = 1200;
    n.BranchCode[Add(1000, 1000, 800, 900, 1300, 800, "Workshop", "S800", "W800", 5)] |=
        Bit::ContaminantSource;
    n.TextUsed[1] = -1;
    n.TextString[1] = "Main fan";
    n.TextCoord[1] = {0, 1720, 1340, 1000};
  }

  int Add(int x1, int y1, int z1, int x2, int y2, int z2, const char* name, const char* from,
          const char* to, float quantity) {
    const int i = test::AddAirway(ws.net, x1, y1, z1, x2, y2, z2);
    Network& n = ws.net;
    n.EntryNodeId[i] = NodeKey(x1, y1, z1);
    n.ExitNodeId[i] = NodeKey(x2, y2, z2);
    n.Length[i] = static_cast<float>(std::hypot(double(x2 - x1), double(y2 - y1), double(z2 - z1)));
    n.BranchName[i] = name;
    n.EntryNodeName[i] = from;
    n.ExitNodeName[i] = to;
    n.Quantity[i] = quantity;
    n.PrimaryLayer[i] = n.SecondLayer[i] = 1;
    n.AirwayNo[i] = 100 + i;
    return i;
  }

  // A view of this mine fitted to the picture, after the changes made by `setUp`.
  ViewState FittedView(const std::function<void(Workspace&, ViewState&)>& setUp, int slot = 0) {
    ViewState view = MakeViewState(ws);
    view.PixelWidth = kPictureSize.width();
    view.PixelHeight = kPictureSize.height();
    view.AspectRatio = float(view.PixelHeight) / float(view.PixelWidth);
    view.DisplayBits = Show::NodeNames | Show::AirwayNames | Show::DataValues |
                       Show::ResistanceSymbols | Show::FanSymbols | Show::NodeSymbols |
                       Show::Arrows | Show::Contaminants | Show::FloatingText;
    setUp(ws, view);
    BuildVisibleList(ws, view);
    if (slot != 0) LoadViewSlot(ws, view, slot);
    ProjectNetwork(ws, view);
    FitNetwork(ws, view);
    return view;
  }

  HeadlessUi ui;
  Workspace ws;
};

// A shown view window of the mine.
struct Window : Mine {
  Window() : window(ws) {
    window.resize(400, 300);
    window.show();
  }
  FrmWindow window;
  RotatorButton rotator{[this] { return &window; }};
};

}  // namespace

class ViewRenderTest : public QObject {
  Q_OBJECT
 private slots:
  void PicturesMatchTheirReferences() {
    struct Case {
      QString name;
      int slot;   // a saved view to load, 0 for plan
      int kind;   // ViewKind: 0 plan, 1 3-D, 2 edge-on
      int level;  // a level chosen after the fit, 0 for none
      std::function<void(Workspace&, ViewState&)> setUp;
    };
    std::vector<Case> cases = {
        {"plan_all_levels", 0, 0, 0, [](Workspace&, ViewState&) {}},
        {"plan_single_level", 0, 0, 2, [](Workspace&, ViewState&) {}},
        {"plan_multiple_levels", 0, 0, 0,
         [](Workspace&, ViewState& v) {
           v.LevelMode = LevelModeOf::Multiple;
           v.SelectedLevels = {2, 3};
         }},
        {"iso_view", 5, 1, 0, [](Workspace&, ViewState&) {}},
        {"long_section", 3, 2, 0, [](Workspace& ws, ViewState&) { ws.defaults.GridSpacing = 50; }},
        {"cross_section", 4, 2, 0,
         [](Workspace& ws, ViewState&) {
           ws.net.AxisSignY = -1;
           MakePermanentViews(ws.net);  // the edge-on slot mirrors its tilt
         }},
        {"plan_grid", 0, 0, 0,
         [](Workspace& ws, ViewState& v) {
           ws.defaults.GridSpacing = 100;
           v.GridOn = true;
         }},
        {"dim_layers", 0, 0, 0,
         [](Workspace& ws, ViewState& v) {
           ws.net.SecondLayerShow[2] = 0;
           v.DisplayFlags = LineOpt::Dim;
         }},
        {"invisible_layers", 0, 0, 0,
         [](Workspace& ws, ViewState& v) {
           ws.net.SecondLayerShow[2] = 0;
           v.DisplayFlags = LineOpt::Invisible;
         }},
        {"selected_problem", 0, 0, 0, [](Workspace& ws, ViewState&) {
           ws.net.BranchCode[2] |= Bit::Selected;
           ws.net.BranchCode[5] |= Bit::ErrorMark;
           ws.net.Comment[5] = "check it";
         }}};
    for (const auto& [tag, type] : {std::pair{"velocity", DataType::Velocity},
                                    {"dimensions", DataType::Dimensions},
                                    {"boost", DataType::Boost},
                                    {"airway_number", DataType::AirwayNumber},
                                    {"node_coordinates", DataType::Coordinates}})
      cases.push_back({QString("data_") + tag, 0, 0, 0, [type](Workspace&, ViewState& v) {
                         v.DataTypeCode = static_cast<std::int16_t>(type);
                         v.DisplayBits = Show::DataValues | Show::FanSymbols;
                       }});
    for (const Case& c : cases) {
      Mine mine;
      ViewState view = mine.FittedView(c.setUp, c.slot);
      if (c.level != 0) SelectLevel(mine.ws, view, c.level);
      QVERIFY2(ViewKind(view) == c.kind, qPrintable(c.name));
      if (c.name == "invisible_layers") QCOMPARE(view.VisibleCount, 7);
      if (c.name == "cross_section") QVERIFY(view.TiltAngle < 0);
      CompareWithReference(RenderViewImage(mine.ws, view, kPictureSize), c.name);
    }
  }

  // A mine of 5 000 airways at fit scale: without declutter the circles and texts run into a
  // solid block; with it every node, symbol and text that stands has its own place.
  void LargeMineAtFitScaleWithAndWithoutDeclutter() {
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

  void ViewWindowPaintsFollowsItsSizeAndKeepsItsSlot() {
    Window w;
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    const float width = w.window.View().ScaleWidth;
    QVERIFY(LitPixels(w.window.grab().toImage()) > 500);
    w.window.resize(400, 600);
    QCoreApplication::processEvents();
    QCOMPARE(w.window.View().ScaleWidth, width);
    QCOMPARE(w.window.View().AspectRatio, 1.5f);
    QVERIFY(std::fabs(w.window.View().ScaleHeight - width * 1.5f) < 1e-2f);
    // Levels, views, data and rotation, and the window's own slot.
    const ViewState& view = w.window.View();
    w.window.SetLevel(3);
    QCOMPARE(w.window.windowTitle(), QString("View 0 : 800 Level (RL 780 to 820)"));
    w.window.ToggleLevels();
    QCOMPARE(view.LevelMode, LevelModeOf::All);
    w.window.SetThreeD(true);
    QVERIFY(w.window.ApplyView(" 5. Iso View"));
    QCOMPARE(view.Is3D, std::int16_t{1});
    w.window.SetDataType(DataType::AirwayNumber);
    QCOMPARE(view.DataTypeCode, std::int16_t{52});
    w.window.BeginRotation();
    QVERIFY(w.window.RotateStep(10, 28));
    w.window.EndRotation();
    QVERIFY(view.SpinAngle > 0);

    // The window's state goes to its own slot, 100 + its position, and comes back from it.
    w.window.SetWindowNumber(2);
    w.window.SetLevel(2);
    w.window.StoreState();
    QCOMPARE(w.ws.net.ViewValue[kWindowSlotBase + 1][5], view.ScaleWidth);
    w.window.ToggleLevels();
    w.window.RestoreState();
    QCOMPARE(view.LevelMode, LevelModeOf::Single);
    QCOMPARE(view.LevelTop, 920.0f);
  }

  void ExportPictureAndItsCommand() {
    Mine mine;
    const ViewState view = mine.FittedView([](Workspace&, ViewState&) {});
    const std::string folder = test::ScratchDir();
    const QString path = QString::fromStdString(folder) + "plan.png";
    QVERIFY(ExportPicture(mine.ws, view, path, QSize(320, 200)));
    QCOMPARE(QImage(path).size(), QSize(320, 200));
    QVERIFY(!ExportPicture(mine.ws, view, "/nonexistent/folder/plan.png", QSize(320, 200)));
    QCOMPARE(mine.ui.MessageTexts().size(), std::size_t{1});

    mine.ws.net.FileName = folder + "mine.sim";
    QVERIFY(SaveNetwork(mine.ws));
    const std::string out = folder + "iso.png";
    const auto run = [](std::vector<std::string> arguments) {
      arguments.insert(arguments.begin(), {"galeris", "--export-image"});
      std::vector<char*> argv;
      for (std::string& a : arguments) argv.push_back(a.data());
      const int argc = static_cast<int>(argv.size());
      return IsExportImageCommand(argc, argv.data()) ? RunExportImage(argc, argv.data()) : -1;
    };
    QCOMPARE(
        run({out, mine.ws.net.FileName, "--view", "Iso View", "--size", "400x300", "--data", "13"}),
        0);
    const QImage written(QString::fromStdString(out));
    QCOMPARE(written.size(), QSize(400, 300));
    QCOMPARE(run({out, "missing.sim", "--size", "12by9"}), 1);
    std::string program = "galeris", network = "missing.sim";
    char* plain[] = {program.data(), network.data()};
    QVERIFY(!IsExportImageCommand(2, plain));
  }

  // The rotation button: held left of centre it spins the active view into 3-D and a left
  // release stops it; a right release leaves it spinning; with no window it does not turn.
  void RotatorSpinsWhileHeldOrAfterARightRelease() {
    Window w;
    RotatorButton& rotator = w.rotator;
    rotator.show();
    QTest::mousePress(&rotator, Qt::LeftButton, {}, QPoint(7, 28));  // left of centre
    QTRY_VERIFY_WITH_TIMEOUT(w.window.View().SpinAngle != 0, 2000);
    QVERIFY(w.window.View().Is3D != 0);
    QCOMPARE(w.window.View().TiltAngle, 0.0f);  // on the centre line: no tilt
    QTest::mouseRelease(&rotator, Qt::LeftButton, {}, QPoint(7, 28));
    QVERIFY(!rotator.Turning());
    QTest::mousePress(&rotator, Qt::RightButton, {}, QPoint(40, 10));
    QTest::mouseRelease(&rotator, Qt::RightButton, {}, QPoint(40, 10));
    const float spin = w.window.View().SpinAngle;
    QTRY_VERIFY_WITH_TIMEOUT(w.window.View().SpinAngle != spin, 2000);
    QTest::mouseClick(&rotator, Qt::LeftButton, {}, QPoint(22, 28));
    QVERIFY(!rotator.Turning());
    RotatorButton lonely([] { return static_cast<FrmWindow*>(nullptr); });
    lonely.show();
    QTest::mousePress(&lonely, Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(!lonely.Turning());
  }
};

QTEST_MAIN(ViewRenderTest)
#include "qt_view_render.moc"
