#include "ui/AppMenu.h"

#include "ui/Glyphs.h"
#include "ui/HelpSheets.h"
#include "ui/PrepareSetting.h"

#include <QMenu>
#include <QShortcut>

namespace cabslot {

AppMenu::AppMenu(QWidget* parent) : QToolButton(parent), menu_(new QMenu(this)) {
    setIcon(glyphIcon(Glyph::menu));
    setToolTip("Menu (F10)");
    setAccessibleName("Menu");
    setFocusPolicy(Qt::NoFocus);
    setAutoRaise(true);
    setPopupMode(InstantPopup);
    setMenu(menu_);
    for (const char* keys : {"F10", "Alt+M"})
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this,
                &QToolButton::showMenu);
    addOwn();
}

void AppMenu::addOwn() {
    firstOwn_ = menu_->addSeparator();
    QAction* const prepare = menu_->addAction("&Prepare files");
    prepare->setCheckable(true);
    prepare->setToolTip("Resample well, trim, fade and level each file before it is loaded");
    menu_->setToolTipsVisible(true);
    connect(menu_, &QMenu::aboutToShow, prepare,
            [prepare] { prepare->setChecked(preparesFiles()); });
    connect(prepare, &QAction::triggered, this, [this](bool on) {
        setPreparesFiles(on);
        emit prepareChanged(on);
    });
    menu_->addSeparator();
    add("&Keyboard shortcuts", QKeySequence("F1"), showKeys);
    add("&About Cabslot", {}, showAbout);
}

void AppMenu::add(const QString& text, const QKeySequence& keys, void (*sheet)(QWidget& window)) {
    QAction* const action = menu_->addAction(text);
    action->setShortcut(keys);
    window()->addAction(action); // the keys work while the menu is closed, too
    connect(action, &QAction::triggered, this, [this, sheet] { sheet(*window()); });
}

QAction* AppMenu::add(const QString& text, const QKeySequence& keys) {
    auto* const action = new QAction(text, this);
    action->setShortcut(keys);
    menu_->insertAction(firstOwn_, action);
    window()->addAction(action);
    return action;
}

QMenu* AppMenu::addMenu(const QString& title) {
    auto* const menu = new QMenu(title, this);
    menu_->insertMenu(firstOwn_, menu);
    return menu;
}

} // namespace cabslot
