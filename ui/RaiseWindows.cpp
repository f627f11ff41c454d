// Windows lets a program that the user has just started bring another's window to the front.
#include "ui/Raise.h"

#include <QGuiApplication>

#include <windows.h>

namespace cabslot {

namespace {

struct Search {
    DWORD process;
    bool found;
};

BOOL CALLBACK raiseIfOwned(HWND window, LPARAM search) {
    auto& wanted = *reinterpret_cast<Search*>(search);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != wanted.process || !IsWindowVisible(window) ||
        GetWindow(window, GW_OWNER) != nullptr)
        return TRUE;
    ShowWindow(window, IsIconic(window) ? SW_RESTORE : SW_SHOW);
    SetForegroundWindow(window);
    wanted.found = true;
    return FALSE;
}

} // namespace

// The second program does it all; this one sees its window become active.
void raiseOnRequest(QWidget& window, const std::function<void()>& raised) {
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &window,
                     [raised](Qt::ApplicationState state) {
                         if (state == Qt::ApplicationActive)
                             raised();
                     });
}

bool raiseWindowOf(std::int64_t pid) {
    Search search{static_cast<DWORD>(pid), false};
    EnumWindows(raiseIfOwned, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace cabslot
