#include "tests/support/Files.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTimer>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const cabslot::testing::TempFolder settings; // not the user's own
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(settings.path("")));
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setOrganizationName("cabslot-tests");
    QApplication::setQuitOnLastWindowClosed(false);
    // Inside the main loop, as in the program: only there does Qt report that the last window is
    // closed.
    QTimer::singleShot(0, [] { QApplication::exit(RUN_ALL_TESTS()); });
    return QApplication::exec();
}
