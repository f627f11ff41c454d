// The open panel: what it shows of the file that is pointed at, and how that is heard.
#include "tests/support/WindowFixture.h"

#include "prepare/Prepare.h"
#include "ui/AppMenu.h"
#include "ui/IRWindow.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>

namespace cabslot::testing {
namespace {

class Panel : public WindowFixture {
protected:
    Panel() {
        std::filesystem::create_directory(folder.path("irs"));
        add("1 Half.wav", 0x4000);
        add("2 Quarter.WAV", 0x2000);
        folder.write("irs/3 Broken.wav", "RIFF....WAVE");
        add("4 Text.txt", 1);
        QSettings().setValue("openPanel/lastFolder", QString::fromStdString(folder.path("irs")));
    }
    ~Panel() override { QSettings().clear(); }

    void add(const std::string& file, int sample) {
        folder.write("irs/" + file, WavBuilder{}.add(sample).bytes());
    }

    void openPanel(const QStringList& expected = {"1 Half.wav", "2 Quarter.WAV", "3 Broken.wav"}) {
        open();
        press(2);
        panel = dialog<OpenPanel>();
        ASSERT_NE(panel, nullptr);
        list = panel->findChild<QAbstractItemView*>("files");
        name = panel->findChild<QLineEdit*>("fileName");
        // It is filled in the background.
        ASSERT_TRUE(QTest::qWaitFor([&] { return files() == expected; }))
            << files().join('|').toStdString();
    }

    QStringList files() {
        QStringList names;
        for (int row = 0; row < list->model()->rowCount(); ++row)
            names << list->model()->index(row, 0).data().toString();
        return names;
    }

    std::string text(const char* label) {
        return panel->findChild<QLabel*>(label)->text().toStdString();
    }
    QPushButton* listen() { return panel->findChild<QPushButton*>("listen"); }
    void key(Qt::Key key) { QTest::keyClick(panel->focusWidget(), key); }

    bool isHeard(std::vector<double> what) {
        return QTest::qWaitFor(
            [&] { return sound.device->use([&] { return sound.device->heard == what; }); });
    }

    bool hasStopped() {
        return QTest::qWaitFor(
            [&] { return sound.device->use([&] { return sound.device->stops == 1; }); });
    }

    OpenPanel* panel = nullptr;
    QAbstractItemView* list = nullptr;
    QLineEdit* name = nullptr;
};

TEST_F(Panel, TheMenusPrepareHoldsForDropsAndThePanel) {
    openPanel();
    auto* box = panel->findChild<QCheckBox*>("prepare");
    auto* menu = window->menu().menu();
    emit menu->aboutToShow();
    const auto entries = menu->actions();
    QAction* const entry = *std::ranges::find(entries, "&Prepare files", &QAction::text);
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    EXPECT_EQ(status(), "Files are prepared before they are loaded.");
    emit qApp->focusWindowChanged(nullptr);
    EXPECT_TRUE(box->isChecked());
    const std::string file = folder.path("irs/1 Half.wav");
    emit window->findChild<SlotRow*>("row3")->filesDropped(
        {QUrl::fromLocalFile(QString::fromStdString(file))});
    EXPECT_TRUE(store.slot(2).block == prepareFile(file, {}).ir.block);

    box->setChecked(false);
    emit menu->aboutToShow();
    EXPECT_FALSE(entry->isChecked());
}

TEST_F(Panel, PreparesWhatIsShownAndLoaded) {
    openPanel();
    auto* prepare = panel->findChild<QCheckBox*>("prepare");
    EXPECT_FALSE(prepare->isChecked()) << "off until somebody turns it on";
    key(Qt::Key_Down);
    EXPECT_NE(text("irDetail").find("peak -6.02 dBFS"), std::string::npos) << text("irDetail");
    prepare->setChecked(true);
    EXPECT_NE(text("irDetail").find(". Peak -0.30 dBFS"), std::string::npos) << text("irDetail");
    panel->accept();
    QCoreApplication::processEvents();
    const PreparedIR prepared = prepareFile(folder.path("irs/1 Half.wav"), {});
    EXPECT_TRUE(store.slot(1).block == prepared.ir.block && prepared.ir.block != prepared.plain);
    EXPECT_EQ(label(2), "1 Half        ") << "under the chosen file's name";
    press(3);
    EXPECT_TRUE(dialog<OpenPanel>()->findChild<QCheckBox*>("prepare")->isChecked());
}

TEST_F(Panel, ANameIsTypedOrProposed) {
    add("Ämp.wav", 0x1000);
    openPanel({"1 Half.wav", "2 Quarter.WAV", "3 Broken.wav", "Ämp.wav"});
    auto* field = panel->findChild<QLineEdit*>("slotName");
    auto* proposal = panel->findChild<QPushButton*>("proposal");
    key(Qt::Key_Down);
    EXPECT_EQ(field->text(), "1 Half");
    EXPECT_FALSE(proposal->isVisible()) << "no slot has that name";
    field->clear();
    for (const QChar typed : QStringLiteral("öTen/letters"))
        QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(typed), Qt::NoModifier);
    EXPECT_EQ(text("irName"), "Ten/letter") << "nothing but what the pedal can show";
    list->setCurrentIndex(list->model()->index(3, 0));
    EXPECT_NE(text("irDetail").find("which the pedal cannot show"), std::string::npos);
    EXPECT_EQ(field->text(), "") << "the other name was for the other file";
    QTest::mouseClick(proposal, Qt::LeftButton);
    EXPECT_EQ(text("irName"), "Amp");
    panel->accept();
    ASSERT_TRUE(QTest::qWaitFor([this] { return label(2) == "Amp           "; }));

