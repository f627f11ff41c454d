// Asks before a set is loaded: a sheet with each slot's name now and afterwards. Main thread.
#pragma once

#include "base/Pedal.h"
#include "ui/Sheet.h"

#include <QString>

#include <array>

class QTableWidget;

namespace cabslot {

/// Accepted with "Load", the default; rejected with "Cancel" or Esc.
class SetSheet final : public Sheet {
    Q_OBJECT
public:
    struct Row {
        QString now;   ///< the slot's name
        QString after; ///< its name after loading; null: the slot stays as it is
    };
    using Rows = std::array<Row, slotCount>;

    /// `note` is a sentence about what an undo brings back.
    SetSheet(QWidget& window, const QString& name, const Rows& rows, const QString& note);

private:
    QTableWidget* makeTable(const Rows& rows);
};

} // namespace cabslot
