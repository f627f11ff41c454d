// What ends a wait before its time: the user, closing the window, and a pedal that says nothing.
#include "tests/support/WindowFixture.h"

#include "ui/SlotRow.h"

#include <QAccessible>
#include <QAccessibleActionInterface>

namespace cabslot::testing {
namespace {

class Waiting : public WindowFixture {
protected:
    static simulator::PedalBehaviour deafPedal() {
        simulator::PedalBehaviour options;
        options.faults.neverConfirm = true;
        return options;
    }

    QPushButton* stopButton() { return window->findChild<QPushButton*>("stopWaiting"); }

    /// Runs `act` in each pause of the wait for the confirmation, with its number, from 0 on.
    void inEachPoll(std::function<void(int poll)> act) {
        pause = [this, act = std::move(act)](std::chrono::milliseconds) {
            if (CheckMCUInportIR_Finish == 1)
                act(polls++);
            QTest::qWait(isInportIR == 1 ? 20 : 0);
        };
    }

    int polls = 0;
};

TEST_F(Waiting, TheUserMayStopAfter15SecondsAndWhatFollowsIsAsAfterTheLastPoll) {
    const std::function<void()> ways[] = {
        [this] { QTest::mouseClick(stopButton(), Qt::LeftButton); },
        [this] { QTest::keyClick(window.get(), Qt::Key_Escape); },
        [this] { // as a screen reader presses; the press takes effect with the next events
            QAccessible::queryAccessibleInterface(stopButton())
                ->actionInterface()
                ->doAction(QAccessibleActionInterface::pressAction());
            ASSERT_TRUE(QTest::qWaitFor([this] { return !stopButton()->isDown(); }));
        },
    };
    open(deafPedal());
    const QString ready = status();
    for (const auto& stop : ways) {
        polls = 0;
        CheckMCUInportIR_Finish = 0; // the pauses are recognised by it
        inEachPoll([&](int poll) {
            EXPECT_EQ(stopButton()->isVisible(), poll >= 15) << poll;
            EXPECT_TRUE(status().contains(QString("%1 s of at most 600 s").arg(poll)));
            if (poll == 14)
                QTest::keyClick(window.get(), Qt::Key_Escape);
            if (poll == 15)
                stop();
        });
        root().User1Label->setText("old");
        ::testing::internal::CaptureStdout();
        EXPECT_FALSE(root().importFile(1, {QString::fromStdString(wav())}));
        const std::string printed = ::testing::internal::GetCapturedStdout();
        EXPECT_EQ(polls, 16);
        EXPECT_NE(printed.find("\n14\n15\n选"), std::string::npos) << printed;
        EXPECT_EQ(label(1), "Cab           ");
        EXPECT_EQ(status(), ready);
        EXPECT_EQ(CheckMCUInportIR_Finish, 1U);
        EXPECT_FALSE(stopButton()->isVisible());
        EXPECT_EQ(dialog<cabslot::Alert>(), nullptr);
    }
}

TEST_F(Waiting, AGonePedalCanBeLeftAtOnce) {
    simulator::PedalBehaviour options;
    options.faults.vanishAfter = 30;
    inEachPoll([this](int) {
        if (isDeviceConnent == 1)
            return;
        EXPECT_TRUE(status().contains("The pedal is gone. Still waiting for User 2, "));
        QTest::mouseClick(stopButton(), Qt::LeftButton);
    });
    open(options);
    answerDisconnects();
    const QUrl file = QUrl::fromLocalFile(QString::fromStdString(wav()));
    const QUrl other = QUrl::fromLocalFile(QString::fromStdString(wav("b.wav")));
    emit window->findChild<SlotRow*>("row2")->filesDropped({file, other});
    EXPECT_LT(polls, 15);
    EXPECT_EQ(label(2), "Cab           ");
    EXPECT_EQ(label(3), "User 3          ") << "the series ends with the first failure";
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(said.size(), 1U);
}

TEST_F(Waiting, ClosingLeavesThePedalOnePollAndSendsNoMoreFiles) {
    for (const bool confirms : {true, false}) {
        polls = 0;
        open(confirms ? quickPedal() : deafPedal());
        inEachPoll([&](int) {
            QTest::mouseClick(window->closeButton(), Qt::LeftButton);
            EXPECT_TRUE(!confirms || QTest::qWaitFor([] { return CheckMCUInportIR_Finish == 0; }));
        });
        const QUrl file = QUrl::fromLocalFile(QString::fromStdString(wav()));
        const QUrl other = QUrl::fromLocalFile(QString::fromStdString(wav("b.wav")));
        emit window->findChild<SlotRow*>("row3")->filesDropped({file, other});
        EXPECT_EQ(polls, 1);
        EXPECT_EQ(label(3), "Cab           ");
        EXPECT_EQ(label(4), "User 4          ");
        EXPECT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
        close();
        ended.clear();
    }
}

TEST_F(Waiting, APedalThatSendsNoNamesIsReported) {
    namesWait = std::chrono::milliseconds(20);
    openOn(std::make_unique<FakeManager>());
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return status() == "The pedal is there but did not send its data within 0.02 s; unplug it, "
                           "plug it in and try again.";
    })) << status().toStdString();
}

} // namespace
} // namespace cabslot::testing
