// The main window: a title strip with the window's buttons, and the content below or under it.
#pragma once

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

class QAbstractButton;

namespace Ui {
class Main;
}

namespace cabslot {

class AppMenu;

class MainWindow final : public QWidget {
    Q_OBJECT
public:
    MainWindow();
    ~MainWindow() override;

    void center(); ///< centres it on its screen
    void setTitleBarTransparent(bool transparent);
    void setTitleVisible(bool visible);
    void setMovableByBackground(bool movable); ///< anywhere but on a control
    void setFullSizeContent();                 ///< extends the content under the strip

    QWidget* contentView() const;

    /// Adds `view` at the content's upper left corner, as large as its form needs with this
    /// desktop's font. The window gets that fixed size when it is shown, around its current
    /// centre.
    void addToContent(QWidget* view);

    AppMenu& menu() const;
    QAbstractButton* closeButton() const;
    QAbstractButton* zoomButton() const;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override; ///< stores the position on this screen
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void applyStyle();
    void moveToKeptPosition();

    std::unique_ptr<Ui::Main> ui_;
    bool movable_ = false;
    std::optional<QPoint> grabbedAt_; ///< position in the window while the user drags it
};

} // namespace cabslot
