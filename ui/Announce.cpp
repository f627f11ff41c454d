#include "ui/Announce.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace cabslot {

namespace {

constexpr const char* roleProperty = "accessibleRole";

// Only for widgets that have the property.
QAccessibleInterface* makeWithRole(const QString& /*className*/, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    const QVariant role = widget == nullptr ? QVariant() : widget->property(roleProperty);
    if (!role.isValid())
        return nullptr;
    return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void announce(QWidget& source, const QString& text) {
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&source, text);
#else
    source.setAccessibleName(text);
    QAccessibleEvent event(&source, QAccessible::ObjectShow);
#endif
    QAccessible::updateAccessibility(&event);
}

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
    static const bool installed = (QAccessible::installFactory(makeWithRole), true);
    Q_UNUSED(installed)
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace cabslot
