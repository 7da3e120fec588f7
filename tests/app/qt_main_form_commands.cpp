// The frame's commands that open dialogs, mostly on the example mine: import and export, the
// level and view option entries, the real-time stations and output with their timers, the
// contaminant spread and sourcing windows, Options reaching the open views, a Tools entry, the summary and the name lists; and
// printing to PDF from the command line, frmPrinter and the palette (the printed example mine
// compared with its reference picture through pdftoppm), and Simplify with its undo.
#include <memory>

#include "app/main_form_realtime.h"
#include "app/main_form_tools.h"
#include "app/print_pdf.h"
#include "app/tool_palette.h"
#include "editors/frm_export.h"
#include "editors/frm_import.h"
#include "editors/frm_printer.h"
#include "editors/frm_real_out.h"
#include "editors/frm_remote.h"
#include "editors/frm_simplify.h"
#include "editors/frm_smoke.h"
#include "editors/frm_smoke_legend.h"
#include "editors/frm_smoke_trace.h"
#include "editors/frm_summary.h"
#include "exchange/text_exchange.h"
#include "files/lifecycle.h"
#include "realtime/stations.h"
#include "tests/app/qt_test_support.h"
#include "view/drawing.h"

using namespace galeris;
using test::OnNextDialog;

namespace {

int PrintPdf(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"galeris", "--print-pdf"});
  std::vector<char*> argv;
  for (std::string& a : arguments) argv.push_back(a.data());
  return RunPrintPdf(static_cast<int>(argv.size()), argv.data());
}

// The first page of a PDF as a picture at 40 dots per inch.
QImage PageImage(const QString& pdf) {
  const QString prefix = pdf + "-page";
  QProcess::execute("pdftoppm", {"-png", "-r", "40", "-singlefile", pdf, prefix});
  return QImage(prefix + ".png");
}

QString ExampleMine() {
  return QString::fromStdString(test::SourcePath("examples/example_mine.sim"));
}

}  // namespace

class MainFormCommandsTest : public QObject, test::FrameFixture {
  Q_OBJECT
  MainForm& form() { return frame->form; }
  Network& net() { return frame->ws.net; }
  ViewState& View() { return frame->View(); }
  std::string dir;
  // The example mine opened, its settings files written to the scratch folder.
  void OpenExample(bool solve) {
    frame->ws.paths.ProgramFolder = dir;
    QVERIFY(OpenNetwork(frame->ws, test::SourcePath("examples/example_mine.sim")));
    if (solve) form().RunSimulationCommand(0);
  }
  // Runs fill on the dialog that the entry opens, then presses its CmdOK.
  template <typename Dialog>
  void WithDialog(const char* entry, std::function<void(Dialog&)> fill) {
    QTimer::singleShot(0, &form(), [this, fill] {
      auto* dialog = form().findChild<Dialog*>();
      QVERIFY(dialog);
      fill(*dialog);
      dialog->template findChild<QPushButton*>("CmdOK")->click();
    });
    form().Action(entry)->trigger();
  }

 private slots:
  void init() {
    Start();
    dir = test::ScratchDir();
  }

