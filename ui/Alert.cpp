#include "ui/Alert.h"

#include "ui/Announce.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace cabslot {

namespace {

constexpr int textWidth = 360;
constexpr int iconSize = 40;

} // namespace

Alert::Alert(QWidget& window, const QString& detail, const QString& button, const QString& reason)
    : Sheet(window), title_(makeText("Error", "alertTitle", textWidth)),
      detail_(makeText(detail, "alertDetail", textWidth)), button_(new QPushButton(button)) {
    auto* icon = new QLabel;
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(24, 20, 24, 18);
    grid->setHorizontalSpacing(18);
    grid->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    grid->addWidget(title_, 0, 1);
    grid->addWidget(detail_, 1, 1);
    if (!reason.isEmpty())
        grid->addWidget(makeText(reason, "reason", textWidth), 2, 1);
    grid->setRowMinimumHeight(3, 8);
    grid->addWidget(button_, 4, 1, Qt::AlignRight);
    setAccessibleRole(*this, QAccessible::AlertMessage);
    setAccessibleName(title());
    setAccessibleDescription((detail + ' ' + reason).trimmed());
    button_->setDefault(true);
    connect(button_, &QPushButton::clicked, this, &QDialog::reject);
}

QString Alert::title() const {
    return title_->text();
}

QString Alert::detail() const {
    return detail_->text();
}

} // namespace cabslot
