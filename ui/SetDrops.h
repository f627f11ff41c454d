// Lets a set be dropped anywhere on a widget. Main thread.
#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace cabslot {

class SetDrops final : public QObject {
    Q_OBJECT
public:
    explicit SetDrops(QWidget& target);

signals:
    void dropped(const QString& path); ///< after the drop has ended

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace cabslot
