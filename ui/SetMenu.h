// The menu's entries about sets: save, load, and those that were used last. Main thread.
#pragma once

#include <QObject>
#include <QString>

class QMenu;

namespace cabslot {

class AppMenu;
class RootViewController;

class SetMenu final : public QObject {
    Q_OBJECT
public:
    /// Adds the entries to `menu`. Both must outlive this.
    SetMenu(AppMenu& menu, RootViewController& root);

private:
    void askWhereToSave();
    void askWhatToLoad();
    void showRecent();

    AppMenu& menu_;
    RootViewController& root_;
    QMenu* recent_;
};

} // namespace cabslot