    const auto url = [&](const char* file) {
        return QUrl::fromLocalFile(QString::fromStdString(wav(file)));
    };
    const QList<QUrl> kin{url("Acme 4x12 Cap 1.wav"), url("Acme 4x12 Cone 2.wav")};
    emit window->findChild<SlotRow*>("row3")->filesDropped(kin);
    EXPECT_NE(label(3), label(4));
    EXPECT_TRUE(status().endsWith(" Its file gives a name that is taken."))
        << status().toStdString();
}

TEST_F(Panel, KeysStepThroughTheFilesAndEachIsShown) {
    openPanel();
    EXPECT_EQ(text("irDetail"), "Select a file to see what it would put into the pedal.");
    EXPECT_TRUE(list->hasFocus());
    name->setFocus();
    key(Qt::Key_Down);
    EXPECT_TRUE(list->hasFocus()) << "from the name the arrows lead into the list";
    EXPECT_EQ(text("irName"), "1 Half");
    EXPECT_EQ(text("irDetail"),
              "WAV, 44100 Hz, 16 bits, 1 channel; peak -6.02 dBFS, RMS -36.12 dBFS");
    EXPECT_EQ(text("findings"), "Nothing odd was found.");
    EXPECT_EQ(name->text(), "1 Half.wav");
    key(Qt::Key_Down);
    EXPECT_EQ(text("irName"), "2 Quarter.") << "ten characters, as the pedal will show it";
    key(Qt::Key_Down);
    EXPECT_EQ(text("irName"), "3 Broken.wav");
    EXPECT_EQ(text("irDetail"),
              "It is refused: it is a damaged WAV file: it has no \"fmt \" chunk.");
    EXPECT_EQ(text("findings"), "");
    EXPECT_FALSE(panel->findChild<QWidget*>("wave")->isVisible());
    std::filesystem::remove(folder.path("irs/2 Quarter.WAV"));
    key(Qt::Key_Up);
    EXPECT_TRUE(text("irDetail").starts_with("It is refused: there is no such file"));
    EXPECT_EQ(SendisInternalIR, 0);
    EXPECT_EQ(irdatabuff[0], 0U) << "a look touches nothing that is sent";
}

TEST_F(Panel, FindsFilesByWordsInSubfoldersAndReturnsToTheFolder) {
    QDir().mkpath(QString::fromStdString(folder.path("irs/Mesa")));
    add("Mesa/V30 SM57 cap.wav", 0x2000);
    add("Mesa/V30 SM57 cone.wav", 0x2000);
    openPanel({"Mesa", "1 Half.wav", "2 Quarter.WAV", "3 Broken.wav"});
    const auto lists = [this](const QStringList& expected) {
        return QTest::qWaitFor([&] { return files() == expected; });
    };
    auto* filter = panel->findChild<QLineEdit*>("filter");
    filter->setText("CAP 57");
    EXPECT_TRUE(lists({})) << files().join('|').toStdString();
    auto* subfolders = panel->findChild<QCheckBox*>("subfolders");
    subfolders->click();
    EXPECT_TRUE(lists({"V30 SM57 cap.wav"})) << files().join('|').toStdString();
    filter->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(text("irName"), "V30 SM57 c");
    filter->clear();
    EXPECT_TRUE(lists(
        {"1 Half.wav", "2 Quarter.WAV", "3 Broken.wav", "V30 SM57 cap.wav", "V30 SM57 cone.wav"}));
    EXPECT_EQ(name->text(), "Mesa/V30 SM57 cap.wav") << "it stays selected";
    subfolders->click();
    EXPECT_TRUE(lists({"Mesa", "1 Half.wav", "2 Quarter.WAV", "3 Broken.wav"}));
    list->setFocus();
    key(Qt::Key_Home);
    key(Qt::Key_Return);
    EXPECT_TRUE(lists({"V30 SM57 cap.wav", "V30 SM57 cone.wav"}));
    key(Qt::Key_Backspace);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->currentIndex().data() == "Mesa"; }));
    QTest::keyClick(panel, Qt::Key_Left, Qt::AltModifier);
    EXPECT_TRUE(lists({"V30 SM57 cap.wav", "V30 SM57 cone.wav"}));
    panel->reject();
    press(3);
    panel = dialog<OpenPanel>();
    list = panel->findChild<QAbstractItemView*>("files");
    EXPECT_TRUE(lists({"V30 SM57 cap.wav", "V30 SM57 cone.wav"})) << "though it was cancelled";
}

