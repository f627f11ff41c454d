#include "ui/OpenPanel.h"

#include "ui/IRView.h"
#include "ui/ListenBar.h"
#include "ui/LoadBar.h"
#include "ui/Preview.h"
#include "ui/Settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

#include <utility>

namespace cabslot {

namespace {

const QString lastFolderKey = QStringLiteral("openPanel/lastFolder");
const QString onlyWav = QStringLiteral("WAV files (*.[Ww][Aa][Vv])");

const QString onlyWavIsTaken = QStringLiteral("Only WAV files (.wav) can be loaded.");

constexpr QSize firstSize = {1020, 680};
constexpr double screenShare = 0.9;             // leaves space for the window's frame
const QList<int> firstShares = {150, 330, 500}; // widths of places, files and preview

QString firstFolder() {
    const QString last = QSettings().value(lastFolderKey).toString();
    return QFileInfo(last).isDir() ? last : QDir::homePath();
}

// Finds Qt's own widgets by their names, which no document promises: if a Qt has others, the
// preview stands below the files, or keys do only what Qt has them do.
class OpenPanel final : public QFileDialog {
public:
    OpenPanel(QWidget* window, const QString& title, const QStringList& taken, Listening& listening)
        : QFileDialog(window, title), ir_(new IRView), load_(new LoadBar(taken)),
          listen_(new ListenBar(listening)) {
        setAttribute(Qt::WA_DeleteOnClose);
        setWindowModality(Qt::NonModal);
        setOption(DontUseNativeDialog); // the native one can neither show an IR nor play it
        setOption(ReadOnly);            // it chooses files: no deleting, renaming or new folders
        setFileMode(ExistingFile);
        setNameFilter(onlyWav);
        setOption(HideNameFilterDetails);
        setViewMode(Detail);
        setDirectory(firstFolder());
        addPreview();
        takeKeys();
        connect(this, &QFileDialog::currentChanged, this, &OpenPanel::preview);
        connect(this, &QFileDialog::directoryEntered, this, &OpenPanel::tellFolder);
        tellFolder(directory().path());
    }

    Choice choice(int answer) const {
        const QStringList files = selectedFiles();
        return load_->choiceOf(answer == panelOK && !files.isEmpty() ? files.first() : QString());
    }

    /// A typed name must also be a WAV file's. The panel itself opens folders and reports a missing
    /// file.
    void accept() override {
        const QStringList files = selectedFiles();
        if (!files.isEmpty() && QFileInfo(files.first()).isFile() && !isWavName(files.first()))
            return refuse(files.first(), onlyWavIsTaken);
        QFileDialog::accept();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress)
            return QFileDialog::eventFilter(watched, event);
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const bool plain = (key.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
        if (watched == name_ && plain && isUpOrDown(key.key()))
            return goIntoList(*event);
        if (watched != name_ && plain && (key.key() == Qt::Key_Space || key.key() == Qt::Key_L)) {
            listen_->toggle();
            return true;
        }
        return QFileDialog::eventFilter(watched, event);
    }

private:
    static bool isUpOrDown(int key) {
        return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
               key == Qt::Key_PageDown;
    }

    /// In the name field, an arrow key selects the first file, or the one next to the selected one.
    bool goIntoList(QEvent& event) {
        for (QAbstractItemView* list : lists_) {
            if (!list->isVisible())
                continue;
            const bool selected = list->selectionModel()->hasSelection();
            list->setFocus(); // before anything is selected, or the name would not follow
            if (selected)
                QCoreApplication::sendEvent(list, &event);
            else
                list->setCurrentIndex(list->model()->index(0, 0, list->rootIndex()));
        }
        return true;
    }

    void addPreview() {
        auto* column = new QWidget;
        auto* below = new QVBoxLayout(column);
        below->addWidget(ir_, 1);
        below->addWidget(load_);
        below->addWidget(listen_);
        connect(load_, &LoadBar::changed, this, [this] { preview(shown_); });
        resize(firstSize.boundedTo(screen()->availableSize() * screenShare));
        auto* splitter = findChild<QSplitter*>("splitter");
        if (splitter == nullptr)
            return layout()->addWidget(column);
        splitter->addWidget(column);
        splitter->setStretchFactor(splitter->count() - 1, 1);
        splitter->setSizes(firstShares);
    }

    void takeKeys() {
        if (auto* tree = findChild<QTreeView*>("treeView")) {
            showOnlyNames(*tree);
            lists_ << tree;
        }
        if (auto* icons = findChild<QListView*>("listView"))
            lists_ << icons;
        for (QAbstractItemView* list : lists_) {
            list->setAccessibleName("Files");
            list->installEventFilter(this);
        }
        name_ = findChild<QLineEdit*>("fileNameEdit");
        if (name_ == nullptr)
            return;
        name_->installEventFilter(this);
        connect(name_, &QLineEdit::textEdited, this, [this](const QString& typed) {
            if (const QFileInfo file(directory(), typed); file.isFile())
                preview(file.filePath());
        });
    }

    // Names are long, and the preview says more about a file than its size and date.
    static void showOnlyNames(QTreeView& tree) {
        for (int column = 1; column < tree.header()->count(); ++column)
            tree.hideColumn(column);
        tree.header()->setSectionResizeMode(0, QHeaderView::Stretch);
        tree.setHeaderHidden(true);
    }

    void preview(const QString& path) {
        shown_ = path;
        const QFileInfo file(path);
        load_->setFile(file.isFile() && isWavName(path) ? path : QString());
        if (path.isEmpty() || file.isDir())
            return tellFolder(directory().path());
        if (!isWavName(path))
            return refuse(path, onlyWavIsTaken);
        const Preview preview = previewOf(load_->choiceOf(path), Extent::start);
        if (!preview.summary)
            return refuse(path, preview.whyNot);
        listen_->setIR(preview.summary->samples); // first, because its thread has more to do
        ir_->showIR(*preview.summary);
    }

    void refuse(const QString& path, const QString& why) {
        ir_->showReason(QFileInfo(path).fileName(), why);
        listen_->setIR(std::nullopt);
    }

    void tellFolder(const QString& folder) {
        if (QFileInfo(folder).isReadable())
            ir_->showReason({}, "Select a file to see what it would put into the pedal.");
        else
            ir_->showReason(QDir(folder).dirName(), "You have no permission to read this folder.");
        listen_->setIR(std::nullopt);
    }

    IRView* ir_;
    LoadBar* load_;
    ListenBar* listen_;
    QString shown_;                   ///< the path of the file shown
    QList<QAbstractItemView*> lists_; ///< one of them is visible
    QLineEdit* name_ = nullptr;
};

} // namespace

void showOpenPanel(QWidget* window, const QString& title, const QStringList& taken,
                   Listening& listening, PanelClosed closed) {
    auto* panel = new OpenPanel(window, title, taken, listening);
    QObject::connect(panel, &QDialog::finished, window,
                     [window, panel, closed = std::move(closed)](int answer) {
                         const Choice choice = panel->choice(answer);
                         if (!choice.path.isEmpty())
                             storeSetting(lastFolderKey, QFileInfo(choice.path).absolutePath());
                         // Deferred until the panel and its pop-ups have left the screen.
                         QMetaObject::invokeMethod(
                             window, [=] { closed(answer, choice); }, Qt::QueuedConnection);
                     });
    panel->show();
}

} // namespace cabslot
