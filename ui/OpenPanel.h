// The panel for choosing a WAV file: places, the files of a folder or those found below it, and
// what the selected one would put into the pedal, seen and heard. Main thread.
#pragma once

#include "ui/FolderHistory.h"
#include "ui/Preview.h"

#include <QDialog>
#include <QFileSystemWatcher>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

class QPushButton;

namespace cabslot {

class FileList;
class FolderBar;
class Listening;
class PathField;
class Places;
class PreviewColumn;

/// The answer when a file was chosen.
inline constexpr int panelOK = 1;

using PanelClosed = std::function<void(int answer, const Choice& choice)>;

/// What the panel is opened for.
struct PanelRequest {
    QString title;
    QStringList taken{};       ///< the other slots' names
    QStringList slotFolders{}; ///< the folders of what is in the slots, as far as it is known
};

class OpenPanel final : public QDialog {
    Q_OBJECT
public:
    /// Starts in the folder where the last panel was left, in this run or an earlier one.
    OpenPanel(QWidget* window, const PanelRequest& request, Listening& listening);

    /// Its path is empty unless `answer` is panelOK.
    Choice choice(int answer) const;

    /// Enters the folder, or closes with the file, that is typed or selected. If it is neither, the
    /// panel says so and stays.
    void accept() override;
    void done(int answer) override;

protected:
    void mousePressEvent(QMouseEvent* event) override; ///< a mouse's own buttons for back, forward

private:
    void layOut();
    QWidget* makeMiddle();
    void connectParts();
    void addKeys();
    void orderTabs();
    void enter(const QString& folder);
    void showFolder(const QString& folder);
    void goUp();
    void read();
    void tellFolder(const QString& words);
    void showSelected(const QString& path);
    void showTyped();
    void setName(const QString& name);
    void goIntoList(QKeyEvent* event);
    void updateOpen();

    QString folder_;
    FolderHistory history_;
    bool hidden_ = false;
    Places* places_;
    FolderBar* bar_;
    FileList* list_;
    PreviewColumn* column_;
    PathField* name_;
    QPushButton* open_;
    QPushButton* cancel_;
    QFileSystemWatcher watcher_;
    QTimer changed_; ///< runs from a change in the folder until it is read again
    QString chosen_; ///< the path, once it was accepted
};

/// Shows the panel beside `window`, without blocking it, and returns. `closed` runs once, on the
/// main thread, with the answer and the choice. Closing it ends listening before `closed` runs.
void showOpenPanel(QWidget* window, const PanelRequest& request, Listening& listening,
                   PanelClosed closed);

} // namespace cabslot
