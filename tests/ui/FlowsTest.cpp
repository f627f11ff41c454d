// The import and the delete flow, from the button to the label.
#include "tests/support/WindowFixture.h"

#include "ui/IRWindow.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"

#include <QMimeData>
#include <QRegularExpression>

namespace cabslot::testing {
namespace {

using namespace std::chrono_literals;

const QString ready = "Load a WAV file into a slot, or drop one on it.";
const QString fileError = "File Error!! Please check the file or file name for errors.";

class Flows : public WindowFixture {
protected:
    void expectErrorSheet(const QString& detail) {
        auto* box = dialog<cabslot::Alert>();
        ASSERT_NE(box, nullptr);
        const Shown alert = read(*box);
        EXPECT_EQ(alert.title, "Error");
        EXPECT_EQ(alert.detail, detail);
        EXPECT_EQ(alert.button, "Cancel");
        EXPECT_EQ(alert.modality, Qt::WindowModal);
        QTest::mouseClick(box->button(), Qt::LeftButton);
        EXPECT_EQ(dialog<cabslot::Alert>(), nullptr);
        EXPECT_EQ(isInportIR, 0);
    }
};

TEST_F(Flows, ImportShowsTheNameThePedalStoresTheBlock) {
    open();
    press(3);
    auto* panel = dialog<OpenPanel>();
    ASSERT_NE(panel, nullptr);
    ::testing::internal::CaptureStdout();
    choose(wav());
    const QString printed = QString::fromStdString(::testing::internal::GetCapturedStdout());
    EXPECT_TRUE(printed.startsWith("0\n1\n")) << printed.toStdString();
    EXPECT_TRUE(printed.endsWith(
        QString("选中了文件 Optional(\"%1\")\n").arg(QString::fromStdString(wav()))));
    EXPECT_EQ(label(3), "Cab           ");
    EXPECT_EQ(label(2), "User 2          ");
    EXPECT_EQ(status(), "“Cab” is in User 3.");
    EXPECT_EQ(store.slot(2).block[0], 0x123400U);
}

TEST_F(Flows, DeleteShowsTheDefaultNameOfTheView) {
    open();
    ::testing::internal::CaptureStdout();
    press(7);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(label(3), "User3") << "without a blank";
    EXPECT_EQ(IRNameArr.at(2), "User 3         ");
    EXPECT_FALSE(store.slot(2).factory);
    press(5);
    EXPECT_EQ(label(1), "User 1");
    EXPECT_EQ(status(), "User 1 is cleared.");
}

TEST_F(Flows, RefusedFilesAreReportedAndNotSent) {
    open();
    const std::string before = label(1).toStdString();
    for (const std::string& path :
         {folder.write("Text.wav", "this is no sound, but long enough"),
          folder.write("Slow.wav", WavBuilder{.rate = 22050}.add(1).bytes())}) {
        press(1);
        choose(path);
        expectErrorSheet(fileError);
        EXPECT_EQ(label(1).toStdString(), before);
        EXPECT_EQ(IR_InportNumber, 1U);
    }
    EXPECT_EQ(status(),
              "“Slow.wav”: 22050 Hz is not supported; 44100, 48000, 88200 and 96000 Hz are.");
}

TEST_F(Flows, DeleteWithoutABlankIR) {
    open();
    std::filesystem::remove(folder.path("bundle/Contents/Resources/0.wav"));
    press(6);
    expectErrorSheet("Error");

    folder.write("bundle/Contents/Resources/0.wav", WavBuilder{.rate = 8000}.add(0).bytes());
    const QString before = status();
    ::testing::internal::CaptureStderr();
    press(6);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "") << "samples are no reason to speak";
    EXPECT_EQ(status(), before);
    EXPECT_EQ(dialog<cabslot::Alert>(), nullptr);
    EXPECT_EQ(label(2), "User 2          ");
}

TEST_F(Flows, ACancelledPanelChangesNothing) {
    open();
    press(2);
    ::testing::internal::CaptureStdout();
    dialog<OpenPanel>()->reject();
    QCoreApplication::processEvents();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "取消\n");
    EXPECT_EQ(IR_InportNumber, 0U);
    EXPECT_EQ(label(2), "User 2          ");
}

// The window arms its wait after the upload, so a confirmation that comes at once is missed.
TEST_F(Flows, APedalThatConfirmsAtOnceCosts600Polls) {
    auto service = std::make_unique<FakeManager>();
    FakeManager& pedal = *service;
    pedal.devices[0]->onReport = [&](std::size_t report) {
        if (report == 2)
            pedal.receive(allDataFrame('1', std::string(64, 'n')));
        if (report == 57)
            pedal.receive(confirmationFrame);
    };
    std::atomic<int> ticks{0};
    pedal.onWait = [&](auto) { ++ticks; };
    int pauses = 0;
    QString waiting;
    pause = [&](std::chrono::milliseconds time) {
        EXPECT_EQ(time, 1s);
        ++pauses;
        waiting = status();
        if (isInportIR == 0)
            return;
        ASSERT_TRUE(QTest::qWaitFor([] { return isInportIR == 0; }));
        ASSERT_TRUE(QTest::qWaitFor([&, end = ticks + 4] { return ticks > end; }));
    };
    openOn(std::move(service));
    ASSERT_TRUE(QTest::qWaitFor([this] { return label(1) == QString(16, 'n'); }));
    press(1);
    ::testing::internal::CaptureStdout();
    choose(wav());
    const std::string printed = ::testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find("598\n599\n选"), std::string::npos);
    EXPECT_EQ(pauses, 601);
    const QRegularExpression sent(
        "Sent to User 1. Waiting for the pedal to confirm, 599 s of at most 600 s[.]");
    EXPECT_TRUE(sent.match(waiting).hasMatch()) << waiting.toStdString();
    EXPECT_EQ(label(1), "Cab           ") << "as if it had been confirmed";
    EXPECT_EQ(status(), ready);
}