TEST_F(Panel, TakesOnlyWavFilesAlsoByName) {
    openPanel();
    name->setFocus();
    name->setText("4 Text.txt");
    key(Qt::Key_Return);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_EQ(text("irName"), "4 Text.txt");
    EXPECT_EQ(text("irDetail"), "Only WAV files (.wav) can be loaded.");
    name->setText("2 Quarter.WAV");
    key(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(2) == "2 Quarter.    "; }));
}

TEST_F(Panel, WhatIsSelectedIsHeardUntilAnUploadBegins) {
    bool heardDuringUpload = false;
    pause = [&](std::chrono::milliseconds) {
        heardDuringUpload |= sound.device->use([&] { return sound.device->stops == 0; });
        QTest::qWait(20);
    };
    openPanel();
    EXPECT_FALSE(listen()->isEnabled()) << "nothing is selected";
    key(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return listen()->isEnabled(); }));
    key(Qt::Key_Space);
    EXPECT_TRUE(isHeard({0.5}));
    EXPECT_TRUE(listen()->isChecked());
    key(Qt::Key_Down);
    EXPECT_TRUE(isHeard({0.5, 0.25}));
    key(Qt::Key_Down);
    EXPECT_TRUE(isHeard({0.5, 0.25, 0})) << "a refused file is silent";
    EXPECT_TRUE(listen()->isChecked());
    key(Qt::Key_Up);
    QTest::mouseClick(panel->findChild<QAbstractButton*>("asLoudAsItIs"), Qt::LeftButton);
    EXPECT_TRUE(isHeard({0.5, 0.25, 0, 0.25, -0.25}));
    list->setFocus();
    QTest::keyClick(panel->focusWidget(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_FALSE(listen()->isChecked());
    EXPECT_TRUE(hasStopped());
    sound.device->use([&] { sound.device->stops = 0; });
    QTest::keyClick(panel->focusWidget(), Qt::Key_L, Qt::ControlModifier);
    EXPECT_TRUE(isHeard({0.5, 0.25, 0, 0.25, -0.25, -0.25}));
    key(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return label(2) == "2 Quarter.    "; }));
    EXPECT_FALSE(heardDuringUpload);
}