  void ImportAndExportThroughTheMenus() {
    test::WriteFile(dir + "far.txt", std::string(kTextExportHeads) +
                                         "\r\n5000\t5000\t-10\t9000\t5000\t-10\r\n"
                                         "9000\t5000\t-10\t9000\t8000\t-10\r\n");
    frame->answer = QString::fromStdString(dir + "far.txt");
    ImportChoices seen;
    OnNextDialog<FrmImport>([&seen](FrmImport& dialog) {
      dialog.findChild<QCheckBox*>("ChkSize")->setChecked(true);
      dialog.findChild<QLineEdit*>("TxtZOffset")->setText("2.5");
      dialog.findChild<QCheckBox*>("NegX")->setChecked(true);
      seen = dialog.Choices();
      dialog.findChild<QPushButton*>("Import")->click();
    });
    form().Action("mnuImportData")->trigger();
    QVERIFY(seen.CommonSize && seen.Negate[0] && !seen.Negate[1] && !seen.Merge);
    // The new airways go on the default layers the dialog is given.
    const FrmImport onLayers(frame->ws, [] { return QString(); }, {3, 2});
    QCOMPARE(onLayers.Choices().PrimaryLayer, std::int16_t{3});
    QCOMPARE(onLayers.Choices().SecondLayer, std::int16_t{2});
    QCOMPARE(seen.Offset[2], 2.5);
    QCOMPARE(int(net().BranchCount), 2);
    QCOMPARE(net().Coord1[1][1], -5000);
    // The view was fitted to the new airways far from the origin.
    QVERIFY(View().ScaleWidth < 10000 && View().ScaleWidth > 3000);

    frame->answer = QString::fromStdString(dir + "table");
    form().Action("mnuExportData")->trigger();
    QVERIFY(test::ReadFile(dir + "table.TXT").rfind(kTextExportHeads, 0) == 0);

    OnNextDialog<FrmExport>([](FrmExport& dialog) {
      QCOMPARE(dialog.findChild<QLabel*>("LblContents")->text(),
               QString("The file will hold all 2 airways."));
      dialog.findChild<QCheckBox*>("ChkArrows")->setChecked(true);
      dialog.findChild<QPushButton*>("CmdOK")->click();
    });
    frame->answer = QString::fromStdString(dir + "plan.dxf");
    form().Action("mnuDXFTrue")->trigger();
    QVERIFY(test::ReadFile(dir + "plan.dxf").find("Arrow") != std::string::npos);

    // A merge import keeps the journal: the edit made before it can still be undone.
    ui->QueueAnswer(MsgAnswer::Yes);
    form().Action("mnuFixL")->trigger();
    QVERIFY(net().BranchCode[1] & Bit::FixedLength);
    frame->answer = QString::fromStdString(dir + "far.txt");
    OnNextDialog<FrmImport>([](FrmImport& dialog) {
      dialog.findChild<QCheckBox*>("ChkMerge")->setChecked(true);
      dialog.findChild<QPushButton*>("Import")->click();
    });
    form().Action("mnuImportData")->trigger();
    QCOMPARE(int(net().BranchCount), 4);
    form().UndoCommand();
    for (int i = 1; i <= 4; ++i) QVERIFY(!(net().BranchCode[i] & Bit::FixedLength));
  }

  void ViewListDeclutterAndLevelsMenu() {
    Start(test::SourcePath("examples/example_mine.sim"));
    // The example opens on one level: a DXF export says it writes only that level's airways.
    QVERIFY(ExportContentsNote(frame->ws, View()).starts_with("The file will hold only the "));
    // Every pick of CmbView loads the view, the same one again too, and in plan mode.
    auto* list = form().findChild<QComboBox*>("CmbView");
    const int plan = list->findText(" 1. Default View"), iso = list->findText(" 5. Iso View");
    emit list->activated(plan);
    View().PanX += 5000;
    emit list->activated(plan);
    QVERIFY(View().PanX < 5000);
    emit list->activated(iso);
    QCOMPARE(View().Is3D, std::int16_t{1});
    OnNextDialog([](QDialog& dialog) {  // View Options: the declutter choice is kept
      dialog.findChild<QCheckBox*>("ChkDeclutter")->setChecked(false);
      dialog.accept();
    });
    form().Palette().Button(26)->click();
    QVERIFY(!View().Declutter && !MainForm::DeclutterSetting());
    QSettings("Galeris", "Galeris").remove("View/Declutter");
    OnNextDialog([](QDialog& dialog) {  // Options: its display settings reach the open view
      dialog.findChild<QCheckBox*>("ChkViewer(0)")->setChecked(false);
      dialog.findChild<QRadioButton*>("OptType(1)")->setChecked(true);
      dialog.findChild<QRadioButton*>("OptColour(1)")->setChecked(true);
      dialog.findChild<QPushButton*>("cmdOK")->click();
    });
    form().Action("mnuOptions")->trigger();
    QCOMPARE(View().DisplayBits & 1, 0);
    QCOMPARE(View().DataFilter, std::int16_t{1});
    QVERIFY(View().ColourByAir);
    OnNextDialog([](QDialog& dialog) {
      dialog.findChild<QComboBox*>("CmbRL1")->setCurrentIndex(1);
      dialog.findChild<QComboBox*>("CmbRL2")->setCurrentIndex(2);
      dialog.accept();
    });
    form().Action("mnuLevels(3)")->trigger();
    QCOMPARE(View().LevelMode, LevelModeOf::Range);
    QCOMPARE(View().LevelTop, float(net().RLBound[2][1]));
    QCOMPARE(View().LevelBottom, float(net().RLBound[3][2]));
    OnNextDialog([](QDialog& dialog) {
      auto* from = dialog.findChild<QListWidget*>("RLFrom");
      emit from->itemDoubleClicked(from->item(2));
      dialog.accept();
    });
    form().Action("mnuLevels(2)")->trigger();
    QCOMPARE(View().SelectedLevels, (std::vector<std::int16_t>{3}));
    // The Level List's OK refills CmbRL from the table as validated.
    OnNextDialog([](QDialog& dialog) {
      QCOMPARE(dialog.objectName(), QString("frmRLBase"));
      dialog.accept();
    });
    form().Action("mnuRLBase")->trigger();
    QCOMPARE(form().findChild<QComboBox*>("CmbRL")->count(), int(net().RLCount) + 1);  // + "All"
    form().Action("mnuLevels(1)")->trigger();
    QCOMPARE(View().LevelMode, LevelModeOf::Single);
  }

