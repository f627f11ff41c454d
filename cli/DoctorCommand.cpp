#include "cli/DoctorCommand.h"

#include "cli/Document.h"
#include "platform/UsbBus.h"

#include <iostream>

namespace cabslot {

namespace {

const char* nameOf(UsbStatus status) {
    switch (status) {
    case UsbStatus::ok:
        return "ok";
    case UsbStatus::inUse:
        return "in_use";
    case UsbStatus::notPermitted:
        return "not_permitted";
    case UsbStatus::otherRelease:
        return "other_release";
    case UsbStatus::failing:
        return "failing";
    case UsbStatus::noService:
        return "no_service";
    case UsbStatus::noPedal:
        break;
    }
    return "no_pedal";
}

void printJson(const UsbVerdict& verdict) {
    Json json = {{"status", nameOf(verdict.status)}};
    if (!verdict.path.empty()) {
        json.add("path", verdict.path);
        json.add("release", verdict.release);
    }
    json.add("message", verdict.message);
    if (!verdict.fix.empty())
        json.add("fix", verdict.fix);
    printDocument(json);
}

void printLines(const UsbVerdict& verdict) {
    std::cout << verdict.message << '\n';
    if (!verdict.fix.empty())
        std::cout << "To fix it:\n  " << verdict.fix << '\n';
}

} // namespace

DoctorCommand::DoctorCommand(Arguments& program)
    : Command(program, "doctor",
              "Look for the pedal on USB and say what to do if it cannot be used") {
    addJson(json_);
}

ExitStatus DoctorCommand::run() {
    const UsbVerdict verdict = verdictOn(inspectUsb(pedalMatching), pedalMatching);
    leaveUsb();
    json_ ? printJson(verdict) : printLines(verdict);
    return verdict.status == UsbStatus::ok ? ExitStatus::done : ExitStatus::noPedal;
}

} // namespace cabslot
