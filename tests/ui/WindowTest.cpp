// The shell, and the reaction to the device link's events.
#include "tests/support/WindowFixture.h"

#include <QSet>

namespace cabslot::testing {
namespace {

// No device ever comes.
class NoPedal final : public HIDManager {
public:
    bool open(const HIDMatching& /*matching*/, const HIDCallbacks& /*callbacks*/) override {
        return true;
    }
    void waitForEvents(TimePoint deadline) override { std::this_thread::sleep_until(deadline); }
    std::vector<HIDDeviceRef> copyDevices() const override { return {}; }
    std::string whyNoDevice() const override { return "it is in the other room"; }
};

class Window : public WindowFixture {};

TEST_F(Window, WithoutAPedalTheAlertIsShownAndTheProcessEnds) {
    openOn(std::make_unique<NoPedal>());
    answerDisconnects();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(ended.front(), 0);
    ASSERT_FALSE(said.empty());
    EXPECT_EQ(said[0].title, "Error");
    EXPECT_EQ(said[0].detail, "Disconnect! Please try again after connecting.");
    EXPECT_EQ(said[0].buttons, QStringList{"Ok"});
    EXPECT_EQ(said[0].icon, QMessageBox::Warning);
    EXPECT_EQ(said[0].modality, Qt::ApplicationModal);
    EXPECT_EQ(status(), "it is in the other room");
    EXPECT_EQ(label(1), "…") << "the form's own text";
}

TEST_F(Window, EventsReadTheValueAsItIsWhenTheyRun) {
    open();
    root().User1Label->setText("old");
    root().hidClass.setKVOValue(2); // neither 0 nor 1: taken like 0
    QCoreApplication::processEvents();
    EXPECT_EQ(label(1), "User 1          ");

    root().User1Label->setText("old");
    root().hidClass.setKVOValue(0);
    root().hidClass.setKVOValue(1);
    answerDisconnects();
    QCoreApplication::processEvents();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(label(1), "old") << "both read 1: no label is redrawn";
}

TEST_F(Window, EventsWaitWhileAnUploadIsUnderWay) {
    bool raised = false;
    pause = [&](std::chrono::milliseconds) {
        root().User2Label->setText("old");
        root().hidClass.setKVOValue(0);
        raised = true;
        QTest::qWait(20);
        EXPECT_EQ(label(2), "old");
    };
    open();
    press(5);
    ASSERT_TRUE(raised);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(2) == "User 2          "; }));
}

TEST_F(Window, ClosingItEndsTheProcess) {
    open();
    QTest::mouseClick(window->closeButton(), Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(ended, std::vector<int>{0});
}

TEST_F(Window, HasTheLookOfTheShell) {
    open();
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::Window));
    EXPECT_FALSE(window->zoomButton()->isVisible());
    EXPECT_TRUE(window->closeButton()->isVisible());
    EXPECT_EQ(window->findChild<QLabel*>("titleText")->text(), "");
    EXPECT_EQ(window->contentView()->geometry(), window->rect()) << "under the strip, too";
    const QPoint centre = window->geometry().center() - window->screen()->geometry().center();
    EXPECT_LE(centre.manhattanLength(), 2);

    // Moved by the background; there is no window manager here, so by hand.
    const QPoint before = window->pos();
    auto* heading = window->findChild<QLabel*>("heading");
    QTest::mousePress(heading, Qt::LeftButton, {}, {5, 5});
    QTest::mouseMove(heading, {45, 25});
    QTest::mouseRelease(heading, Qt::LeftButton, {}, {45, 25});
    EXPECT_EQ(window->pos() - before, QPoint(40, 20));
}

TEST_F(Window, EveryControlHasANameOfItsOwn) {
    open();
    QSet<QString> names;
    for (int slot = 1; slot <= 4; ++slot) {
        EXPECT_EQ(button(slot)->accessibleName(), QString("Load a WAV into User %1").arg(slot));
        EXPECT_EQ(button(slot + 4)->accessibleName(), QString("Clear User %1").arg(slot));
        EXPECT_EQ(window->findChild<QLabel*>(QString("User%1Label").arg(slot))->accessibleName(),
                  "")
            << "so that its text is read";
    }
    EXPECT_EQ(window->findChild<QWidget*>("progress")->accessibleName(), "Upload progress");

    // Tab walks them row by row.
    button(1)->setFocus();
    for (const int tag : {5, 2, 6, 3, 7, 4, 8}) {
        QTest::keyClick(window.get(), Qt::Key_Tab);
        EXPECT_TRUE(button(tag)->hasFocus()) << tag;
    }
}

using WindowDeathTest = Window;

TEST_F(WindowDeathTest, AMissingOutletIsFatal) {
    GTEST_FLAG_SET(death_test_style, "fast");
    const char* const nil = "Fatal error: Unexpectedly found nil while implicitly unwrapping an "
                            "Optional value";
    open();
    delete root().User2Label.data();
    EXPECT_DEATH(
        {
            root().observeValue();
            QCoreApplication::processEvents();
        },
        nil);
    EXPECT_DEATH(AppDelegate({.manager = *manager, .bundle = {}, .endProcess = {}})
                     .applicationDidFinishLaunching(),
                 nil);
    QObject nobody;
    EXPECT_DEATH(root().add(&nobody), "Fatal error: Unexpectedly found nil while unwrapping");
}

} // namespace
} // namespace cabslot::testing