  void StationDialogStoresAndWritesRemotesDat() {
    OpenExample(false);
    WithDialog<FrmRemote>("mnuRemoteStation", [](FrmRemote& d) {
      d.findChild<QLineEdit*>("TxtStationName")->setText("Decline");
      d.findChild<QLineEdit*>("ALow(2)")->setText("0.5");
      d.findChild<QLineEdit*>("TxtTimer")->setText("3");
      d.CopyChannels();
      d.findChild<QScrollBar*>("VScStation")->setValue(2);
      d.PasteChannels();
    });
    const RemoteStations& st = frame->ws.remote;
    QCOMPARE(st.StationName[1], std::string("Decline"));
    QCOMPARE(st.AlarmLow[2][1], 0.5f);
    QCOMPARE(st.AlarmLow[2][2], 0.5f);
    QCOMPARE(form().Realtime().Timer1().interval(), 3000);
    QVERIFY(test::ReadFile(dir + "Remotes.dat").find("Decline") != std::string::npos);

    // Esc ends the dialog as OK does.
    QTimer::singleShot(0, &form(), [this] {
      auto* dialog = form().findChild<FrmRemote*>();
      QVERIFY(dialog);
      dialog->findChild<QLineEdit*>("TxtStationName")->setText("Intake");
      QTest::keyClick(dialog, Qt::Key_Escape);
    });
    form().Action("mnuRemoteStation")->trigger();
    QCOMPARE(st.StationName[1], std::string("Intake"));
    QVERIFY(test::ReadFile(dir + "Remotes.dat").find("Intake") != std::string::npos);
  }

  void MonitoringReadsResimulatesAndStopsOnAFailure() {
    OpenExample(false);
    int decline = 0;
    for (int i = 1; i <= net().BranchCount; ++i)
      if (net().AirwayNo[i] == 85) decline = i;
    RemoteStations& st = frame->ws.remote;
    st.RemoteSource = dir + "Galeris.rem";
    st.RemoteResim = true;
    st.UpdateQ[1] = -1;
    net().RemoteStation[decline] = 1;
    test::WriteFile(st.RemoteSource, "Q\r\nu\r\n1\ta\tb\t30\t0\t0\t0\t0\r\n");
    form().Action("mnuRemote")->trigger();
    QVERIFY(form().Realtime().Timer1().isActive());
    // The ticks are made by hand below: the live timer must not add its own while a
    // resimulation yields on a busy machine.
    form().Realtime().Timer1().setInterval(24 * 3600 * 1000);
    // Busy: the tick leaves the network alone.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    form().Realtime().StationTick();
    QApplication::restoreOverrideCursor();
    QVERIFY(!(net().BranchCode[decline] & Bit::FixedQuantity));
    form().Realtime().StationTick();
    QCOMPARE(net().NetworkBalanced, std::int16_t{-1});  // resimulated
    std::remove(st.RemoteSource.c_str());
    form().Realtime().StationTick();
    form().Realtime().StationTick();
    QCOMPARE(ui->MessageTexts(), std::vector<std::string>{kMsgStationFile});
    QVERIFY(!form().Action("mnuRemote")->isChecked());
    QVERIFY(!form().Realtime().Timer1().isActive());
  }

  void OutputDialogAndTimer2WriteTheFile() {
    OpenExample(false);
    const QString name = QString::fromStdString(dir + "flows");
    WithDialog<FrmRealOut>("mnuRealOut", [name](FrmRealOut& d) {
      d.findChild<QLineEdit*>("TxtRealOut")->setText(name);
    });
    QCOMPARE(frame->ws.remote.OutputFile, dir + "flows.txt");
    form().Action("mnuRealOutStart")->trigger();
    QVERIFY(form().Realtime().Timer2().isActive());
    form().Realtime().OutputTick();
    QVERIFY(test::ReadFile(dir + "flows.txt").substr(0, 9) == "Branch No");
  }

