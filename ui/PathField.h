// The field for typing a path or a file's name, which completes both. Main thread.
#pragma once

#include <QLineEdit>

class QStringListModel;

namespace cabslot {

class PathField final : public QLineEdit {
    Q_OBJECT
public:
    explicit PathField(QWidget* parent = nullptr);

    void setFolder(const QString& folder); ///< where a name without a folder is looked for
    void offerHidden(bool offers) { hidden_ = offers; } ///< hidden files and folders, too

    /// The absolute path that was typed: "~" is the home folder; empty if nothing was typed.
    QString path() const;

signals:
    void entered();                ///< by Return, which goes no further
    void toList(QKeyEvent* event); ///< an arrow key up or down

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString resolved(const QString& typed) const;
    void offer(const QString& typed);

    QString folder_;
    bool hidden_ = false;
    QStringListModel* offers_;
    QString offered_; ///< the part before the last slash that the offers are for
};

} // namespace cabslot
