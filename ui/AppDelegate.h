// The application's shell: gives the main window its look when launching has finished, puts the
// main view into it, and ends the process when it is closed. Main thread.
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
    /// Makes the main view's controller, and with it the device link; starts nothing.
    explicit AppDelegate(const Surroundings& surroundings);

    /// Dresses `window`, which must have been set, and takes the main view in: the device thread
    /// starts here.
    void applicationDidFinishLaunching();

    void applicationWillTerminate(); ///< does nothing; the process's end closes the link

    /// Ends the process with status 0 at once, without an orderly termination: the device
    /// thread never stops by itself.
    void applicationShouldTerminateAfterLastWindowClosed();

    QPointer<MainWindow> window; ///< the main window; somebody else's
    std::unique_ptr<RootViewController> rootVC;

private:
    std::function<void(int)> endProcess_;
};

} // namespace cabslot