  void SpreadAndSourcingShowTheirWindows() {
    OpenExample(true);
    net().BranchCode[5] |= Bit::ContaminantSource;
    net().Contaminant[5] = 1000;
    const int dataType = form().DataTypeCode();
    QTimer::singleShot(0, &form(), [this] {  // Simulate, once frmSmoke is open modally
      form().NetworkTools().SmokeForm().findChild<QPushButton*>("OK")->click();
    });
    form().Action("mnuFire")->trigger();
    FrmSmokeLegend* legend = form().NetworkTools().Legend();
    QVERIFY(legend && legend->isVisible());
    QCOMPARE(View().SmokeState, 1);
    QCOMPARE(form().DataTypeCode(), 55);
    QCOMPARE(legend->SliderValue(), SliderRange(net()));
    QCOMPARE(legend->Legend()[0], SmokeMaximum(net()));
    legend->findChild<QSlider*>("Slider")->setValue(0);  // the limit is at least 1 second
    QCOMPARE(View().SmokeLimit, 1.0f);

    // "Show Smoke" runs the spread again at once: nobody has to press Simulate a second time.
    QPushButton* showOrClear = legend->findChild<QPushButton*>("CmdClearS");
    showOrClear->click();
    QCOMPARE(View().SmokeState, 0);
    auto stillWaiting = std::make_shared<bool>(false);
    QTimer::singleShot(0, &form(), [this, stillWaiting] {
      QTimer::singleShot(0, &form(), [this, stillWaiting] {  // after the form's own start
        FrmSmoke& smoke = form().NetworkTools().SmokeForm();
        if (!smoke.isVisible() || smoke.Running()) return;
        *stillWaiting = true;
        smoke.findChild<QPushButton*>("Cancel")->click();
      });
    });
    showOrClear->click();
    QVERIFY(!*stillWaiting);
    QCOMPARE(View().SmokeState, 1);
    QCOMPARE(showOrClear->text(), QString("Clear Smoke"));

    ui->QueueAnswer(MsgAnswer::No);  // the sources stay
    form().Action("mnuClrSmoke")->trigger();
    QVERIFY(!legend->isVisible());
    QCOMPARE(View().SmokeState, 0);
    QCOMPARE(form().DataTypeCode(), dataType);

    const int last = net().BranchCount;
    net().SmokeData[last][1] = ReportPin::Smoke;
    form().Action("mnuTrace")->trigger();
    FrmSmokeTrace* trace = form().NetworkTools().Trace();
    QVERIFY(trace && trace->isVisible());
    QCOMPARE(View().SmokeState, 2);
    QCOMPARE(net().SmokeData[last][2], TraceState::Smoke);
    trace->findChild<QPushButton*>("CmdSim")->click();
    QCOMPARE(View().SmokeState, 0);
    form().Action("mnuClrSources")->trigger();
    QCOMPARE(net().SmokeData[last][1], std::int16_t{0});
  }

  void ToolsEntriesSummaryAndNameLists() {
    OpenExample(true);
    ui->QueueAnswer(MsgAnswer::Yes);
    form().Action("mnuFixL")->trigger();
    QVERIFY(net().BranchCode[net().BranchCount] & Bit::FixedLength);
    QCOMPARE(form().SimLabel().text(), QString("SIM"));
    form().Action("mnuSummary")->trigger();
    FrmSummary* summary = form().NetworkTools().Summary();
    QVERIFY(summary && summary->isVisible());
    QCOMPARE(summary->findChild<QLabel*>("LblNA")->text(), QString::number(net().BranchCount));
    net().BranchName[3] = "Main drive";
    form().Action("mnuFBName")->trigger();
    auto* list = form().findChild<QDialog*>("frmListAirNames")->findChild<QListWidget*>("List1");
    const QList<QListWidgetItem*> rows = list->findItems("Main drive", Qt::MatchExactly);
    QCOMPARE(rows.size(), 1);
    emit list->itemClicked(rows.front());
    QVERIFY(net().BranchCode[3] & Bit::Selected);
  }

