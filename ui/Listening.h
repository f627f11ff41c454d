// The window's listening state: at most one view plays at a time; the chosen phrase and level apply
// to all views and to the next run. Main thread.
#pragma once

#include "audition/Listener.h"

#include <QObject>
#include <QString>

#include <optional>

namespace cabslot {

/// The sound module of the running program; see loadSound().
SoundLibrary* installedSound(std::string& why);

class Listening final : public QObject {
    Q_OBJECT
public:
    /// `bundle` contains the phrases. Nothing is loaded before look() or start().
    Listening(Listener::Load load, const std::string& bundle);

    void look(); ///< looks for a sound device in the background

    /// Plays `ir` for `who`, and for nobody else.
    void start(const QObject* who, const std::optional<Samples>& ir);

    /// Changes or removes the IR of `who`; it plays only if `who` was started.
    void setIR(const QObject* who, const std::optional<Samples>& ir);

    void stop();                   ///< stops the sound, whoever started it
    void stop(const QObject* who); ///< the same, if `who` started it

    bool isOn(const QObject* who) const { return who_ == who; } ///< `who` is playing or about to
    Listener::Status status() const { return listener_.status(); }

    static constexpr const char* own = "own"; ///< a phrase() beside the shipped ones

    QString phrase() const { return phrase_; }       ///< a shipped phrase's name, or `own`
    QString ownPhrase() const { return ownPhrase_; } ///< a path; empty until one is chosen
    void setPhrase(const QString& name);             ///< to a shipped one, or `own`
    void setOwnPhrase(const QString& path);          ///< of a sound file

    Level level() const { return level_; }
    void setLevel(Level level);

signals:
    void changed(); ///< emitted when any of the above changes

private:
    void react();
    std::string phrasePath() const;

    std::string bundle_;
    const QObject* who_ = nullptr;
    QString phrase_;
    QString ownPhrase_;
    Level level_ = Level::matched;
    Listener listener_; ///< declared last: its thread uses the rest
};

} // namespace cabslot
