#include "ui/Display.h"

#include "base/FileDescriptor.h"
#include "base/VisibleText.h"

#include <QGuiApplication>
#include <QString>
#include <QStringList>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace cabslot {

namespace {

constexpr int noDisplay = 1;

// Qt's message handler is a plain function, so what it keeps is static: standard error as it was,
// why the first of Qt's platforms did not start, and everything it said.
int standardError = -1;
QString reason;
QStringList said;

[[noreturn]] void endWithoutDisplay() {
    ::dprintf(standardError,
              "cabslot: there is no display for a window (%s); cabslotctl does the same from a "
              "terminal\n",
              qPrintable(reason));
    std::_Exit(noDisplay);
}

void keepMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const bool explains =
        type != QtDebugMsg && type != QtInfoMsg && !text.startsWith("QStandardPaths");
    if (reason.isEmpty() && explains)
        reason = text.section('\n', 0, 0).trimmed();
    if (type == QtFatalMsg) // Qt would abort
        endWithoutDisplay();
    said.push_back(qFormatLogMessage(type, context, text));
}

} // namespace

// Libraries below Qt write their own reasons straight to standard error, so that is closed for as
// long as Qt looks for a display.
void startOnDisplay(const std::function<void()>& makeApplication) {
    const FileDescriptor kept(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
    const FileDescriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    standardError = kept.get();
    ::dup2(nowhere.get(), STDERR_FILENO);
    const QtMessageHandler before = qInstallMessageHandler(keepMessage);
    makeApplication();
    if (QGuiApplication::primaryScreen() == nullptr) // linuxfb without a framebuffer goes on
        endWithoutDisplay();
    qInstallMessageHandler(before);
    ::dup2(kept.get(), STDERR_FILENO);
    for (const QString& line : std::as_const(said))
        std::fprintf(stderr, "%s\n", visibleText(line.toStdString()).c_str());
}

} // namespace cabslot
