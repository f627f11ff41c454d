#include "ui/HelpSheets.h"

#include "memory/SlotMemory.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QSettings>
#include <QVBoxLayout>

namespace cabslot {

namespace {

constexpr int margin = 24;
constexpr int keySpacing = 18;
constexpr int lineSpacing = 5;

struct Key {
    const char* keys; ///< empty: `what` is a heading
    const char* what;
};

constexpr Key allKeys[] = {
    {"", "Window"},
    {"Ctrl+1 to Ctrl+4", "Load a WAV file into the slot"},
    {"Ctrl+Shift+1 to Ctrl+Shift+4", "Clear the slot"},
    {"Ctrl+O", "Load a set"},
    {"Ctrl+S", "Save the slots as a set"},
    {"Ctrl+Z", "Undo the last load, clear or drop"},
    {"Esc", "Stop waiting for the pedal"},
    {"F10 or Alt+M", "Menu"},
    {"F1", "Keyboard shortcuts"},
    {"Ctrl+Q", "Close"},
    {"", "Open panel"},
    {"Up, Down", "From the file name or the filter into the list, and through it"},
    {"Ctrl+F", "Filter"},
    {"Space in the list, Ctrl+L", "Listen"},
    {"Return", "Load the selected file, enter the selected folder"},
    {"Alt+Up, Backspace in the list", "The folder above"},
    {"Alt+Left, Alt+Right", "The folder shown before, and forward again"},
    {"Alt+Home", "The home folder"},
    {"Ctrl+H", "Show hidden files"},
    {"F5", "Read the folder again"},
    {"Esc", "Cancel"},
    {"", "Larger view"},
    {"Space or L", "Listen"},
    {"Left, Right", "The slot before, or the next one"},
    {"Esc", "Close"},
};

QLabel* makeText(const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

void addHeading(QGridLayout& grid, const QString& text) {
    if (grid.count() > 0)
        grid.setRowMinimumHeight(grid.rowCount(), margin / 2);
    QLabel* const heading = makeText(text);
    heading->setProperty("role", "alertTitle");
    grid.addWidget(heading, grid.rowCount(), 0, 1, 2);
}

void addRow(QGridLayout& grid, const QString& title, const QString& text) {
    const int row = grid.rowCount();
    grid.addWidget(makeText(title), row, 0, Qt::AlignTop);
    QLabel* const value = makeText(text);
    value->setProperty("role", "detail");
    grid.addWidget(value, row, 1);
}

QGridLayout& openSheet(QWidget& window, const QString& title) {
    auto* const sheet = new QDialog(&window);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowTitle(title);
    auto* const column = new QVBoxLayout(sheet);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(margin);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(keySpacing);
    grid->setVerticalSpacing(lineSpacing);
    grid->setColumnStretch(1, 1);
    column->addLayout(grid);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, sheet, &QDialog::reject);
    column->addWidget(buttons);
    // Shown when the caller has filled it.
    QMetaObject::invokeMethod(sheet, &QDialog::show, Qt::QueuedConnection);
    return *grid;
}

} // namespace

void showKeys(QWidget& window) {
    QGridLayout& grid = openSheet(window, "Keyboard shortcuts");
    for (const auto& [keys, what] : allKeys) {
        if (*keys == '\0')
            addHeading(grid, what);
        else
            addRow(grid, keys, what);
    }
}

void showAbout(QWidget& window) {
    QGridLayout& grid = openSheet(window, "About Cabslot");
    addHeading(grid, "Cabslot " CABSLOT_VERSION);
    addRow(grid, "Licence", "MIT");
    addRow(grid, "Remembered slots", QString::fromStdString(memoryFolder()));
    addRow(grid, "Settings", QSettings().fileName());
}

} // namespace cabslot
