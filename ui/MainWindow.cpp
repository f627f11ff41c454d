#include "ui/MainWindow.h"

#include "ui/AppMenu.h"
#include "ui/BusyWait.h"
#include "ui/Glyphs.h"
#include "ui/Look.h"
#include "ui_Main.h"

#include <QEvent>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QScreen>
#include <QShortcut>
#include <QWindow>

namespace cabslot {

MainWindow::MainWindow() : ui_(std::make_unique<Ui::Main>()) {
    ui_->setupUi(this);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_StyledBackground);
    setFocusPolicy(Qt::ClickFocus); // nothing is marked until the user presses a key
    setFocus();
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

MainWindow::~MainWindow() = default;

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
    const QSize content = ui_->contentView->childrenRect().size();
    if (content.isEmpty() || content == size())
        return;
    const QPoint centre = geometry().center();
    setFixedSize(content);
    move(centre - rect().center());
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
