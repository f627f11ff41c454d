#include "ui/StatusLine.h"

#include "ui/Announce.h"
#include "ui/BusyWait.h"
#include "ui/ElidedText.h"
#include "ui/Look.h"
#include "ui/PrepareSetting.h"
#include "ui/Problem.h"
#include "ui/Words.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace cabslot {

namespace {

constexpr int besideWindowButtons = 110; // pixels that the buttons in the window's corner take

constexpr int textLines = 2;

} // namespace

StatusLine::StatusLine(QWidget* parent)
    : QWidget(parent), text_(new ElidedText(textLines)), undo_(new QPushButton("Undo")),
      stop_(new QPushButton("Stop waiting")) {
    text_->setObjectName("status");
    text_->setText("Looking for the pedal…");
    text_->setProperty("role", "status");
    undo_->setObjectName("undo");
    undo_->setFocusPolicy(Qt::TabFocus); // shows the focus only to keyboard users
    stop_->setObjectName("stopWaiting");
    stop_->setToolTip("Waits no longer for the pedal; the slot's name stays the new one (Esc)");
    stop_->setFocusPolicy(Qt::NoFocus); // Esc does the same; no key that was meant for a slot may
    stop_->setProperty(BusyWait::worksWhileBusy, true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, besideWindowButtons, 0);
    row->addWidget(text_, 1);
    for (QPushButton* button : {undo_, stop_}) {
        button->setProperty("role", "inline");
        button->hide();
        row->addWidget(button);
    }
    // The window keeps its size, whatever is said.
    setFixedHeight(textLines * text_->fontMetrics().lineSpacing());
    setAccessibleRole(*this, QAccessible::Notification);
}

void StatusLine::say(const QString& text, bool problem) {
    text_->setText(text);
    setLook(*text_, "problem", problem);
    undo_->hide();
}

void StatusLine::tell(const QString& text, const QString& more) {
    say(text);
    announce(*this, (text + ' ' + more).trimmed());
}

void StatusLine::offerUndo(const QString& what) {
    undo_->setToolTip(what + " (Ctrl+Z)");
    undo_->setAccessibleDescription(what);
    undo_->show();
}

void StatusLine::sayReady() {
    const QString prepared = preparesFiles() ? " It is prepared first." : "";
    say("Load a WAV file into a slot, or drop one on it." + prepared);
}

QString StatusLine::refuse(const QString& why) {
    QString text = visible(why);
    printProblem(text.toStdString());
    text[0] = text[0].toUpper();
    if (!text.endsWith('.'))
        text += '.';
    say(text, true);
    announce(*this, text);
    return text;
}

} // namespace cabslot