TEST_F(Flows, APedalThatGoesDuringTheUploadIsReportedAndTheAlertFollows) {
    simulator::PedalBehaviour options;
    options.faults.vanishAfter = 30;
    QString told;
    pause = [&](std::chrono::milliseconds) {
        QTest::qWait(isDeviceConnent == 1 ? 20 : 0);
        told = status();
        EXPECT_TRUE(said.empty());
    };
    open(options);
    answerDisconnects();
    press(6);
    const QRegularExpression gone(
        "The pedal is gone. Still waiting for User 2, [0-9]+ s of at most 600 s[.]");
    EXPECT_TRUE(gone.match(told).hasMatch()) << told.toStdString();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(said.size(), 1U);
}

// Everything that a person does during an upload is thrown away, but for closing the window.
TEST_F(Flows, InputDuringTheUploadIsDroppedAndClosingIsHonouredAtItsEnd) {
    int polls = 0;
    pause = [&](std::chrono::milliseconds) {
        if (++polls == 1) {
            press(2);
            QTest::keyClick(window.get(), Qt::Key_4, Qt::ControlModifier);
            EXPECT_TRUE(window->findChild<QWidget*>("progress")->isVisible());
            const QRegularExpression frame("Sending frame [1-7] of 7 to User 1[.]");
            EXPECT_TRUE(frame.match(status()).hasMatch()) << status().toStdString();
            EXPECT_FALSE(button(6)->isEnabled());
        }
        QTest::qWait(20);
    };
    open();
    press(1);
    choose(wav());
    EXPECT_GT(polls, 1);
    QTest::qWait(20);
    EXPECT_EQ(dialog<OpenPanel>(), nullptr) << "no click was replayed";
    EXPECT_TRUE(ended.empty());
    EXPECT_FALSE(window->findChild<QWidget*>("progress")->isVisible());

    pause = [&](std::chrono::milliseconds) {
        QTest::mouseClick(window->closeButton(), Qt::LeftButton);
        EXPECT_TRUE(window->isVisible());
        QTest::qWait(60);
        EXPECT_TRUE(status().endsWith("Closing when this is done.")) << status().toStdString();
    };
    press(5);
    EXPECT_EQ(label(1), "User 1") << "the upload went to its end first";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_EQ(ended.front(), 0);
}

TEST_F(Flows, FilesAreDroppedOnTheirSlot) {
    open();
    auto* row = window->findChild<SlotRow*>("row4");
    const auto url = [](const std::string& path) {
        return QUrl::fromLocalFile(QString::fromStdString(path));
    };
    QMimeData dragged;
    dragged.setUrls({url(wav("Deep.WAV"))});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(row, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(row, &drop);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(4) == "Deep.WAV      "; }));

    const auto slow = url(folder.write("Slow.wav", WavBuilder{.rate = 22050}.add(1).bytes()));
    const std::pair<QList<QUrl>, QString> refused[] = {
        {{url(wav()), url(wav("b.wav"))},
         "2 files were dropped, but from User 4 on there is 1 slot: “Cab.wav”, “b.wav”."},
        {{url(folder.path("song.mp3"))}, "“song.mp3”: only WAV files (.wav) can be dropped."},
        {{QUrl("https://example.org/a.wav")},
         "“https://example.org/a.wav”: it is not a file on this computer."},
    };
    for (const auto& [files, why] : refused) {
        emit row->filesDropped(files);
        EXPECT_EQ(status(), why);
        expectErrorSheet(fileError);
    }
    emit window->findChild<SlotRow*>("row2")->filesDropped({url(wav()), slow, slow});
    EXPECT_EQ(status().count("22050 Hz is not supported"), 2) << "each reason is shown";
    expectErrorSheet(fileError);
    EXPECT_EQ(label(2), "User 2          ") << "none is sent unless all can be";
    EXPECT_EQ(label(4), "Deep.WAV      ");

    QStringList told;
    pause = [&](std::chrono::milliseconds) {
        told << status().left(6);
        QTest::qWait(20);
    };
    emit window->findChild<SlotRow*>("row2")->filesDropped({url(wav()), url(wav("b.wav"))});
    EXPECT_EQ(label(2), "Cab           ");
    EXPECT_EQ(label(3), "b             ");
    EXPECT_TRUE(told.contains("1 of 2") && told.contains("2 of 2")) << told.join(' ').toStdString();
    press(6);
    EXPECT_EQ(status(), "User 2 is cleared.") << "the numbers end with the series";
}