  void ExampleMinePrintsLikeItsReference() {
    const QString pdf = QString::fromStdString(test::ScratchDir()) + "example.pdf";
    QCOMPARE(
        PrintPdf({pdf.toStdString(), ExampleMine().toStdString(), "--paper", "a4", "--landscape"}),
        0);
    QVERIFY(!QFile::exists(pdf + ".part"));
    const QImage page = PageImage(pdf);
    // 60 per channel on 0.5% of pixels
    test::CompareWithReference(page, "tests/app/print_reference/example_mine_a4.png", 60, 0.005);
  }

  void BadCommandLinesPrintNothing() {
    const std::string folder = test::ScratchDir();
    const std::string out = folder + "bad.pdf", mine = ExampleMine().toStdString();
    struct Case {
      std::vector<std::string> arguments;
      int exitCode;
    } cases[] = {
        {{out, mine, "--paper", "B7"}, 1},
        {{out, mine, "--scale", "ten"}, 1},
        {{out}, 1},
        {{out, folder + "missing.sim"}, 2},
        {{folder + "no/such/folder/x.pdf", mine}, 3},
    };
    for (const Case& c : cases) {
      QCOMPARE(PrintPdf(c.arguments), c.exitCode);
      QVERIFY(!QFile::exists(QString::fromStdString(out)));
    }
    QCOMPARE(PrintPdf({out, mine, "--scale", "100000000", "--mono"}), 0);
    QVERIFY(QFile::exists(QString::fromStdString(out)));
  }

  void PrinterFormChecksTheScaleAndPrintsToAFile() {
    OpenExample(false);
    form().RefreshAfterNetworkChange();
    PrintSettings settings;
    FrmPrinter printer(frame->ws, View(), settings);
    QCOMPARE(printer.windowTitle(), QString("PRINT NETWORK"));
    auto* scale = printer.findChild<QLineEdit*>("TxtScale");
    scale->setText("5");
    printer.CheckScale();  // below the smallest: back to it
    QCOMPARE(ui->MessageTexts().back(), std::string(kMsgScaleExceedsPaper));
    const QString pdf = QString::fromStdString(dir) + "form.pdf";
    printer.SetPdfChooser([pdf] { return pdf; });
    printer.findChild<QLineEdit*>("TxtTitle")->setText("Trial");
    QTest::keyClicks(scale, "0");  // ten times the smallest
    printer.findChild<QPushButton*>("PrintIt")->click();
    QVERIFY(QFile::exists(pdf));
    QCOMPARE(settings.Title, std::string("Trial"));
    QCOMPARE(settings.PrintScale, printer.SmallestScale() * 10);
    QVERIFY(settings.PrintScaleSet);
  }

  void FramePrintsTheScreenAndSimplifies() {
    Workspace& ws = frame->ws;
    MainForm& form = frame->form;
    const QString pdf = QString::fromStdString(test::ScratchDir()) + "screen";
    frame->answer = pdf;
    OpenNetwork(ws, ExampleMine().toStdString());
    form.RefreshAfterNetworkChange();

    ui->QueueAnswer(MsgAnswer::OK);  // "Print Screen ?"
    form.Palette().Button(ButtonOf::PrintScreen)->click();
    QVERIFY(ui->Said("Print Screen ?"));
    QVERIFY(QFile::exists(pdf + ".pdf"));

    const int airways = ws.net.BranchCount;
    QTimer::singleShot(0, &form, [] {
      auto* simplify = qobject_cast<FrmSimplify*>(QApplication::activeModalWidget());
      QVERIFY(simplify);
      QCOMPARE(simplify->windowTitle(), QString("Simplify Network Filter"));
      simplify->findChild<QLineEdit*>("TxtA")->setText("180");
      simplify->findChild<QLineEdit*>("TxtL")->setText("10000");
      simplify->findChild<QPushButton*>("CmdSimp")->click();
      simplify->findChild<QPushButton*>("CmdExit")->click();
    });
    QVERIFY(form.Action("mnuSimp")->isEnabled());
    form.Action("mnuSimp")->trigger();
    const int removed = airways - ws.net.BranchCount;
    QVERIFY(removed > 0);
    QVERIFY(ui->Said("The network size was reduced by " + std::to_string(removed) + " airways"));
    form.UndoCommand();
    QCOMPARE(int(ws.net.BranchCount), airways);
  }
};

QTEST_MAIN(MainFormCommandsTest)
#include "qt_main_form_commands.moc"
