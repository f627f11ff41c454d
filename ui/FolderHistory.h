// The folders that were seen, for going back and forward.
#pragma once

#include <QStringList>

namespace cabslot {

class FolderHistory {
public:
    /// Drops what is ahead. A folder again is not a second one.
    void visit(const QString& folder) {
        if (at_ >= 0 && folders_[at_] == folder)
            return;
        folders_.resize(at_ + 1);
        folders_ << folder;
        ++at_;
    }

    bool hasBack() const { return at_ > 0; }
    bool hasForward() const { return at_ + 1 < folders_.size(); }
    QString back() { return hasBack() ? folders_[--at_] : QString(); }       ///< or empty
    QString forward() { return hasForward() ? folders_[++at_] : QString(); } ///< or empty

private:
    QStringList folders_;
    qsizetype at_ = -1;
};

} // namespace cabslot