// One guard for buttons, keys, drops and screen readers, who all see disabled buttons.
TEST_F(Flows, NothingStartsWithoutNamesOrBehindAnAlert) {
    const auto tryAll = [this] {
        for (int tag = 1; tag <= 8; ++tag) {
            EXPECT_FALSE(button(tag)->isEnabled()) << tag;
            press(tag);
        }
        QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier);
        QTest::keyClick(window.get(), Qt::Key_3, Qt::ControlModifier | Qt::ShiftModifier);
        auto* row = window->findChild<SlotRow*>("row3");
        EXPECT_FALSE(row->acceptDrops());
        emit row->filesDropped({QUrl::fromLocalFile(QString::fromStdString(wav()))});
        EXPECT_EQ(dialog<OpenPanel>(), nullptr);
        EXPECT_EQ(IR_InportNumber, 0U);
    };
    openOn(std::make_unique<FakeManager>()); // a pedal that never sends its names
    tryAll();
    delegate.reset();
    resetSharedState();

    open();
    press(2);
    root().alterIRError("Error");
    choose(wav()); // the panel was open before
    tryAll();
    QTest::mouseClick(dialog<cabslot::Alert>()->button(), Qt::LeftButton);
    EXPECT_TRUE(button(8)->isEnabled());
    root().hidClass().setKVOValue(deviceLost);
    bool tried = false;
    QTimer::singleShot(0, window.get(), [&] {
        tryAll();
        tried = true;
        answerDisconnects();
    });
    ASSERT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); }));
    EXPECT_TRUE(tried);
}

TEST_F(Flows, KeysReachTheirSlots) {
    open();
    QTest::keyClick(window.get(), Qt::Key_2, Qt::ControlModifier);
    auto* panel = dialog<OpenPanel>();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->windowTitle(), "Load a WAV into User 2");
    panel->reject();
    QTest::keyClick(window.get(), Qt::Key_4, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(label(4), "User 4");
}

TEST_F(Flows, APictureIsRememberedWhileThePedalHasTheNameOfIt) {
    const WithVariable memory("CABSLOT_STATE", folder.path("memory"));
    pedalName = "sim";
    open();
    root().importFile(2, {.path = QString::fromStdString(wav()), .prepares = true});
    press(7);
    const auto start = [this] { // the window anew, on the same pedal
        close();
        open();
    };
    const auto picture = [this](int slot) {
        return window->findChild<SlotPicture*>(QString("picture%1").arg(slot));
    };
    const auto says = [this](int slot, const QString& text) {
        auto* row = window->findChild<SlotRow*>(QString("row%1").arg(slot));
        return std::ranges::any_of(row->findChildren<QLabel*>(), [&](const QLabel* label) {
            return label->isVisible() && label->text().startsWith(text);
        });
    };
    start();
    EXPECT_TRUE(picture(2)->isEnabled() && says(2, "Cab.wav, "));
    EXPECT_TRUE(picture(2)->accessibleDescription().startsWith("Cab; peak -0.30 dBFS"))
        << picture(2)->accessibleDescription().toStdString();
    EXPECT_TRUE(picture(3)->isEnabled() && says(3, "Cleared on "));
    EXPECT_FALSE(picture(1)->isEnabled());

    simulator::PedalSlot changed = store.slot(1);
    changed.name.fill('x'); // somebody else has loaded this slot
    std::string why;
    ASSERT_TRUE(store.store(1, changed, why)) << why;
    start();
    EXPECT_FALSE(picture(2)->isEnabled() || says(2, "Cab.wav"));
    EXPECT_TRUE(picture(3)->isEnabled());
}

TEST_F(Flows, WhatWasLoadedIsSeenInItsRowAndInAViewOfItsOwn) {
    open();
    auto* picture = window->findChild<SlotPicture*>("picture2");
    press(2);
    choose(folder.write("Eight.wav", WavBuilder{.bits = 8}.add(200).bytes()));
    EXPECT_TRUE(picture->accessibleDescription().startsWith("Eight; peak -7.18 dBFS"))
        << picture->accessibleDescription().toStdString();
    EXPECT_EQ(picture->accessibleName(), "Waveform of User 2");
    QTest::keyClick(picture, Qt::Key_Space);
    auto* view = dialog<IRWindow>();
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->windowTitle(), "User 2: Eight");
    const auto* findings = view->findChild<QLabel*>("findings");
    EXPECT_TRUE(findings->text().startsWith("8 bits: ")) << findings->text().toStdString();

    QTest::mouseClick(picture, Qt::LeftButton);
    EXPECT_EQ(dialog<IRWindow>(), view) << "one view a slot";
    press(6);
    EXPECT_EQ(view->windowTitle(), "User 2: User 2") << "it follows what is loaded";
    EXPECT_EQ(findings->text(), "Silent: all points are zero.");
    QTest::mouseClick(window->closeButton(), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ended.empty(); })) << "an open view holds nothing";
}

} // namespace
} // namespace cabslot::testing
