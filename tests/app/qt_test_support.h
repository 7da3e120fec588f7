// Shared by the Qt tests of the frame and the editors: the frame started as the program starts
// it over scripted boxes, a network that solves, the next modal dialog, and the comparison of a
// picture with its reference beside the tests (GALERIS_UPDATE_REFERENCES=1 writes it anew).
#pragma once

#include <QtTest>
#include <QtWidgets>
#include <functional>
#include <memory>
#include <type_traits>

#include "app/frm_window.h"
#include "app/main_form.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"

namespace galeris::test {

// The frame over scripted boxes; its file dialogs answer `answer` and keep every request.
struct Frame {
  explicit Frame(UiPort& ui, const std::string& commandFile = "") : ws(ui), form(ws) {
    ws.paths = FindProgramPaths(QCoreApplication::applicationFilePath().toStdString());
    form.SetFileChooser([this](const FileDialogRequest& request) {
      requests.push_back(request);
      return answer;
    });
    form.Load(commandFile);
  }
  ViewState& View() { return form.CurrentView()->View(); }
  Workspace ws;
  MainForm form;
  QString answer;
  std::vector<FileDialogRequest> requests;
};

// A fresh frame for a test function: its init() calls Start.
struct FrameFixture {
  void Start(const std::string& file = "",
             HeadlessUi::Policy policy = HeadlessUi::Policy::AlwaysNo) {
    frame.reset();
    ui = std::make_unique<HeadlessUi>(policy);
    frame = std::make_unique<Frame>(*ui, file);
  }
  std::unique_ptr<HeadlessUi> ui;
  std::unique_ptr<Frame> frame;
};

// An intake shaft with a fixed quantity, two parallel ways of different resistance and an
// upcast, `size` across: closed through the surface, and needing more than one sweep.
inline void AddVentilatedNetwork(Network& net, int size = 100) {
  const int intake = AddAirway(net, 0, 0, 0, 0, 0, -100);
  net.BranchCode[intake] |= Bit::ForceEntrySurface | Bit::FixedQuantity;
  net.Quantity[intake] = 50;
  net.Resistance[AddAirway(net, 0, 0, -100, size, 0, -100)] = 0.5f;
  AddAirway(net, 0, 0, -100, size / 2, size / 2, -100);
  AddAirway(net, size / 2, size / 2, -100, size, 0, -100);
  const int upcast = AddAirway(net, size, 0, -100, size, 0, 0);
  net.BranchCode[upcast] |= Bit::ForceExitSurface;
}

// Acts on the dialog the next command opens, once its event loop runs.
template <class Dialog = QDialog>
void OnNextDialog(std::type_identity_t<std::function<void(Dialog&)>> act) {
  QTimer::singleShot(0, [act] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    // The airway editor and info report stand over the frame without being modal.
    for (QWidget* top : QApplication::topLevelWidgets())
      if (!dialog && top->isVisible() && qobject_cast<QDialog*>(top))
        dialog = qobject_cast<Dialog*>(top);
    QVERIFY(dialog);
    act(*dialog);
  });
}

inline int LitPixels(const QImage& image) {
  int lit = 0;
  const QImage x = image.convertToFormat(QImage::Format_RGB32);
  for (int row = 0; row < x.height(); ++row)
    for (int col = 0; col < x.width(); ++col) lit += (x.pixel(col, row) & 0xFFFFFF) != 0;
  return lit;
}

// Share of pixels whose channels differ by more than `tolerance`; 1 for a size mismatch.
inline double DifferingShare(const QImage& a, const QImage& b, int tolerance) {
  if (a.size() != b.size()) return 1;
  const QImage x = a.convertToFormat(QImage::Format_RGB32);
  const QImage y = b.convertToFormat(QImage::Format_RGB32);
  qint64 differing = 0;
  for (int row = 0; row < x.height(); ++row)
    for (int col = 0; col < x.width(); ++col) {
      const QRgb p = x.pixel(col, row), q = y.pixel(col, row);
      differing += std::abs(qRed(p) - qRed(q)) > tolerance ||
                   std::abs(qGreen(p) - qGreen(q)) > tolerance ||
                   std::abs(qBlue(p) - qBlue(q)) > tolerance;
    }
  return double(differing) / (double(x.width()) * x.height());
}

// `reference` is relative to the source tree; the picture is also left in the scratch folder.
inline void CompareWithReference(const QImage& picture, const std::string& reference, int tolerance,
                                 double allowedShare) {
  QVERIFY(!picture.isNull());
  const QString path = QString::fromStdString(SourcePath(reference));
  const QString seen = QString::fromStdString(ScratchDir()) + QFileInfo(path).fileName();
  picture.save(seen);
  if (qEnvironmentVariable("GALERIS_UPDATE_REFERENCES") == "1") {
    QVERIFY(picture.save(path));
    return;
  }
  const QImage expected(path);
  QVERIFY2(!expected.isNull(),
           qPrintable("no reference picture " + path + " (run with GALERIS_UPDATE_REFERENCES=1)"));
  const double share = DifferingShare(picture, expected, tolerance);
  QVERIFY2(share <= allowedShare, qPrintable(seen + " differs from its reference"));
}

}  // namespace galeris::test
