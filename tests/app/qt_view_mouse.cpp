// The mouse tools and the keys as the frame wires them: clicks and drags in a view window reach
// the tools, the keys of the dispatcher move the palette, F5 means Move in a view and the
// simulation elsewhere, and loads fit the windows.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>
#include <QToolButton>
#include <QtTest>
#include <cmath>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "app/tool_palette.h"
#include "app/view_mouse.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "files/lifecycle.h"
#include "tests/support/test_support.h"

using namespace galeris;

namespace {

// An intake shaft with a fixed quantity, two parallel ways and an upcast: it solves.
void AddVentilatedNetwork(Network& net) {
  const int intake = test::AddAirway(net, 0, 0, 0, 0, 0, -100);
  net.BranchCode[intake] |= Bit::ForceEntrySurface | Bit::FixedQuantity;
  net.Quantity[intake] = 50;
  test::AddAirway(net, 0, 0, -100, 1000, 0, -100);
  test::AddAirway(net, 0, 0, -100, 500, 600, -100);
  test::AddAirway(net, 500, 600, -100, 1000, 0, -100);
  const int upcast = test::AddAirway(net, 1000, 0, -100, 1000, 0, 0);
  net.BranchCode[upcast] |= Bit::ForceExitSurface;
}

// A shown, active frame with the network above and its one view window fitted and focused.
struct Frame {
  explicit Frame(UiPort& ui) : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([this](const FileDialogRequest&) { return chosen; });
    form.Load("");
    form.NewFile();
    AddVentilatedNetwork(ws.net);
    RebuildNodes(ws.net, ws.defaults, ws.ui);
    form.resize(1000, 700);
    form.show();
    form.activateWindow();
    view = form.CurrentView();
    view->Fit();
    view->setFocus();
  }
  ViewMouse& Mouse() const { return *view->findChild<ViewMouse*>(); }
  QPoint Centre() const { return view->rect().center(); }

  Workspace ws;
  MainForm form;
  FrmWindow* view = nullptr;
  QString chosen;
};

// A pixel of the window over an airway, found by the window's own picking.
QPoint PixelOverAirway(Frame& frame, int& airway) {
  for (int y = 4; y < frame.view->height(); y += 4) {
    for (int x = 4; x < frame.view->width(); x += 4) {
      const QPointF at = frame.view->WindowPoint(QPointF(x, y));
      ToolState probe;
      const AirwayPick pick =
          FindNearestAirway(frame.ws, frame.view->View(), probe, static_cast<float>(at.x()),
                            static_cast<float>(at.y()));
      if (pick.Airway != 0) {
        airway = pick.Airway;
        return QPoint(x, y);
      }
    }
  }
  airway = 0;
  return {};
}

}  // namespace

class ViewMouseTest : public QObject {
  Q_OBJECT
 private slots:
  void ZoomClickHalvesTheWidthAboutThePoint();
  void ZoomDragTakesTheRectangle();
  void RightClickDoublesTheWidth();
  void BothButtonsDragTurnsThePicture();
  void InfoToolShowsTheReportRows();
  void MouseMoveFillsTheCoordinateFields();
  void FunctionKeysInTheViewPressTheirButtons();
  void OtherKeysOfTheView();
  void F5IsMoveInTheViewAndSimulatesElsewhere();
  void PaletteAndKeysShareOneState();
  void WindowsGetTheirOwnNumbers();
  void OpenFitsTheWindows();
  void DrawnAirwayIsUndoneAndRedone();
};

void ViewMouseTest::ZoomClickHalvesTheWidthAboutThePoint() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const ViewState& view = frame.view->View();
  const float width = view.ScaleWidth, panX = view.PanX, panY = view.PanY;
  const QPoint pixel(frame.view->width() / 4, frame.view->height() / 3);
  const QPointF at = frame.view->WindowPoint(pixel);
  QTest::mouseClick(frame.view, Qt::LeftButton, {}, pixel);
  QCOMPARE(view.ScaleWidth, width / 2);
  QCOMPARE(view.PanX, panX + static_cast<float>(at.x()));
  QCOMPARE(view.PanY, panY + static_cast<float>(at.y()));
}

