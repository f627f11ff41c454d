// How the selected file is to be loaded: its name in the pedal, and whether to prepare it. Main
// thread.
#pragma once

#include "ui/Preview.h"

#include <QStringList>
#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace cabslot {

class LoadBar final : public QWidget {
    Q_OBJECT
public:
    /// `taken` are the other slots' names, without blanks at their ends.
    explicit LoadBar(const QStringList& taken, QWidget* parent = nullptr);

    /// Starts with the name that the rule makes from the file's; empty: no file.
    void setFile(const QString& path);

    /// How to load the file at `path`, which may be typed: what was said about another file's name
    /// does not count.
    Choice choiceOf(const QString& path) const;

    QList<QWidget*> tabOrder() const; ///< its controls, from the top

signals:
    void changed(); ///< by the user

private:
    void layOut();
    QComboBox* makeCut(const QString& name, const QString& key, std::initializer_list<int> hertz);

    QStringList taken_;
    QString path_;
    QString rule_; ///< the rule's name for `path_`; empty if the pedal would refuse it
    QLineEdit* name_;
    QPushButton* proposal_;
    QString proposed_;
    QCheckBox* prepare_;
    QComboBox* lowCut_;
    QComboBox* highCut_;
};

} // namespace cabslot
