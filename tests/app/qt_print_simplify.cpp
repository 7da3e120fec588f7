// Printing to PDF files from the command line, from frmPrinter and from the palette, the
// printed example mine compared with its reference picture (through pdftoppm), and the frame's
// Simplify with its undo.
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QToolButton>

#include "app/print_pdf.h"
#include "app/tool_palette.h"
#include "editors/frm_printer.h"
#include "editors/frm_simplify.h"
#include "files/lifecycle.h"
#include "tests/app/qt_test_support.h"
#include "view/drawing.h"

using namespace galeris;

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

// Pixels of rows [from, to) darker than the paper.
int InkedPixels(const QImage& page, int from, int to) {
  int inked = 0;
  for (int row = from; row < to; ++row)
    for (int col = 0; col < page.width(); ++col) inked += qGray(page.pixel(col, row)) < 200;
  return inked;
}

QString ExampleMine() {
  return QString::fromStdString(test::SourcePath("examples/example_mine.sim"));
}

}  // namespace

class PrintSimplifyTest : public QObject {
  Q_OBJECT
 private slots:
  void ExampleMinePrintsLikeItsReference() {
    const QString pdf = QString::fromStdString(test::ScratchDir()) + "example.pdf";
    QCOMPARE(
        PrintPdf({pdf.toStdString(), ExampleMine().toStdString(), "--paper", "a4", "--landscape"}),
        0);
    QFile file(pdf);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.read(5) == "%PDF-");
    QVERIFY(!QFile::exists(pdf + ".part"));
    const QImage page = PageImage(pdf);
    QVERIFY2(!page.isNull(), "pdftoppm gave no picture");
    QVERIFY(page.width() > page.height());
    // The drawing above, the title block in the foot band.
    const int foot = page.height() * 85 / 100;
    QVERIFY(InkedPixels(page, 0, foot) > 1500);
    QVERIFY(InkedPixels(page, foot, page.height()) > 1000);
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
        {{out, mine, "--scale", "0"}, 1},
        {{out, mine, "--scale", "ten"}, 1},
        {{out, mine, "--colour"}, 1},
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
    HeadlessUi ui;
    Workspace ws(ui);
    const int i = test::AddAirway(ws.net, 0, 0, 500, 400, 0, 500);
    ws.net.EntryNodeId[i] = NodeKey(0, 0, 500);
    ws.net.ExitNodeId[i] = NodeKey(400, 0, 500);
    ViewState view = MakeViewState(ws);
    SetScale(view, 1000, 750, 200, 0);
    BuildVisibleList(ws, view);
    ProjectNetwork(ws, view);
    PrintSettings settings;
    FrmPrinter form(ws, view, settings);
    QCOMPARE(form.windowTitle(), QString("PRINT NETWORK"));
    auto* scale = form.findChild<QLineEdit*>("TxtScale");
    QCOMPARE(scale->text().toInt(), form.SmallestScale());
    scale->setText("5");
    form.CheckScale();
    QCOMPARE(ui.MessageTexts().back(), std::string(kMsgScaleExceedsPaper));
    QCOMPARE(scale->text().toInt(), form.SmallestScale());

    const QString pdf = QString::fromStdString(test::ScratchDir()) + "form.pdf";
    form.SetPdfChooser([pdf] { return pdf; });
    form.findChild<QLineEdit*>("TxtTitle")->setText("Trial");
    QTest::keyClicks(scale, "0");  // ten times the smallest
    form.findChild<QPushButton*>("PrintIt")->click();
    QVERIFY(QFile::exists(pdf));
    QCOMPARE(settings.Title, std::string("Trial"));
    QCOMPARE(settings.PrintScale, form.SmallestScale() * 10);
    QVERIFY(settings.PrintScaleSet);
  }

  void FramePrintsTheScreenAndSimplifies() {
    HeadlessUi ui;
    test::Frame frame(ui);
    Workspace& ws = frame.ws;
    MainForm& form = frame.form;
    const QString pdf = QString::fromStdString(test::ScratchDir()) + "screen";
    frame.answer = pdf;
    OpenNetwork(ws, ExampleMine().toStdString());
    form.RefreshAfterNetworkChange();

    ui.QueueAnswer(MsgAnswer::OK);  // "Print Screen ?"
    form.Palette().Button(ButtonOf::PrintScreen)->click();
    QVERIFY(ui.Said("Print Screen ?"));
    QVERIFY(QFile::exists(pdf + ".pdf"));

    const int airways = ws.net.BranchCount;
    QTimer::singleShot(0, &form, [&ws] {
      auto* simplify = qobject_cast<FrmSimplify*>(QApplication::activeModalWidget());
      QVERIFY(simplify);
      QCOMPARE(simplify->windowTitle(), QString("Simplify Network Filter"));
      const int airways = ws.net.BranchCount;
      simplify->findChild<QLineEdit*>("TxtA")->setText("1e9");  // refused: nothing changes
      simplify->findChild<QPushButton*>("CmdSimp")->click();
      QCOMPARE(int(ws.net.BranchCount), airways);
      simplify->findChild<QLineEdit*>("TxtA")->setText("180");
      simplify->findChild<QLineEdit*>("TxtL")->setText("10000");
      simplify->findChild<QPushButton*>("CmdSimp")->click();
      simplify->findChild<QPushButton*>("CmdExit")->click();
    });
    QVERIFY(form.Action("mnuSimp")->isEnabled());
    form.Action("mnuSimp")->trigger();
    const int removed = airways - ws.net.BranchCount;
    QVERIFY(removed > 0);
    QVERIFY(ui.Said("Max Angle must be a number of degrees from 0 to 180"));
    QVERIFY(ui.Said("The network size was reduced by " + std::to_string(removed) + " airways"));
    form.UndoCommand();
    QCOMPARE(int(ws.net.BranchCount), airways);
  }
};

QTEST_MAIN(PrintSimplifyTest)
#include "qt_print_simplify.moc"
