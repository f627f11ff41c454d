#include "ui/MainWindow.h"

#include "ui/Announce.h"
#include "ui/AppMenu.h"
#include "ui/BusyWait.h"
#include "ui/Glyphs.h"
#include "ui/Look.h"
#include "ui/Settings.h"
#include "ui_Main.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QSettings>
#include <QShortcut>
#include <QWindow>

namespace cabslot {

namespace {

// The window's position on that screen, from the screen's corner.
QString positionKey(const QScreen& screen) {
    const QSize size = screen.size();
    return QString("window/position %1 %2x%3")
        .arg(screen.name())
        .arg(size.width())
        .arg(size.height());
}

} // namespace

MainWindow::MainWindow() : ui_(std::make_unique<Ui::Main>()) {
    ui_->setupUi(this);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setAccessibleRole(*this, QAccessible::Window);
    setAccessibleName(windowTitle());
    ui_->titleBar->setAttribute(Qt::WA_StyledBackground);
    ui_->minimiseButton->setIcon(glyphIcon(Glyph::minimise));
    ui_->closeButton->setIcon(glyphIcon(Glyph::close));
    ui_->closeButton->setProperty(BusyWait::worksWhileBusy, true);
    connect(ui_->closeButton, &QToolButton::clicked, this, &QWidget::close);
    connect(ui_->minimiseButton, &QToolButton::clicked, this, &QWidget::showMinimized);
    connect(ui_->zoomButton, &QToolButton::clicked, this, &QWidget::showMaximized);
    connect(new QShortcut(QKeySequence::Quit, this), &QShortcut::activated, this, &QWidget::close);
    applyStyle();
}

MainWindow::~MainWindow() {
    if (ui_->zoomButton->parent() == nullptr)
        delete ui_->zoomButton;
}

void MainWindow::center() {
    const QRect available = screen()->availableGeometry();
    move(available.center() - rect().center());
}

void MainWindow::setTitleBarTransparent(bool transparent) {
    setLook(*ui_->titleBar, "transparent", transparent);
}

// Without the text, the strip keeps its height and its buttons stay in place.
void MainWindow::setTitleVisible(bool visible) {
    ui_->titleText->setText(visible ? windowTitle() : QString());
}

void MainWindow::setMovableByBackground(bool movable) {
    movable_ = movable;
}

void MainWindow::setFullSizeContent() {
    ui_->windowLayout->removeWidget(ui_->contentView);
    ui_->windowLayout->addWidget(ui_->contentView, 0, 0, 2, 1);
    ui_->titleBar->raise();
}

QWidget* MainWindow::contentView() const {
    return ui_->contentView;
}

void MainWindow::addToContent(QWidget* view) {
    view->setParent(ui_->contentView);
    view->ensurePolished();
    view->adjustSize();
    view->show();
}

void MainWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (ui_->zoomButton->isHidden()) // Qt would show assistive technology the hidden button, too
        ui_->zoomButton->setParent(nullptr);
    const QSize content = ui_->contentView->childrenRect().size();
    if (content.isEmpty() || content == size())
        return;
    const QPoint centre = geometry().center();
    setFixedSize(content);
    move(centre - rect().center());
    moveToKeptPosition();
}

void MainWindow::moveToKeptPosition() {
    const QVariant kept = QSettings().value(positionKey(*screen()));
    const QRect placed(screen()->geometry().topLeft() + kept.toPoint(), size());
    if (kept.isValid() && screen()->availableGeometry().contains(placed))
        move(placed.topLeft());
}

void MainWindow::closeEvent(QCloseEvent* event) {
    storeSetting(positionKey(*screen()), pos() - screen()->geometry().topLeft());
    QWidget::closeEvent(event);
}

AppMenu& MainWindow::menu() const {
    return *ui_->menuButton;
}

QAbstractButton* MainWindow::closeButton() const {
    return ui_->closeButton;
}

QAbstractButton* MainWindow::zoomButton() const {
    return ui_->zoomButton;
}

void MainWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyStyle();
}

// Setting the style sheet changes the palette in turn, at once and again when the widgets are
// shown. So the same sheet is not set twice: that would restyle every widget.
void MainWindow::applyStyle() {
    const QString sheet = styleSheetFor(QGuiApplication::palette());
    if (sheet != styleSheet())
        setStyleSheet(sheet);
}

void MainWindow::mousePressEvent(QMouseEvent* event) {
    if (!movable_ || event->button() != Qt::LeftButton)
        return;
    // Without a window manager, the window moves itself.
    if (windowHandle() == nullptr || !windowHandle()->startSystemMove())
        grabbedAt_ = event->globalPosition().toPoint() - pos();
}

void MainWindow::mouseMoveEvent(QMouseEvent* event) {
    if (grabbedAt_)
        move(event->globalPosition().toPoint() - *grabbedAt_);
}

void MainWindow::mouseReleaseEvent(QMouseEvent* /*event*/) {
    grabbedAt_.reset();
}

} // namespace cabslot
