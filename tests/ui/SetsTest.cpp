// Sets in the window: saving, the sheet before loading, drops, undo, and what is refused.
#include "tests/support/WindowFixture.h"

#include "ui/SetDrops.h"
#include "ui/SetSheet.h"
#include "ui/SlotRow.h"

#include <QDropEvent>
#include <QMimeData>
#include <QTableWidget>

namespace cabslot::testing {
namespace {

class Sets : public WindowFixture {
protected:
    Sets() { pedalName = "sim"; }

    void load(int slot, const std::string& name, int sample) {
        const std::string path = folder.write(name, WavBuilder{}.add(sample).bytes());
        EXPECT_TRUE(root().importFile(slot, {QString::fromStdString(path)}));
    }
    std::uint32_t sample(int slot) {
        return store.slot(static_cast<std::size_t>(slot - 1)).block[0] >> 8;
    }
    QString cell(int row, int column) {
        return dialog<SetSheet>()->findChild<QTableWidget*>()->item(row, column)->text();
    }
    QPushButton* button(const QString& text) {
        for (auto* candidate : dialog<SetSheet>()->findChildren<QPushButton*>())
            if (candidate->text() == text)
                return candidate;
        return nullptr;
    }
    QPushButton* undo() { return window->findChild<QPushButton*>("undo"); }
    void openSheet() {
        root().openSet(set);
        ASSERT_NE(dialog<SetSheet>(), nullptr) << status().toStdString();
    }
    /// Saves slots 2 (a) and 3 (c), then loads something else into them and slot 4.
    void saveAndReplace() {
        load(2, "a.wav", 1);
        load(3, "c.wav", 3);
        root().saveSet(set);
        EXPECT_EQ(
            status(),
            "“Band.cabset” holds User 2, User 3. Left out: User 1, User 4, not loaded from here.");
        for (int slot = 2; slot <= 4; ++slot)
            load(slot, "x" + std::to_string(slot) + ".wav", 10 + slot);
    }

    const WithVariable memory_{"CABSLOT_STATE", folder.path("memory")};
    const QString set = QString::fromStdString(folder.path("Band.cabset"));
};

TEST_F(Sets, AreLoadedAfterTheSheetWasConfirmedAndUndoneAsOne) {
    open();
    EXPECT_FALSE(root().maySaveSet());
    EXPECT_EQ(status(), "There is nothing to save: no slot was loaded from this computer.");
    saveAndReplace();
    openSheet();
    EXPECT_EQ(cell(0, 0) + cell(0, 1) + cell(0, 2), "User 1User 1stays as it is");
    EXPECT_EQ(cell(1, 0) + cell(1, 1) + cell(1, 2), "User 2x2a");
    EXPECT_EQ(button("Load")->accessibleDescription(),
              "User 1: User 1 stays. User 2: x2 becomes a. User 3: x3 becomes c. User 4: x4 stays. "
              "Undo brings back what the slots hold now.");
    root().openSet(set);
    EXPECT_EQ(window->findChildren<SetSheet*>().size(), 1) << "one sheet at a time";
    QTest::keyClick(dialog<SetSheet>(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(sample(2), 12U);

    openSheet();
    QTest::keyClick(dialog<SetSheet>()->findChild<QTableWidget*>(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([this] { return status() == "The set “Band” is loaded."; }));
    EXPECT_TRUE(sample(1) == 0 && sample(2) == 1 && sample(3) == 3 && sample(4) == 14);
    EXPECT_TRUE(label(2).startsWith("a ") && label(3).startsWith("c "));
    undo()->click();
    EXPECT_TRUE(sample(2) == 12 && sample(3) == 13);
    undo()->click();
    EXPECT_TRUE(sample(2) == 1 && sample(3) == 3) << "undone again";
}

TEST_F(Sets, AreDroppedOnAnyPartOfTheWindow) {
    open();
    saveAndReplace();
    QMimeData dragged;
    dragged.setUrls({QUrl::fromLocalFile(set)});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(root().view(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QCoreApplication::sendEvent(root().view(), &drop);
    ASSERT_TRUE(QTest::qWaitFor([this] { return dialog<SetSheet>() != nullptr; }));
    button("Cancel")->click();
    auto* const row = window->findChild<SlotRow*>("row2");
    emit row->filesDropped({QUrl::fromLocalFile(set)});
    ASSERT_NE(dialog<SetSheet>(), nullptr);
    button("Cancel")->click();
    emit row->filesDropped({QUrl::fromLocalFile(set), QUrl::fromLocalFile(set)});
    EXPECT_EQ(dialog<SetSheet>(), nullptr);
    EXPECT_TRUE(status().startsWith("“Band.cabset”: drop a set alone.")) << status().toStdString();
    EXPECT_EQ(sample(2), 12U);
}

TEST_F(Sets, AreRefusedWithTheReason) {
    open();
    load(1, "a.wav", 1);
    folder.write("Band.cabset", "{\"version\": 2}");
    root().openSet(set);
    EXPECT_EQ(status(), "“Band.cabset”: it is of version 2; only version 1 is known.");
    ASSERT_NE(dialog<Alert>(), nullptr);
    root().openSetWhenReady(set);
    dialog<Alert>()->button()->click();
    ASSERT_TRUE(QTest::qWaitFor([this] { return dialog<Alert>() != nullptr; }))
        << "after the other";
    EXPECT_EQ(sample(1), 1U);
}

TEST_F(Sets, StopAtTheFirstSlotThatFails) {
    open();
    saveAndReplace();
    close();
    simulator::PedalBehaviour deaf;
    deaf.faults.neverConfirm = true;
    open(deaf);
    openSheet();
    int pauses = 0;
    pause = [&](std::chrono::milliseconds) {
        QTest::qWait(isInportIR == 1 ? 20 : 0);
        if (++pauses > 20)
            QTest::keyClick(window.get(), Qt::Key_Escape);
    };
    button("Load")->click();
    ASSERT_TRUE(QTest::qWaitFor([this] { return status().startsWith("The set"); }));
    EXPECT_EQ(status(), "The set “Band”: 0 of 2 slots confirmed; not sent: User 3.");
    EXPECT_EQ(sample(3), 13U);
}

} // namespace
} // namespace cabslot::testing