void ViewMouseTest::ZoomDragTakesTheRectangle() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const ViewState& view = frame.view->View();
  const QPoint from(40, 40), to(frame.view->width() / 2, frame.view->height() / 2);
  const QPointF a = frame.view->WindowPoint(from), b = frame.view->WindowPoint(to);
  float expected = static_cast<float>(std::fabs(b.x() - a.x()));
  const float height = static_cast<float>(std::fabs(b.y() - a.y()));
  if (view.AspectRatio * expected < height) expected = height / view.AspectRatio;
  QTest::mousePress(frame.view, Qt::LeftButton, {}, from);
  QTest::mouseMove(frame.view, (from + to) / 2);
  QTest::mouseMove(frame.view, to);
  QTest::mouseRelease(frame.view, Qt::LeftButton, {}, to);
  QVERIFY(std::fabs(view.ScaleWidth - expected) <= expected * 1e-4f);
}

void ViewMouseTest::RightClickDoublesTheWidth() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const float width = frame.view->View().ScaleWidth;
  QTest::mouseClick(frame.view, Qt::RightButton, {}, frame.Centre());
  QCOMPARE(frame.view->View().ScaleWidth, width * 2);
}

void ViewMouseTest::BothButtonsDragTurnsThePicture() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const ViewState& view = frame.view->View();
  const QImage before = frame.view->grab().toImage();
  const QPoint start(frame.view->width() / 2, frame.view->height() / 2);
  QTest::mousePress(frame.view, Qt::LeftButton, {}, start);
  QTest::mousePress(frame.view, Qt::RightButton, {}, start);
  QTest::mouseMove(frame.view, start + QPoint(frame.view->width() / 4, 0));
  QVERIFY(view.Is3D != 0);
  QVERIFY(view.SpinAngle != 0);
  // The moving picture is drawn while the buttons are still held, not only at the release.
  QVERIFY(frame.view->grab().toImage() != before);
  QTest::mouseRelease(frame.view, Qt::RightButton, {}, start + QPoint(frame.view->width() / 4, 0));
  QTest::mouseRelease(frame.view, Qt::LeftButton, {}, start + QPoint(frame.view->width() / 4, 0));
}

void ViewMouseTest::InfoToolShowsTheReportRows() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  QTest::keyClick(frame.view, Qt::Key_F9);
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Info);
  int airway = 0;
  const QPoint pixel = PixelOverAirway(frame, airway);
  QVERIFY(airway != 0);
  const std::vector<std::string> rows = AirwayReportRows(frame.ws, frame.view->View(), airway);
  QVERIFY(rows.size() > 2);
  QTest::mousePress(frame.view, Qt::LeftButton, {}, pixel);
  const QLabel* report = frame.Mouse().ReportBox();
  QVERIFY(report != nullptr && report->isVisible());
  const QStringList shown = report->text().split('\n');
  QCOMPARE(shown.size(), static_cast<qsizetype>(rows.size()));
  for (std::size_t i = 0; i < rows.size(); ++i)
    QCOMPARE(shown[static_cast<qsizetype>(i)], QString::fromStdString(rows[i]));
  // The release opens the airway info report on that airway.
  QString opened;
  QTimer::singleShot(0, [&opened] {
    if (QWidget* modal = QApplication::activeModalWidget()) {
      opened = modal->objectName();
      modal->close();
    }
  });
  QTest::mouseRelease(frame.view, Qt::LeftButton, {}, pixel);
  QCOMPARE(opened, QString("frmAirInfo"));
  QVERIFY(!report->isVisible());
}

