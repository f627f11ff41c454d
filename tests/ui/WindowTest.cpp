// The shell, and the reaction to the device link's events.
#include "tests/support/WindowFixture.h"
#include "ui/Arguments.h"

namespace cabslot::testing {
namespace {

class Window : public WindowFixture {};

TEST_F(Window, WithoutAPedalTheAlertIsShownAndTheProcessEnds) {
    auto service = std::make_unique<FakeManager>();
    service->unannounced.clear();
    openOn(std::move(service));
    answerDisconnects();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(ended.front(), 0);
    ASSERT_FALSE(said.empty());
    EXPECT_EQ(said[0].title, "Error");
    EXPECT_EQ(said[0].detail, "Disconnect! Please try again after connecting.");
    EXPECT_EQ(said[0].button, "Ok");
    EXPECT_EQ(said[0].modality, Qt::ApplicationModal);
    EXPECT_EQ(status(), "It is switched off.");
    EXPECT_EQ(label(1), "…") << "the form's own text";
}

TEST(WindowArguments, AWrongVariableNeverReachesTheRealPedal) {
    const char* const program[] = {"cabslot", "--pedal", "sim"};
    cabslot::WindowArguments arguments;
    {
        const WithVariable wrong("CABSLOT_PEDAL", "nonsense");
        EXPECT_EQ(readArguments(1, program, arguments), 2);
        EXPECT_EQ(readArguments(3, program, arguments), std::nullopt);
        EXPECT_EQ(arguments.pedal, "sim");
    }
    const WithVariable right("CABSLOT_PEDAL", "unix:/x");
    EXPECT_EQ(readArguments(1, program, arguments), std::nullopt);
    EXPECT_EQ(arguments.pedal, "unix:/x");
}

TEST_F(Window, EventsReadTheValueAsItIsWhenTheyRun) {
    open();
    root().User1Label->setText("old");
    root().hidClass().setKVOValue(2); // neither 0 nor 1: taken like 0
    QCoreApplication::processEvents();
    EXPECT_EQ(label(1), "User 1          ");

    root().User1Label->setText("old");
    root().hidClass().setKVOValue(0);
    root().hidClass().setKVOValue(1);
    answerDisconnects();
    QCoreApplication::processEvents();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(label(1), "old") << "both read 1: no label is redrawn";
}

TEST_F(Window, EventsWaitWhileAnUploadIsUnderWay) {
    bool raised = false;
    pause = [&](std::chrono::milliseconds) {
        root().User2Label->setText("old");
        root().hidClass().setKVOValue(0);
        raised = true;
        QTest::qWait(20);
        EXPECT_EQ(label(2), "old");
    };
    open();
    press(5);
    ASSERT_TRUE(raised);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(2) == "User 2          "; }));
}

TEST_F(Window, HasTheLookOfTheShell) {
    open();
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::Window));
    EXPECT_FALSE(window->zoomButton()->isVisible());
    EXPECT_TRUE(window->closeButton()->isVisible());
    EXPECT_EQ(window->findChild<QLabel*>("titleText")->text(), "");
    EXPECT_EQ(window->contentView()->geometry(), window->rect()) << "under the title bar, too";
    const QPoint centre = window->geometry().center() - window->screen()->geometry().center();
    EXPECT_LE(centre.manhattanLength(), 2);
    // Moved by the background; there is no window manager here, so by hand.
    const QPoint before = window->pos();
    auto* line = window->findChild<QLabel*>("status");
    QTest::mousePress(line, Qt::LeftButton, {}, {5, 5});
    QTest::mouseMove(line, {45, 25});
    QTest::mouseRelease(line, Qt::LeftButton, {}, {45, 25});
    EXPECT_EQ(window->pos() - before, QPoint(40, 20));

    EXPECT_EQ(window->focusWidget(), button(1)) << "from the start";
    EXPECT_EQ(window->findChild<QWidget*>("row2")->accessibleName(), "User 2");
    EXPECT_EQ(window->findChild<QLabel*>("User2Label")->accessibleName(), "User 2");

    // Tab goes through the slots row by row.
    button(1)->setFocus();
    for (const int tag : {5, 2, 6, 3, 7, 4, 8}) {
        QTest::keyClick(window.get(), Qt::Key_Tab);
        EXPECT_TRUE(button(tag)->hasFocus()) << tag;
    }
}

// An event that is raised while the link is being opened is not observed: with no names yet, to
// react to it would end the process.
TEST_F(Window, TheLinkIsOpenedBeforeItsEventsAreObserved) {
    bool opened = false;
    duringOpenDevice = [&opened](HIDClass& link) {
        opened = true;
        link.setKVOValue(2);
    };
    openOn(std::make_unique<FakeManager>());
    QTest::qWait(1);
    EXPECT_TRUE(opened);
    duringOpenDevice = nullptr;
}

TEST_F(Window, ALossBeforeEventsAreObservedIsNotMissed) {
    duringOpenDevice = [](HIDClass& link) { link.setKVOValue(deviceLost); };
    openOn(std::make_unique<FakeManager>());
    duringOpenDevice = nullptr;
    answerDisconnects();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
}

} // namespace

std::function<void(HIDClass&)> WindowFixture::duringOpenDevice;

} // namespace cabslot::testing

// The linker leads the window's call of HIDClass::OpenDevice here.
extern "C" void realOpen(cabslot::HIDClass* link) asm("__real__ZN7cabslot8HIDClass10OpenDeviceEv");
extern "C" void seenOpen(cabslot::HIDClass* link) asm("__wrap__ZN7cabslot8HIDClass10OpenDeviceEv");

void seenOpen(cabslot::HIDClass* link) {
    if (cabslot::testing::WindowFixture::duringOpenDevice)
        cabslot::testing::WindowFixture::duringOpenDevice(*link);
    realOpen(link);
}
