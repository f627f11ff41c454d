#include "ui/OpenPanel.h"

#include "ui/FileList.h"
#include "ui/FolderBar.h"
#include "ui/PathField.h"
#include "ui/Places.h"
#include "ui/PreviewColumn.h"
#include "ui/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace cabslot {

namespace {

using namespace std::chrono_literals;

const QString lastFolderKey = QStringLiteral("openPanel/lastFolder");

constexpr QSize firstSize = {1020, 680};
constexpr double screenShare = 0.9;             // leaves space for the window's frame
const QList<int> firstShares = {150, 330, 500}; // widths of places, files and preview
constexpr int narrowestPlaces = 90;
constexpr auto changeDelay = 200ms; // files mostly change several at a time

QString firstFolder() {
    const QString last = QSettings().value(lastFolderKey).toString();
    return QFileInfo(last).isDir() ? QDir::cleanPath(last) : QDir::homePath();
}

} // namespace

OpenPanel::OpenPanel(QWidget* window, const PanelRequest& request, Listening& listening)
    : QDialog(window), places_(new Places(request.slotFolders)), bar_(new FolderBar),
      list_(new FileList), column_(new PreviewColumn(request.taken, listening)),
      name_(new PathField), open_(new QPushButton("&Open")), cancel_(new QPushButton("Cancel")) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(request.title);
    list_->setOrder(bar_->order());
    layOut();
    connectParts();
    addKeys();
    orderTabs();
    enter(firstFolder());
    list_->setFocus();
}

void OpenPanel::layOut() {
    auto* splitter = new QSplitter;
    for (QWidget* part :
         {static_cast<QWidget*>(places_), makeMiddle(), static_cast<QWidget*>(column_)})
        splitter->addWidget(part);
    splitter->setChildrenCollapsible(false);
    places_->setMinimumWidth(narrowestPlaces);
    splitter->setStretchFactor(2, 1);
    splitter->setSizes(firstShares);
    auto* title = new QLabel("File &name:");
    title->setBuddy(name_);
    open_->setDefault(true);
    cancel_->setAutoDefault(false);
    auto* below = new QHBoxLayout;
    below->addWidget(title);
    below->addWidget(name_, 1);
    below->addWidget(open_);
    below->addWidget(cancel_);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(splitter, 1);
    rows->addLayout(below);
    resize(firstSize.boundedTo(screen()->availableSize() * screenShare));
}

QWidget* OpenPanel::makeMiddle() {
    auto* middle = new QWidget;
    auto* rows = new QVBoxLayout(middle);
    rows->setContentsMargins({});
    rows->addWidget(bar_);
    rows->addWidget(list_, 1);
    return middle;
}

void OpenPanel::connectParts() {
    connect(places_, &Places::chosen, this, &OpenPanel::enter);
    connect(bar_, &FolderBar::back, this, [this] { showFolder(history_.back()); });
    connect(bar_, &FolderBar::forward, this, [this] { showFolder(history_.forward()); });
    connect(bar_, &FolderBar::up, this, &OpenPanel::goUp);
    connect(bar_, &FolderBar::filtered, list_, &FileList::setFilter);
    connect(bar_, &FolderBar::entersList, this, [this] { goIntoList(nullptr); });
    connect(bar_, &FolderBar::subfoldersChanged, this, &OpenPanel::read);
    connect(bar_, &FolderBar::orderChanged, this, [this] { list_->setOrder(bar_->order()); });
    connect(list_, &FileList::selected, this, &OpenPanel::showSelected);
    connect(list_, &FileList::entered, this, &OpenPanel::accept);
    connect(list_, &FileList::leaves, this, &OpenPanel::goUp);
    connect(list_, &FileList::listens, column_, &PreviewColumn::toggleListening);
    connect(list_, &FileList::listed, this, &OpenPanel::tellFolder);
    connect(list_, &FileList::pathBegun, this, [this](const QString& text) {
        name_->setFocus();
        name_->setText(text);
    });
    connect(name_, &QLineEdit::textChanged, this, &OpenPanel::showTyped);
    connect(name_, &PathField::entered, this, &OpenPanel::accept);
    connect(name_, &PathField::toList, this, &OpenPanel::goIntoList);
    connect(open_, &QPushButton::clicked, this, &OpenPanel::accept);
    connect(cancel_, &QPushButton::clicked, this, &OpenPanel::reject);
    changed_.setSingleShot(true);
    changed_.setInterval(changeDelay);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &changed_,
            qOverload<>(&QTimer::start));
    connect(&changed_, &QTimer::timeout, list_, &FileList::refresh);
}

