#include "ui/SetMenu.h"

#include "sets/SetFile.h"
#include "ui/AppMenu.h"
#include "ui/RootViewController.h"
#include "ui/Settings.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>
#include <QStringList>

#include <functional>
#include <utility>

namespace cabslot {

namespace {

const QString recentKey = QStringLiteral("sets/recent");
constexpr qsizetype mostRecent = 6;

QStringList recentSets() {
    return QSettings().value(recentKey).toStringList();
}

void rememberUse(const QString& path) {
    const QString used = QFileInfo(path).absoluteFilePath();
    QStringList recent = recentSets();
    recent.removeAll(used);
    recent.prepend(used);
    storeSetting(recentKey, recent.mid(0, mostRecent));
}

/// Where the last set is, or the user's own folder.
QString firstFolder() {
    const QStringList recent = recentSets();
    const QString folder = recent.isEmpty() ? QString() : QFileInfo(recent.first()).absolutePath();
    return QFileInfo(folder).isDir() ? folder : QDir::homePath();
}

/// Opens a panel, and calls `chosen` with the file when it is closed.
QFileDialog& openPanel(QWidget* window, const QString& title,
                       std::function<void(const QString& path)> chosen) {
    auto* const panel = new QFileDialog(window, title, firstFolder());
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setOption(QFileDialog::DontUseNativeDialog); // the same on every desktop, like the panel
                                                        // for WAV files
    panel->setNameFilter("Sets (*.[Cc][Aa][Bb][Ss][Ee][Tt])");
    panel->setOption(QFileDialog::HideNameFilterDetails);
    // Deferred until the panel has left the screen.
    QObject::connect(
        panel, &QFileDialog::fileSelected, window,
        [chosen = std::move(chosen)](const QString& path) { chosen(path); }, Qt::QueuedConnection);
    panel->open();
    return *panel;
}

} // namespace

SetMenu::SetMenu(AppMenu& menu, RootViewController& root)
    : QObject(&root), menu_(menu), root_(root) {
    connect(menu.add("&Save set…", QKeySequence::Save), &QAction::triggered, this,
            &SetMenu::askWhereToSave);
    connect(menu.add("&Load set…", QKeySequence::Open), &QAction::triggered, this,
            &SetMenu::askWhatToLoad);
    recent_ = menu.addMenu("&Recent sets");
    connect(recent_, &QMenu::aboutToShow, this, &SetMenu::showRecent);
    connect(&root, &RootViewController::setUsed, this, &rememberUse);
}

void SetMenu::askWhereToSave() {
    if (!root_.maySaveSet())
        return;
    QFileDialog& panel = openPanel(menu_.window(), "Save the slots as a set",
                                   [this](const QString& path) { root_.saveSet(path); });
    panel.setAcceptMode(QFileDialog::AcceptSave);
    panel.setDefaultSuffix(QString::fromUtf8(setExtension.data() + 1));
}

void SetMenu::askWhatToLoad() {
    if (!root_.isReady())
        return;
    openPanel(menu_.window(), "Load a set", [this](const QString& path) {
        root_.openSet(path);
    }).setFileMode(QFileDialog::ExistingFile);
}

void SetMenu::showRecent() {
    recent_->clear();
    for (const QString& path : recentSets()) {
        if (!QFileInfo::exists(path))
            continue;
        QAction* const entry =
            recent_->addAction(QFileInfo(path).completeBaseName().replace('&', "&&"), this,
                               [this, path] { root_.openSet(path); });
        entry->setToolTip(path.toHtmlEscaped());
    }
    if (recent_->isEmpty())
        recent_->addAction("None yet")->setEnabled(false);
}

} // namespace cabslot