void ViewMouseTest::MouseMoveFillsTheCoordinateFields() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  auto* txtX = frame.form.findChild<QLineEdit*>("TxtX");
  auto* txtY = frame.form.findChild<QLineEdit*>("TxtY");
  const QPoint pixel(30, 30);
  const QPointF at = frame.view->WindowPoint(pixel);
  const CoordinateText expected =
      ShowCoordinates(frame.ws, frame.view->View(), ToolState{}, static_cast<float>(at.x()),
                      static_cast<float>(at.y()));
  QTest::mouseMove(frame.view, pixel);
  QVERIFY(!txtX->text().isEmpty());
  QCOMPARE(txtX->text(), QString::fromStdString(expected.X));
  QCOMPARE(txtY->text(), QString::fromStdString(expected.Y));
}

void ViewMouseTest::FunctionKeysInTheViewPressTheirButtons() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowActive(&frame.form));
  const std::vector<std::pair<Qt::Key, int>> keys = {
      {Qt::Key_F3, ButtonOf::Draw},
      {Qt::Key_F4, ButtonOf::Delete},
      {Qt::Key_F5, ButtonOf::Move},
      {Qt::Key_F6, ButtonOf::Reverse},
      {Qt::Key_F7, ButtonOf::Text},
      {Qt::Key_F8, ButtonOf::Fan},
      {Qt::Key_F9, ButtonOf::Info},
      {Qt::Key_F10, ButtonOf::Edit},
      {Qt::Key_F11, ButtonOf::CopyAttributes},
      {Qt::Key_F2, ButtonOf::ZoomPan},
  };
  for (const auto& [key, button] : keys) {
    frame.view->setFocus();
    QTest::keyClick(frame.view, key);
    QCOMPARE(frame.form.Palette().PressedButton(), button);
  }
  // F12 simulates and gives the palette back to the button before.
  QTest::keyClick(frame.view, Qt::Key_F4);
  QTest::keyClick(frame.view, Qt::Key_F12);
  QVERIFY(frame.ws.net.NetworkBalanced != 0);
  QCOMPARE(frame.form.SimLabel().text(), QString("OK"));
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Delete);
}

void ViewMouseTest::OtherKeysOfTheView() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowActive(&frame.form));
  const float fitted = frame.view->View().ScaleWidth;
  QTest::keyClick(frame.view, Qt::Key_F5);
  QTest::mouseClick(frame.view, Qt::RightButton, {}, frame.Centre());

  // Home fits and leaves Move down.
  QTest::mouseClick(frame.view, Qt::LeftButton, {}, frame.Centre());
  frame.view->setFocus();
  ViewState& view = frame.view->View();
  view.ScaleWidth = fitted * 3;
  QTest::keyClick(frame.view, Qt::Key_Home);
  QCOMPARE(view.ScaleWidth, fitted);
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Move);

  // Escape clears the selection of every airway.
  for (int i = 1; i <= frame.ws.net.BranchCount; ++i) frame.ws.net.BranchCode[i] |= Bit::Selected;
  QTest::keyClick(frame.view, Qt::Key_Escape);
  for (int i = 1; i <= frame.ws.net.BranchCount; ++i)
    QCOMPARE(frame.ws.net.BranchCode[i] & Bit::Selected, 0);
  QVERIFY(frame.view->hasFocus());  // Escape and Tab stay in the view

  // Tab is Redo and Backspace Undo: with nothing done both say so, and Move stays down.
  QTest::keyClick(frame.view, Qt::Key_Tab);
  QVERIFY(ui.Said("No more actions available to redo"));
  QVERIFY(frame.view->hasFocus());
  // A redo past the end still moves the journal's counter on, so the second undo says so.
  QTest::keyClick(frame.view, Qt::Key_Backspace);
  QTest::keyClick(frame.view, Qt::Key_Backspace);
  QVERIFY(ui.Said("No more actions to undo"));
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Move);
}

void ViewMouseTest::F5IsMoveInTheViewAndSimulatesElsewhere() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowActive(&frame.form));
  QTest::keyClick(frame.view, Qt::Key_F5);
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Move);
  QCOMPARE(frame.ws.net.NetworkBalanced, std::int16_t{0});

  auto* txtX = frame.form.findChild<QLineEdit*>("TxtX");
  txtX->setFocus();
  QVERIFY(txtX->hasFocus());
  QTest::keyClick(txtX, Qt::Key_F5);
  QVERIFY(frame.ws.net.NetworkBalanced != 0);
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Move);
}

