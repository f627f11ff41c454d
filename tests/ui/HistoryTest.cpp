// What the window knows of its slots: their second lines, undo, and what they held earlier.
#include "tests/support/WindowFixture.h"

#include "ui/IRWindow.h"
#include "ui/SlotPicture.h"
#include "ui/SlotRow.h"

#include <QListWidget>

namespace cabslot::testing {
namespace {

class History : public WindowFixture {
protected:
    History() { pedalName = "sim"; }

    /// A WAV file whose one point is `sample`.
    QString file(const std::string& name, int sample) {
        return QString::fromStdString(folder.write(name, WavBuilder{}.add(sample).bytes()));
    }

    /// The labels of a slot's row that are shown, such as its second line.
    QLabel* shown(int slot, const QString& text) {
        for (auto* label : row(slot)->findChildren<QLabel*>())
            if (label->isVisible() && (label->accessibleName() == text || label->text() == text))
                return label;
        return nullptr;
    }
    SlotRow* row(int slot) { return window->findChild<SlotRow*>(QString("row%1").arg(slot)); }
    QPushButton* undo() { return window->findChild<QPushButton*>("undo"); }

    const WithVariable memory_{"CABSLOT_STATE", folder.path("memory")};

    std::uint32_t sample(int slot) {
        return store.slot(static_cast<std::size_t>(slot - 1)).block[0];
    }
};

TEST_F(History, ARowSaysWhatIsKnownAlsoAfterARestart) {
    const QString notConfirmed = "Not confirmed by the pedal: load it again to be sure";
    const QString path = QString::fromStdString(
        folder.write(std::string(60, 'n') + " & <b>.wav", WavBuilder{.bits = 8}.add(200).bytes()));
    const QString line =
        QFileInfo(path).fileName() + ", " + QLocale::c().toString(QDate::currentDate(), "d MMM");
    open();
    EXPECT_TRUE(root().importFile(2, {path}));
    for (const bool restarted : {false, true}) {
        if (restarted) {
            close();
            open();
        }
        QLabel* const second = shown(2, line);
        ASSERT_NE(second, nullptr) << restarted;
        EXPECT_TRUE(second->text().startsWith("nnn") && second->text().contains("…") &&
                    second->text().contains("<b>.wav, "))
            << second->text().toStdString();
        EXPECT_LE(second->sizeHint().width(), second->width());
        QLabel* const mark = shown(2, "Finding");
        ASSERT_NE(mark, nullptr) << restarted;
        EXPECT_TRUE(mark->accessibleDescription().startsWith("8 bits: "));
        EXPECT_TRUE(row(2)->toolTip().contains(path.toHtmlEscaped()) &&
                    row(2)->toolTip().contains("8 bits: "))
            << row(2)->toolTip().toStdString();
    }
    int pauses = 0;
    pause = [&](std::chrono::milliseconds) {
        QTest::qWait(isInportIR == 1 ? 20 : 0);
        ++pauses;
        if (pauses > 20)
            QTest::keyClick(window.get(), Qt::Key_Escape);
    };
    close();
    simulator::PedalBehaviour deaf;
    deaf.faults.neverConfirm = true;
    open(deaf);
    EXPECT_FALSE(root().importFile(2, {file("Cab.wav", 1)}));
    EXPECT_FALSE(undo()->isVisible());
    close();
    open();
    ASSERT_NE(shown(2, notConfirmed), nullptr) << "the record says so";
    EXPECT_TRUE(shown(2, notConfirmed)->property("problem").toBool());
    pause = [](std::chrono::milliseconds) { QTest::qWait(20); };
    press(6);
    EXPECT_EQ(shown(2, notConfirmed), nullptr);
    EXPECT_EQ(shown(2, "Finding"), nullptr) << "silence is what was asked for";
}

TEST_F(History, UndoGivesBackWhatThisComputerKnew) {
    open();
    EXPECT_TRUE(root().importFile(2, {file("Foreign.wav", 1)}));
    EXPECT_FALSE(undo()->isVisible()) << "nothing is known of what was there";
    EXPECT_TRUE(root().importFile(3, {file("Third.wav", 3)}));
    EXPECT_TRUE(root().importFile(2, {file("Second.wav", 2)}));
    QTest::mouseClick(undo(), Qt::LeftButton);
    EXPECT_EQ(sample(2), 0x100U);
    EXPECT_EQ(label(2), "Foreign       ");
    EXPECT_EQ(status(), "“Foreign” is in User 2.");
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(sample(2), 0x200U) << "undone again";

    emit row(2)->filesDropped(
        {QUrl::fromLocalFile(file("a.wav", 4)), QUrl::fromLocalFile(file("b.wav", 5))});
    EXPECT_EQ(undo()->accessibleDescription(), "Loads what was in User 2, User 3 before");
    QTest::keyClick(window.get(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(sample(2) == 0x200U && sample(3) == 0x300U);
    press(7);
    EXPECT_EQ(sample(3), 0U);
    undo()->click();
    EXPECT_EQ(sample(3), 0x300U);
    EXPECT_EQ(sample(2), 0x200U) << "only the last load, clear or drop";
}

TEST_F(History, TheLargerViewShowsTheFindingsAndWhatWasThereEarlier) {
    open();
    EXPECT_TRUE(root().importFile(2, {QString::fromStdString(folder.write(
                                         "Eight.wav", WavBuilder{.bits = 8}.add(200).bytes()))}));
    EXPECT_TRUE(root().importFile(2, {file("Now.wav", 2)}));
    close();
    open();
    row(2)->picture()->click();
    auto* view = dialog<IRWindow>();
    ASSERT_NE(view, nullptr);
    auto* list = view->findChild<QListWidget*>("earlier");
    auto* again = view->findChild<QPushButton*>("loadAgain");
    ASSERT_EQ(list->count(), 2);
    EXPECT_TRUE(list->item(0)->text().startsWith("Now (now)"));
    EXPECT_FALSE(again->isEnabled()) << "nothing is selected";
    list->setCurrentRow(1);
    const auto* findings = view->findChild<QLabel*>("findings");
    EXPECT_TRUE(findings->text().startsWith("8 bits: ")) << findings->text().toStdString();
    pause = [&](std::chrono::milliseconds) {
        EXPECT_FALSE(again->isEnabled());
        QTest::qWait(20);
    };
    again->click();
    EXPECT_EQ(label(2), "Eight         ");
    EXPECT_EQ(view->windowTitle(), "User 2: Eight");
    EXPECT_TRUE(list->item(0)->text().startsWith("Eight (now)"));
    EXPECT_TRUE(findings->text().startsWith("8 bits: ")) << "they came with the record";
}

} // namespace
} // namespace cabslot::testing
