// The application delegate: styles the main window after launching, adds the main view to it, and
// ends the process when it is closed. Main thread.
#pragma once

#include "ui/MainWindow.h"
#include "ui/RootViewController.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

namespace cabslot {

class AppDelegate final : public QObject {
    Q_OBJECT
public:
    /// Creates the main view's controller, and with it the device link; starts nothing.
    explicit AppDelegate(const Surroundings& surroundings);

    /// Styles `window`, which must have been set, and adds the main view to it, which starts the
    /// device thread.
    void applicationDidFinishLaunching();

    void applicationWillTerminate(); ///< does nothing; the link closes when the process ends

    /// Ends the process with status 0 immediately, without an orderly termination: the device
    /// thread never stops by itself.
    void applicationShouldTerminateAfterLastWindowClosed();

    QPointer<MainWindow> window; ///< the main window; not owned
    std::unique_ptr<RootViewController> rootVC;

private:
    std::function<void(int)> endProcess_;
};

} // namespace cabslot