void ViewMouseTest::PaletteAndKeysShareOneState() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowActive(&frame.form));
  // The palette chooses Info; the mouse of the window then reports rather than zooms.
  frame.form.Palette().Button(ButtonOf::Info)->click();
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Info);
  const float width = frame.view->View().ScaleWidth;
  QTest::mouseClick(frame.view, Qt::LeftButton, {}, frame.Centre());
  QCOMPARE(frame.view->View().ScaleWidth, width);
  // The menu twin of Zoom / Pan, then a key, each move the one palette.
  frame.form.Action("mnuZoom")->trigger();
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::ZoomPan);
  QTest::mouseClick(frame.view, Qt::LeftButton, {}, frame.Centre());
  QCOMPARE(frame.view->View().ScaleWidth, width / 2);
  frame.view->setFocus();
  QTest::keyClick(frame.view, Qt::Key_F3);
  QCOMPARE(frame.form.Palette().PressedButton(), ButtonOf::Draw);
  QCOMPARE(frame.form.findChild<QLabel*>("LblStatus")->text(), PaletteStatusText(ButtonOf::Draw));
}

void ViewMouseTest::WindowsGetTheirOwnNumbers() {
  HeadlessUi ui;
  Frame frame(ui);
  FrmWindow* second = frame.form.NewViewWindow();
  FrmWindow* third = frame.form.NewViewWindow();
  QCOMPARE(frame.view->View().WindowNumber, 1);
  QCOMPARE(second->View().WindowNumber, 2);
  QCOMPARE(third->View().WindowNumber, 3);
  QVERIFY(second->findChild<ViewMouse*>() != nullptr);
  // A closed window's number is taken again by the next one.
  frame.form.Views().setActiveSubWindow(frame.form.Views().subWindowList()[1]);
  frame.form.Views().closeActiveSubWindow();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCOMPARE(frame.form.NewViewWindow()->View().WindowNumber, 2);
}

void ViewMouseTest::OpenFitsTheWindows() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const QString path = QString::fromStdString(test::ScratchDir()) + "/fit.sim";
  QVERIFY(SaveNetworkAs(frame.ws, path.toStdString()));
  const float fitted = frame.view->View().ScaleWidth;
  QTest::mouseClick(frame.view, Qt::LeftButton, {}, QPoint(30, 30));
  QVERIFY(frame.view->View().ScaleWidth < fitted);
  frame.chosen = path;
  frame.form.OpenFile();
  QCOMPARE(frame.ws.net.FileName, path.toStdString());
  QCOMPARE(frame.view->View().ScaleWidth, fitted);
}

QTEST_MAIN(ViewMouseTest)
void ViewMouseTest::DrawnAirwayIsUndoneAndRedone() {
  HeadlessUi ui;
  Frame frame(ui);
  QVERIFY(QTest::qWaitForWindowExposed(&frame.form));
  const int before = frame.ws.net.BranchCount;
  frame.form.Action("mnuBar(1)")->trigger();  // Draw new airway
  frame.view->View().WorkingRL = -100;          // below the surface, on the level of the ways
  const QPoint from(20, frame.view->height() - 20), to(200, frame.view->height() - 20);
  QTest::mousePress(frame.view, Qt::LeftButton, {}, from);
  QTest::mouseMove(frame.view, (from + to) / 2);
  QTest::mouseMove(frame.view, to);
  QTest::mouseRelease(frame.view, Qt::LeftButton, {}, to);
  QCOMPARE(frame.ws.net.BranchCount, before + 1);
  QCOMPARE(frame.form.SimLabel().text(), QString("SIM"));
  frame.form.Action("mnuUndo")->trigger();
  QCOMPARE(frame.ws.net.BranchCount, before);
  frame.form.Action("mnuRedo")->trigger();
  QCOMPARE(frame.ws.net.BranchCount, before + 1);
  QCOMPARE(ui.MessageTexts(), std::vector<std::string>{});
}

#include "qt_view_mouse.moc"