void OpenPanel::addKeys() {
    const auto onKeys = [this](const char* keys, auto action) {
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, action);
    };
    onKeys("Alt+Up", [this] { goUp(); });
    onKeys("Alt+Left", [this] { showFolder(history_.back()); });
    onKeys("Alt+Right", [this] { showFolder(history_.forward()); });
    onKeys("Alt+Home", [this] { enter(QDir::homePath()); });
    onKeys("Ctrl+F", [this] { bar_->filter()->setFocus(); });
    onKeys("Ctrl+L", [this] { column_->toggleListening(); });
    onKeys("Ctrl+H", [this] {
        hidden_ = !hidden_;
        name_->offerHidden(hidden_);
        read();
    });
    onKeys("F5", [this] { list_->refresh(); });
}

// From the list to the preview's controls and then to the buttons.
void OpenPanel::orderTabs() {
    QList<QWidget*> order = bar_->tabOrder();
    order << list_ << column_->tabOrder() << name_ << open_ << cancel_ << places_;
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void OpenPanel::enter(const QString& folder) {
    history_.visit(folder);
    showFolder(folder);
}

void OpenPanel::showFolder(const QString& folder) {
    if (folder.isEmpty())
        return; // there is nothing to go back to
    folder_ = folder;
    bar_->setFolder(folder, history_.hasBack(), history_.hasForward());
    places_->showFolder(folder);
    name_->setFolder(folder);
    setName({});
    read();
}

void OpenPanel::goUp() {
    const QString from = folder_;
    QDir above(folder_);
    if (!above.cdUp())
        return;
    enter(QDir::cleanPath(above.absolutePath()));
    list_->selectPath(from);
}

void OpenPanel::read() {
    if (!watcher_.directories().isEmpty())
        watcher_.removePaths(watcher_.directories());
    watcher_.addPath(folder_);
    list_->list({folder_, bar_->withSubfolders(), hidden_});
    tellFolder({});
}

// `words` say why its files are not listed.
void OpenPanel::tellFolder(const QString& words) {
    updateOpen();
    if (!list_->selectedPath().isEmpty() || !name_->text().isEmpty())
        return;
    if (words.isEmpty())
        column_->showWords({}, "Select a file to see what it would put into the pedal.");
    else
        column_->showWords(QDir(folder_).dirName(), words);
}

// A folder leaves the typed name alone.
void OpenPanel::showSelected(const QString& path) {
    if (path.isEmpty() || list_->isFolderSelected()) {
        setName({});
        return tellFolder({});
    }
    setName(QDir(folder_).relativeFilePath(path));
    column_->showFile(path);
    updateOpen();
}

// Not as typed.
void OpenPanel::setName(const QString& name) {
    const QSignalBlocker quiet(name_);
    name_->setText(name);
}

void OpenPanel::showTyped() {
    list_->clearSelected();
    if (const QString path = name_->path(); QFileInfo(path).isFile())
        column_->showFile(path);
    else
        column_->showWords({}, "Select a file to see what it would put into the pedal.");
    updateOpen();
}

void OpenPanel::updateOpen() {
    open_->setEnabled(!name_->text().isEmpty() || list_->isFolderSelected());
}

// From the name or the filter, a key down selects the first file, or the one next to the selected
// one.
void OpenPanel::goIntoList(QKeyEvent* event) {
    const bool steps = event != nullptr && !list_->selectedPath().isEmpty();
    list_->setFocus();
    if (steps)
        QCoreApplication::sendEvent(list_, event);
    else
        list_->selectFirst();
}

void OpenPanel::accept() {
    const QString path = list_->isFolderSelected() ? list_->selectedPath() : name_->path();
    const QFileInfo file(path);
    if (path.isEmpty())
        return;
    if (file.isDir()) {
        enter(path);
        return list_->setFocus();
    }
    if (!file.exists())
        return column_->showWords(file.fileName(), "There is no such file.");
    if (!file.isFile() || !isWavName(path))
        return column_->showFile(path);
    chosen_ = path;
    Places::addRecent(file.absolutePath());
    folder_ = file.absolutePath();
    done(panelOK);
}

// A folder that was only looked at is remembered, too.
void OpenPanel::done(int answer) {
    if (QFileInfo(folder_).isDir())
        storeSetting(lastFolderKey, folder_);
    QDialog::done(answer);
}

Choice OpenPanel::choice(int answer) const {
    return column_->choiceOf(answer == panelOK ? chosen_ : QString());
}

void OpenPanel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::BackButton)
        showFolder(history_.back());
    else if (event->button() == Qt::ForwardButton)
        showFolder(history_.forward());
    else
        QDialog::mousePressEvent(event);
}

void showOpenPanel(QWidget* window, const PanelRequest& request, Listening& listening,
                   PanelClosed closed) {
    auto* panel = new OpenPanel(window, request, listening);
    QObject::connect(panel, &QDialog::finished, window,
                     [window, panel, closed = std::move(closed)](int answer) {
                         const Choice choice = panel->choice(answer);
                         // Deferred until the panel and its pop-ups have left the screen.
                         QMetaObject::invokeMethod(
                             window, [=] { closed(answer, choice); }, Qt::QueuedConnection);
                     });
    panel->show();
}

} // namespace cabslot
