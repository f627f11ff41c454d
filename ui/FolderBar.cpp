#include "ui/FolderBar.h"

#include "ui/Glyphs.h"
#include "ui/Settings.h"
#include "ui/Words.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QToolButton>
#include <QVBoxLayout>

namespace cabslot {

namespace {

const QString newestKey = QStringLiteral("openPanel/newestFirst");

QToolButton* makeButton(Glyph glyph, const QString& name, const QString& keys) {
    auto* button = new QToolButton;
    button->setIcon(glyphIcon(glyph));
    button->setAccessibleName(name);
    button->setToolTip(name + " (" + keys + ")");
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

FolderBar::FolderBar(QWidget* parent)
    : QWidget(parent), back_(makeButton(Glyph::back, "Back", "Alt+Left")),
      forward_(makeButton(Glyph::forward, "Forward", "Alt+Right")),
      up_(makeButton(Glyph::up, "Folder above", "Alt+Up")), where_(new QLabel),
      filter_(new QLineEdit), subfolders_(new QCheckBox("Su&bfolders too")), order_(new QComboBox) {
    where_->setObjectName("folder");
    where_->setTextFormat(Qt::PlainText);
    where_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    filter_->setObjectName("filter");
    filter_->setPlaceholderText("Words of the name, such as SM57 cap");
    filter_->setClearButtonEnabled(true);
    filter_->installEventFilter(this);
    subfolders_->setObjectName("subfolders");
    subfolders_->setToolTip("List the WAV files of all folders below this one");
    order_->setObjectName("order");
    order_->setAccessibleName("Sort by");
    order_->addItems({"By name", "Newest first"});
    order_->setCurrentIndex(QSettings().value(newestKey).toBool() ? 1 : 0);
    layOut();
    connect(back_, &QToolButton::clicked, this, &FolderBar::back);
    connect(forward_, &QToolButton::clicked, this, &FolderBar::forward);
    connect(up_, &QToolButton::clicked, this, &FolderBar::up);
    connect(filter_, &QLineEdit::textChanged, this, &FolderBar::filtered);
    connect(subfolders_, &QCheckBox::toggled, this, &FolderBar::subfoldersChanged);
    connect(order_, &QComboBox::activated, this, [this](int index) {
        storeSetting(newestKey, index == 1);
        emit orderChanged();
    });
}

void FolderBar::layOut() {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    auto* folder = new QHBoxLayout;
    for (QToolButton* button : {back_, forward_, up_})
        folder->addWidget(button);
    folder->addWidget(where_, 1);
    auto* finding = new QHBoxLayout;
    auto* title = new QLabel("&Filter:");
    title->setBuddy(filter_);
    finding->addWidget(title);
    finding->addWidget(filter_, 1);
    auto* choosing = new QHBoxLayout;
    choosing->addWidget(subfolders_, 1);
    choosing->addWidget(order_);
    for (QHBoxLayout* row : {folder, finding, choosing})
        rows->addLayout(row);
}

void FolderBar::setFolder(const QString& folder, bool hasBack, bool hasForward) {
    const QString home = QDir::homePath();
    folder_ =
        visible(folder == home || folder.startsWith(home + "/") ? "~" + folder.mid(home.size())
                                                                : QDir::toNativeSeparators(folder));
    where_->setToolTip(toolTipOf(visible(QDir::toNativeSeparators(folder))));
    back_->setEnabled(hasBack);
    forward_->setEnabled(hasForward);
    up_->setEnabled(!QDir(folder).isRoot());
    elide();
}

bool FolderBar::withSubfolders() const {
    return subfolders_->isChecked();
}

FileModel::Order FolderBar::order() const {
    return order_->currentIndex() == 1 ? FileModel::Order::newestFirst : FileModel::Order::byName;
}

QList<QWidget*> FolderBar::tabOrder() const {
    return {back_, forward_, up_, filter_, subfolders_, order_};
}

void FolderBar::elide() {
    where_->setText(where_->fontMetrics().elidedText(folder_, Qt::ElideLeft, where_->width()));
    where_->setAccessibleName(folder_);
}

void FolderBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layout()->activate();
    elide();
}

// Esc empties the filter before it closes the panel.
bool FolderBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    switch (static_cast<const QKeyEvent&>(*event).key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Down:
        emit entersList();
        return true;
    case Qt::Key_Escape:
        if (filter_->text().isEmpty())
            return false;
        filter_->clear();
        return true;
    default:
        return false;
    }
}

} // namespace cabslot
