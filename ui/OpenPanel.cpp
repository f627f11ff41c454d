#include "ui/OpenPanel.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace cabslot {

namespace {

const QString lastFolderKey = QStringLiteral("openPanel/lastFolder");
const QString onlyWav = QStringLiteral("WAV files (*.[Ww][Aa][Vv])");

QString chosenPath(const QFileDialog& panel, int answer) {
    const QStringList files = panel.selectedFiles();
    return answer == panelOK && !files.isEmpty() ? files.first() : QString();
}

} // namespace

void showOpenPanel(QWidget* window, const QString& title,
                   std::function<void(int answer, const QString& path)> closed) {
    auto* panel = new QFileDialog(window, title);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::NonModal);
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setNameFilter(onlyWav);
    panel->setDirectory(QSettings().value(lastFolderKey, QDir::homePath()).toString());
    panel->setOption(QFileDialog::HideNameFilterDetails);
    QObject::connect(panel, &QDialog::finished, window,
                     [window, panel, closed = std::move(closed)](int answer) {
                         const QString path = chosenPath(*panel, answer);
                         if (!path.isEmpty())
                             QSettings().setValue(lastFolderKey, QFileInfo(path).absolutePath());
                         // Later, when the panel and its pop-ups are gone from the screen.
                         QMetaObject::invokeMethod(
                             window, [=] { closed(answer, path); }, Qt::QueuedConnection);
                     });
    panel->show();
}

} // namespace cabslot
