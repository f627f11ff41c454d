// The panel's right column: what the selected file would put into the pedal, how it is to be
// loaded, and how it is heard. The panel only says which file is selected and asks for the choice.
// Main thread.
#pragma once

#include "ui/Preview.h"

#include <QStringList>
#include <QWidget>

namespace cabslot {

class IRView;
class ListenBar;
class Listening;
class LoadBar;

class PreviewColumn final : public QWidget {
    Q_OBJECT
public:
    /// `taken` are the other slots' names.
    PreviewColumn(const QStringList& taken, Listening& listening, QWidget* parent = nullptr);

    /// Shows the file at `path`, or why it is refused: only WAV files are taken.
    void showFile(const QString& path);

    /// Shows no file, but `words` under `title`, which may be empty.
    void showWords(const QString& title, const QString& words);

    /// How the file at `path`, shown or not, is to be loaded.
    Choice choiceOf(const QString& path) const;

    void toggleListening();

    QList<QWidget*> tabOrder() const; ///< its controls, from the top

private:
    void refuse(const QString& path, const QString& why);

    IRView* ir_;
    LoadBar* load_;
    ListenBar* listen_;
    QString shown_; ///< the path of the file shown; empty: none
};

} // namespace cabslot
