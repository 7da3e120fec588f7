// The mouse tools and the keys as the frame wires them: clicks and drags in a view window reach
// the tools, the keys of the dispatcher move the palette from anywhere in the frame, F5 runs
// the simulation everywhere, and loads fit the windows.
#include "app/rotator_button.h"
#include "app/tool_palette.h"
#include "app/view_mouse.h"
#include "editors/frm_air_edit.h"
#include "files/lifecycle.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

class ViewMouseTest : public QObject, test::FrameFixture {
  Q_OBJECT

  // The frame shown and active with a network that solves, its one view window fitted and
  // focused.
  FrmWindow* view = nullptr;
  MainForm& form() { return frame->form; }
  ViewState& View() { return view->View(); }
  QPoint Centre() const { return view->rect().center(); }
  int Pressed() { return form().Palette().PressedButton(); }

  // A pixel of the window over an airway, found by the window's own picking.
  QPoint PixelOverAirway(int& airway) {
    for (int y = 4; y < view->height(); y += 4)
      for (int x = 4; x < view->width(); x += 4) {
        const QPointF at = view->WindowPoint(QPointF(x, y));
        ToolState probe;
        airway = FindNearestAirway(frame->ws, View(), probe, float(at.x()), float(at.y())).Airway;
        if (airway != 0) return QPoint(x, y);
      }
    return {};
  }

