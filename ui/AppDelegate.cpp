#include "ui/AppDelegate.h"

#include "ui/AppMenu.h"
#include "ui/Fatal.h"
#include "ui/SetMenu.h"

#include <QAbstractButton>

namespace cabslot {

AppDelegate::AppDelegate(const Surroundings& surroundings)
    : rootVC(std::make_unique<RootViewController>(surroundings)),
      endProcess_(surroundings.endProcess) {}

void AppDelegate::applicationDidFinishLaunching() {
    MainWindow& main = outlet(window);
    main.center();
    main.setTitleBarTransparent(true);
    main.setTitleVisible(false);
    main.setMovableByBackground(true);
    main.setFullSizeContent();
    if (QAbstractButton* zoom = main.zoomButton())
        zoom->hide();
    if (main.contentView() != nullptr)
        main.addToContent(rootVC->view());
    new SetMenu(main.menu(), *rootVC); // rootVC owns it
    connect(&main.menu(), &AppMenu::prepareChanged, rootVC.get(),
            &RootViewController::prepareChanged);
}

void AppDelegate::applicationWillTerminate() {}

void AppDelegate::applicationShouldTerminateAfterLastWindowClosed() {
    endProcess_(0);
}

} // namespace cabslot
