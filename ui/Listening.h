// The window's one place of listening: at most one view is heard at a time, and what was chosen
// (the phrase, the level) holds for all of them and for the next run. Main thread.
#pragma once

#include "audition/Listener.h"

#include <QObject>
#include <QString>

#include <optional>

namespace cabslot {

/// The sound module beside the running program; see loadSound().
SoundLibrary* installedSound(std::string& why);

class Listening final : public QObject {
    Q_OBJECT
public:
    /// `bundle` is where the phrases are. Nothing is loaded before look() or start().
    Listening(Listener::Load load, const std::string& bundle);

    void look(); ///< finds out, in the background, whether there is a sound device

    /// Lets `who` be heard with `ir`, and nobody else.
    void start(const QObject* who, const std::optional<Samples>& ir);

    /// The IR of `who` is another one now, or none; not heard unless it was started.
    void setIR(const QObject* who, const std::optional<Samples>& ir);

    void stop();                   ///< ends the sound, whoever is heard
    void stop(const QObject* who); ///< the same, if that is `who`

    bool isOn(const QObject* who) const { return who_ == who; } ///< `who` is heard, or will be
    Listener::Status status() const { return listener_.status(); }

    enum class Choice { clean, driven, own };
    Choice phrase() const { return phrase_; }
    QString ownPhrase() const { return ownPhrase_; } ///< a path; empty before one was chosen
    void setPhrase(Choice phrase, const QString& own = {});

    Level level() const { return level_; }
    void setLevel(Level level);

signals:
    void changed(); ///< any of the above

private:
    void react();
    std::string phrasePath() const;

    std::string bundle_;
    const QObject* who_ = nullptr;
    Choice phrase_ = Choice::clean;
    QString ownPhrase_;
    Level level_ = Level::matched;
    Listener listener_; ///< the last: its thread reports to the rest
};

} // namespace cabslot
