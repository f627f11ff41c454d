// The request is a signal: it needs no file or socket whose owner would have to be checked.
#include "ui/Raise.h"

#include <QApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace cabslot {

namespace {

constexpr int raiseSignal = SIGUSR1;

int wakeUp[2] = {-1, -1}; // a pipe from the signal's handler to the event loop

void onSignal(int /*signal*/) {
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUp[1], &byte, 1); // full: it is asked already
}

void bringToFront(QWidget& window) {
    char bytes[16];
    while (::read(wakeUp[0], bytes, sizeof bytes) > 0) {
    }
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    QWidget* const modal = QApplication::activeModalWidget(); // takes the keys instead
    QWidget& top = modal == nullptr ? window : *modal;
    window.raise();
    top.raise();
    top.activateWindow();
}

} // namespace

void raiseOnRequest(QWidget& window, const std::function<void()>& raised) {
    if (::pipe2(wakeUp, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the window works without
    auto* notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, &window);
    QObject::connect(notifier, &QSocketNotifier::activated, &window, [&window, raised] {
        bringToFront(window);
        raised();
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    ::sigaction(raiseSignal, &action, nullptr);
}

bool raiseWindowOf(std::int64_t pid) {
    return pid > 1 && ::kill(static_cast<pid_t>(pid), raiseSignal) == 0;
}

} // namespace cabslot
