// The rotation button: held left of centre it spins the active view into 3-D, the pointer's
// distance sets the speed, a left release stops it and a right release leaves it spinning.
#include <QtTest>

#include "app/frm_window.h"
#include "app/rotator_button.h"
#include "core/headless_ui.h"
#include "core/workspace.h"
#include "tests/support/test_support.h"
#include "view/view_state.h"

namespace galeris {

class RotatorTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    ui_ = std::make_unique<HeadlessUi>();
    ws_ = std::make_unique<Workspace>(*ui_);
    ws_->net.RLBound[1] = {0, 3000, 2000};
    test::AddAirway(ws_->net, 100, 100, 500, 300, 100, 500);
    test::AddAirway(ws_->net, 300, 100, 500, 300, 400, 400);
    window_ = std::make_unique<FrmWindow>(*ws_);
    window_->resize(400, 300);
    window_->show();
    window_->Fit();
    rotator_ = std::make_unique<RotatorButton>([this] { return window_.get(); });
    rotator_->show();
  }

  void leftHoldSpinsIntoThreeDAndReleaseStops() {
    QCOMPARE(window_->View().Is3D, 0);
    QTest::mousePress(rotator_.get(), Qt::LeftButton, {}, QPoint(7, 28));  // left of centre
    QVERIFY(rotator_->Turning());
    QTRY_VERIFY_WITH_TIMEOUT(window_->View().SpinAngle != 0, 2000);
    QVERIFY(window_->View().Is3D != 0);
    QCOMPARE(window_->View().TiltAngle, 0.0f);  // on the centre line: no tilt
    QTest::mouseRelease(rotator_.get(), Qt::LeftButton, {}, QPoint(7, 28));
    QVERIFY(!rotator_->Turning());
    const float spin = window_->View().SpinAngle;
    QTest::qWait(150);
    QCOMPARE(window_->View().SpinAngle, spin);
  }

  void rightReleaseKeepsSpinningWithoutTilt() {
    QTest::mousePress(rotator_.get(), Qt::RightButton, {}, QPoint(40, 10));
    QTest::mouseRelease(rotator_.get(), Qt::RightButton, {}, QPoint(40, 10));
    QVERIFY(rotator_->Turning());
    const float tilt = window_->View().TiltAngle;
    const float spin = window_->View().SpinAngle;
    QTRY_VERIFY_WITH_TIMEOUT(window_->View().SpinAngle != spin, 2000);
    QCOMPARE(window_->View().TiltAngle, tilt);
    QTest::mouseClick(rotator_.get(), Qt::LeftButton, {}, QPoint(22, 28));
    QVERIFY(!rotator_->Turning());
  }

  void noWindowNoTurning() {
    RotatorButton lonely([] { return static_cast<FrmWindow*>(nullptr); });
    lonely.show();
    QTest::mousePress(&lonely, Qt::LeftButton, {}, QPoint(5, 5));
    QVERIFY(!lonely.Turning());
  }

 private:
  std::unique_ptr<HeadlessUi> ui_;
  std::unique_ptr<Workspace> ws_;
  std::unique_ptr<FrmWindow> window_;
  std::unique_ptr<RotatorButton> rotator_;
};

}  // namespace galeris

QTEST_MAIN(galeris::RotatorTest)
#include "qt_rotator.moc"
