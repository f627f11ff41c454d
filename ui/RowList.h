// A list of one column in the window's own style: a sign, a text, and a second, smaller line where
// there is one. The selected row stands out by its ground and keeps the text's colour, so that it
// can be read in every palette.
#pragma once

#include <QListView>

namespace cabslot {

class RowList : public QListView {
    Q_OBJECT
public:
    enum Role {
        detailRole = Qt::UserRole + 100, ///< the second line's text
        isTitleRole,                     ///< bool: names the rows that follow
    };

    explicit RowList(QWidget* parent = nullptr);

    /// Whether rows have space for a second line.
    void setTwoLines(bool two);

    /// Shown instead of rows while there are none.
    void setEmptyText(const QString& text);

signals:
    void entered(const QModelIndex& index); ///< by Return, which goes no further, or a double click

protected:
    void keyPressEvent(QKeyEvent* event) override; ///< the first arrow key selects the first row
    void paintEvent(QPaintEvent* event) override;

private:
    QString emptyText_;
};

} // namespace cabslot
