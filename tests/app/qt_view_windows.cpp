// The view windows as the frame keeps them: a new window copies the current view, each window
// keeps its own layers, the Window menu lists them, Freeze, the last window's close, and the
// scale caption.
#include "app/main_form_print.h"
#include "editors/print_network.h"
#include "files/lifecycle.h"
#include "tests/app/qt_test_support.h"

using namespace galeris;

class ViewWindowsTest : public QObject, test::FrameFixture {
  Q_OBJECT

  MainForm& form() { return frame->form; }
  Network& net() { return frame->ws.net; }
  FrmWindow* first = nullptr;

  FrmWindow* OpenSecond() {
    FrmWindow* second = form().NewViewWindow();
    QCoreApplication::processEvents();
    return second;
  }
  void Activate(int position) {
    form().Views().setActiveSubWindow(form().Views().subWindowList()[position]);
    QCoreApplication::processEvents();
  }

 private slots:
  void init() {
    Start();
    form().NewFile();
    test::AddVentilatedNetwork(net(), 1000);
    RebuildNodes(net(), frame->ws.defaults, frame->ws.ui);
    form().resize(1000, 700);
    form().show();
    first = form().CurrentView();
    first->Fit();
    QCoreApplication::processEvents();
    ui->ClearRecords();
  }

  void NewWindowCopiesTheViewAndIsFitted() {
    first->SetThreeD(true);
    first->View().TiltAngle = 0.5f;
    first->View().LevelMode = LevelModeOf::Single;
    SetZoom(frame->ws, first->View(), 50000, 37500);
    FrmWindow* second = OpenSecond();
    QCOMPARE(second->View().Is3D, std::int16_t{1});
    QCOMPARE(second->View().TiltAngle, 0.5f);
    QCOMPARE(second->View().LevelMode, LevelModeOf::Single);
    QVERIFY(second->View().ScaleWidth < 5000);  // fitted to the network again
  }

  void EachWindowKeepsItsLayers() {
    FrmWindow* second = OpenSecond();
    Activate(1);
    net().PrimaryLayerShow[1] = 0;  // the layer dialog, in the second window
    form().RedrawViews();
    QCOMPARE(second->View().LayerMask[1] & 2, 0);
    QCOMPARE(first->View().LayerMask[1] & 2, 2);
    Activate(0);
    QCOMPARE(net().PrimaryLayerShow[1], std::int16_t{-1});
    QCOMPARE(net().ViewCode[kWindowSlotBase + 1][2] & 2, 0);  // the second's slot, position 1
    Activate(1);
    QCOMPARE(net().PrimaryLayerShow[1], std::int16_t{0});
  }

  void ViewMenuChecksTheMode() {
    form().Action("mnu3d")->trigger();
    emit form().findChild<QMenu*>("mnuView")->aboutToShow();
    QVERIFY(form().Action("mnu3d")->isChecked());
    QVERIFY(!form().Action("mnuPlanS")->isChecked());
  }

  void WindowMenuListsTheWindows() {
    FrmWindow* second = OpenSecond();
    auto* menu = form().findChild<QMenu*>("mnuWindow");
    emit menu->aboutToShow();
    QList<QAction*> listed;
    for (QAction* entry : menu->actions())
      if (entry->text().startsWith("&1 ") || entry->text().startsWith("&2 ")) listed << entry;
    QCOMPARE(listed.size(), 2);
    QVERIFY(listed[1]->text().endsWith(second->windowTitle()));
    QVERIFY(listed[1]->isChecked());
    listed[0]->trigger();
    QCOMPARE(form().CurrentView(), first);
  }

  void FreezeNeedsASecondWindowAndThawsAgain() {
    form().Action("mnuFreeze")->trigger();
    QCOMPARE(ui->MessageTexts().back(),
             std::string("Cannot freeze when only one window is present !"));
    FrmWindow* second = OpenSecond();
    form().Action("mnuFreeze")->trigger();
    QVERIFY(second->Frozen());
    QVERIFY(second->windowTitle().startsWith("FROZEN View 2"));
    const int visible = second->View().VisibleCount;
    net().BranchCode[1] = 0;  // an edit the frozen window does not follow
    net().EntryNodeId[1] = 0;
    form().RefreshAfterNetworkChange();
    QCOMPARE(second->View().VisibleCount, visible);
    form().Action("mnuFreeze")->trigger();
    QVERIFY(!second->Frozen());
    QVERIFY(second->windowTitle().startsWith("View 2"));
  }

  void ClosingTheLastWindowAsksAndClearsTheNetwork() {
    FrmWindow* second = OpenSecond();
    net().NetworkSaved = 0;
    second->parentWidget()->close();  // not the last: no question
    QVERIFY(ui->MessageTexts().empty());
    ui->SetPolicy(HeadlessUi::Policy::AlwaysCancel);
    QVERIFY(!first->parentWidget()->close());
    QCOMPARE(ui->MessageTexts().back(), std::string("Network Data is not saved - Save it?"));
    QCOMPARE(net().BranchCount, 5);
    ui->SetPolicy(HeadlessUi::Policy::AlwaysNo);
    QVERIFY(first->parentWidget()->close());
    QCOMPARE(net().BranchCount, 0);
    QCOMPARE(form().windowTitle(), QString("Galeris"));
  }

  void ScaleCaptionMeasuresThePaperAndSurvivesAnEdit() {
    form().RefreshAfterNetworkChange();
    QVERIFY(form().windowTitle().startsWith("GALERIS ["));
    QVERIFY(form().windowTitle().contains("] [Scale = 1:"));
    PrintSettings& settings = form().Printing().Settings();
    settings.Paper = "A3";
    settings.PrinterOrientation = OrientationOf::Landscape;
    const double a3 = PrintableFor(settings).WidthMm;
    QVERIFY(a3 > 380);
    QCOMPARE(OpenSecond()->View().PrintableWidthMm, static_cast<float>(a3));
  }
};

QTEST_MAIN(ViewWindowsTest)
#include "qt_view_windows.moc"
