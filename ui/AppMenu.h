// The menu in the window's strip, for what concerns the whole program. Main thread.
#pragma once

#include <QKeySequence>
#include <QToolButton>

class QMenu;

namespace cabslot {

class AppMenu final : public QToolButton {
    Q_OBJECT
public:
    /// F10 and Alt+M open it from anywhere in the parent's window.
    explicit AppMenu(QWidget* parent = nullptr);

    /// Adds an entry, below those added before and above those of the menu's own. Its keys work
    /// everywhere in the window.
    QAction* add(const QString& text, const QKeySequence& keys = {});

    /// The same for a menu in the menu.
    QMenu* addMenu(const QString& title);

signals:
    void prepareChanged(bool on); ///< by the user, and stored

private:
    void addOwn();
    void add(const QString& text, const QKeySequence& keys, void (*sheet)(QWidget& window));

    QMenu* menu_;
    QAction* firstOwn_; ///< the separator above the menu's own entries
};

} // namespace cabslot