TEST_F(Panel, WithoutADeviceTheSwitchSaysWhy) {
    sound.device->whyNone = "no device";
    openPanel();
    EXPECT_TRUE(QTest::qWaitFor(
        [this] { return text("listenWords") == "Sound cannot be played: no device"; }));
    EXPECT_FALSE(listen()->isEnabled());
    EXPECT_EQ(listen()->accessibleDescription(), "Sound cannot be played: no device");
    sound.device->use([&] { sound.device->whyNone = ""; });
    key(Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([this] { return listen()->isEnabled(); })) << "it looks again";
    QTest::mouseClick(listen(), Qt::LeftButton);
    EXPECT_TRUE(isHeard({0.5}));
    sound.device->use([&] { sound.device->whyLost = "it is gone"; });
    EXPECT_TRUE(QTest::qWaitFor([this] { return !listen()->isChecked(); }));
    EXPECT_EQ(text("listenWords"), "Listening has stopped: it is gone");
}

TEST_F(Panel, TheLargerViewIsHeardInstead) {
    openPanel();
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return label(2) == "1 Half        "; }));
    QTest::mouseClick(window->findChild<SlotPicture*>("picture2"), Qt::LeftButton);
    press(3);
    panel = dialog<OpenPanel>();
    list = panel->findChild<QAbstractItemView*>("files");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !files().isEmpty(); }));
    key(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return listen()->isEnabled(); }));
    listen()->click();
    EXPECT_TRUE(isHeard({0.5}));
    auto* view = dialog<IRWindow>();
    QTest::keyClick(view, Qt::Key_L);
    EXPECT_TRUE(isHeard({0.5, 0.5}));
    EXPECT_FALSE(listen()->isChecked());
    EXPECT_TRUE(view->findChild<QPushButton*>("listen")->isChecked());
    bool stopped = false;
    pause = [&](std::chrono::milliseconds) {
        stopped = stopped || hasStopped();
        QTest::qWait(20);
    };
    press(5);
    EXPECT_TRUE(stopped) << "an upload has begun";
    sound.device->use([&] { sound.device->stops = 0; });
    QTest::keyClick(view, Qt::Key_L);
    EXPECT_TRUE(isHeard({0.5, 0.5, 0.5}));
    view->close();
    EXPECT_TRUE(hasStopped());
}

TEST_F(Panel, WhatWasChosenIsThereTheNextTime) {
    {
        Listening chosen(installedSound, folder.path("bundle"));
        chosen.setOwnPhrase("bad");
        chosen.setLevel(Level::asItIs);
    }
    QSettings().remove("openPanel/lastFolder");
    open();
    press(2);
    dialog<OpenPanel>()->findChild<QCheckBox*>("prepare")->setChecked(true);
    choose(folder.path("irs/1 Half.wav"));
    close();
    openPanel(); // in the folder of the chosen file
    EXPECT_TRUE(panel->findChild<QCheckBox*>("prepare")->isChecked());
    EXPECT_TRUE(panel->findChild<QCheckBox*>("asLoudAsItIs")->isChecked());
    const auto* phrase = panel->findChild<QComboBox*>("phrase");
    EXPECT_EQ(phrase->accessibleName(), "Phrase to listen with");
    EXPECT_EQ(phrase->currentIndex(), 2);
    key(Qt::Key_Down);
    ASSERT_TRUE(QTest::qWaitFor([this] { return listen()->isEnabled(); }));
    listen()->click();
    EXPECT_TRUE(QTest::qWaitFor([this] { return text("listenWords").ends_with("it is bad"); }))
        << text("listenWords");
}

} // namespace
} // namespace cabslot::testing
