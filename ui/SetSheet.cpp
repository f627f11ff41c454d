#include "ui/SetSheet.h"

#include "ui/Words.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace cabslot {

namespace {

constexpr int contentWidth = 440;

/// The table for who hears it: "User 1: Old becomes Clean."
QString inWords(const SetSheet::Rows& rows) {
    QStringList words;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto& [now, after] = rows.at(i);
        words << slotName(static_cast<std::int64_t>(i) + 1) + ": " +
                     (after.isNull() ? now + " stays." : now + " becomes " + after + ".");
    }
    return words.join(' ');
}

/// Makes it as large as its rows, which never change.
void fit(QTableWidget& table) {
    QHeaderView& header = *table.horizontalHeader();
    header.setHighlightSections(false);
    header.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header.setSectionResizeMode(QHeaderView::Stretch);
    header.ensurePolished(); // its style gives it a height
    table.ensurePolished();
    int height = header.sizeHint().height() + 2 * table.frameWidth();
    for (int row = 0; row < table.rowCount(); ++row)
        height += table.rowHeight(row);
    table.setFixedSize(contentWidth, height);
}

} // namespace

SetSheet::SetSheet(QWidget& window, const QString& name, const Rows& rows, const QString& note)
    : Sheet(window) {
    setAccessibleName("Load a set");
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 18);
    column->setSpacing(12);
    column->addWidget(makeText("Load the set " + quoted(name) + "?", "alertTitle", contentWidth));
    column->addWidget(makeTable(rows));
    column->addWidget(makeText(note, "detail", contentWidth));
    auto* buttons = new QDialogButtonBox;
    QPushButton* const load = buttons->addButton("Load", QDialogButtonBox::AcceptRole);
    buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
    load->setAccessibleDescription(inWords(rows) + " " + note);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
    load->setDefault(true); // and focused: both only work in the dialog
    load->setFocus();
}

QTableWidget* SetSheet::makeTable(const Rows& rows) {
    auto* table = new QTableWidget(static_cast<int>(slotCount), 3, this);
    table->setAccessibleName("Names before and after");
    table->setHorizontalHeaderLabels({"Slot", "Now", "After loading"});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setTabKeyNavigation(false); // Tab leaves it; the arrow keys go through it
    table->setShowGrid(false);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->verticalHeader()->hide();
    for (int row = 0; row < table->rowCount(); ++row) {
        const auto& [now, after] = rows.at(static_cast<std::size_t>(row));
        table->setItem(row, 0, new QTableWidgetItem(slotName(row + 1)));
        table->setItem(row, 1, new QTableWidgetItem(now));
        auto* const last = new QTableWidgetItem(after.isNull() ? "stays as it is" : after);
        if (after.isNull())
            last->setForeground(table->palette().placeholderText());
        table->setItem(row, 2, last);
    }
    fit(*table);
    return table;
}

} // namespace cabslot
