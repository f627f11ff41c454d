#include "ui/Listening.h"

#include "audition/LoadSound.h"
#include "audition/Phrases.h"
#include "platform/BundlePath.h"
#include "ui/Settings.h"

#include <QFile>
#include <QSettings>

#include <utility>

namespace cabslot {

namespace {

const QString phraseKey = QStringLiteral("listening/phrase");
const QString ownPhraseKey = QStringLiteral("listening/ownPhrase");
const QString asItIsKey = QStringLiteral("listening/asLoudAsItIs");

} // namespace

SoundLibrary* installedSound(std::string& why) {
    return loadSound(installPrefix(), why);
}

Listening::Listening(Listener::Load load, const std::string& bundle)
    : bundle_(bundle), listener_(std::move(load), [this] {
          QMetaObject::invokeMethod(this, &Listening::react, Qt::QueuedConnection);
      }) {
    const QSettings settings;
    ownPhrase_ = settings.value(ownPhraseKey).toString();
    phrase_ = settings.value(phraseKey).toString();
    if (!isShippedPhrase(phrase_.toStdString()) && (phrase_ != own || ownPhrase_.isEmpty()))
        phrase_ = QString::fromUtf8(shippedPhrases.front().name);
    level_ = settings.value(asItIsKey).toBool() ? Level::asItIs : Level::matched;
    listener_.setPhrase(phrasePath());
    listener_.setLevel(level_);
}

void Listening::look() {
    listener_.look();
}

void Listening::start(const QObject* who, const std::optional<Samples>& ir) {
    who_ = who;
    listener_.setIR(ir);
    listener_.listen(true);
    emit changed();
}

void Listening::setIR(const QObject* who, const std::optional<Samples>& ir) {
    if (who_ == who)
        listener_.setIR(ir);
}

void Listening::stop() {
    if (who_ == nullptr)
        return;
    who_ = nullptr;
    listener_.listen(false);
    emit changed();
}

void Listening::stop(const QObject* who) {
    if (who_ == who)
        stop();
}

// If sound has failed, turns the switch off.
void Listening::react() {
    if (!listener_.status().why.empty())
        stop();
    emit changed();
}

std::string Listening::phrasePath() const {
    return phrase_ == own ? QFile::encodeName(ownPhrase_).toStdString()
                          : shippedPhrasePath(bundle_, phrase_.toStdString());
}

void Listening::setOwnPhrase(const QString& path) {
    ownPhrase_ = path;
    storeSetting(ownPhraseKey, ownPhrase_);
    setPhrase(own);
}

// Stored by name, so that another phrase in the list changes no user's choice.
void Listening::setPhrase(const QString& name) {
    phrase_ = name;
    storeSetting(phraseKey, phrase_);
    listener_.setPhrase(phrasePath());
    emit changed();
}

void Listening::setLevel(Level level) {
    level_ = level;
    storeSetting(asItIsKey, level == Level::asItIs);
    listener_.setLevel(level);
    emit changed();
}

} // namespace cabslot