 private slots:
  void init() {
    Start();
    form().NewFile();
    test::AddVentilatedNetwork(frame->ws.net, 1000);
    RebuildNodes(frame->ws.net, frame->ws.defaults, frame->ws.ui);
    form().resize(1000, 700);
    form().show();
    form().activateWindow();
    view = form().CurrentView();
    view->Fit();
    view->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&form()));
  }

  void BothButtonsDragTurnsThePicture() {
    const QImage before = view->grab().toImage();
    const QPoint start = Centre(), end = start + QPoint(view->width() / 4, 0);
    QTest::mousePress(view, Qt::LeftButton, {}, start);
    QTest::mousePress(view, Qt::RightButton, {}, start);
    QTest::mouseMove(view, end);
    QVERIFY(View().Is3D != 0);
    QVERIFY(View().SpinAngle != 0);
    // The moving picture is drawn while the buttons are still held, not only at the release.
    QVERIFY(view->grab().toImage() != before);
    QTest::mouseRelease(view, Qt::RightButton, {}, end);
    QTest::mouseRelease(view, Qt::LeftButton, {}, end);
  }

  void InfoToolShowsTheReportRows() {
    QTest::keyClick(view, Qt::Key_F9);
    int airway = 0;
    const QPoint pixel = PixelOverAirway(airway);
    QVERIFY(airway != 0);
    const std::vector<std::string> rows = AirwayReportRows(frame->ws, View(), airway);
    QTest::mousePress(view, Qt::LeftButton, {}, pixel);
    const QLabel* report = view->findChild<ViewMouse*>()->ReportBox();
    QVERIFY(report != nullptr && report->isVisible());
    QStringList expected;
    for (const std::string& row : rows) expected << QString::fromStdString(row);
    QCOMPARE(report->text(), expected.join('\n'));
    // The release opens the airway info report on that airway.
    QString opened;
    test::OnNextDialog<QWidget>([&opened](QWidget& modal) {
      opened = modal.objectName();
      modal.close();
    });
    QTest::mouseRelease(view, Qt::LeftButton, {}, pixel);
    QCOMPARE(opened, QString("frmAirInfo"));
    QVERIFY(!report->isVisible());
  }

  void MouseMoveFillsTheCoordinateFields() {
    const QPointF at = view->WindowPoint(QPoint(30, 30));
    const CoordinateText expected =
        ShowCoordinates(frame->ws, View(), ToolState{}, float(at.x()), float(at.y()));
    QTest::mouseMove(view, QPoint(30, 30));
    QCOMPARE(form().findChild<QLineEdit*>("TxtX")->text(), QString::fromStdString(expected.X));
    QCOMPARE(form().findChild<QLineEdit*>("TxtY")->text(), QString::fromStdString(expected.Y));
  }

  void FunctionKeysInTheViewPressTheirButtons() {
    const std::pair<Qt::Key, int> keys[] = {
        {Qt::Key_F3, ButtonOf::Draw},    {Qt::Key_F4, ButtonOf::Delete},
        {Qt::Key_F6, ButtonOf::Reverse}, {Qt::Key_F7, ButtonOf::Text},
        {Qt::Key_F8, ButtonOf::Fan},     {Qt::Key_F9, ButtonOf::Info},
        {Qt::Key_F10, ButtonOf::Edit},   {Qt::Key_F11, ButtonOf::CopyAttributes},
        {Qt::Key_F2, ButtonOf::ZoomPan}};
    for (const auto& [key, button] : keys) {
      view->setFocus();
      QTest::keyClick(view, key);
      QCOMPARE(Pressed(), button);
    }
    // F5 simulates wherever the focus is, in a view as in a text box of the frame.
    QCOMPARE(frame->ws.net.NetworkBalanced, std::int16_t{0});
    QTest::keyClick(view, Qt::Key_F5);
    QVERIFY(frame->ws.net.NetworkBalanced != 0);
    QCOMPARE(Pressed(), ButtonOf::ZoomPan);
    frame->ws.net.NetworkBalanced = 0;
    auto* txtX = form().findChild<QLineEdit*>("TxtX");
    txtX->setFocus();
    QTest::keyClick(txtX, Qt::Key_F5);
    QVERIFY(frame->ws.net.NetworkBalanced != 0);
    // F12 simulates and gives the palette back to the button before.
    frame->ws.net.NetworkBalanced = 0;
    view->setFocus();
    QTest::keyClick(view, Qt::Key_F4);
    QTest::keyClick(view, Qt::Key_F12);
    QVERIFY(frame->ws.net.NetworkBalanced != 0);
    QCOMPARE(form().SimLabel().text(), QString("OK"));
    QCOMPARE(Pressed(), ButtonOf::Delete);
  }

  void OtherKeysOfTheView() {
    const float fitted = View().ScaleWidth;
    form().Palette().Button(ButtonOf::Move)->click();
    view->setFocus();
    // Home fits and leaves Move down.
    View().ScaleWidth = fitted * 3;
    QTest::keyClick(view, Qt::Key_Home);
    QCOMPARE(View().ScaleWidth, fitted);
    QCOMPARE(Pressed(), ButtonOf::Move);

    frame->ws.net.BranchCode[2] |= Bit::Selected;  // Escape clears the selection
    QTest::keyClick(view, Qt::Key_Escape);
    QCOMPARE(frame->ws.net.BranchCode[2] & Bit::Selected, 0);
    QVERIFY(view->hasFocus());  // Escape and Tab stay in the view

    // Tab is Redo and Backspace Undo: with nothing done both say so, and Move stays down.
    QTest::keyClick(view, Qt::Key_Tab);
    QVERIFY(ui->Said("No more actions available to redo"));
    QVERIFY(view->hasFocus());
    // A redo past the end still moves the journal's counter on, so the second undo says so.
    QTest::keyClick(view, Qt::Key_Backspace);
    QTest::keyClick(view, Qt::Key_Backspace);
    QVERIFY(ui->Said("No more actions to undo"));
    QCOMPARE(Pressed(), ButtonOf::Move);
  }

  void KeysWorkOnThePaletteAndTheRotatorAndStopTheSpin() {
    auto* rotator = form().findChild<RotatorButton*>("Rotator");
    const auto spin = [rotator] {
      QTest::mousePress(rotator, Qt::RightButton, {}, QPoint(45, 28));
      QTest::mouseRelease(rotator, Qt::RightButton, {}, QPoint(45, 28));
      QVERIFY(rotator->Turning());
    };
    spin();
    rotator->setFocus();
    QTest::keyClick(rotator, Qt::Key_F3);
    QCOMPARE(Pressed(), ButtonOf::Draw);
    QVERIFY(!rotator->Turning());
    spin();
    form().Palette().Button(ButtonOf::Info)->click();
    QVERIFY(!rotator->Turning());
    QTest::keyClick(form().Palette().Button(ButtonOf::Info), Qt::Key_F4);
    QCOMPARE(Pressed(), ButtonOf::Delete);
    spin();
    rotator->setFocus();
    QTest::keyClick(rotator, Qt::Key_F5);
    QVERIFY(!rotator->Turning());
    QVERIFY(frame->ws.net.NetworkBalanced != 0);
  }

  void MenuChecksFollowTheGridAndThePasteMode() {
    form().Action("mnuGrid")->trigger();
    QVERIFY(View().GridOn);
    QVERIFY(form().Action("mnuGrid")->isChecked());
    form().Action("mnuCopy2")->trigger();
    QVERIFY(form().Action("mnuCopy2")->isChecked());
    QVERIFY(!form().Action("mnuCpyPst")->isChecked());
  }

  // The editor marks its airway in the view; a click on the view commits it, and that click
  // does nothing else.
  void AClickOutsideTheEditorCommitsIt() {
    form().Palette().Button(ButtonOf::Edit)->click();
    int airway = 0;
    const QPoint pixel = PixelOverAirway(airway);
    int highlighted = 0;
    test::OnNextDialog<FrmAirEdit>([&](FrmAirEdit& editor) {
      highlighted = frame->ws.HighlightAirway;
      editor.findChild<QLineEdit*>("TxtWidth")->setText("7");
      QTest::mouseClick(view, Qt::LeftButton, {}, pixel);
    });
    QTest::mouseClick(view, Qt::LeftButton, {}, pixel);
    QCOMPARE(highlighted, airway);
    QCOMPARE(frame->ws.net.Dim[airway][2], 7.0f);
    QCOMPARE(frame->ws.HighlightAirway, 0);
    QVERIFY(!QApplication::activeModalWidget());
  }

  void PaletteAndKeysShareOneState() {
    // The palette chooses Info; the mouse of the window then reports rather than zooms.
    form().Palette().Button(ButtonOf::Info)->click();
    const float width = View().ScaleWidth;
    QTest::mouseClick(view, Qt::LeftButton, {}, Centre());
    QCOMPARE(View().ScaleWidth, width);
    // The menu twin of Zoom / Pan gives the mouse back its zoom.
    form().Action("mnuZoom")->trigger();
    QTest::mouseClick(view, Qt::LeftButton, {}, Centre());
    QCOMPARE(View().ScaleWidth, width / 2);
  }

  void UnlimitedSpeedTakesThePauseOutOfThePowerZoom() {
    auto* timer = view->findChild<ViewMouse*>()->findChild<QTimer*>("PowerZoom");
    QVERIFY(timer);
    for (const std::int16_t unlimited : {0, -1}) {
      frame->ws.defaults.UnlimitedSpeed = unlimited;
      QTest::mousePress(view, Qt::RightButton, Qt::ShiftModifier, Centre());
      QCOMPARE(timer->interval(), unlimited ? 0 : 200);
      QTest::mouseRelease(view, Qt::RightButton, Qt::ShiftModifier, Centre());
    }
  }

  void WindowsGetTheirOwnNumbers() {
    FrmWindow* second = form().NewViewWindow();
    QCOMPARE(View().WindowNumber, 1);
    QCOMPARE(second->View().WindowNumber, 2);
    QCOMPARE(form().NewViewWindow()->View().WindowNumber, 3);
    QVERIFY(second->findChild<ViewMouse*>() != nullptr);
    // A closed window's number is taken again by the next one.
    form().Views().setActiveSubWindow(form().Views().subWindowList()[1]);
    form().Views().closeActiveSubWindow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(form().NewViewWindow()->View().WindowNumber, 2);
  }

  void OpenFitsTheWindows() {
    const QString path = QString::fromStdString(test::ScratchDir()) + "/fit.sim";
    QVERIFY(SaveNetworkAs(frame->ws, path.toStdString()));
    const float fitted = View().ScaleWidth;
    QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(30, 30));
    QVERIFY(View().ScaleWidth < fitted);
    frame->answer = path;
    form().OpenFile();
    QCOMPARE(frame->ws.net.FileName, path.toStdString());
    QCOMPARE(View().ScaleWidth, fitted);
  }

  void DrawnAirwayIsUndoneAndRedone() {
    const int before = frame->ws.net.BranchCount;
    form().Action("mnuBar(1)")->trigger();  // Draw new airway
    View().WorkingRL = -100;                // below the surface, on the level of the ways
    const QPoint from(20, view->height() - 20), to(200, view->height() - 20);
    QTest::mousePress(view, Qt::LeftButton, {}, from);
    QTest::mouseMove(view, (from + to) / 2);
    QTest::mouseMove(view, to);
    QTest::mouseRelease(view, Qt::LeftButton, {}, to);
    QCOMPARE(frame->ws.net.BranchCount, before + 1);
    QCOMPARE(form().SimLabel().text(), QString("SIM"));
    form().Action("mnuUndo")->trigger();
    QCOMPARE(frame->ws.net.BranchCount, before);
    form().Action("mnuRedo")->trigger();
    QCOMPARE(frame->ws.net.BranchCount, before + 1);
    QCOMPARE(ui->MessageTexts(), std::vector<std::string>{});
  }
};

QTEST_MAIN(ViewMouseTest)
#include "qt_view_mouse.moc"
